#pragma once

#include "doubles/desktop/Applications.h"
#include "doubles/desktop/DesktopSession.h"

namespace vorq::desktop {

/// Opens a window, its corner at the place, that files can be dragged out of, or what else the
/// arguments say.
inline DesktopSession::Window openDragSource(DesktopSession& session, const QStringList& arguments,
                                             QPoint place, DesktopProgram** started = nullptr) {
    DesktopProgram& source = session.start(VORQ_DRAG_SOURCE, "", arguments);
    if (started != nullptr) *started = &source;
    const DesktopSession::Window window = session.waitForWindow("test_drag_source");
    run("xdotool", "xdotool",
        {"windowmove", QString::number(window), QString::number(place.x()),
         QString::number(place.y())},
        session.environment());
    constexpr int widestFrame = 60;
    DesktopSession::waitUntil("the window that is dragged out of", [&] {
        return (session.geometry(window).topLeft() - place).manhattanLength() <= widestFrame;
    });
    return window;
}

/// Presses, and moves with the steps that a hand makes, without letting go.
inline void dragAndHold(const DesktopSession& session, QPoint from, QPoint to) {
    QStringList arguments{"mousemove", QString::number(from.x()), QString::number(from.y()),
                          "mousedown", "1"};
    constexpr int steps = 12;
    for (int step = 1; step <= steps; ++step) {
        const QPoint at = from + (to - from) * step / steps;
        arguments +=
            {"sleep", "0.06", "mousemove", QString::number(at.x()), QString::number(at.y())};
    }
    run("xdotool", "xdotool", arguments, session.environment());
}

inline void letGo(const DesktopSession& session) {
    run("xdotool", "xdotool", {"mouseup", "1"}, session.environment());
}

} // namespace vorq::desktop
