#pragma once

#include "doubles/desktop/DesktopSession.h"

#include <QProcessEnvironment>
#include <QString>

#include <memory>

namespace vorq::desktop {

class VirtualSeat;

/// A compositor for Wayland without a screen, and what a person does in it. Its windows cannot be
/// told apart from outside, so they are known by the processes that show them.
class WaylandCompositor {
  public:
    WaylandCompositor() = default;
    WaylandCompositor(const WaylandCompositor&) = delete;
    WaylandCompositor& operator=(const WaylandCompositor&) = delete;
    virtual ~WaylandCompositor();

    /// Starts the one of the type in a session that has a bus, and waits until it is ready.
    static std::unique_ptr<WaylandCompositor> start(SessionType type, DesktopSession& session,
                                                    QSize screen);

    /// By which programs find it: WAYLAND_DISPLAY, DISPLAY and what else there is.
    [[nodiscard]] virtual QProcessEnvironment environment() const = 0;

    /// Its keyboard and its pointer.
    [[nodiscard]] virtual VirtualSeat& seat() = 0;

    /// The place of a window on the screen with its frame; empty while the process has none.
    [[nodiscard]] virtual QRect windowOf(std::int32_t process) = 0;

    /// Whether a window of the process has the keyboard.
    [[nodiscard]] virtual bool isInFront(std::int32_t process) = 0;

    /// Has the chord Super+Shift and a letter run a command, over and over while it is held, as a
    /// shortcut does that a person sets in this desktop. The letter is one that the seat can play.
    virtual void bind(QChar letter, const QString& command) = 0;
};

} // namespace vorq::desktop
