#include "platform/linux/x11/pixels/X11ScreenCapture.h"

#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/pixels/X11WindowPixels.h"

#include <xcb/xcb.h>

#include <algorithm>
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

// Window managers that show pictures of minimised windows, or of other workspaces, keep those
// mapped.
class Visibility {
  public:
    explicit Visibility(const X11Connection& x11) : m_x11(x11) {
        const auto current = x11.numbers(x11.root(), x11.atom("_NET_CURRENT_DESKTOP"));
        if (!current.empty()) m_workspace = current.front();
    }

    [[nodiscard]] bool holds(X11Connection::Window window) const {
        const auto states = m_x11.numbers(window, m_state);
        if (std::ranges::find(states, m_hidden) != states.end()) return false;
        const auto workspace = m_x11.numbers(window, m_ofWorkspace);
        return !m_workspace || workspace.empty() || workspace.front() == everyWorkspace ||
               workspace.front() == *m_workspace;
    }

  private:
    static constexpr std::uint32_t everyWorkspace = 0xffffffff;

    const X11Connection& m_x11;
    X11Connection::Atom m_state = m_x11.atom("_NET_WM_STATE");
    X11Connection::Atom m_hidden = m_x11.atom("_NET_WM_STATE_HIDDEN");
    X11Connection::Atom m_ofWorkspace = m_x11.atom("_NET_WM_DESKTOP");
    std::optional<std::uint32_t> m_workspace;
};

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
    const Visibility visibility(*m_x11);
    std::vector<CapturableWindow> windows;
    for (const WindowQuestions& asked : questions) {
        const auto pixels = placeOf(connection, asked);
        if (!pixels || stop.stop_requested() || !visibility.holds(asked.window)) continue;
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
