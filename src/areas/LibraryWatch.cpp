#include "areas/LibraryWatch.h"

#include "support/files/FileNames.h"

#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// The library's own and the one that all applications have theirs in.
constexpr int levelsAround = 2;

bool isSameFolder(const FileStamp& one, const FileStamp& other) {
    return one.device == other.device && one.inode == other.inode;
}

void watchOnly(QFileSystemWatcher& watcher, const QStringList& paths) {
    const QStringList former = watcher.files() + watcher.directories();
    if (!former.isEmpty()) watcher.removePaths(former);
    if (!paths.isEmpty()) watcher.addPaths(paths);
}

} // namespace

LibraryWatch::LibraryWatch(const QString& folder, std::function<void()> stirred)
    : m_folder(folder), m_stirred(std::move(stirred)) {
    QObject::connect(&m_inside, &QFileSystemWatcher::directoryChanged, &m_inside,
                     [this] { look(); });
    QObject::connect(&m_inside, &QFileSystemWatcher::fileChanged, &m_inside, [this] { look(); });
    QObject::connect(&m_around, &QFileSystemWatcher::directoryChanged, &m_around,
                     [this] { handleChangeAround(); });
    arm();
}

void LibraryWatch::look() {
    arm();
    m_stirred();
}

// A folder that is moved away takes the watch along and does not tell.
void LibraryWatch::handleChangeAround() {
    watchOnly(m_around, foldersAround());
    if (!isSameFolder(fileStamp(m_folder), m_watched)) look();
}

// A file that was replaced is another one to the system; one that is edited in place does not show
// in its folder.
void LibraryWatch::arm() {
    m_watched = fileStamp(m_folder);
    QStringList paths;
    if (QFileInfo(m_folder).isDir()) paths += m_folder;
    for (const QString& name : fileNames(m_folder, {}, ".json"_L1))
        paths += m_folder + u'/' + name;
    watchOnly(m_inside, paths);
    watchOnly(m_around, foldersAround());
}

// Those it is in, by its path and by where links lead.
QStringList LibraryWatch::foldersAround() const {
    QStringList folders;
    for (QString folder : {m_folder, QFileInfo(m_folder).canonicalFilePath()}) {
        for (int level = 0; level < levelsAround && !folder.isEmpty(); ++level) {
            folder = QFileInfo(folder).absolutePath();
            if (QFileInfo(folder).isDir() && !folders.contains(folder)) folders += folder;
        }
    }
    return folders;
}

} // namespace vorq
