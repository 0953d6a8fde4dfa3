#include "shell/panel/AttachmentIntake.h"

#include "shell/panel/ClipLoader.h"
#include "support/async/OnPool.h"

#include <QBuffer>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QMimeData>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString pastedPicture = u"Pasted image.png"_s;
const QString droppedPicture = u"Dropped image.png"_s;

// Looks at its first bytes alone.
bool isPicture(QByteArray bytes) {
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::ReadOnly) && QImageReader(&buffer).canRead();
}

// Some file managers tell copied files in a form of their own alone: a verb, then an address a
// line.
QList<QUrl> urlsIn(const QMimeData& data) {
    QList<QUrl> urls = data.urls();
    if (!urls.isEmpty()) return urls;
    const QList<QByteArray> lines = data.data(u"x-special/gnome-copied-files"_s).split('\n');
    for (const QByteArray& line : lines.mid(1))
        if (!line.trimmed().isEmpty()) urls += QUrl::fromEncoded(line.trimmed());
    return urls;
}

PromptAttachment known(const QString& fileName) {
    PromptAttachment attachment;
    attachment.fileName = fileName;
    return attachment;
}

// The clip names the file already, and what is left begins its line.
QString withoutName(const QString& sentence, const QString& path) {
    for (const QString& name : {path, QFileInfo(path).fileName()}) {
        const QString start = name + u": "_s;
        if (!sentence.startsWith(start) || sentence.size() == start.size()) continue;
        return sentence.at(start.size()).toUpper() + sentence.mid(start.size() + 1);
    }
    return sentence;
}

QCoro::Task<AttachmentResult> withShortReason(QCoro::Task<AttachmentResult> reading, QString path) {
    const AttachmentResult result = co_await std::move(reading);
    if (result) co_return *result;
    co_return std::unexpected(withoutName(result.error(), path));
}

// Encoded without compression, since the reader encodes it anew.
QCoro::Task<AttachmentResult> readImage(AttachmentReader& reader, QImage image, QString name,
                                        std::stop_token stop) {
    constexpr int uncompressed = 100;
    const QByteArray bytes = co_await onPool(
        [image = std::move(image)] {
            QByteArray encoded;
            QBuffer buffer(&encoded);
            if (buffer.open(QIODevice::WriteOnly)) image.save(&buffer, "PNG", uncompressed);
            return encoded;
        },
        stop);
    if (stop.stop_requested()) co_return std::unexpected(QString());
    const AttachmentResult result =
        co_await withShortReason(reader.readPicture(bytes, name, stop), name);
    co_return result;
}

} // namespace

QString AttachmentIntake::pictureFormat(const QStringList& offered) {
    for (const char* format : {"image/png", "image/jpeg", "image/webp", "image/gif", "image/bmp",
                               "image/tiff", "image/heic"})
        if (offered.contains(QLatin1StringView(format))) return QString::fromLatin1(format);
    return {};
}

void AttachmentIntake::attachFiles(const QList<QUrl>& files) {
    emit chosen();
    for (const QUrl& file : files) {
        if (file.isLocalFile())
            attachFile(file.toLocalFile());
        else
            emit refused(tr("%1: only files can be attached.").arg(file.toDisplayString()));
    }
}

void AttachmentIntake::attachFile(const QString& path) {
    // A folder's address may end in a slash.
    const QFileInfo file(path.size() > 1 && path.endsWith(u'/') ? path.chopped(1) : path);
    m_clips.load(known(file.fileName()), [&reader = m_reader, path](std::stop_token stop) {
        return withShortReason(reader.read(path, std::move(stop)), path);
    });
}

bool AttachmentIntake::attachPicture(const QByteArray& bytes) {
    if (!isPicture(bytes)) return false;
    emit chosen();
    attachPicture(bytes, droppedPicture);
    return true;
}

bool AttachmentIntake::attachFromClipboard() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data) return false;
    QList<QUrl> files = urlsIn(*data);
    files.removeIf([](const QUrl& url) { return !url.isLocalFile(); });
    if (!files.isEmpty()) {
        attachFiles(files);
        return true;
    }
    // A word processor offers a picture of its text too; the text is what is meant. A browser
    // offers the address of a picture that it copies.
    if (data->hasFormat(u"text/plain"_s)) return false;
    const QString format = pictureFormat(data->formats());
    if (format.isEmpty() && !data->hasImage()) return false;
    const QByteArray encoded = format.isEmpty() ? QByteArray() : data->data(format);
    if (isPicture(encoded))
        attachPicture(encoded, pastedPicture);
    else
        attachImage(data->imageData().value<QImage>(), pastedPicture);
    return true;
}

void AttachmentIntake::attachPicture(const QByteArray& bytes, const QString& name) {
    m_clips.load(known(name), [&reader = m_reader, bytes, name](std::stop_token stop) {
        return withShortReason(reader.readPicture(bytes, name, std::move(stop)), name);
    });
}

void AttachmentIntake::attachImage(const QImage& image, const QString& name) {
    m_clips.load(known(name), [&reader = m_reader, image, name](std::stop_token stop) {
        return readImage(reader, image, name, std::move(stop));
    });
}

} // namespace vorq
