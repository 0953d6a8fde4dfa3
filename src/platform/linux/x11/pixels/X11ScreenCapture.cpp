#include "platform/linux/x11/pixels/X11ScreenCapture.h"

#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/pixels/X11WindowPixels.h"

#include <xcb/xcb.h>

#include <ranges>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

std::unexpected<QString> noServer() {
    return std::unexpected(u"No X server answers."_s);
}

// What has been asked of a window.
struct WindowQuestions {
    X11Connection::Window window = 0;
    xcb_get_window_attributes_cookie_t state{};
    xcb_get_geometry_cookie_t size{};
    xcb_translate_coordinates_cookie_t place{};
};

// Nothing for a window that is not shown.
std::optional<QRect> placeOf(xcb_connection_t* connection, const WindowQuestions& asked) {
    const X11Reply<xcb_get_window_attributes_reply_t> state(
        xcb_get_window_attributes_reply(connection, asked.state, nullptr));
    const X11Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, asked.size, nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, asked.place, nullptr));
    if (!state || !size || !place || state->map_state != XCB_MAP_STATE_VIEWABLE)
        return std::nullopt;
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

} // namespace

void X11ScreenCapture::setScreens(std::vector<PixelScreen> screens) {
    const std::scoped_lock lock(m_mutex);
    m_screens = std::move(screens);
}

bool X11ScreenCapture::isConnected() {
    if (!m_x11 || !m_x11->isUsable()) m_x11 = std::make_unique<X11Connection>();
    return m_x11->isUsable();
}

std::expected<std::vector<CapturableWindow>, QString>
X11ScreenCapture::windowsOnScreen(std::stop_token stop) {
    if (!isConnected()) return noServer();
    xcb_connection_t* connection = m_x11->get();
    const auto all = m_x11->numbers(m_x11->root(), m_x11->atom("_NET_CLIENT_LIST_STACKING"));
    std::vector<WindowQuestions> questions;
    questions.reserve(all.size());
    for (const X11Connection::Window window : all | std::views::reverse)
        questions.push_back(
            {.window = window,
             .state = xcb_get_window_attributes(connection, window),
             .size = xcb_get_geometry(connection, window),
             .place = xcb_translate_coordinates(connection, window, m_x11->root(), 0, 0)});
    const std::vector<PixelScreen> screens = [this] {
        const std::scoped_lock lock(m_mutex);
        return m_screens;
    }();
    std::vector<CapturableWindow> windows;
    for (const WindowQuestions& asked : questions) {
        const auto pixels = placeOf(connection, asked);
        if (!pixels || stop.stop_requested()) continue;
        const auto process = m_x11->processOf(asked.window);
        if (!process) continue;
        windows.push_back({.window = asked.window,
                           .process = *process,
                           .frame = pointsOf(QRectF(*pixels), screens)});
    }
    return windows;
}

std::expected<WindowPicture, QString> X11ScreenCapture::pictureOf(WindowId window,
                                                                  std::stop_token stop) {
    if (!isConnected()) return noServer();
    return X11WindowPixels(*m_x11).read(static_cast<X11Connection::Window>(window), stop);
}

} // namespace vorq
