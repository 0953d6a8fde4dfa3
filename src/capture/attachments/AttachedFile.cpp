#include "capture/attachments/AttachedFile.h"

#include "support/async/BlockFor.h"

#include <QCoreApplication>

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qint64 filePieceSize = 1 << 20;
constexpr std::chrono::milliseconds pipeInterval{20};

bool isReadableKind(const struct stat& status, PromptAttachment::Pipes pipes) {
    return S_ISREG(status.st_mode) ||
           (S_ISFIFO(status.st_mode) && pipes == PromptAttachment::Pipes::Read);
}

std::unexpected<QString> fileRefusal(const QString& path, const QString& reason) {
    return std::unexpected(u"%1: %2"_s.arg(path, reason));
}

// A pipe without a name, as a shell makes it, was made with both ends, and a shell opens no
// standard input that nobody writes. Of any other pipe it is not known.
bool hasHadWriter(int pipe) {
    QByteArray name(PATH_MAX, '\0');
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(pipe);
    const auto length =
        ::readlink(link.constData(), name.data(), static_cast<std::size_t>(name.size()));
    if (length > 0 && name.first(length).startsWith("pipe:")) return true;
    struct stat own{};
    struct stat input{};
    return ::fstat(pipe, &own) == 0 && ::fstat(STDIN_FILENO, &input) == 0 &&
           own.st_dev == input.st_dev && own.st_ino == input.st_ino;
}

} // namespace

// To open a device or a pipe may wait for good, or do something to it.
std::expected<AttachedFile, QString> AttachedFile::open(const QString& path,
                                                        PromptAttachment::Pipes pipes) {
    const QByteArray name = QFile::encodeName(path);
    const auto refused = [&path] {
        return fileRefusal(
            path, QCoreApplication::translate("PromptAttachment", "only files can be attached."));
    };
    struct stat status{};
    if (::stat(name.constData(), &status) != 0) return fileRefusal(path, qt_error_string(errno));
    if (!isReadableKind(status, pipes)) return refused();
    const int descriptor = ::open(name.constData(), O_RDONLY | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return fileRefusal(path, qt_error_string(errno));
    auto file = std::make_unique<QFile>();
    // Something else may have taken its place.
    if (::fstat(descriptor, &status) != 0 || !isReadableKind(status, pipes) ||
        !file->open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                    QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return refused();
    }
    if (status.st_size > sizeLimit)
        return fileRefusal(
            path, QCoreApplication::translate(
                      "PromptAttachment", "the file is too large; at most 1 GB can be attached."));
    return AttachedFile(path, std::move(file), S_ISFIFO(status.st_mode));
}

std::expected<QByteArray, QString> AttachedFile::read(qint64 limit, const std::stop_token& stop) {
    if (m_isPipe) return readPipe(limit, stop);
    m_file->seek(0);
    QByteArray bytes = m_file->read(limit);
    if (m_file->error() != QFileDevice::NoError) return failure(m_file->errorString());
    return bytes;
}

// A pipe without a writer is at its end once there has been one.
std::expected<QByteArray, QString> AttachedFile::readPipe(qint64 limit,
                                                          const std::stop_token& stop) {
    QByteArray bytes;
    bool hasWriter = hasHadWriter(m_file->handle());
    while (bytes.size() < limit && !stop.stop_requested()) {
        QByteArray piece(std::min(filePieceSize, limit - bytes.size()), Qt::Uninitialized);
        const auto count =
            ::read(m_file->handle(), piece.data(), static_cast<std::size_t>(piece.size()));
        if (count > 0) {
            hasWriter = true;
            bytes.append(piece.constData(), count);
        } else if (count == 0 && hasWriter) {
            break;
        } else if (count < 0 && errno == EAGAIN) {
            hasWriter = true;
            blockFor(pipeInterval, stop);
        } else if (count < 0 && errno != EINTR) {
            return failure(qt_error_string(errno));
        } else {
            blockFor(pipeInterval, stop);
        }
    }
    return bytes;
}

QString AttachedFile::openedPath() const {
    return u"/proc/self/fd/%1"_s.arg(m_file->handle());
}

std::unexpected<QString> AttachedFile::failure(const QString& reason) const {
    return fileRefusal(m_path, reason);
}

} // namespace vorq
