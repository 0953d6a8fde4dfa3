#include "shell/panel/VerticalScrollLock.h"

#include <cmath>

namespace vorq {
namespace {

constexpr double sidewaysDeadZone = 0.2;
constexpr double trayHeight = 140;
constexpr double scrollerMargin = 4;
constexpr double edgeStrip = 18;
constexpr double snapDistance = 0.05;

} // namespace

bool isSidewaysScroll(double deltaX, double deltaY) {
    const double across = std::abs(deltaX);
    return across > sidewaysDeadZone && std::abs(deltaY) <= across;
}

bool isHorizontalTray(double height) {
    return height < trayHeight;
}

bool isScrollerHovered(QPointF point, const QRectF& view, const QRectF& scroller,
                       bool isDockDragging) {
    if (isDockDragging || !view.contains(point)) return false;
    const QRectF widened =
        scroller.adjusted(-scrollerMargin, -scrollerMargin, scrollerMargin, scrollerMargin);
    return widened.contains(point) || point.x() >= view.right() - edgeStrip;
}

double snappedContentX(double contentX) {
    return std::abs(contentX) > snapDistance ? 0 : contentX;
}

} // namespace vorq
