#pragma once

#include "platform/linux/x11/X11Events.h"
#include "platform/tray/TrayHost.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>

namespace vorq {

/// Trays of both kinds: those that hear of items by the session bus, and those of the X server that
/// take in their windows.
class LinuxTrayHost final : public TrayHost {
  public:
    explicit LinuxTrayHost(const QDBusConnection& bus);

    [[nodiscard]] PortSupport supported() const override;

  private:
    [[nodiscard]] bool isOnBus() const;
    [[nodiscard]] bool isOnXServer() const;

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    X11Connection m_requests;
    X11Events m_events;
    X11Connection::Atom m_selection = 0; // whose owner is the tray
};

} // namespace vorq
