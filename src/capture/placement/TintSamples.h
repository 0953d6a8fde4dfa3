#pragma once

#include "capture/placement/TintSearch.h"

namespace vorq {

/// The pixels to look at, in pixels of the picture; the right and lower ends are not included.
struct SampleArea {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t right = 0;
    std::int64_t bottom = 0;
    /// Every how many pixels one is looked at, in both directions.
    std::int64_t stride = 1;
};

/// At most this many hits are found; the rest of the picture is not looked at then.
inline constexpr std::size_t maxTintHits = 12000;

/// The hits of an area that lies within the picture, row by row.
[[nodiscard]] std::vector<TintHit> tintedPixels(const PixelBuffer& image, const SampleArea& area,
                                                std::span<const TintColor> colors);

} // namespace vorq
