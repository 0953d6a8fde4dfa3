#pragma once

#include "platform/WindowId.h"
#include "shell/window/PanelDock.h"

#include <QPointF>
#include <QRectF>

#include <cstdint>

namespace vorq {

/// The left mouse button at work in the panel.
struct PanelMouse {
    enum class Kind { Down, Dragged, Up };

    Kind kind = Kind::Down;
    /// In screen coordinates, see Screens.
    QPointF at;
    /// Above the lower edge of the window.
    double yInWindow = 0;
    /// What lies under the mouse; only a press needs it.
    PanelPressTarget target = PanelPressTarget::Plain;
    /// Time on any clock that never goes back.
    double seconds = 0;
};

/// Who looks at the panel's input before the panel's view does, where true swallows the event, and
/// hears of what others do to its window.
class PanelWindowInput {
  public:
    PanelWindowInput() = default;
    PanelWindowInput(const PanelWindowInput&) = delete;
    PanelWindowInput& operator=(const PanelWindowInput&) = delete;
    virtual ~PanelWindowInput() = default;

    /// The Escape key going down while any window of ours has the keyboard.
    virtual bool escapePressed() = 0;
    virtual bool mouse(const PanelMouse& mouse) = 0;
    /// The mouse was used in another window of ours.
    virtual void mouseElsewhere() = 0;

    /// The user has closed the window by the means of the window manager.
    virtual void closed() = 0;
    /// The window may have been taken off the screen, or brought back.
    virtual void exposureChanged() = 0;
};

/// The panel's window as its controller deals with it. Frames are in screen coordinates, see
/// Screens. Main thread only.
class PanelWindow {
  public:
    PanelWindow() = default;
    PanelWindow(const PanelWindow&) = delete;
    PanelWindow& operator=(const PanelWindow&) = delete;
    virtual ~PanelWindow() = default;

    /// As the window system numbers it.
    [[nodiscard]] virtual WindowId id() const = 0;

    /// Where the window stands, whoever put it there, or is on its way to.
    [[nodiscard]] virtual QRectF frame() const = 0;
    virtual void setFrame(const QRectF& frame, bool isAnimated) = 0;

    /// Brings the window up over all others without taking the keyboard.
    virtual void orderFront() = 0;
    virtual void activate() = 0;
    virtual void orderOut() = 0;

    /// Whether the window really is on the screen, which others may have taken it off.
    [[nodiscard]] virtual bool isOnScreen() const = 0;

    /// Whether another window of ours has the keyboard.
    [[nodiscard]] virtual bool isAnotherActive() const = 0;

    /// During a drag of the whole panel the mouse shows the arrow and holds nothing in the view.
    virtual void setDockDragging(bool isOn) = 0;

    /// From now on the input goes through here first; null ends that. It must outlive the window or
    /// be taken back.
    virtual void setInput(PanelWindowInput* input) = 0;
};

} // namespace vorq
