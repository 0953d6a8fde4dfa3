#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <cstdint>

namespace vorq {

/// How a file is read, by the extension of its name.
enum class AttachmentKind : std::uint8_t { Picture, Pdf, Office, Text };

/// Any extension that is not known is that of a text. The extension is lower-case, without the dot.
[[nodiscard]] AttachmentKind attachmentKind(QStringView extension);

/// A type of files that can be attached, as a dialog for choosing files shows it.
struct FileContentType {
    QString mimeType;
    QStringList extensions; ///< lower-case, without the dot
};

/// In their order: pictures, PDF, texts, office documents.
[[nodiscard]] const QList<FileContentType>& fileContentTypes();

} // namespace vorq
