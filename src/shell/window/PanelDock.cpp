#include "shell/window/PanelDock.h"

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

constexpr QSizeF sideSize{440, 750};
constexpr QSizeF largestCenterSize{1100, 900};
constexpr double centerShare = 0.9;
constexpr double sideMargin = 18;

// A window beyond this size can only be docked in the centre.
constexpr QSizeF largestSideSize{480, 790};
constexpr double leftShare = 0.4;
constexpr double rightShare = 0.6;

constexpr double verticalFollowCap = 19.6;
constexpr double sidewaysBias = 1.1;
constexpr double commitDistance = 36;
constexpr double flickCommitDistance = 18;
constexpr double flickSpeed = 650;
constexpr double flickBias = 1.2;
constexpr double shortestStep = 0.0001;

QRectF sideFrame(double x, const QRectF& visibleFrame) {
    const double y = visibleFrame.center().y() - sideSize.height() / 2;
    return {QPointF(std::round(x), std::round(y)), sideSize};
}

QRectF centerFrame(const QRectF& visibleFrame) {
    QSizeF size = largestCenterSize;
    if (!visibleFrame.isEmpty()) size = size.boundedTo(visibleFrame.size() * centerShare);
    const QPointF middle = visibleFrame.center();
    return {QPointF(std::round(middle.x() - size.width() / 2),
                    std::round(middle.y() - size.height() / 2)),
            size};
}

} // namespace

QRectF dockFrame(PanelDockTarget target, const QRectF& visibleFrame) {
    switch (target) {
    case PanelDockTarget::Left:
        return sideFrame(visibleFrame.left() + sideMargin, visibleFrame);
    case PanelDockTarget::Right:
        return sideFrame(visibleFrame.right() - sideSize.width() - sideMargin, visibleFrame);
    case PanelDockTarget::Center:
        break;
    }
    return centerFrame(visibleFrame);
}

QRectF clampedToScreen(const QRectF& frame, const QRectF& visibleFrame) {
    if (visibleFrame.isEmpty()) return frame;
    const QSizeF size = frame.size().boundedTo(visibleFrame.size());
    const double x =
        std::clamp(frame.left(), visibleFrame.left(), visibleFrame.right() - size.width());
    const double y =
        std::clamp(frame.top(), visibleFrame.top(), visibleFrame.bottom() - size.height());
    return {QPointF(x, y), size};
}

PanelDockTarget dockFrom(const QRectF& frame, const QRectF& visibleFrame) {
    if (!(visibleFrame.width() > 0)) return PanelDockTarget::Left;
    if (frame.width() > largestSideSize.width() || frame.height() > largestSideSize.height())
        return PanelDockTarget::Center;
    const double share = (frame.center().x() - visibleFrame.left()) / visibleFrame.width();
    if (share < leftShare) return PanelDockTarget::Left;
    if (share > rightShare) return PanelDockTarget::Right;
    return PanelDockTarget::Center;
}

PanelDockStep PanelDockDragSession::mouseDown(const PanelPress& press) {
    const bool isInComposer = press.yInWindow <= composerPassThroughHeight;
    const bool isTheTexts =
        press.target == PanelPressTarget::EditableText || press.target == PanelPressTarget::Glyphs;
    if (isTheTexts || isInComposer) {
        reset();
        return {};
    }
    if (!press.visibleFrame) return {};
    m_visibleFrame = *press.visibleFrame;
    m_startTarget = dockFrom(press.windowFrame, m_visibleFrame);
    m_startFrame = dockFrame(m_startTarget, m_visibleFrame);
    m_windowSize = press.windowFrame.size();
    m_threshold = press.target == PanelPressTarget::SelectableText ? selectableTextDragThreshold
                                                                   : dragThreshold;
    m_downAt = press.at;
    m_lastAt = press.at;
    m_lastSeconds = press.seconds;
    m_velocity = {};
    m_phase = Phase::Pending;
    return {};
}

PanelDockStep PanelDockDragSession::mouseDragged(QPointF at, double seconds) {
    track(at, seconds);
    if (m_phase == Phase::Idle) return {};
    const QPointF moved = at - m_downAt;
    if (m_phase == Phase::Pending) {
        if (std::hypot(moved.x(), moved.y()) < m_threshold) return {};
        if (std::abs(moved.x()) * sidewaysBias < std::abs(moved.y())) {
            reset();
            return {};
        }
        m_phase = Phase::Dragging;
        setDockDragging(true);
    }
    if (const std::optional<PanelDockTarget> target = targetAt(moved.x())) {
        m_phase = Phase::Idle;
        return {
            .isSwallowed = true, .frame = dockFrame(*target, m_visibleFrame), .isAnimated = true};
    }
    const QPointF follow(std::clamp(moved.x(), -followCap, followCap),
                         std::clamp(moved.y(), -verticalFollowCap, verticalFollowCap));
    const QPointF corner = m_startFrame.topLeft() + follow;
    return {.isSwallowed = true,
            .frame = QRectF(QPointF(std::round(corner.x()), std::round(corner.y())), m_windowSize)};
}

PanelDockStep PanelDockDragSession::mouseUp() {
    const bool wasDragging = m_phase == Phase::Dragging;
    reset();
    if (!wasDragging) return {};
    return {.isSwallowed = true, .frame = m_startFrame, .isAnimated = true};
}

void PanelDockDragSession::reset() {
    m_phase = Phase::Idle;
    m_velocity = {};
    setDockDragging(false);
}

void PanelDockDragSession::track(QPointF at, double seconds) {
    m_velocity = (at - m_lastAt) / std::max(seconds - m_lastSeconds, shortestStep);
    m_lastAt = at;
    m_lastSeconds = seconds;
}

bool PanelDockDragSession::isFlick() const {
    const double across = std::abs(m_velocity.x());
    return across > flickSpeed && std::abs(m_velocity.y()) * flickBias < across;
}

std::optional<PanelDockTarget> PanelDockDragSession::targetAt(double dx) const {
    const double distance = isFlick() ? flickCommitDistance : commitDistance;
    const bool isRightward = dx >= distance;
    const bool isLeftward = dx <= -distance;
    switch (m_startTarget) {
    case PanelDockTarget::Left:
        if (isRightward) return PanelDockTarget::Center;
        break;
    case PanelDockTarget::Center:
        if (isLeftward) return PanelDockTarget::Left;
        if (isRightward) return PanelDockTarget::Right;
        break;
    case PanelDockTarget::Right:
        if (isLeftward) return PanelDockTarget::Center;
        break;
    }
    return std::nullopt;
}

void PanelDockDragSession::setDockDragging(bool isOn) {
    if (m_isDockDragging == isOn) return;
    m_isDockDragging = isOn;
    if (m_dockDragChanged) m_dockDragChanged(isOn);
}

} // namespace vorq
