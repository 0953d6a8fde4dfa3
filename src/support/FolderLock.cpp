#include "support/FolderLock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace vorq {
namespace {

constexpr std::chrono::milliseconds pause{1};

bool isHeldByAnother(int descriptor) {
    return ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR);
}

} // namespace

std::optional<FolderLock> FolderLock::take(const QString& folder,
                                           std::chrono::milliseconds patience) {
    FolderLock lock(
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (lock.m_descriptor < 0) return lock;
    const auto end = std::chrono::steady_clock::now() + patience;
    while (isHeldByAnother(lock.m_descriptor)) {
        if (std::chrono::steady_clock::now() >= end) return std::nullopt;
        std::this_thread::sleep_for(pause);
    }
    return lock;
}

FolderLock::FolderLock(FolderLock&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FolderLock::~FolderLock() {
    if (m_descriptor >= 0) ::close(m_descriptor);
}

} // namespace vorq
