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

// Some file managers tell copied files in a form of their own alone.
QList<QUrl> urlsIn(const QMimeData& data) {
    QList<QUrl> urls = data.urls();
    if (!urls.isEmpty()) return urls;
    return PasteReader::urlsOfFileManager(data.data(u"x-special/gnome-copied-files"_s));
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

QString notHandedOver() {
    return AttachmentIntake::tr("The program that it was copied in does not hand it over.");
}

QCoro::Task<AttachmentResult> readPasted(PasteReader pastes, AttachmentReader& reader,
                                         QString format, QString name, std::stop_token stop) {
    const std::optional<QByteArray> bytes = co_await pastes.bytes(format, stop);
    if (!bytes || bytes->isEmpty() || stop.stop_requested())
        co_return std::unexpected(notHandedOver());
    const AttachmentResult result =
        co_await withShortReason(reader.readPicture(*bytes, name, stop), name);
    co_return result;
}

// Encoded without compression, since the reader encodes it anew.
QCoro::Task<AttachmentResult> readImage(AttachmentReader& reader, QImage image, QString name,
                                        std::stop_token stop) {
    if (image.isNull()) co_return std::unexpected(notHandedOver());
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
    if (!m_pastes) return attachFromToolkit();
    // What is pasted twice is wanted twice.
    if (++m_wantedPastes == 1)
        m_pasting.restart([this, pastes = *m_pastes](std::stop_token stop) {
            return paste(this, pastes, std::move(stop));
        });
    return true;
}

QCoro::Task<> AttachmentIntake::paste(AttachmentIntake* self, PasteReader pastes,
                                      std::stop_token stop) {
    std::optional<PasteReader::Offer> offer;
    do {
        offer = co_await pastes.offer(stop);
        if (stop.stop_requested()) co_return;
        if (offer) self->attachOffer(pastes, *offer);
        self->m_wantedPastes = offer ? self->m_wantedPastes - 1 : 0;
    } while (self->m_wantedPastes > 0);
    if (!offer) emit self->refused(notHandedOver());
    emit self->pasteSettled(offer.has_value());
}

void AttachmentIntake::attachOffer(const PasteReader& pastes, const PasteReader::Offer& offer) {
    if (!offer.files.isEmpty()) return attachFiles(offer.files);
    if (offer.pictureFormat.isEmpty()) return emit textPasted();
    emit chosen();
    m_clips.load(known(pastedPicture),
                 [pastes, &reader = m_reader, format = offer.pictureFormat](std::stop_token stop) {
                     return readPasted(pastes, reader, format, pastedPicture, std::move(stop));
                 });
}

bool AttachmentIntake::attachFromToolkit() {
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
    emit chosen();
    if (format.isEmpty())
        attachImage(data->imageData().value<QImage>(), pastedPicture);
    else
        attachPicture(data->data(format), pastedPicture);
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
