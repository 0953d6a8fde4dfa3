#pragma once

#include "platform/documents/DocumentTools.h"

#include <QStringList>

#include <functional>

namespace vorq {

/// Documents as a test wants them read; functions answer at once.
class ScriptedDocumentTools final : public DocumentTools {
  public:
    template<typename Value>
    using Answer = std::expected<Value, DocumentFailure>;

    Answer<QByteArray> jpeg = std::unexpected(DocumentFailure::Unreadable);
    Answer<QByteArray> avatar = std::unexpected(DocumentFailure::Unreadable);
    Answer<PdfContents> pdf = std::unexpected(DocumentFailure::Unreadable);
    Answer<QString> rtf = std::unexpected(DocumentFailure::Unreadable);
    Answer<QByteArray> unpacked = QByteArray();
    Answer<QString> text = std::unexpected(DocumentFailure::Unreadable);
    /// Runs before an avatar is given, on the thread that asks.
    std::function<void()> onAvatar;
    /// What was asked for, in order: "jpeg", "avatar", "pdf", "rtf", "unpack PATTERN", "text
    /// EXTENSION".
    QStringList asked;

    std::expected<QByteArray, DocumentFailure> jpegOf(const DocumentSource&,
                                                      const std::stop_token&) override {
        asked += QStringLiteral("jpeg");
        return jpeg;
    }
    std::expected<QByteArray, DocumentFailure> avatarOf(const DocumentSource&,
                                                        const std::stop_token&) override {
        asked += QStringLiteral("avatar");
        if (onAvatar) onAvatar();
        return avatar;
    }
    std::expected<PdfContents, DocumentFailure> readPdf(const DocumentSource&,
                                                        const std::stop_token&) override {
        asked += QStringLiteral("pdf");
        return pdf;
    }
    std::expected<QString, DocumentFailure> rtfText(const DocumentSource&,
                                                    const std::stop_token&) override {
        asked += QStringLiteral("rtf");
        return rtf;
    }
    std::expected<QByteArray, DocumentFailure> unpack(const QString&, const QString& pattern,
                                                      qint64, const std::stop_token&) override {
        asked += QStringLiteral("unpack ") + pattern;
        return unpacked;
    }
    std::expected<QString, DocumentFailure> officeText(const QString&, const QString& extension,
                                                       const std::stop_token&) override {
        asked += QStringLiteral("text ") + extension;
        return text;
    }
};

} // namespace vorq
