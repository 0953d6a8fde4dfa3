#include "capture/placement/TintSearch.h"

#include "capture/placement/TintSamples.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vorq {
namespace {

constexpr std::size_t minHits = 12;
constexpr double minRadiusY = 22;
constexpr double maxBoxHeight = 140;
constexpr double maxWidthShare = 0.92;

/// The extremes of hits, in pixels.
struct Extremes {
    std::size_t count = 0;
    std::int64_t left = std::numeric_limits<std::int64_t>::max();
    std::int64_t top = std::numeric_limits<std::int64_t>::max();
    std::int64_t right = std::numeric_limits<std::int64_t>::min();
    std::int64_t bottom = std::numeric_limits<std::int64_t>::min();

    void add(const TintHit& hit) {
        ++count;
        left = std::min(left, hit.x);
        right = std::max(right, hit.x);
        top = std::min(top, hit.y);
        bottom = std::max(bottom, hit.y);
    }

    [[nodiscard]] bool isBox() const { return count >= minHits && left < right && top < bottom; }

    [[nodiscard]] QRectF inPoints(PixelScale scale) const {
        const auto extent = [](std::int64_t from, std::int64_t to) {
            return static_cast<double>(to - from);
        };
        return {static_cast<double>(left) / scale.x, static_cast<double>(top) / scale.y,
                extent(left, right) / scale.x, extent(top, bottom) / scale.y};
    }
};

/// The hits no farther from the seed, in pixels, than the radii.
Extremes extremesAround(std::span<const TintHit> hits, QPointF seed, PixelScale radius) {
    Extremes extremes;
    for (const TintHit& hit : hits) {
        if (std::abs(static_cast<double>(hit.x) - seed.x()) <= radius.x &&
            std::abs(static_cast<double>(hit.y) - seed.y()) <= radius.y)
            extremes.add(hit);
    }
    return extremes;
}

/// The whole part of a pixel's coordinate within [0, limit]; any number may come in.
std::int64_t clampedPixel(double coordinate, std::int64_t limit) {
    if (!(coordinate > 0)) return 0;
    return coordinate >= static_cast<double>(limit) ? limit : static_cast<std::int64_t>(coordinate);
}

bool isTooSmall(const SampleArea& area) {
    return area.left + 4 >= area.right || area.top + 4 >= area.bottom;
}

/// The pixels to look at; nothing if they are too few.
std::optional<SampleArea> sampleArea(const PixelBuffer& image, const QRectF& search,
                                     PixelScale scale) {
    const auto stride = std::max(std::round(std::min(scale.x, scale.y)), 1.0);
    const SampleArea area{
        .left = clampedPixel(scale.x * search.left(), image.width),
        .top = clampedPixel(scale.y * search.top(), image.height),
        .right = clampedPixel(scale.x * (search.x() + search.width()), image.width),
        .bottom = clampedPixel(scale.y * (search.y() + search.height()), image.height),
        .stride = clampedPixel(stride, std::max(image.width, image.height)),
    };
    if (isTooSmall(area)) return std::nullopt;
    return area;
}

/// Those of the same pixels that are no farther than that from the seed; nothing if too few are.
std::optional<SampleArea> areaNear(const SampleArea& area, QPointF seed, PixelScale reach) {
    // The first pixel of the walk that is not before the coordinate.
    const auto first = [stride = area.stride](std::int64_t from, std::int64_t to, double least) {
        const std::int64_t skipped = clampedPixel(std::ceil(least) - static_cast<double>(from), to);
        return from + (skipped + stride - 1) / stride * stride;
    };
    const SampleArea near{
        .left = first(area.left, area.right, seed.x() - reach.x),
        .top = first(area.top, area.bottom, seed.y() - reach.y),
        .right = std::min(area.right, clampedPixel(seed.x() + reach.x + 1, area.right)),
        .bottom = std::min(area.bottom, clampedPixel(seed.y() + reach.y + 1, area.bottom)),
        .stride = area.stride,
    };
    if (isTooSmall(near)) return std::nullopt;
    return near;
}

/// Whether all pixels that the picture claims to have are there.
bool isWhole(const PixelBuffer& image) {
    if (image.width < 1 || image.height < 1 || image.bytesPerPixel < 3) return false;
    const auto size = static_cast<std::int64_t>(image.bytes.size());
    if (image.width > size / image.bytesPerPixel) return false;
    const std::int64_t row = image.width * image.bytesPerPixel;
    return image.bytesPerRow >= row && (size - row) / image.bytesPerRow >= image.height - 1;
}

/// The box of the first radius at which the hits look like a selection.
std::optional<TintBox> blobAround(std::span<const TintHit> hits, QPointF seed, PixelScale scale,
                                  double maxWidth) {
    for (const double radius : tintRadii) {
        const PixelScale pixels{.x = scale.x * radius,
                                .y = std::max(scale.y * radius, scale.y * minRadiusY)};
        const Extremes extremes = extremesAround(hits, seed, pixels);
        if (!extremes.isBox()) continue;
        const QRectF box = extremes.inPoints(scale);
        if (box.height() > maxBoxHeight || box.width() > maxWidth) continue;
        return TintBox{
            .frame = box, .hits = extremes.count, .allHits = hits.size(), .radius = radius};
    }
    return std::nullopt;
}

} // namespace

