#pragma once

#include <QPainterPath>

namespace vorq {

/// A rectangle with continuous corners: smoothing 0 is a plain arc, and more than 0 lets the curve
/// begin earlier on the edges. A radius of more than half the shorter side is cut to it.
[[nodiscard]] QPainterPath squirclePath(const QRectF& rect, double radius, double smoothing);

} // namespace vorq
