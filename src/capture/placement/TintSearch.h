#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vorq {

/// A picture of a window: rows from the top, of pixels whose first three bytes are blue, green,
/// red.
struct PixelBuffer {
    std::span<const std::uint8_t> bytes;
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t bytesPerRow = 0;
    std::int64_t bytesPerPixel = 4;
};

/// A colour by components of 0 to 1.
struct TintColor {
    double red = 0;
    double green = 0;
    double blue = 0;
};

/// A pixel that looks like the background of selected text: pixels of the picture, from its top
/// left.
struct TintHit {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

/// Pixels of the picture for one point of the window.
struct PixelScale {
    double x = 1;
    double y = 1;
};

/// Where the search looks: points of the window, origin at its top left.
struct TintQuery {
    QSizeF windowSize;
    QRectF search;
    /// The point to grow from; it may lie outside the window.
    QPointF seed;
    /// How far from the seed, in points, pixels are looked at; by default in the whole area. Of
    /// those that are looked at, it leaves out some and adds none.
    std::optional<double> reach = std::nullopt;
};

/// How far from the seed hits are looked for, in points, one after the other.
inline constexpr std::array tintRadii{48.0, 96.0, 160.0, 280.0};

/// What the search found.
struct TintBox {
    /// Points of the window, origin at its top left.
    QRectF frame;
    /// Hits within the radius that settled it, and all hits.
    std::size_t hits = 0;
    std::size_t allHits = 0;
    /// The radius in points; nothing if only a band of one line's height was found.
    std::optional<double> radius;
};

/// The colours that a selection may have: those of the desktop first, then four blues.
[[nodiscard]] std::vector<TintColor> selectionTargetColors(std::span<const TintColor> ofDesktop);

/// The selection's box by its tint, grown from the seed; nothing if too few pixels have a tint, or
/// for a picture that is smaller than it claims.
[[nodiscard]] std::optional<TintBox> selectionPixelBounds(const PixelBuffer& image,
                                                          const TintQuery& query,
                                                          std::span<const TintColor> colors);

/// The box of the band, one line of text high, that holds most hits near the seed, whose `seedY` is
/// in pixels. Nothing if no band has enough of them.
[[nodiscard]] std::optional<QRectF> densestSelectionBand(std::span<const TintHit> hits,
                                                         double seedY, PixelScale scale);

} // namespace vorq
