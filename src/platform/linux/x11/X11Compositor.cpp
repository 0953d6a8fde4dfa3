#include "platform/linux/x11/X11Compositor.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <span>

using namespace Qt::StringLiterals;

namespace vorq {

X11Compositor::X11Compositor(QObject* parent)
    : Compositor(parent), m_events([this](const xcb_generic_event_t& event) {
          const bool isProperty = (event.response_type & 0x7f) == XCB_PROPERTY_NOTIFY;
          const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
          if (!isProperty || change.atom == m_blurAtom) refresh();
      }) {
    if (m_requests.isUsable()) {
        m_selection = m_requests.atom("_NET_WM_CM_S" + QByteArray::number(m_requests.screen()));
        m_blurAtom = m_requests.atom("_KDE_NET_WM_BLUR_BEHIND_REGION");
        m_events.watchSelectionOwner(m_selection);
        // The one that blurs announces that after it has taken over.
        m_events.watchRootProperties();
    }
    m_translucency = read();
}

PortSupport X11Compositor::supported() const {
    if (m_requests.isUsable()) return {};
    return std::unexpected(u"Wayland does not say what it blurs."_s);
}

void X11Compositor::refresh() {
    const Translucency now = read();
    if (std::exchange(m_translucency, now) != now) emit changed();
}

Translucency X11Compositor::read() const {
    if (!m_requests.isUsable()) return Translucency::Plain;
    xcb_connection_t* connection = m_requests.get();
    const auto askedOwner = xcb_get_selection_owner(connection, m_selection);
    const auto askedNames = xcb_list_properties(connection, m_requests.root());
    const X11Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(connection, askedOwner, nullptr));
    const X11Reply<xcb_list_properties_reply_t> names(
        xcb_list_properties_reply(connection, askedNames, nullptr));
    if (!owner || owner->owner == XCB_WINDOW_NONE) return Translucency::None;
    if (!names) return Translucency::Plain;
    const std::span announced(xcb_list_properties_atoms(names.get()), names->atoms_len);
    const bool blurs = std::ranges::find(announced, m_blurAtom) != announced.end();
    return blurs ? Translucency::Blurred : Translucency::Plain;
}

} // namespace vorq
