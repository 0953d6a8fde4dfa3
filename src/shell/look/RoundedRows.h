#pragma once

#include <QRect>
#include <QSize>

#include <vector>

namespace vorq {

/// A rectangle with round corners as rows of whole pixels, from top to bottom and without overlap:
/// the rows that look alike are one rectangle. A pixel belongs to it if its middle does. A radius
/// beyond half the shorter side counts as that half. Empty for an empty size.
[[nodiscard]] std::vector<QRect> roundedRows(QSize pixels, double radius);

} // namespace vorq
