#pragma once

#include "platform/Installation.h"

namespace vorq {

class AppPaths;

/// The files that an installation consists of, wherever the desktop would find one: beside the
/// running program, in the user's own folders and in those that all users share. What lies under
/// the system's own prefix belongs to its packages and is left to them.
class XdgInstallation final : public Installation {
  public:
    /// The running program, and the desktop's folders for data, such as ~/.local/share, the user's
    /// own first.
    XdgInstallation(const QString& executable, const QStringList& dataFolders,
                    QString systemPrefix = QStringLiteral("/usr"));

    [[nodiscard]] bool isInstalled() const override;
    [[nodiscard]] QStringList files() const override;
    [[nodiscard]] QStringList advice() const override;

    /// The user's own folder for data and those of the environment.
    [[nodiscard]] static QStringList dataFolders(const AppPaths& paths);

  private:
    [[nodiscard]] QStringList prefixes() const;
    [[nodiscard]] bool isOfSystem(const QString& path) const;

    QString m_executable;
    QStringList m_dataFolders;
    QString m_systemPrefix;
};

} // namespace vorq
