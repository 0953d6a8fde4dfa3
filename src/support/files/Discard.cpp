#include "support/files/Discard.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// A link that leads nowhere is there, too.
bool isThere(const QFileInfo& place) {
    return place.exists() || place.isSymLink();
}

bool isFolder(const QFileInfo& place) {
    return place.isDir() && !place.isSymLink();
}

// Qt takes the current folder for the trash where it cannot make one.
bool canHaveTrash() {
    const QDir data(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    const QDir trash(data.filePath(u"Trash"_s));
    if (!data.isAbsolute() || !data.mkpath(u"."_s)) return false;
    // What others may not read must not become readable in the trash.
    ::mkdir(QFile::encodeName(trash.path()).constData(), S_IRWXU);
    return trash.mkpath(u"files"_s) && trash.mkpath(u"info"_s);
}

} // namespace

std::expected<void, QString> removeForGood(const QString& path) {
    const QFileInfo place(path);
    if (path.isEmpty() || !isThere(place)) return {};
    if (isFolder(place)) {
        if (QDir(path).removeRecursively()) return {};
        return std::unexpected(u"Not all of the folder could be removed"_s);
    }
    QFile file(path);
    if (file.remove()) return {};
    return std::unexpected(file.errorString());
}

std::expected<void, QString> discard(const QString& path) {
    const QFileInfo place(path);
    if (path.isEmpty() || !isThere(place)) return {};
    // Somebody else's file behind a link is none of the trash's business.
    if (!place.isSymLink() && canHaveTrash() && QFile::moveToTrash(path)) return {};
    return removeForGood(path);
}

} // namespace vorq
