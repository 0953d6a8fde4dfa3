#pragma once

#include <QString>
#include <QStringList>

namespace vorq {

/// Has vorq:// links opened by this program where its installation has not seen to that.
class UrlScheme {
  public:
    /// The first folder of desktop files is the user's own, the others are the system's.
    UrlScheme(QStringList applicationFolders, QString executable);

    /// Writes the user's own entry if the system has none and there is none that works, and takes
    /// away one of ours that would hide the system's. Gives whether something has changed. Failures
    /// are silent.
    bool ensureEntry() const;

    /// Whether the entry at this path is one that ensureEntry() wrote.
    [[nodiscard]] static bool isWrittenAtStart(const QString& path);

    /// Makes it the default for the scheme, by a program of the desktop that is not waited for.
    static void makeDefault();

  private:
    [[nodiscard]] bool isInstalledForAll() const;

    QStringList m_folders;
    QString m_executable;
};

} // namespace vorq
