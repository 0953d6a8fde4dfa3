#pragma once

#include "support/files/FileStamp.h"

#include <QFileSystemWatcher>
#include <QString>

#include <functional>

namespace vorq {

/// Tells when something may have changed in the folder of the library, by whomever, and stays with
/// whichever folder is at the path. Main thread only.
class LibraryWatch {
  public:
    /// The folder may be missing now or at times; what it is in should be there.
    LibraryWatch(const QString& folder, std::function<void()> stirred);

  private:
    void look();
    void handleChangeAround();
    void arm();
    [[nodiscard]] QStringList foldersAround() const;

    QString m_folder;
    FileStamp m_watched; // of the folder that is watched
    std::function<void()> m_stirred;
    QFileSystemWatcher m_inside;
    QFileSystemWatcher m_around;
};

} // namespace vorq
