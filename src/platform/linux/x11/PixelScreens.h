#pragma once

#include <QPointF>
#include <QRect>
#include <QRectF>

#include <optional>
#include <vector>

namespace vorq {

/// A monitor in pixels, the origin at the top left of all monitors, and how many pixels a point of
/// it has. In points its corner stays where it is, and its size is scaled.
struct PixelScreen {
    QRect pixels;
    double scale = 1;

    bool operator==(const PixelScreen&) const = default;
};

/// A place in pixels as points of the screen that it is on; without a screen a point is a pixel.
[[nodiscard]] QRectF pointsOf(const QRectF& pixels, const std::vector<PixelScreen>& screens);

/// How many pixels a toolkit takes for one of its points, by the size of one window in both, in
/// quarters; nothing if the sizes are not of one window. The toolkit may count the frame as well.
[[nodiscard]] std::optional<double> toolkitScale(QSizeF pixels, QSizeF told);

} // namespace vorq
