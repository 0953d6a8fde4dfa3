#include "support/files/LinkTarget.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <climits>
#include <unistd.h>

namespace vorq {

QByteArray linkTarget(const QString& path) {
    constexpr int mostLinks = 40; // as the kernel has it
    const QByteArray start = QFile::encodeName(QFileInfo(path).absoluteFilePath());
    QByteArray target = start;
    for (int followed = 0; followed < mostLinks; ++followed) {
        std::array<char, PATH_MAX> content{};
        const ssize_t size = ::readlink(target.constData(), content.data(), content.size());
        if (size < 0) return target;
        const QByteArray link(content.data(), size);
        target = link.startsWith('/') ? link : folderOf(target) + '/' + link;
    }
    return start;
}

QByteArray folderOf(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.first(slash == 0 ? 1 : slash);
}

} // namespace vorq
