#include "platform/Screens.h"

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

// Unlike QRectF::contains, a point on the far edges belongs to the neighbour.
bool holds(const QRectF& frame, QPointF point) {
    return point.x() >= frame.left() && point.x() < frame.right() && point.y() >= frame.top() &&
           point.y() < frame.bottom();
}

double distance(const QRectF& frame, QPointF point) {
    const double dx = std::max({frame.left() - point.x(), 0.0, point.x() - frame.right()});
    const double dy = std::max({frame.top() - point.y(), 0.0, point.y() - frame.bottom()});
    return std::hypot(dx, dy);
}

} // namespace

std::optional<Screen> Screens::screen(QPointF containing, std::optional<Screen> fallback) const {
    const std::vector<Screen> all = screens();
    for (const Screen& each : all)
        if (holds(each.frame, containing)) return each;
    if (fallback) return fallback;
    return all.empty() ? std::nullopt : std::optional(all.front());
}

std::optional<Screen> Screens::nearestScreen(QPointF point) const {
    std::optional<Screen> nearest;
    for (const Screen& each : screens()) {
        if (holds(each.frame, point)) return each;
        if (!nearest || distance(each.frame, point) < distance(nearest->frame, point))
            nearest = each;
    }
    return nearest;
}

QPointF Screens::flipped(QPointF point) const {
    return {point.x(), baseline() - point.y()};
}

QRectF Screens::flipped(const QRectF& rect) const {
    return {rect.x(), baseline() - rect.y() - rect.height(), rect.width(), rect.height()};
}

} // namespace vorq
