#include "platform/linux/x11/X11WindowPlace.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>

#include <ranges>

namespace vorq {

std::optional<X11Connection::Window> X11WindowPlace::windowOf(std::int32_t process) const {
    const auto isOfProcess = [&](X11Connection::Window window) {
        return m_x11.processOf(window) == process;
    };
    const auto active = m_x11.numbers(m_x11.root(), m_x11.atom("_NET_ACTIVE_WINDOW"));
    if (!active.empty() && isOfProcess(active.front())) return active.front();
    const auto windows = m_x11.numbers(m_x11.root(), m_x11.atom("_NET_CLIENT_LIST_STACKING"));
    for (const X11Connection::Window window : windows | std::views::reverse)
        if (isOfProcess(window)) return window;
    return std::nullopt;
}

std::optional<QRect> X11WindowPlace::contentsOf(std::int32_t process) const {
    const auto window = windowOf(process);
    if (!window || !m_x11.isUsable()) return std::nullopt;
    const X11Reply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        m_x11.get(), xcb_translate_coordinates(m_x11.get(), *window, m_x11.root(), 0, 0), nullptr));
    const X11Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(m_x11.get(), xcb_get_geometry(m_x11.get(), *window), nullptr));
    if (!place || !size) return std::nullopt;
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

} // namespace vorq
