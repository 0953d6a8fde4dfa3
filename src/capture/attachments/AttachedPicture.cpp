#include "capture/attachments/AttachedPicture.h"

#include "capture/attachments/FailureSentences.h"
#include "capture/attachments/PromptAttachment.h"

#include <QCoreApplication>

namespace vorq {
namespace {

QString encodedURL(const QByteArray& type, const QByteArray& bytes) {
    return QString::fromLatin1("data:" + type + ";base64," + bytes.toBase64());
}

// What is no JPEG is said to be a PNG; whoever decodes it looks at the bytes.
QString dataURLOf(const QByteArray& original) {
    return encodedURL(original.startsWith("\xFF\xD8") ? "image/jpeg" : "image/png", original);
}

QString pictureTooLarge() {
    return QCoreApplication::translate("PromptAttachment",
                                       "the image is too large; at most 3.5 MB can be sent.");
}

} // namespace

std::expected<QString, QString>
pictureDataURL(DocumentTools& tools, const DocumentSource& source, qint64 size,
               const std::function<std::expected<QByteArray, QString>()>& original,
               const std::stop_token& stop) {
    const auto jpeg = tools.jpegOf(source, stop);
    if (jpeg && !jpeg->isEmpty() && jpeg->size() < PromptAttachment::imageByteLimit)
        return encodedURL("image/jpeg", *jpeg);
    // Decoded, it would fill the memory of whoever gets it as well.
    if (!jpeg && jpeg.error() == DocumentFailure::TooLarge)
        return std::unexpected(QCoreApplication::translate(
            "PromptAttachment", "the image has too many pixels; at most 128 megapixels can be "
                                "attached."));
    if (!jpeg &&
        (jpeg.error() == DocumentFailure::TimedOut || jpeg.error() == DocumentFailure::Stopped))
        return std::unexpected(sentenceOf(jpeg.error()));
    if (size >= PromptAttachment::imageByteLimit) return std::unexpected(pictureTooLarge());
    const auto bytes = original();
    if (!bytes) return std::unexpected(bytes.error());
    // It may have grown meanwhile.
    if (bytes->size() >= PromptAttachment::imageByteLimit)
        return std::unexpected(pictureTooLarge());
    // As of a program that announces a picture and never hands it over.
    if (bytes->isEmpty()) return std::unexpected(sentenceOf(DocumentFailure::Unreadable));
    return dataURLOf(*bytes);
}

} // namespace vorq
