#pragma once

#include "platform/LoginItem.h"

namespace vorq {

class Defaults;

/// Starts the program at login by an entry in the user's autostart folder.
///
/// The user switches it off there, in whatever way the desktop offers: the entry says so, or is
/// gone. It is not switched on again then, and one that the user has edited is left alone.
class XdgLoginItem final : public LoginItem {
  public:
    /// The defaults, which must outlive this object, remember that there was an entry.
    XdgLoginItem(Defaults& defaults, QString configurationFolder, QString executable);

    std::expected<void, QString> registerAtLogin() override;
    /// Also where the user has had systemd start it instead.
    std::expected<void, QString> unregisterAtLogin() override;

  private:
    [[nodiscard]] QString entryPath() const;

    Defaults& m_defaults;
    QString m_configurationFolder;
    QString m_executable;
};

/// A path as it stands in the Exec line of a desktop file.
[[nodiscard]] QString desktopExecWord(const QString& path);

} // namespace vorq
