#include "support/FileStamp.h"

#include <QFile>

#include <sys/stat.h>

namespace vorq {

FileStamp fileStamp(const QString& path) {
    constexpr std::int64_t second = 1'000'000'000;
    struct stat status{};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) return {};
    return {status.st_dev, status.st_ino, status.st_size,
            status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
}

} // namespace vorq
