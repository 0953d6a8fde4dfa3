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

/// How a toolkit's points become pixels of the screen.
struct ToolkitPlace {
    double scale = 1;
    /// One place in both.
    QPointF pixels{};
    QPointF points{};

    [[nodiscard]] QRectF pixelsOf(const QRectF& told) const;

    bool operator==(const ToolkitPlace&) const = default;
};

/// By one window in both. A toolkit may leave the corner of each monitor where it is in pixels, so
/// what is told counts from the window's corner, unless the window is told with its frame.
[[nodiscard]] ToolkitPlace toolkitPlace(const QRectF& pixels, const QRectF& told);

} // namespace vorq