std::vector<TintColor> selectionTargetColors(std::span<const TintColor> ofDesktop) {
    std::vector<TintColor> colors(ofDesktop.begin(), ofDesktop.end());
    colors.push_back({.red = 0.70, .green = 0.84, .blue = 0.98});
    colors.push_back({.red = 0.55, .green = 0.78, .blue = 0.98});
    colors.push_back({.red = 0.40, .green = 0.68, .blue = 0.96});
    colors.push_back({.red = 0.25, .green = 0.50, .blue = 0.95});
    return colors;
}

std::optional<TintBox> selectionPixelBounds(const PixelBuffer& image, const TintQuery& query,
                                            std::span<const TintColor> colors) {
    const QSizeF size = query.windowSize;
    if (!(size.width() > 0) || !(size.height() > 0) || colors.empty() || !isWhole(image))
        return std::nullopt;
    const PixelScale scale{.x = static_cast<double>(image.width) / size.width(),
                           .y = static_cast<double>(image.height) / size.height()};
    auto area = sampleArea(image, query.search, scale);
    const QPointF seed(scale.x * query.seed.x(), scale.y * query.seed.y());
    if (area && query.reach)
        area = areaNear(*area, seed, {.x = scale.x * *query.reach, .y = scale.y * *query.reach});
    if (!area) return std::nullopt;
    const std::vector<TintHit> hits = tintedPixels(image, *area, colors);
    if (hits.size() < minHits) return std::nullopt;

    if (auto blob = blobAround(hits, seed, scale, size.width() * maxWidthShare)) return blob;
    const auto band = densestSelectionBand(hits, seed.y(), scale);
    if (!band) return std::nullopt;
    return TintBox{
        .frame = *band, .hits = hits.size(), .allHits = hits.size(), .radius = std::nullopt};
}

std::optional<QRectF> densestSelectionBand(std::span<const TintHit> hits, double seedY,
                                           PixelScale scale) {
    constexpr double halfHeight = 18;
    constexpr double minHalfHeight = 12;
    constexpr double maxHeight = 90;
    constexpr double minWidth = 10;
    const double half = std::max(scale.y * halfHeight, minHalfHeight);
    const PixelScale reach{.x = std::numeric_limits<double>::infinity(), .y = half};

    std::optional<QRectF> best;
    double bestScore = 0;
    for (int step = -3; step <= 3; ++step) {
        const double centre = seedY + half * step * 0.5;
        const Extremes extremes = extremesAround(hits, {0, centre}, reach);
        if (!extremes.isBox()) continue;
        const QRectF box = extremes.inPoints(scale);
        if (box.height() > maxHeight || box.width() < minWidth) continue;
        const double score =
            static_cast<double>(extremes.count) * 1000 - std::trunc(std::abs(centre - seedY));
        if (best && score <= bestScore) continue;
        best = box;
        bestScore = score;
    }
    return best;
}

} // namespace vorq
