#include "shell/settings/AvatarReader.h"

#include "capture/attachments/AttachedFile.h"
#include "platform/documents/DocumentTools.h"
#include "support/async/OnPool.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace vorq {
namespace {

QString say(const char* sentence) {
    return QCoreApplication::translate("AvatarReader", sentence);
}

QString sentenceOn(DocumentFailure failure) {
    switch (failure) {
    case DocumentFailure::TooLarge:
        return say(QT_TRANSLATE_NOOP("AvatarReader",
                                     "This picture has too many pixels. Choose one of at most 128 "
                                     "megapixels."));
    case DocumentFailure::Animated:
        return say(QT_TRANSLATE_NOOP("AvatarReader",
                                     "This picture is animated. Choose one that stands still."));
    case DocumentFailure::TimedOut:
        return say(QT_TRANSLATE_NOOP("AvatarReader", "Reading this picture took too long."));
    case DocumentFailure::Stopped:
        return say(QT_TRANSLATE_NOOP("AvatarReader", "Reading this picture was stopped."));
    case DocumentFailure::NoTool:
        return say(QT_TRANSLATE_NOOP(
            "AvatarReader", "The program that reads pictures of this kind is not installed."));
    case DocumentFailure::NoRoom:
        return say(QT_TRANSLATE_NOOP(
            "AvatarReader", "There is no room for a copy of this picture among the temporary "
                            "files."));
    case DocumentFailure::Protected:
    case DocumentFailure::Unreadable:
        break;
    }
    return say(QT_TRANSLATE_NOOP(
        "AvatarReader", "This file is no picture, or it is damaged. Choose a JPEG, PNG or WebP "
                        "file, for example."));
}

// On a thread of the pool. The JPEG is one of our own making, and small.
std::expected<AvatarReader::Avatar, QString>
readSource(DocumentTools& tools, const DocumentSource& source, const std::stop_token& stop) {
    const auto jpeg = tools.avatarOf(source, stop);
    if (!jpeg) return std::unexpected(sentenceOn(jpeg.error()));
    const QImage image = QImage::fromData(*jpeg, "JPEG");
    if (image.isNull()) return std::unexpected(sentenceOn(DocumentFailure::Unreadable));
    return AvatarReader::Avatar{*jpeg, image};
}

std::expected<AvatarReader::Avatar, QString> readFile(DocumentTools& tools, const QString& path,
                                                      const std::stop_token& stop) {
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return std::unexpected(
            say(QT_TRANSLATE_NOOP("AvatarReader", "This is no file. Choose a picture.")));
    const auto file = AttachedFile::open(path, PromptAttachment::Pipes::Refused);
    if (!file) return std::unexpected(file.error());
    return readSource(tools, {file->openedPath()}, stop);
}

} // namespace

QCoro::Task<std::expected<AvatarReader::Avatar, QString>>
AvatarReader::read(QString path, std::stop_token stop) const {
    auto work = [tools = m_tools, path](const std::stop_token& stopped) {
        return readFile(*tools, path, stopped);
    };
    co_return co_await onPool(std::move(work), std::move(stop));
}

QCoro::Task<std::expected<AvatarReader::Avatar, QString>>
AvatarReader::read(QByteArray bytes, std::stop_token stop) const {
    auto work = [tools = m_tools, bytes](const std::stop_token& stopped) {
        return readSource(*tools, {{}, bytes}, stopped);
    };
    co_return co_await onPool(std::move(work), std::move(stop));
}

QCoro::Task<QImage> AvatarReader::decode(QByteArray stored, std::stop_token stop) const {
    auto work = [tools = m_tools, stored](const std::stop_token& stopped) {
        const auto avatar = readSource(*tools, {{}, stored}, stopped);
        return avatar ? avatar->image : QImage();
    };
    co_return co_await onPool(std::move(work), std::move(stop));
}

} // namespace vorq
