#pragma once

#include "platform/documents/DocumentTools.h"

#include <QByteArrayView>
#include <QStringList>

namespace vorq {

/// Reads documents with `vorq-documents`, unzip, LibreOffice and heif-convert.
class LinuxDocumentTools final : public DocumentTools {
  public:
    /// Paths, or names that are looked up when they are needed.
    struct Programs {
        QString helper; ///< vorq-documents
        QString unzip = QStringLiteral("unzip");
        QString office = QStringLiteral("soffice");
        QString heif = QStringLiteral("heif-convert");
    };

    explicit LinuxDocumentTools(Programs programs) : m_programs(std::move(programs)) {}

    /// The helper beside the running program or where an installation has it.
    [[nodiscard]] static QString installedHelper();

    std::expected<QByteArray, DocumentFailure> jpegOf(const DocumentSource& picture,
                                                      const std::stop_token& stop) override;
    std::expected<QByteArray, DocumentFailure> avatarOf(const DocumentSource& picture,
                                                        const std::stop_token& stop) override;
    std::expected<PdfContents, DocumentFailure> readPdf(const DocumentSource& pdf,
                                                        const std::stop_token& stop) override;
    std::expected<QString, DocumentFailure> rtfText(const DocumentSource& rtf,
                                                    const std::stop_token& stop) override;
    std::expected<QByteArray, DocumentFailure> unpack(const QString& path, const QString& pattern,
                                                      qint64 limit,
                                                      const std::stop_token& stop) override;
    std::expected<QString, DocumentFailure>
    officeText(const QString& path, const QString& extension, const std::stop_token& stop) override;

  private:
    [[nodiscard]] std::expected<QByteArray, DocumentFailure>
    askHelper(const QString& verb, const DocumentSource& source, qint64 limit,
              const std::stop_token& stop) const;
    [[nodiscard]] std::expected<QByteArray, DocumentFailure>
    askOfPicture(const QString& verb, const DocumentSource& picture,
                 const std::stop_token& stop) const;
    [[nodiscard]] std::expected<QByteArray, DocumentFailure>
    askOfHeif(const QString& verb, const QString& path, const std::stop_token& stop) const;

    Programs m_programs;
};

} // namespace vorq
