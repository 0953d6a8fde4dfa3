#include "support/DurableFile.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vorq {
namespace {

constexpr char temporaryPrefix[] = ".vorq-save-";
constexpr qsizetype temporaryPrefixSize = sizeof temporaryPrefix - 1;
constexpr qsizetype temporarySuffixSize = 6;
constexpr std::time_t leftoverAge = 60; // seconds

QByteArray folderOf(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.first(slash == 0 ? 1 : slash);
}

// Where the links at the path lead, whether a file is there or not.
QByteArray targetOf(const QByteArray& path) {
    constexpr int mostLinks = 40; // as the kernel has it
    QByteArray target = path;
    for (int followed = 0; followed < mostLinks; ++followed) {
        std::array<char, PATH_MAX> content{};
        const ssize_t size = ::readlink(target.constData(), content.data(), content.size());
        if (size < 0) return target;
        const QByteArray link(content.data(), size);
        target = link.startsWith('/') ? link : folderOf(target) + '/' + link;
    }
    return path;
}

QByteArray targetOf(const QString& path) {
    return targetOf(QFile::encodeName(QFileInfo(path).absoluteFilePath()));
}

bool writeAll(int file, QByteArrayView content) {
    while (!content.isEmpty()) {
        const ssize_t written =
            ::write(file, content.data(), static_cast<std::size_t>(content.size()));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        content = content.sliced(written);
    }
    return true;
}

// Makes the new name of the file as lasting as its content.
void flushFolder(const QByteArray& folder) {
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

bool hasTemporaryName(QByteArrayView name) {
    return name.startsWith(temporaryPrefix) &&
           name.size() == temporaryPrefixSize + temporarySuffixSize;
}

// Ours, old, and locked by nobody.
bool isLeftover(int file) {
    struct stat status{};
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
           status.st_mtime < std::time(nullptr) - leftoverAge &&
           ::flock(file, LOCK_EX | LOCK_NB) == 0;
}

} // namespace

bool replaceFile(const QString& path, QByteArrayView content) {
    return replaceFile(path, [content](const auto& put) { put(content); });
}

bool replaceFile(const QString& path, const FileContent& content) {
    const QByteArray target = targetOf(path);
    const QByteArray folder = folderOf(target);
    QByteArray temporary = folder + '/' + temporaryPrefix + QByteArray(temporarySuffixSize, 'X');
    const int file = ::mkostemp(temporary.data(), O_CLOEXEC); // of mode 0600
    if (file < 0) return false;
    ::flock(file, LOCK_EX | LOCK_NB); // tells removeLeftovers() that we live
    bool isWritten = true;
    content([&isWritten, file](QByteArrayView piece) {
        isWritten = isWritten && writeAll(file, piece);
    });
    isWritten = isWritten && ::fsync(file) == 0;
    const bool isClosed = ::close(file) == 0;
    if (!isWritten || !isClosed || std::rename(temporary.constData(), target.constData()) != 0) {
        ::unlink(temporary.constData());
        return false;
    }
    flushFolder(folder);
    return true;
}

void removeLeftovers(const QString& path) {
    DIR* folder = ::opendir(folderOf(targetOf(path)).constData());
    if (folder == nullptr) return;
    const int descriptor = ::dirfd(folder);
    while (const dirent* entry = ::readdir(folder)) {
        if (!hasTemporaryName(entry->d_name)) continue;
        const int file =
            ::openat(descriptor, entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (file < 0) continue;
        if (isLeftover(file)) ::unlinkat(descriptor, entry->d_name, 0);
        ::close(file);
    }
    ::closedir(folder);
}

} // namespace vorq
