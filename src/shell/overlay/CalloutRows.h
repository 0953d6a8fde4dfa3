#pragma once

#include <QRect>
#include <QSize>

#include <vector>

namespace vorq {

/// A callout in pixels of its window: a card with round corners, and an arrow on its upper or lower
/// edge.
struct CalloutForm {
    QRect card;
    double radius = 0;
    /// Of the arrow where it meets the card, and how far it stands out. No height for no arrow.
    QSize arrow;
    bool pointsUp = true;
    double tipX = 0; ///< in the window

    bool operator==(const CalloutForm&) const = default;
};

/// The pixels of a callout as rectangles from top to bottom without overlap, to cut a window to it.
[[nodiscard]] std::vector<QRect> calloutRows(const CalloutForm& form);

} // namespace vorq
