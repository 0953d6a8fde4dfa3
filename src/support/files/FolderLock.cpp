#include "support/files/FolderLock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace vorq {
namespace {

constexpr std::chrono::milliseconds pause{1};

bool isHeldByAnother(int descriptor) {
    return ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR);
}

int openFolder(const QByteArray& path) {
    return ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

// Whether another folder has taken the place of the one that is open.
bool isReplaced(int descriptor, const QByteArray& path) {
    struct stat open{};
    struct stat there{};
    return ::fstat(descriptor, &open) == 0 && ::stat(path.constData(), &there) == 0 &&
           (open.st_dev != there.st_dev || open.st_ino != there.st_ino);
}

} // namespace

std::optional<FolderLock> FolderLock::take(const QString& folder,
                                           std::chrono::milliseconds patience) {
    const QByteArray path = QFile::encodeName(folder);
    const auto end = std::chrono::steady_clock::now() + patience;
    while (true) {
        FolderLock lock(openFolder(path));
        if (lock.m_descriptor < 0) return lock;
        while (isHeldByAnother(lock.m_descriptor)) {
            if (std::chrono::steady_clock::now() >= end) return std::nullopt;
            std::this_thread::sleep_for(pause);
        }
        const bool isOver = std::chrono::steady_clock::now() >= end;
        if (isOver || !isReplaced(lock.m_descriptor, path)) return lock;
    }
}

FolderLock::FolderLock(FolderLock&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FolderLock::~FolderLock() {
    if (m_descriptor >= 0) ::close(m_descriptor);
}

} // namespace vorq
