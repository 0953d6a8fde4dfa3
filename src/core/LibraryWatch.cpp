#include "core/LibraryWatch.h"

#include "support/FileNames.h"

#include <utility>

namespace vorq {

LibraryWatch::LibraryWatch(const QString& folder, std::function<void()> stirred)
    : m_folder(folder) {
    const auto look = [this, stirred = std::move(stirred)] {
        arm();
        stirred();
    };
    QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_watcher, look);
    QObject::connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_watcher, look);
    arm();
}

// A file that was replaced is another one to the system; one that is edited in place does not show
// in its folder.
void LibraryWatch::arm() {
    const QStringList former = m_watcher.files();
    if (!former.isEmpty()) m_watcher.removePaths(former);
    QStringList paths;
    if (m_watcher.directories().isEmpty()) paths += m_folder;
    for (const QString& name : fileNames(m_folder, {}, QLatin1StringView(".json")))
        paths += m_folder + u'/' + name;
    if (!paths.isEmpty()) m_watcher.addPaths(paths);
}

} // namespace vorq
