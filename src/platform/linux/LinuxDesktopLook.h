#pragma once

#include "platform/linux/GSettingsDesktop.h"
#include "platform/linux/PortalDesktop.h"

#include <memory>

namespace vorq {

/// What the desktop wants programs to look like: by its settings portal, or where none tells the
/// colour scheme, by its GSettings. Main thread only; nothing waits.
class LinuxDesktopLook final : public QObject {
    Q_OBJECT

  public:
    explicit LinuxDesktopLook(const QDBusConnection& bus = QDBusConnection::sessionBus());

    [[nodiscard]] DesktopLook look() const;

  signals:
    void changed();

  private:
    void askGSettings();

    QDBusConnection m_bus;
    PortalDesktop m_portal;
    std::unique_ptr<GSettingsDesktop> m_settings; // null while the portal may still answer
};

} // namespace vorq
