#pragma once

#include <QPointF>
#include <QRectF>

#include <optional>
#include <vector>

namespace vorq {

/// The frames of the screens, in screen coordinates: points, origin at the bottom left of the
/// primary screen, y upwards, so that the top() of a QRectF is its lower edge.
struct ScreenLayout {
    std::vector<QRectF> frames;
    /// The frame of the screen that is in use; nothing if none is.
    std::optional<QRectF> main;
};

class Screens;

/// The screens as they are. That of no port is known to be in use, so the primary one stands for
/// it.
[[nodiscard]] ScreenLayout screenLayout(const Screens& screens);

/// A rectangle of accessibility coordinates (origin at the top left, y downwards) in screen
/// coordinates. Without any screen it comes back as it is.
[[nodiscard]] QRectF cocoaRect(const QRectF& rect, const ScreenLayout& screens);

/// A point of screen coordinates in accessibility coordinates.
[[nodiscard]] QPointF pointAX(QPointF point, const ScreenLayout& screens);

/// The height of the strip for what is so high in screen coordinates.
[[nodiscard]] double stripHeight(const QRectF& rect);

/// The strip, in screen coordinates, to set something beside a selection: it lies on the lower edge
/// of the selection's bounds, which are in accessibility coordinates, and its height is bounded.
/// Nothing for bounds of less than a point.
[[nodiscard]] std::optional<QRectF> highlightPlacementFrame(const std::optional<QRectF>& rawAX,
                                                            const ScreenLayout& screens);

/// The same strip for an element instead of a selection; nothing if the element is too high to
/// tell where its selection is.
[[nodiscard]] std::optional<QRectF>
compactElementPlacementFrame(const std::optional<QRectF>& elementFrame,
                             const ScreenLayout& screens);

} // namespace vorq
