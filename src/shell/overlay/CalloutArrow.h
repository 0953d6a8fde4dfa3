#pragma once

#include <QPainterPath>
#include <QSizeF>

namespace vorq {

/// The room in which a callout's arrow is drawn, in points: the card begins at `calloutCardEdge`
/// from its top, above its lowest points.
inline constexpr QSizeF calloutArrowRoom(40, 16);
inline constexpr double calloutCardEdge = 13;

/// Along the card's edge, up to the tip and down again, in that room. It begins and ends so far
/// beside it.
[[nodiscard]] QPainterPath calloutArrowEdge(double beyond = 0);

} // namespace vorq
