#pragma once

#include <QPointF>
#include <QRectF>

namespace vorq {

/// The rules that keep a reply to vertical motion. All rectangles and points are in one system of
/// coordinates, whichever it is.

/// Whether a turn of the wheel is sideways and thus swallowed over a reply. Deltas in points or
/// degrees; only their ratio and a small dead zone count.
[[nodiscard]] bool isSidewaysScroll(double deltaX, double deltaY);

/// Whether a scrolling view of this height is a horizontal tray, over which the wheel passes
/// whatever its direction.
[[nodiscard]] bool isHorizontalTray(double height);

/// Whether a point over a scrolling view calls its vertical scroller up: on the scroller or near
/// it, or in the strip along the right edge. Never while the whole panel is dragged.
[[nodiscard]] bool isScrollerHovered(QPointF point, const QRectF& view, const QRectF& scroller,
                                     bool isDockDragging);

/// Where a view belongs that has come off its left edge: at 0, unless it is off by a hair only.
[[nodiscard]] double snappedContentX(double contentX);

} // namespace vorq
