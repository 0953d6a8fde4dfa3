#include "shell/panel/AttachmentIntake.h"

#include "shell/panel/AttachmentList.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QMimeData>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Looks at its first bytes alone.
bool isPicture(QByteArray bytes) {
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::ReadOnly) && QImageReader(&buffer).canRead();
}

// As the other program has encoded it, where it has.
QByteArray pictureOf(const QMimeData& data) {
    for (const auto* type : {"image/png", "image/jpeg", "image/webp", "image/tiff", "image/bmp"})
        if (QByteArray bytes = data.data(QString::fromLatin1(type)); isPicture(bytes)) return bytes;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (buffer.open(QIODevice::WriteOnly)) data.imageData().value<QImage>().save(&buffer, "PNG");
    return bytes;
}

} // namespace

void AttachmentIntake::attachFiles(const QList<QUrl>& files) {
    emit chosen();
    for (const QUrl& file : files) {
        if (!file.isLocalFile()) {
            emit refused(tr("%1: only files can be attached.").arg(file.toDisplayString()));
            continue;
        }
        begin([this, path = file.toLocalFile()](std::stop_token stop) {
            return readFile(path, std::move(stop));
        });
    }
}

bool AttachmentIntake::attachPicture(const QByteArray& bytes) {
    if (!isPicture(bytes)) return false;
    emit chosen();
    attachPicture(bytes, u"Dropped image.png"_s);
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
    attachPicture(pictureOf(*data), u"Pasted image.png"_s);
    return true;
}

void AttachmentIntake::attachPicture(QByteArray bytes, const QString& name) {
    begin([this, picture = std::move(bytes), name](std::stop_token stop) {
        return readPicture(picture, name, std::move(stop));
    });
}

void AttachmentIntake::begin(TaskSlot::Body body) {
    m_reading.release();
    m_reading.restart(std::move(body));
}

QCoro::Task<> AttachmentIntake::readFile(QString path, std::stop_token stop) {
    const AttachmentResult result = co_await m_reader.read(std::move(path), stop);
    if (!stop.stop_requested()) deliver(result);
}

QCoro::Task<> AttachmentIntake::readPicture(QByteArray bytes, QString name, std::stop_token stop) {
    const AttachmentResult result =
        co_await m_reader.readPicture(std::move(bytes), std::move(name), stop);
    if (!stop.stop_requested()) deliver(result);
}

void AttachmentIntake::deliver(const AttachmentResult& result) {
    if (result)
        m_attachments.append(*result);
    else
        emit refused(result.error());
}

} // namespace vorq
