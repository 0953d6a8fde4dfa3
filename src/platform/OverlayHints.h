#pragma once

#include "platform/PortSupport.h"
#include "platform/WindowId.h"

#include <QRect>

#include <vector>

namespace vorq {

/// What a floating window of ours asks of the window system beyond what Qt offers. Main thread
/// only; a window that is gone is left alone.
class OverlayHints {
  public:
    OverlayHints() = default;
    OverlayHints(const OverlayHints&) = delete;
    OverlayHints& operator=(const OverlayHints&) = delete;
    virtual ~OverlayHints() = default;

    /// Whether the window system grants what is asked here, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Makes a hidden window one that stands on all workspaces and in no list of windows. Window
    /// managers forget it when the window is hidden, so this comes before each showing.
    virtual void prepare(WindowId window) = 0;

    /// Asks for the keyboard, for a window that is being shown or is shown already.
    virtual void takeFocus(WindowId window) = 0;

    /// Cuts a window to rectangles in its own pixels; none lifts the cut.
    virtual void setShape(WindowId window, const std::vector<QRect>& pixels) = 0;

    /// Has presses outside of these rectangles, in the window's own pixels, go to what lies below;
    /// none has all of them come to the window.
    virtual void setInputShape(WindowId window, const std::vector<QRect>& pixels) = 0;

    /// Asks for blur behind these rectangles of a window; none takes it back.
    virtual void setBlurBehind(WindowId window, const std::vector<QRect>& pixels) = 0;
};

/// Nobody to ask.
class NoOverlayHints final : public OverlayHints {
  public:
    [[nodiscard]] PortSupport supported() const override {
        return std::unexpected(QStringLiteral("There is no desktop to ask for a place above it."));
    }
    void prepare(WindowId /*window*/) override {}
    void takeFocus(WindowId /*window*/) override {}
    void setShape(WindowId /*window*/, const std::vector<QRect>& /*pixels*/) override {}
    void setInputShape(WindowId /*window*/, const std::vector<QRect>& /*pixels*/) override {}
    void setBlurBehind(WindowId /*window*/, const std::vector<QRect>& /*pixels*/) override {}
};

} // namespace vorq
