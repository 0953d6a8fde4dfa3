#include "platform/linux/desktop/PortalDesktop.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString interface = u"org.freedesktop.portal.Settings"_s;
const QString appearanceArea = u"org.freedesktop.appearance"_s;
const QString colorSchemeKey = u"color-scheme"_s;
const QString interfaceArea = u"org.gnome.desktop.interface"_s;
const QString animationsKey = u"enable-animations"_s;
const QString contrastKey = u"contrast"_s;
const QString textScaleKey = u"text-scaling-factor"_s;
const QString accentKey = u"accent-color"_s;
// Of KDE alone.
const QString selectionArea = u"org.kde.kdeglobals.Colors:Selection"_s;
const QString selectionKey = u"BackgroundNormal"_s;

constexpr uint dark = 1;
constexpr uint light = 2;
constexpr uint moreContrast = 1;

// Older portals wrap a value twice.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

bool isPart(double number) {
    return number >= 0 && number <= 1;
}

// Three numbers; out of their range they say that there is no such colour.
std::optional<LookColor> accentOf(const QVariant& value) {
    if (!value.canConvert<QDBusArgument>()) return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != u"(ddd)") return std::nullopt;
    LookColor color;
    argument.beginStructure();
    argument >> color.red >> color.green >> color.blue;
    argument.endStructure();
    const bool isColor = isPart(color.red) && isPart(color.green) && isPart(color.blue);
    return isColor ? std::optional(color) : std::nullopt;
}

// As "61,174,233", with a fourth number for one that is not opaque.
std::optional<LookColor> selectionOf(const QVariant& value) {
    const QStringList parts = value.toString().split(u',');
    if (parts.size() < 3) return std::nullopt;
    std::array<double, 3> numbers{};
    for (qsizetype i = 0; i < 3; ++i) {
        bool isNumber = false;
        double& number = numbers[static_cast<std::size_t>(i)];
        number = parts[i].trimmed().toInt(&isNumber) / 255.0;
        if (!isNumber || !isPart(number)) return std::nullopt;
    }
    return LookColor{.red = numbers[0], .green = numbers[1], .blue = numbers[2]};
}

} // namespace

PortalDesktop::PortalDesktop(QDBusConnection bus) : m_bus(std::move(bus)) {
    m_bus.connect(portalService, portalPath, interface, u"SettingChanged"_s, this,
                  SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(appearanceArea, colorSchemeKey);
    ask(appearanceArea, contrastKey);
    ask(interfaceArea, animationsKey);
    ask(interfaceArea, textScaleKey);
    ask(appearanceArea, accentKey, Need::Welcome);
    ask(selectionArea, selectionKey, Need::Welcome);
}

void PortalDesktop::ask(const QString& area, const QString& key, Need need) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(portalService, portalPath, interface, u"Read"_s);
    call << area << key;
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, area, key, need] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError()) take(area, key, reply.value().variant());
        if (reply.isError() && need == Need::Asked) emit isIncomplete();
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
        look.wantsHighContrast = plain.toUInt() == moreContrast;
    } else if (area == interfaceArea && key == textScaleKey) {
        look.textScale = plain.toDouble();
    } else if (area == appearanceArea && key == accentKey) {
        look.accent = accentOf(plain);
    } else if (area == selectionArea && key == selectionKey) {
        look.selection = selectionOf(plain);
    }
    if (look == m_look) return;
    m_look = look;
    emit changed();
}

} // namespace vorq
