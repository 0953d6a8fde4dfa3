#include "platform/linux/desktop/PortalDesktop.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace vorq {
namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceArea = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
const QString interfaceArea = QStringLiteral("org.gnome.desktop.interface");
const QString animationsKey = QStringLiteral("enable-animations");
const QString contrastKey = QStringLiteral("contrast");
const QString textScaleKey = QStringLiteral("text-scaling-factor");

constexpr uint dark = 1;
constexpr uint light = 2;
constexpr uint highContrast = 1;

// Older portals wrap a value twice.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

PortalDesktop::PortalDesktop(QDBusConnection bus) : m_bus(std::move(bus)) {
    m_bus.connect(portalService, portalPath, interface, QStringLiteral("SettingChanged"), this,
                  SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(appearanceArea, colorSchemeKey);
    ask(appearanceArea, contrastKey);
    ask(interfaceArea, animationsKey);
    ask(interfaceArea, textScaleKey);
}

void PortalDesktop::ask(const QString& area, const QString& key) {
    QDBusMessage call = QDBusMessage::createMethodCall(portalService, portalPath, interface,
                                                       QStringLiteral("Read"));
    call << area << key;
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, area, key] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError()) take(area, key, reply.value().variant());
        if (reply.isError()) emit isIncomplete();
        watcher->deleteLater();
    });
}

void PortalDesktop::settingChanged(const QString& area, const QString& key,
                                   const QDBusVariant& value) {
    take(area, key, value.variant());
}

void PortalDesktop::take(const QString& area, const QString& key, const QVariant& value) {
    DesktopLook look = m_look;
    const QVariant plain = unwrapped(value);
    if (area == appearanceArea && key == colorSchemeKey) {
        const uint scheme = plain.toUInt();
        look.prefersDark =
            scheme == dark || scheme == light ? std::optional(scheme == dark) : std::nullopt;
    } else if (area == interfaceArea && key == animationsKey) {
        look.allowsAnimations = plain.toBool();
    } else if (area == appearanceArea && key == contrastKey) {
        look.wantsHighContrast = plain.toUInt() == highContrast;
    } else if (area == interfaceArea && key == textScaleKey) {
        look.textScale = plain.toDouble();
    }
    if (look == m_look) return;
    m_look = look;
    emit changed();
}

} // namespace vorq
