#pragma once

#include "platform/ProcessId.h"

#include <QCoroTask>
#include <QPointF>
#include <QRectF>

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

/// Looks for a selection on a picture of its window. Main thread only.
class HighlightSearch {
  public:
    HighlightSearch() = default;
    HighlightSearch(const HighlightSearch&) = delete;
    HighlightSearch& operator=(const HighlightSearch&) = delete;
    virtual ~HighlightSearch() = default;

    /// Searches the process's window from the mouse outwards; nothing if the selection is not
    /// found. The mouse is in screen coordinates.
    virtual QCoro::Task<std::optional<VisualHighlight>>
    highlightPlacementFromScreenshot(std::optional<ProcessId> source, QPointF mouse,
                                     std::stop_token stop) = 0;
};

/// Takes no pictures.
class NoHighlightSearch final : public HighlightSearch {
  public:
    QCoro::Task<std::optional<VisualHighlight>>
    highlightPlacementFromScreenshot(std::optional<ProcessId>, QPointF, std::stop_token) override {
        co_return std::nullopt;
    }
};

} // namespace vorq
