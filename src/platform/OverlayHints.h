#pragma once

#include <QRect>

#include <cstdint>
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

    /// Makes a hidden window one that stands on all workspaces and in no list of windows. Window
    /// managers forget it when the window is hidden, so this comes before each showing.
    virtual void prepare(std::uint64_t window) = 0;

    /// Asks for the keyboard, for a window that is being shown or is shown already.
    virtual void takeFocus(std::uint64_t window) = 0;

    /// Cuts a window to rectangles in its own pixels; none lifts the cut.
    virtual void setShape(std::uint64_t window, const std::vector<QRect>& pixels) = 0;

    /// Asks for blur behind these rectangles of a window; none takes it back.
    virtual void setBlurBehind(std::uint64_t window, const std::vector<QRect>& pixels) = 0;
};

} // namespace vorq
