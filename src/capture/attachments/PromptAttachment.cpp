#include "capture/attachments/PromptAttachment.h"

#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <span>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::array<QStringView, 10> imageExtensions = {u"png",  u"jpg", u"jpeg", u"heic", u"heif",
                                                         u"webp", u"tif", u"tiff", u"gif",  u"bmp"};
constexpr std::array<QStringView, 9> officeExtensions = {u"docx",  u"doc", u"pptx", u"ppt", u"rtf",
                                                         u"pages", u"key", u"odt",  u"odp"};
constexpr std::array<QStringView, 12> documentExtensions = {u"pdf",   u"docx", u"doc", u"pptx",
                                                            u"ppt",   u"rtf",  u"txt", u"md",
                                                            u"pages", u"key",  u"odt", u"odp"};

bool holds(std::span<const QStringView> set, QStringView extension) {
    return std::ranges::find(set, extension) != set.end();
}

// Nothing for bytes that are not of the encoding from end to end.
std::optional<QString> decoded(const QByteArray& bytes, QStringDecoder::Encoding encoding) {
    QStringDecoder decoder(encoding);
    QString text = decoder.decode(bytes);
    if (decoder.hasError()) return std::nullopt;
    return text;
}

// A text that was cut by bytes may end in the middle of a character.
void dropCutCharacter(QByteArray& bytes) {
    qsizetype end = bytes.size();
    for (int back = 0; back < 3 && end > 0 && (bytes[end - 1] & 0xC0) == 0x80; ++back)
        --end;
    if (end > 0 && (bytes[end - 1] & 0x80) != 0) bytes.truncate(end - 1);
}

std::optional<QString> textOf(const QByteArray& bytes) {
    if (bytes.size() == PromptAttachment::textByteLimit) {
        QByteArray whole = bytes;
        dropCutCharacter(whole);
        if (auto text = decoded(whole, QStringDecoder::Utf8)) return text;
    } else if (auto text = decoded(bytes, QStringDecoder::Utf8)) {
        return text;
    }
    if (bytes.size() % 2 != 0) return std::nullopt;
    return decoded(bytes, QStringDecoder::Utf16);
}

using Failure = std::unexpected<QString>;

Failure failure(const QString& path, const QString& reason) {
    return Failure(u"%1: %2"_s.arg(path, reason));
}

bool isReadable(const struct stat& status, PromptAttachment::Pipes pipes) {
    return S_ISREG(status.st_mode) ||
           (S_ISFIFO(status.st_mode) && pipes == PromptAttachment::Pipes::Read);
}

// To open a device or a pipe may wait for good, or do something to it.
std::expected<void, QString> open(QFile& file, PromptAttachment::Pipes pipes) {
    const QString path = file.fileName();
    const QByteArray name = QFile::encodeName(path);
    struct stat status{};
    if (::stat(name.constData(), &status) != 0) return failure(path, qt_error_string(errno));
    const auto refused = [&path] {
        return failure(
            path, QCoreApplication::translate("PromptAttachment", "only files can be attached."));
    };
    if (!isReadable(status, pipes)) return refused();
    const int patience = S_ISFIFO(status.st_mode) ? 0 : O_NONBLOCK;
    const int descriptor = ::open(name.constData(), O_RDONLY | O_NOCTTY | O_CLOEXEC | patience);
    if (descriptor < 0) return failure(path, qt_error_string(errno));
    // Something else may have taken its place.
    if (::fstat(descriptor, &status) == 0 && isReadable(status, pipes) &&
        file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return {};
    ::close(descriptor);
    return refused();
}

} // namespace

bool PromptAttachment::isImageExtension(QStringView extension) {
    return holds(imageExtensions, extension);
}

bool PromptAttachment::isOfficeExtension(QStringView extension) {
    return holds(officeExtensions, extension);
}

bool PromptAttachment::isDocumentExtension(QStringView extension) {
    return holds(documentExtensions, extension);
}

QString pathExtension(QStringView fileName) {
    const qsizetype dot = fileName.lastIndexOf(u'.');
    if (dot <= 0) return {};
    return fileName.mid(dot + 1).toString().toLower();
}

std::optional<QString> imageDataURL(const QByteArray& bytes) {
    if (bytes.size() >= PromptAttachment::imageByteLimit) return std::nullopt;
    const QByteArray type = bytes.startsWith("\xFF\xD8") ? "image/jpeg" : "image/png";
    return QString::fromLatin1("data:" + type + ";base64," + bytes.toBase64());
}

std::expected<PromptAttachment, QString> PromptAttachment::load(const QString& path, Pipes pipes) {
    PromptAttachment attachment;
    attachment.fileName = QFileInfo(path).fileName();
    const QString extension = pathExtension(attachment.fileName);
    if (extension == u"pdf" || isOfficeExtension(extension))
        return failure(path,
                       QCoreApplication::translate("PromptAttachment",
                                                   "PDF and office files cannot be attached here. "
                                                   "Attach the text instead."));
    QFile file(path);
    if (const auto opened = open(file, pipes); !opened) return std::unexpected(opened.error());
    const bool isImage = isImageExtension(extension);
    const QByteArray bytes = file.read(isImage ? imageByteLimit : textByteLimit);
    if (file.error() != QFileDevice::NoError) return failure(path, file.errorString());
    if (isImage) {
        attachment.imageDataURL = vorq::imageDataURL(bytes);
        if (attachment.imageDataURL) return attachment;
        return failure(
            path, QCoreApplication::translate(
                      "PromptAttachment", "the image is too large; at most 3.5 MB can be sent."));
    }
    const std::optional<QString> text = textOf(bytes);
    if (!text)
        return failure(path,
                       QCoreApplication::translate("PromptAttachment", "the file is not a text."));
    attachment.textContent = graphemePrefix(*text, textLimit).toString();
    return attachment;
}

QStringList composerDisplayNames(const QList<PromptAttachment>& attachments) {
    const auto noteCount = std::ranges::count_if(attachments, &PromptAttachment::isHubNote);
    QStringList names;
    int note = 0;
    for (const PromptAttachment& attachment : attachments) {
        if (attachment.isDeepenSelection)
            names += u"deepen"_s;
        else if (!attachment.isHubNote())
            names += attachment.fileName;
        else if (noteCount == 1)
            names += u"Notes"_s;
        else
            names += u"Notes %1"_s.arg(++note);
    }
    return names;
}

QString attachmentText(const QList<PromptAttachment>& attachments) {
    QStringList pieces;
    for (const PromptAttachment& attachment : attachments) {
        if (!attachment.textContent) continue;
        const QStringView text = trimmed(*attachment.textContent);
        if (text.isEmpty()) continue;
        // Joined rather than filled in, since a text may hold "%1" itself.
        pieces += u"--- Attached file: "_s + attachment.fileName + u" ---\n"_s + text.toString();
    }
    return pieces.join(u"\n\n"_s);
}

} // namespace vorq
