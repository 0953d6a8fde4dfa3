#include "platform/linux/LinuxTrayHost.h"

#include "platform/linux/x11/X11Reply.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

#include <xcb/xfixes.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString watcherOfItems = u"org.kde.StatusNotifierWatcher"_s;

} // namespace

LinuxTrayHost::LinuxTrayHost(const QDBusConnection& bus)
    : m_bus(bus),
      m_watcher(watcherOfItems, bus, QDBusServiceWatcher::WatchForRegistration),
      m_events([this](const xcb_generic_event_t&) {
          if (isOnXServer()) emit arrived();
      }) {
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayHost::arrived);
    if (!m_requests.isUsable()) return;
    m_selection = m_requests.atom("_NET_SYSTEM_TRAY_S" + QByteArray::number(m_requests.screen()));
    m_events.watchSelectionOwner(m_selection);
}

PortSupport LinuxTrayHost::supported() const {
    if (isOnBus() || isOnXServer()) return {};
    return std::unexpected(u"This desktop has no tray."_s);
}

bool LinuxTrayHost::isOnBus() const {
    const QDBusConnectionInterface* daemon = m_bus.interface();
    return daemon != nullptr && daemon->isServiceRegistered(watcherOfItems).value();
}

bool LinuxTrayHost::isOnXServer() const {
    if (!m_requests.isUsable()) return false;
    const auto asked = xcb_get_selection_owner(m_requests.get(), m_selection);
    const X11Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(m_requests.get(), asked, nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace vorq
