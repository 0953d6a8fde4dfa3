#pragma once

#include "platform/Installation.h"

namespace vorq {

/// The files that an installation consists of, wherever the desktop would find them: beside the
/// running program, in the user's own folders and in those that all users share. What lies under
/// the system's own prefix, /usr, belongs to its packages and is left to them.
class XdgInstallation final : public Installation {
  public:
    /// The folder of the running program, and the desktop's folders for data, such as
    /// ~/.local/share, the user's own first.
    XdgInstallation(QString executableFolder, QStringList dataFolders);

    [[nodiscard]] QStringList files() const override;
    [[nodiscard]] QString advice() const override;

    /// The folders for data as the environment names them.
    [[nodiscard]] static QStringList standardDataFolders();

  private:
    [[nodiscard]] QStringList dataFolders() const;

    QString m_executableFolder;
    QStringList m_dataFolders;
};

} // namespace vorq
