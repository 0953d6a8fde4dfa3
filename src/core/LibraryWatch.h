#pragma once

#include <QFileSystemWatcher>
#include <QString>

#include <functional>

namespace vorq {

/// Tells when something may have changed in the folder of the library, by whomever. Main thread
/// only.
class LibraryWatch {
  public:
    /// The folder should be there.
    LibraryWatch(const QString& folder, std::function<void()> stirred);

  private:
    void arm();

    QString m_folder;
    QFileSystemWatcher m_watcher;
};

} // namespace vorq
