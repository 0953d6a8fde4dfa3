#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>

namespace vorq {

/// Where a callout stands beside what it points at.
///
/// All geometry here is in points and screen coordinates: the origin is at the bottom left and y
/// grows upwards, so that the top() of a QRectF is its lower edge.
struct CalloutPlace {
    /// With the arrow.
    QRectF frame;
    /// The callout stands below what it points at.
    bool pointsUp = true;
    /// The tip of the arrow, from the frame's left edge.
    double tipX = 0;

    /// Where the tip touches.
    [[nodiscard]] QPointF tipPoint() const;

    bool operator==(const CalloutPlace&) const = default;
};

/// What is known of a selection on the screen.
struct CalloutTarget {
    /// The strip along its lower edge.
    QRectF strip;
    /// Its centre; nothing if only the strip is known.
    std::optional<QPointF> centre;

    /// All of it: the strip, and as far above its centre as the strip is below.
    [[nodiscard]] QRectF bounds() const;
};

/// Between the callout and what it points at, and between it and the edges of the screen.
inline constexpr double calloutGap = 2;
inline constexpr double calloutScreenEdge = 8;
/// The least distance of the tip from a side, for round corners and half of the arrow.
inline constexpr double calloutTipInset = 46;
/// How far the callout begins before what it points at, and the farthest tip from there.
inline constexpr double calloutLead = 12;
inline constexpr double calloutTipReach = 150;

/// The callout of this size, arrow included, within the visible frame of a screen: below the target
/// if there is room, else above it, else where there is more room and over the target as far as it
/// must. It stays on the side that it was on as long as it has room there.
[[nodiscard]] CalloutPlace placeCallout(const CalloutTarget& target, QSizeF size,
                                        const QRectF& visibleFrame,
                                        std::optional<bool> pointedUp = {});

} // namespace vorq
