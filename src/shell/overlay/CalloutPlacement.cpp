#include "shell/overlay/CalloutPlacement.h"

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

// The lower bound wins where there is no room for both.
double within(double value, double low, double high) {
    return std::max(low, std::min(value, high));
}

} // namespace

QPointF CalloutPlace::tipPoint() const {
    return {frame.left() + tipX, pointsUp ? frame.bottom() : frame.top()};
}

QRectF CalloutTarget::bounds() const {
    QRectF all = strip.normalized();
    if (!centre) return all;
    const double height = 2 * (centre->y() - all.top());
    if (height > all.height()) all.setHeight(height);
    return all;
}

CalloutPlace placeCallout(const CalloutTarget& target, QSizeF size, const QRectF& visibleFrame,
                          std::optional<bool> pointedUp) {
    const QRectF bounds = target.bounds();
    const double low = visibleFrame.top() + calloutScreenEdge;
    const double high = visibleFrame.bottom() - calloutScreenEdge;
    const double needed = size.height() + calloutGap;
    const double roomBelow = bounds.top() - low;
    const double roomAbove = high - bounds.bottom();
    const auto hasRoom = [&](bool isBelow) { return (isBelow ? roomBelow : roomAbove) >= needed; };
    bool pointsUp = hasRoom(true) || (!hasRoom(false) && roomBelow >= roomAbove);
    if (pointedUp && hasRoom(*pointedUp)) pointsUp = *pointedUp;

    const double y = pointsUp ? bounds.top() - needed : bounds.bottom() + calloutGap;
    const double tip = std::min(bounds.center().x(), bounds.left() - calloutLead + calloutTipReach);
    const double lastTip = size.width() - calloutTipInset;
    const double wanted = within(tip - (bounds.left() - calloutLead), calloutTipInset, lastTip);
    const double x = within(tip - wanted, visibleFrame.left() + calloutScreenEdge,
                            visibleFrame.right() - calloutScreenEdge - size.width());
    // On whole points, so that lines stay sharp.
    const QPointF origin(std::round(x), std::round(within(y, low, high - size.height())));
    return {.frame = QRectF(origin, size),
            .pointsUp = pointsUp,
            .tipX = std::round(within(tip - origin.x(), calloutTipInset, lastTip))};
}

} // namespace vorq
