#include "support/files/DurableFolder.h"

#include "support/files/LinkTarget.h"
#include "support/files/SystemError.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vorq {
namespace {

constexpr mode_t folderMode = 0777; // less what the user's mask takes

bool isFolder(const QByteArray& path) {
    struct stat status{};
    return ::stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

// An error number; 0 if the folder is there.
int makeFolder(const QByteArray& path) {
    if (isFolder(path)) return 0;
    const QByteArray parent = folderOf(path);
    if (parent != path && !isFolder(parent))
        if (const int error = makeFolder(parent); error != 0) return error;
    if (::mkdir(path.constData(), folderMode) == 0) {
        flushFolder(parent);
        return 0;
    }
    const int error = errno;
    if (isFolder(path)) return 0; // another program was faster
    return error == EEXIST ? ENOTDIR : error;
}

} // namespace

std::expected<void, QString> ensureFolder(const QString& path) {
    const int error = makeFolder(QFile::encodeName(path));
    if (error == 0) return {};
    return std::unexpected(systemError(error));
}

void flushFolder(const QByteArray& path) {
    const int descriptor = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

} // namespace vorq
