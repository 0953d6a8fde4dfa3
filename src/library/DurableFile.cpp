#include "library/DurableFile.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace vorq {
namespace {

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

} // namespace

bool replaceFile(const QString& path, QByteArrayView content) {
    const QByteArray target = QFile::encodeName(path);
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    QByteArray temporary = target + ".XXXXXX";
    const int file = ::mkostemp(temporary.data(), O_CLOEXEC); // of mode 0600
    if (file < 0) return false;
    const bool isWritten = writeAll(file, content) && ::fsync(file) == 0;
    const bool isClosed = ::close(file) == 0;
    if (!isWritten || !isClosed || std::rename(temporary.constData(), target.constData()) != 0) {
        ::unlink(temporary.constData());
        return false;
    }
    flushFolder(folder);
    return true;
}

} // namespace vorq
