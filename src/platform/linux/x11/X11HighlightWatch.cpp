#include "platform/linux/x11/X11HighlightWatch.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

namespace vorq {
namespace {

constexpr std::uint32_t highlightingButton = 1;
// From 2.1 on raw events come through while somebody holds the pointer.
constexpr std::uint16_t requiredMajor = 2;
constexpr std::uint16_t requiredMinor = 1;

} // namespace

X11HighlightWatch::X11HighlightWatch()
    : m_events([this](const xcb_generic_event_t& event) { take(event); }) {
    if (!m_events.connection().isUsable() || !m_requests.isUsable()) return;
    m_activeWindowAtom = m_requests.atom("_NET_ACTIVE_WINDOW");
    selectClaims();
    selectButtons();
    m_events.watchRootProperties();
    noteFront();
}

void X11HighlightWatch::selectClaims() {
    const X11Connection& events = m_events.connection();
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(events.get(), &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0) return;
    const X11Reply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        events.get(),
        xcb_xfixes_query_version(events.get(), XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    if (!version) return;
    m_claimEvent = extension->first_event;
    xcb_xfixes_select_selection_input(events.get(), events.root(), XCB_ATOM_PRIMARY,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    xcb_flush(events.get());
}

void X11HighlightWatch::selectButtons() {
    const X11Connection& events = m_events.connection();
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(events.get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) return;
    const X11Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        events.get(), xcb_input_xi_query_version(events.get(), requiredMajor, requiredMinor),
        nullptr));
    const bool isRecent =
        version &&
        (version->major_version > requiredMajor ||
         (version->major_version == requiredMajor && version->minor_version >= requiredMinor));
    if (!isRecent) return;
    m_inputOpcode = extension->major_opcode;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{.head = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1},
                .mask = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS |
                        XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE};
    xcb_input_xi_select_events(events.get(), events.root(), 1, &selection.head);
    xcb_flush(events.get());
}

void X11HighlightWatch::take(const xcb_generic_event_t& event) {
    const int kind = event.response_type & 0x7f;
    if (kind == XCB_PROPERTY_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.atom == m_activeWindowAtom) noteFront();
    } else if (kind == XCB_GE_GENERIC) {
        takeButton(event);
    } else if (m_claimEvent != 0 && kind == m_claimEvent + XCB_XFIXES_SELECTION_NOTIFY) {
        noteClaim(reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event).owner);
    }
}

void X11HighlightWatch::takeButton(const xcb_generic_event_t& event) {
    const auto& button = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    if (button.extension != m_inputOpcode || button.detail != highlightingButton) return;
    const bool isPress = button.event_type == XCB_INPUT_RAW_BUTTON_PRESS;
    const QPoint at = pointer();
    const auto contents = isPress ? std::nullopt : contentsOf(m_front);
    const std::scoped_lock lock(m_mutex);
    if (isPress)
        m_trace.pressed(at, button.time);
    else
        m_trace.released(at, contents);
}

// Between two windows there is none for a moment.
void X11HighlightWatch::noteFront() {
    const auto windows = m_requests.numbers(m_requests.root(), m_activeWindowAtom);
    if (windows.empty() || windows.front() == 0) return;
    const auto process = m_requests.processOf(windows.front());
    if (!process) return;
    m_front = windows.front();
    const std::scoped_lock lock(m_mutex);
    m_trace.windowCameToFront({.window = m_front, .process = *process});
}

void X11HighlightWatch::noteClaim(Window owner) {
    const auto process = owner != 0 ? m_requests.processOf(owner) : std::nullopt;
    const std::scoped_lock lock(m_mutex);
    m_trace.claimed(process);
}

QPoint X11HighlightWatch::pointer() const {
    if (!m_requests.isUsable()) return {};
    const X11Reply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        m_requests.get(), xcb_query_pointer(m_requests.get(), m_requests.root()), nullptr));
    return reply ? QPoint(reply->root_x, reply->root_y) : QPoint();
}

std::optional<QRect> X11HighlightWatch::contentsOf(Window window) const {
    if (window == 0 || !m_requests.isUsable()) return std::nullopt;
    xcb_connection_t* connection = m_requests.get();
    const auto placeCookie = xcb_translate_coordinates(connection, window, m_requests.root(), 0, 0);
    const auto sizeCookie = xcb_get_geometry(connection, window);
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, placeCookie, nullptr));
    const X11Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, sizeCookie, nullptr));
    if (!place || !size) return std::nullopt;
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

bool X11HighlightWatch::isElsewhere(ProcessId process) const {
    const std::scoped_lock lock(m_mutex);
    return m_trace.isElsewhere(process);
}

bool X11HighlightWatch::isClickedAway(ProcessId process) const {
    const std::scoped_lock lock(m_mutex);
    return m_trace.isClickedAway(process);
}

} // namespace vorq
