#include "platform/linux/x11/X11Screens.h"

#include "platform/linux/desktop/SessionKind.h"
#include "platform/linux/x11/X11Reply.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <xcb/xcb.h>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::uint32_t strutLength = 12;

// Qt keeps the corner of a screen in pixels and scales its size.
QRect pixelsOf(const QScreen& screen) {
    const QRect points = screen.geometry();
    const double scale = screen.devicePixelRatio();
    return {points.topLeft(), QSize(static_cast<int>(std::lround(points.width() * scale)),
                                    static_cast<int>(std::lround(points.height() * scale)))};
}

QRectF pointsOf(const QRect& pixels, const QScreen& screen) {
    const QPointF corner = screen.geometry().topLeft();
    const double scale = screen.devicePixelRatio();
    return {corner + (pixels.topLeft() - corner) / scale, QSizeF(pixels.size()) / scale};
}

std::vector<std::uint32_t> numbersOf(const xcb_get_property_reply_t* reply) {
    if (reply == nullptr || reply->format != 32) return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
    return {first, first + xcb_get_property_value_length(reply) / 4};
}

} // namespace

X11Screens::X11Screens(QObject* parent)
    : Screens(parent), m_events([this](const xcb_generic_event_t& event) {
          if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) return;
          const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
          if (std::ranges::find(m_watched, change.atom) != m_watched.end()) refreshSoon();
      }) {
    for (const char* name : {"_NET_WORKAREA", "_NET_CLIENT_LIST", "_NET_CURRENT_DESKTOP"})
        m_watched.push_back(m_requests.atom(name));
    m_events.watchRootProperties();
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        watch(screen);
        refreshSoon();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &X11Screens::refreshSoon);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &X11Screens::refreshSoon);
    for (QScreen* screen : QGuiApplication::screens())
        watch(screen);
    refresh();
}

X11Screens::~X11Screens() = default;

void X11Screens::watch(QScreen* screen) {
    connect(screen, &QScreen::geometryChanged, this, &X11Screens::refreshSoon);
    connect(screen, &QScreen::availableGeometryChanged, this, &X11Screens::refreshSoon);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &X11Screens::refreshSoon);
}

// Changes come in bursts.
void X11Screens::refreshSoon() {
    if (std::exchange(m_isRefreshDue, true)) return;
    QMetaObject::invokeMethod(this, &X11Screens::refresh, Qt::QueuedConnection);
}

void X11Screens::refresh() {
    m_isRefreshDue = false;
    std::vector<Screen> screens;
    const QScreen* primary = QGuiApplication::primaryScreen();
    const std::vector<Strut> bars = struts();
    const std::vector<QRect> told = toldWorkAreas();
    const double baseline = primary == nullptr ? 0 : QRectF(primary->geometry()).bottom();
    const bool hasMoved = std::exchange(m_baseline, baseline) != baseline;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect monitor = pixelsOf(*screen);
        QRect free = freeOfStruts(monitor, desktopSize(), bars);
        for (const QRect& area : told)
            if (monitor.contains(area.center()) && monitor.contains(area)) free &= area;
        QRectF visible = pointsOf(free, *screen);
        if (!m_requests.isUsable()) visible = screen->availableGeometry();
        const Screen read{.name = screen->name(),
                          .frame = flipped(QRectF(screen->geometry())),
                          .visibleFrame = flipped(visible),
                          .scale = screen->devicePixelRatio()};
        screens.insert(screen == primary ? screens.begin() : screens.end(), read);
    }
    if (screens == m_screens && !hasMoved) return;
    m_screens = std::move(screens);
    emit changed();
}

QSize X11Screens::desktopSize() const {
    QRect all;
    for (const QScreen* screen : QGuiApplication::screens())
        all |= pixelsOf(*screen);
    return {all.right() + 1, all.bottom() + 1};
}

