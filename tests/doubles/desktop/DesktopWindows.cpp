// What a session does with windows, keys, the pointer and selections.

#include "doubles/desktop/DesktopSession.h"
#include "platform/linux/x11/X11Connection.h"

#include <QElapsedTimer>
#include <QRect>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace vorq::desktop {

namespace {

// Openbox may sleep over a new window that it was told of while it waited for the server's answer
// to something else. Any event has it look.
void wakeWindowManager(const X11Connection& x11) {
    xcb_change_property(x11.get(), XCB_PROP_MODE_REPLACE, x11.root(), x11.atom("VORQ_TEST_WAKE"),
                        XCB_ATOM_INTEGER, 32, 0, nullptr);
    xcb_flush(x11.get());
}

} // namespace

std::vector<DesktopSession::Window> DesktopSession::windows() const {
    return m_x11->numbers(m_x11->root(), m_x11->atom("_NET_CLIENT_LIST_STACKING"));
}

bool DesktopSession::isShown(Window window) const {
    auto* reply = xcb_get_window_attributes_reply(
        m_x11->get(), xcb_get_window_attributes(m_x11->get(), window), nullptr);
    const bool isViewable = reply != nullptr && reply->map_state == XCB_MAP_STATE_VIEWABLE;
    std::free(reply);
    return isViewable;
}

QString DesktopSession::classOf(Window window) const {
    QByteArray names = m_x11->property(window, XCB_ATOM_WM_CLASS);
    names.replace('\0', ' ');
    return QString::fromUtf8(names).trimmed();
}

DesktopSession::Window DesktopSession::waitForWindow(const QString& windowClass,
                                                     std::chrono::seconds limit) const {
    Window found = 0;
    QElapsedTimer sinceWake;
    sinceWake.start();
    const auto isThere = [&] {
        for (const Window window : windows())
            if (classOf(window).contains(windowClass, Qt::CaseInsensitive)) found = window;
        constexpr qint64 second = 1000;
        if (found == 0 && sinceWake.hasExpired(second)) {
            wakeWindowManager(*m_x11);
            sinceWake.start();
        }
        return found != 0;
    };
    try {
        waitUntil("a window of " + windowClass, isThere, limit);
    } catch (const std::runtime_error& error) {
        QString sentence = QString::fromUtf8(error.what()) + "; the windows are:";
        for (const Window window : windows())
            sentence += " [" + classOf(window) + "]";
        throw std::runtime_error(sentence.toStdString());
    }
    return found;
}

void DesktopSession::waitForNoWindow(const QString& windowClass) const {
    waitUntil("no window of " + windowClass, [&] {
        return std::ranges::none_of(windows(), [&](Window window) {
            return classOf(window).contains(windowClass, Qt::CaseInsensitive);
        });
    });
}

std::int32_t DesktopSession::processOf(Window window) const {
    return m_x11->processOf(window).value_or(0);
}

QString DesktopSession::titleOf(Window window) const {
    return QString::fromUtf8(m_x11->property(window, XCB_ATOM_WM_NAME));
}

DesktopSession::Window DesktopSession::activeWindow() const {
    const auto window = m_x11->numbers(m_x11->root(), m_x11->atom("_NET_ACTIVE_WINDOW"));
    return window.empty() ? 0 : window.front();
}

void DesktopSession::activate(Window window) const {
    xdotool({"windowactivate", QString::number(window)});
    waitUntil("a window to come to the front", [&] { return activeWindow() == window; });
}

void DesktopSession::xdotool(const QStringList& arguments) const {
    run("xdotool", "xdotool", arguments, m_environment);
}

void DesktopSession::key(const QStringList& keys) const {
    xdotool(QStringList{"key", "--delay", "20"} + keys);
}

void DesktopSession::type(const QString& text) const {
    xdotool({"type", "--delay", "10", "--", text});
}

void DesktopSession::click(QPoint at, int times) const {
    xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "--repeat",
             QString::number(times), "--delay", "60", "1"});
}

void DesktopSession::scroll(QPoint at, int steps) const {
    xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "--repeat",
             QString::number(std::abs(steps)), "--delay", "30", steps < 0 ? "4" : "5"});
}

void DesktopSession::rightClick(QPoint at) const {
    xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "3"});
}

void DesktopSession::drag(QPoint from, QPoint to) const {
    const QPoint middle = (from + to) / 2;
    xdotool({"mousemove", QString::number(from.x()), QString::number(from.y()), "mousedown", "1",
             "sleep", "0.1", "mousemove", QString::number(middle.x()), QString::number(middle.y()),
             "sleep", "0.1", "mousemove", QString::number(to.x()), QString::number(to.y()), "sleep",
             "0.1", "mouseup", "1"});
}

QRect DesktopSession::geometry(Window window) const {
    xcb_connection_t* connection = m_x11->get();
    auto* size = xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr);
    auto* place = xcb_translate_coordinates_reply(
        connection, xcb_translate_coordinates(connection, window, m_x11->root(), 0, 0), nullptr);
    QRect geometry;
    if (size != nullptr && place != nullptr)
        geometry = QRect(place->dst_x, place->dst_y, size->width, size->height);
    std::free(size);
    std::free(place);
    return geometry;
}

QByteArray DesktopSession::selection(const QString& name, const QString& type) const {
    QStringList arguments{"5", "xclip", "-o", "-selection", name};
    if (!type.isEmpty()) arguments += {"-t", type};
    return run("timeout", "coreutils", arguments, m_environment);
}

DesktopProgram& DesktopSession::own(const QString& name, const QByteArray& content,
                                    const QString& type) {
    const QString file = write("own-" + name + ".txt", content);
    QStringList arguments{"-quiet", "-i", "-selection", name, file};
    if (!type.isEmpty()) arguments += {"-t", type};
    DesktopProgram& owner = start("xclip", "xclip", arguments);
    const QByteArray atom = name.toUpper().toLatin1();
    waitUntil("the selection " + name + " to be filled", [&] {
        auto* reply = xcb_get_selection_owner_reply(
            m_x11->get(), xcb_get_selection_owner(m_x11->get(), m_x11->atom(atom)), nullptr);
        const Window window = reply != nullptr ? reply->owner : 0;
        std::free(reply);
        return window != 0 && processOf(window) == owner.process();
    });
    return owner;
}

} // namespace vorq::desktop
