#pragma once

#include <QImage>
#include <QString>

namespace vorq {

/// A soft shadow to be stretched in nine slices.
struct ShadowShape {
    /// Of the plate that casts it, in points, as everything here.
    int radius = 0;
    /// How far a corner of the plate reaches; two of them fit beside each other.
    int edge = 0;
    /// How far the shadow reaches out of the plate.
    int margin = 0;
    /// "DY,BLUR,ALPHA" of each layer, with "/" between them.
    QString layers;

    bool operator==(const ShadowShape&) const = default;
};

/// Square, and without what lies under the plate itself, so that translucent glass stays clean. The
/// scale is pixels a point. Pure function.
[[nodiscard]] QImage shadowImage(const ShadowShape& shape, double scale);

} // namespace vorq
