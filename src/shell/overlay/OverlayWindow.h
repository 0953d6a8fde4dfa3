#pragma once

#include "platform/WindowId.h"

#include <QRectF>
#include <QSizeF>

namespace vorq {

/// Who hears of what happens to an overlay's window.
class OverlayWindowInput {
  public:
    OverlayWindowInput() = default;
    OverlayWindowInput(const OverlayWindowInput&) = delete;
    OverlayWindowInput& operator=(const OverlayWindowInput&) = delete;
    virtual ~OverlayWindowInput() = default;

    /// The Escape key going down while the window has the keyboard.
    virtual void escapePressed() = 0;
    /// What it shows has become higher, lower, wider or narrower.
    virtual void sizeChanged() = 0;
    /// Closed by the means of the window manager.
    virtual void closed() = 0;
};

/// The window of a callout as its controller deals with it. Frames are those of the callout, in
/// screen coordinates, see Screens; the window may be larger. Main thread only.
class OverlayWindow {
  public:
    OverlayWindow() = default;
    OverlayWindow(const OverlayWindow&) = delete;
    OverlayWindow& operator=(const OverlayWindow&) = delete;
    virtual ~OverlayWindow() = default;

    /// As the window system numbers it.
    [[nodiscard]] virtual WindowId id() const = 0;

    /// What the callout needs for what it shows now.
    [[nodiscard]] virtual QSizeF wantedSize() = 0;
    /// The arrow's side and its tip from the left edge are those of the place.
    virtual void place(const QRectF& frame, bool pointsUp, double tipX) = 0;

    /// Brings the window up over all others. The keyboard stays with whoever has it, whatever is
    /// pressed in the window, until takeKeyboard().
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void takeKeyboard() = 0;
    /// The window gets the keyboard no more; it may have it until another window takes it.
    virtual void refuseKeyboard() = 0;

    /// Null ends that. It must outlive the window or be taken back.
    virtual void setInput(OverlayWindowInput* input) = 0;
};

} // namespace vorq