std::vector<Strut> X11Screens::struts() const {
    std::vector<Strut> all;
    if (!m_requests.isUsable()) return all;
    xcb_connection_t* connection = m_requests.get();
    const auto partialAtom = m_requests.atom("_NET_WM_STRUT_PARTIAL");
    const auto wholeAtom = m_requests.atom("_NET_WM_STRUT");
    const auto windows = m_requests.numbers(m_requests.root(), m_requests.atom("_NET_CLIENT_LIST"));
    const auto ask = [&](std::uint32_t window, X11Connection::Atom atom) {
        return xcb_get_property(connection, 0, window, atom, XCB_ATOM_CARDINAL, 0, strutLength);
    };
    std::vector<std::pair<xcb_get_property_cookie_t, xcb_get_property_cookie_t>> asked;
    asked.reserve(windows.size());
    for (const std::uint32_t window : windows)
        asked.emplace_back(ask(window, partialAtom), ask(window, wholeAtom));
    for (const auto& [partial, whole] : asked) {
        const X11Reply<xcb_get_property_reply_t> first(
            xcb_get_property_reply(connection, partial, nullptr));
        const X11Reply<xcb_get_property_reply_t> second(
            xcb_get_property_reply(connection, whole, nullptr));
        const std::vector<Strut> read =
            readStruts(numbersOf(first.get()), numbersOf(second.get()), desktopSize());
        all.insert(all.end(), read.begin(), read.end());
    }
    return all;
}

// Desktops that draw their bars themselves declare no struts: GNOME tells an area for each
// monitor, all others one area, which says something only where there is one monitor.
std::vector<QRect> X11Screens::toldWorkAreas() const {
    std::vector<QRect> areas;
    const auto desktop =
        m_requests.numbers(m_requests.root(), m_requests.atom("_NET_CURRENT_DESKTOP"));
    const std::uint32_t current = desktop.empty() ? 0 : desktop.front();
    const QByteArray name = "_GTK_WORKAREAS_D" + QByteArray::number(current);
    std::vector<std::uint32_t> numbers =
        m_requests.numbers(m_requests.root(), m_requests.atom(name));
    if (numbers.empty() && QGuiApplication::screens().size() == 1) {
        numbers = m_requests.numbers(m_requests.root(), m_requests.atom("_NET_WORKAREA"));
        const std::size_t first = 4UL * current;
        if (numbers.size() < first + 4) return areas;
        numbers = {numbers.begin() + static_cast<std::ptrdiff_t>(first),
                   numbers.begin() + static_cast<std::ptrdiff_t>(first + 4)};
    }
    for (std::size_t i = 0; i + 3 < numbers.size(); i += 4)
        areas.emplace_back(static_cast<int>(numbers[i]), static_cast<int>(numbers[i + 1]),
                           static_cast<int>(numbers[i + 2]), static_cast<int>(numbers[i + 3]));
    return areas;
}

PortSupport X11Screens::supported() const {
    if (sessionKind() == SessionKind::Wayland)
        return std::unexpected(u"Wayland tells where neither the pointer nor a window is."_s);
    return {};
}

QPointF X11Screens::pointer() const {
    return flipped(QPointF(QCursor::pos()));
}

std::optional<QRectF> X11Screens::windowFrame(WindowId window) const {
    if (!m_requests.isUsable()) return std::nullopt;
    xcb_connection_t* connection = m_requests.get();
    const auto id = static_cast<X11Connection::Window>(window);
    const auto askedSize = xcb_get_geometry(connection, id);
    const auto askedState = xcb_get_window_attributes(connection, id);
    const auto askedPlace = xcb_translate_coordinates(connection, id, m_requests.root(), 0, 0);
    const X11Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, askedSize, nullptr));
    const X11Reply<xcb_get_window_attributes_reply_t> state(
        xcb_get_window_attributes_reply(connection, askedState, nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, askedPlace, nullptr));
    if (!size || !state || !place || state->map_state != XCB_MAP_STATE_VIEWABLE)
        return std::nullopt;
    const QRect pixels(place->dst_x, place->dst_y, size->width, size->height);
    for (const QScreen* screen : QGuiApplication::screens())
        if (pixelsOf(*screen).contains(pixels.center())) return flipped(pointsOf(pixels, *screen));
    return flipped(QRectF(pixels));
}

} // namespace vorq
