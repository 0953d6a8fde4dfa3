#include "platform/linux/LinuxDesktopLook.h"

namespace vorq {

LinuxDesktopLook::LinuxDesktopLook(const QDBusConnection& bus) : m_bus(bus), m_portal(bus) {
    connect(&m_portal, &PortalDesktop::changed, this, &LinuxDesktopLook::changed);
    connect(&m_portal, &PortalDesktop::colorSchemeUnknown, this, &LinuxDesktopLook::askGSettings);
}

void LinuxDesktopLook::askGSettings() {
    if (m_settings) return;
    m_settings = std::make_unique<GSettingsDesktop>(m_bus);
    connect(m_settings.get(), &GSettingsDesktop::changed, this, &LinuxDesktopLook::changed);
}

DesktopLook LinuxDesktopLook::look() const {
    DesktopLook look = m_portal.look();
    if (!look.prefersDark && m_settings) look.prefersDark = m_settings->look().prefersDark;
    return look;
}

} // namespace vorq
