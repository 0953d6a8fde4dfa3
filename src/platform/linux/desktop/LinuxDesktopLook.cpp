#include "platform/linux/desktop/LinuxDesktopLook.h"

namespace vorq {

LinuxDesktopLook::LinuxDesktopLook(const QDBusConnection& bus) : m_bus(bus), m_portal(bus) {
    connect(&m_portal, &PortalDesktop::changed, this, &LinuxDesktopLook::changed);
    connect(&m_portal, &PortalDesktop::isIncomplete, this, &LinuxDesktopLook::askGSettings);
}

void LinuxDesktopLook::askGSettings() {
    if (m_settings) return;
    m_settings = std::make_unique<GSettingsDesktop>(m_bus);
    connect(m_settings.get(), &GSettingsDesktop::changed, this, &LinuxDesktopLook::changed);
}

DesktopLook LinuxDesktopLook::look() const {
    DesktopLook look = m_portal.look();
    if (!m_settings) return look;
    const DesktopLook& stored = m_settings->look();
    if (!look.prefersDark) look.prefersDark = stored.prefersDark;
    if (!look.allowsAnimations) look.allowsAnimations = stored.allowsAnimations;
    if (!look.wantsHighContrast) look.wantsHighContrast = stored.wantsHighContrast;
    if (!look.textScale) look.textScale = stored.textScale;
    if (!look.selection) look.selection = stored.selection;
    return look;
}

} // namespace vorq
