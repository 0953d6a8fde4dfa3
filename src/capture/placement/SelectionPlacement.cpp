#include "capture/placement/SelectionPlacement.h"

#include "platform/Screens.h"

#include <algorithm>

namespace vorq {
namespace {

constexpr double smallestBounds = 1;
constexpr double lowestStrip = 12;
constexpr double highestStrip = 24;
constexpr double narrowestStrip = 12;
constexpr double highestCompactElement = 80;

// The screen whose upper edge both systems of coordinates share.
std::optional<QRectF> referenceFrame(const ScreenLayout& screens) {
    const auto primary = std::ranges::find_if(
        screens.frames, [](const QRectF& frame) { return frame.topLeft().isNull(); });
    if (primary != screens.frames.end()) return *primary;
    if (screens.main) return screens.main;
    if (!screens.frames.empty()) return screens.frames.front();
    return std::nullopt;
}

bool hasSize(const QRectF& rect) {
    return rect.width() >= smallestBounds && rect.height() >= smallestBounds;
}

} // namespace

ScreenLayout screenLayout(const Screens& screens) {
    ScreenLayout layout;
    for (const Screen& screen : screens.screens())
        layout.frames.push_back(screen.frame);
    if (!layout.frames.empty()) layout.main = layout.frames.front();
    return layout;
}

// Without any screen, the point is as low as the upper edge.
QPointF pointAX(QPointF point, const ScreenLayout& screens) {
    const std::optional<QRectF> reference = referenceFrame(screens);
    return {point.x(), reference ? reference->bottom() - point.y() : 0};
}

double stripHeight(const QRectF& rect) {
    return std::clamp(rect.height(), lowestStrip, highestStrip);
}

QRectF cocoaRect(const QRectF& rect, const ScreenLayout& screens) {
    const std::optional<QRectF> reference = referenceFrame(screens);
    if (!reference) return rect;
    return {QPointF(rect.x(), reference->bottom() - rect.bottom()), rect.size()};
}

std::optional<QRectF> highlightPlacementFrame(const std::optional<QRectF>& rawAX,
                                              const ScreenLayout& screens) {
    if (!rawAX || !hasSize(*rawAX)) return std::nullopt;
    const QRectF rect = cocoaRect(*rawAX, screens);
    return QRectF(rect.x(), rect.y(), std::max(rect.width(), narrowestStrip), stripHeight(rect));
}

std::optional<QRectF> compactElementPlacementFrame(const std::optional<QRectF>& elementFrame,
                                                   const ScreenLayout& screens) {
    if (!elementFrame || elementFrame->height() > highestCompactElement) return std::nullopt;
    return highlightPlacementFrame(elementFrame, screens);
}

} // namespace vorq
