#include "capture/attachments/FileAttachmentReader.h"

#include "support/async/OnPool.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>

#include <utility>

namespace vorq {
namespace {

constexpr int jpegQuality = 72;

// Small as PNG, which keeps letters sharp; a large picture goes as JPEG.
std::optional<QString> dataURLOf(const QImage& image) {
    for (const char* format : {"PNG", "JPEG"}) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        if (!image.save(&buffer, format, format[0] == 'J' ? jpegQuality : -1)) continue;
        if (auto url = imageDataURL(bytes)) return url;
    }
    return std::nullopt;
}

AttachmentResult attachmentOf(const QByteArray& bytes, const QString& name) {
    const QImage image = QImage::fromData(bytes);
    if (image.isNull())
        return std::unexpected(
            QCoreApplication::translate("PromptAttachment", "The picture cannot be read."));
    PromptAttachment attachment;
    attachment.fileName = name;
    attachment.imageDataURL = dataURLOf(image);
    if (!attachment.imageDataURL)
        return std::unexpected(
            QCoreApplication::translate("PromptAttachment", "The picture is too large to attach."));
    return attachment;
}

} // namespace

QCoro::Task<AttachmentResult> FileAttachmentReader::read(QString path, std::stop_token stop) {
    return onPool(
        [path = std::move(path), pipes = m_pipes] { return PromptAttachment::load(path, pipes); },
        std::move(stop));
}

QCoro::Task<AttachmentResult> FileAttachmentReader::readPicture(QByteArray bytes, QString name,
                                                                std::stop_token stop) {
    return onPool(
        [bytes = std::move(bytes), name = std::move(name)] { return attachmentOf(bytes, name); },
        std::move(stop));
}

} // namespace vorq
