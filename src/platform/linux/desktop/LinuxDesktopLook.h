#pragma once

#include "platform/linux/desktop/GSettingsDesktop.h"
#include "platform/linux/desktop/PortalDesktop.h"

#include <memory>

namespace vorq {

/// What the desktop wants programs to look like: by its settings portal, and what that does not
/// tell, by its GSettings. Main thread only; nothing waits.
class LinuxDesktopLook final : public DesktopAppearance {
  public:
    explicit LinuxDesktopLook(const QDBusConnection& bus = QDBusConnection::sessionBus());

    [[nodiscard]] DesktopLook look() const override;

  private:
    void askGSettings();

    QDBusConnection m_bus;
    PortalDesktop m_portal;
    std::unique_ptr<GSettingsDesktop> m_settings; // null while the portal tells everything
};

} // namespace vorq
