#include "support/files/FileStamp.h"

#include <QFile>

#include <sys/stat.h>

namespace vorq {

namespace {

FileStamp stampOf(const struct stat& status) {
    constexpr std::int64_t second = 1'000'000'000;
    return {status.st_dev, status.st_ino, status.st_size,
            status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
}

} // namespace

FileStamp fileStamp(const QString& path) {
    struct stat status{};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) return {};
    return stampOf(status);
}

FileStamp fileStamp(int file) {
    struct stat status{};
    return ::fstat(file, &status) == 0 ? stampOf(status) : FileStamp();
}

} // namespace vorq
