#include "capture/selection/SelectionBounds.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace vorq {
namespace {

constexpr double smallestExtent = 1;
constexpr std::int64_t sampledSteps = 16;

bool isFinite(const QRectF& rect) {
    const std::array numbers{rect.x(), rect.y(), rect.width(), rect.height()};
    return std::ranges::all_of(numbers, [](double number) { return std::isfinite(number); });
}

std::optional<QRectF> withSize(const std::optional<QRectF>& rect) {
    if (!rect || !isFinite(*rect)) return std::nullopt;
    if (rect->width() < smallestExtent || rect->height() < smallestExtent) return std::nullopt;
    return rect;
}

// The edges, with which a rectangle of no width still counts; that of QRectF would drop it.
struct Edges {
    double left;
    double top;
    double right;
    double bottom;

    explicit Edges(const QRectF& rect)
        : left(rect.normalized().left()),
          top(rect.normalized().top()),
          right(rect.normalized().right()),
          bottom(rect.normalized().bottom()) {}

    [[nodiscard]] QRectF rect() const { return {QPointF(left, top), QPointF(right, bottom)}; }
};

std::optional<QRectF> intersection(const QRectF& a, const QRectF& b) {
    Edges edges(a);
    const Edges other(b);
    edges.left = std::max(edges.left, other.left);
    edges.top = std::max(edges.top, other.top);
    edges.right = std::min(edges.right, other.right);
    edges.bottom = std::min(edges.bottom, other.bottom);
    if (edges.left > edges.right || edges.top > edges.bottom) return std::nullopt;
    return edges.rect();
}

QRectF unionOf(const QRectF& a, const QRectF& b) {
    Edges edges(a);
    const Edges other(b);
    edges.left = std::min(edges.left, other.left);
    edges.top = std::min(edges.top, other.top);
    edges.right = std::max(edges.right, other.right);
    edges.bottom = std::max(edges.bottom, other.bottom);
    return edges.rect();
}

double areaOf(const QRectF& rect) {
    return std::max(rect.width(), 0.0) * std::max(rect.height(), 0.0);
}

// The first and the last character and some between, from first to last.
std::vector<std::int64_t> sampleOf(TextRange range) {
    const std::int64_t last = range.location + (range.length - 1);
    const std::int64_t step = std::max(range.length, sampledSteps) / sampledSteps;
    std::vector<std::int64_t> indices{range.location};
    const std::int64_t between = (range.length - 2) / step;
    for (std::int64_t i = 1; i <= between; ++i)
        indices.push_back(range.location + i * step);
    if (last != range.location) indices.push_back(last);
    return indices;
}

bool isWithinIntegers(TextRange range) {
    return range.location <= std::numeric_limits<std::int64_t>::max() - range.length;
}

std::optional<QRectF> sampledGlyphBounds(TextRange range, const AccessibleElement& element,
                                         const std::optional<QRectF>& elementFrame) {
    std::optional<QRectF> bounds;
    for (const std::int64_t index : sampleOf(range)) {
        std::optional<QRectF> glyph = element.boundsForRange({.location = index, .length = 1});
        if (!glyph || !isFinite(*glyph) || glyph->height() < smallestExtent) continue;
        if (elementFrame) glyph = intersection(*glyph, *elementFrame);
        if (!glyph) continue;
        bounds = bounds ? unionOf(*bounds, *glyph) : *glyph;
    }
    return bounds;
}

} // namespace

std::optional<QRectF> elementAXFrame(const AccessibleElement& element) {
    const std::optional<QPointF> position = element.position();
    const std::optional<QSizeF> size = element.size();
    if (!position || !size) return std::nullopt;
    return withSize(QRectF(*position, *size));
}

std::optional<QRectF> selectionAXBounds(TextRange range, const AccessibleElement& element,
                                        const std::optional<QRectF>& elementFrame) {
    if (range.length < 1 || !isWithinIntegers(range)) return std::nullopt;
    const std::optional<QRectF> raw = withSize(element.boundsForRange(range));
    const std::optional<QRectF> sampled = sampledGlyphBounds(range, element, elementFrame);
    if (!raw) return sampled;
    if (!sampled) return raw;
    return areaOf(*raw) < areaOf(*sampled) ? sampled : raw;
}

std::optional<QRectF> textMarkerSelectionBounds(const AccessibleElement& element) {
    return withSize(element.selectedTextMarkerBounds());
}

} // namespace vorq
