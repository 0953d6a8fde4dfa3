#pragma once

#include "capture/selection/SelectionPlacement.h"

#include <QCoroTask>
#include <QPointF>
#include <QRectF>

#include <cstdint>
#include <optional>
#include <stop_token>

namespace vorq {

/// Where a selection was seen on a picture of the screen, in screen coordinates (points, origin at
/// the bottom left, y upwards).
struct VisualHighlight {
    QRectF screenFrame;
    QPointF clickPoint;

    bool operator==(const VisualHighlight&) const = default;
};

/// What a capture wants to know of the screen and of Vorq itself. Main thread only.
class CaptureSurroundings {
  public:
    CaptureSurroundings() = default;
    CaptureSurroundings(const CaptureSurroundings&) = delete;
    CaptureSurroundings& operator=(const CaptureSurroundings&) = delete;
    virtual ~CaptureSurroundings() = default;

    [[nodiscard]] virtual ScreenLayout screens() const = 0;

    /// In screen coordinates.
    [[nodiscard]] virtual QPointF mouseLocation() const = 0;

    /// Which showing of the panel this is, counted from 1; 0 while it is hidden.
    [[nodiscard]] virtual std::uint64_t panelShowing() const = 0;

    /// Looks for the selection on a picture of the process's window, from the mouse outwards;
    /// nothing if it is not found.
    virtual QCoro::Task<std::optional<VisualHighlight>>
    highlightPlacementFromScreenshot(std::optional<std::int32_t> source, QPointF mouse,
                                     std::stop_token stop) = 0;
};

} // namespace vorq
