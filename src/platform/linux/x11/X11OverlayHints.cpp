#include "platform/linux/x11/X11OverlayHints.h"

#include "platform/linux/x11/X11Connection.h"

#include <QGuiApplication>

#include <xcb/shape.h>
#include <xcb/xcb.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::uint32_t allDesktops = 0xffffffff;
// Window managers grant a pager's wish whatever the user did last.
constexpr std::uint32_t askedByPager = 2;

xcb_connection_t* qtConnection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

std::vector<xcb_rectangle_t> rectanglesOf(const std::vector<QRect>& pixels) {
    std::vector<xcb_rectangle_t> rectangles;
    rectangles.reserve(pixels.size());
    for (const QRect& each : pixels)
        rectangles.push_back(
            {static_cast<std::int16_t>(each.x()), static_cast<std::int16_t>(each.y()),
             static_cast<std::uint16_t>(each.width()), static_cast<std::uint16_t>(each.height())});
    return rectangles;
}

} // namespace

X11OverlayHints::X11OverlayHints() : m_connection(qtConnection()) {
    // Names are the same for all connections.
    const X11Connection names;
    if (m_connection == nullptr || !names.isUsable()) return;
    m_root = names.root();
    m_desktopAtom = names.atom("_NET_WM_DESKTOP");
    m_stateAtom = names.atom("_NET_WM_STATE");
    m_activeWindowAtom = names.atom("_NET_ACTIVE_WINDOW");
    m_blurAtom = names.atom("_KDE_NET_WM_BLUR_BEHIND_REGION");
    for (const char* state : {"_NET_WM_STATE_ABOVE", "_NET_WM_STATE_STICKY",
                              "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"})
        m_states.push_back(names.atom(state));
}

PortSupport X11OverlayHints::supported() const {
    if (m_connection != nullptr) return {};
    return std::unexpected(u"Wayland lets no window stand above all others."_s);
}

void X11OverlayHints::prepare(WindowId window) {
    if (m_connection == nullptr) return;
    const auto id = static_cast<xcb_window_t>(window);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, id, m_desktopAtom, XCB_ATOM_CARDINAL,
                        32, 1, &allDesktops);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, id, m_stateAtom, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(m_states.size()), m_states.data());
}

void X11OverlayHints::takeFocus(WindowId window) {
    if (m_connection == nullptr) return;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window);
    message.type = m_activeWindowAtom;
    message.data.data32[0] = askedByPager;
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(m_connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(m_connection);
}

void X11OverlayHints::setShape(WindowId window, const std::vector<QRect>& pixels) {
    cut(XCB_SHAPE_SK_BOUNDING, window, pixels);
}

void X11OverlayHints::setInputShape(WindowId window, const std::vector<QRect>& pixels) {
    cut(XCB_SHAPE_SK_INPUT, window, pixels);
}

void X11OverlayHints::cut(std::uint8_t kind, WindowId window, const std::vector<QRect>& pixels) {
    if (m_connection == nullptr) return;
    const auto id = static_cast<xcb_window_t>(window);
    if (pixels.empty()) {
        xcb_shape_mask(m_connection, XCB_SHAPE_SO_SET, kind, id, 0, 0, XCB_PIXMAP_NONE);
    } else {
        const std::vector<xcb_rectangle_t> rectangles = rectanglesOf(pixels);
        xcb_shape_rectangles(m_connection, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_SORTED, id,
                             0, 0, static_cast<std::uint32_t>(rectangles.size()),
                             rectangles.data());
    }
    xcb_flush(m_connection);
}

void X11OverlayHints::setBlurBehind(WindowId window, const std::vector<QRect>& pixels) {
    if (m_connection == nullptr) return;
    const auto id = static_cast<xcb_window_t>(window);
    if (pixels.empty()) {
        xcb_delete_property(m_connection, id, m_blurAtom);
    } else {
        std::vector<std::uint32_t> numbers;
        numbers.reserve(4 * pixels.size());
        for (const QRect& each : pixels)
            for (const int number : {each.x(), each.y(), each.width(), each.height()})
                numbers.push_back(static_cast<std::uint32_t>(number));
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, id, m_blurAtom, XCB_ATOM_CARDINAL,
                            32, static_cast<std::uint32_t>(numbers.size()), numbers.data());
    }
    xcb_flush(m_connection);
}

} // namespace vorq
