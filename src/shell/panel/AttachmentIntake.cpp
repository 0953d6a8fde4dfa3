#include "shell/panel/AttachmentIntake.h"

#include "shell/panel/AttachmentList.h"
#include "support/async/OnPool.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

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

std::expected<PromptAttachment, QString> attachmentOf(const QImage& image, const QString& name) {
    PromptAttachment attachment;
    attachment.fileName = name;
    attachment.imageDataURL = dataURLOf(image);
    if (!attachment.imageDataURL)
        return std::unexpected(AttachmentIntake::tr("The picture is too large to attach."));
    return attachment;
}

} // namespace

void AttachmentIntake::attachFiles(const QList<QUrl>& files) {
    emit chosen();
    for (const QUrl& file : files) {
        if (!file.isLocalFile()) {
            emit refused(tr("%1: only files can be attached.").arg(file.toDisplayString()));
            continue;
        }
        m_reading.release();
        m_reading.restart([this, path = file.toLocalFile()](std::stop_token stop) {
            return readFile(path, std::move(stop));
        });
    }
}

QCoro::Task<> AttachmentIntake::readFile(QString path, std::stop_token stop) {
    const Made made = co_await onPool([path] { return PromptAttachment::load(path); }, stop);
    if (!stop.stop_requested()) deliver(made);
}

void AttachmentIntake::deliver(const Made& made) {
    if (made)
        m_attachments.append(*made);
    else
        emit refused(made.error());
}

bool AttachmentIntake::attachPicture(const QByteArray& bytes) {
    const QImage image = QImage::fromData(bytes);
    if (image.isNull()) return false;
    emit chosen();
    deliver(attachmentOf(image, QStringLiteral("Dropped image.png")));
    return true;
}

bool AttachmentIntake::attachFromClipboard() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data) return false;
    QList<QUrl> files;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile()) files += url;
    if (!files.isEmpty()) {
        attachFiles(files);
        return true;
    }
    // A word processor offers a picture of its text too; the text is what is meant.
    if (!data->hasImage() || data->hasText()) return false;
    deliver(attachmentOf(data->imageData().value<QImage>(), QStringLiteral("Pasted image.png")));
    return true;
}

} // namespace vorq
