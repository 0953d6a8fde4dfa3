#include "writing/WritingToolsLiveTracker.h"

#include "support/text/Text.h"

#include <cmath>
#include <utility>

namespace vorq {

using Kind = WritingToolsInteraction::Kind;

void WritingToolsLiveTracker::start(const Start& start) {
    m_sourcePID = start.sourcePID;
    m_seedPoint = start.seedPoint;
    m_lastPlacement = start.placement;
    m_lastSelectionText = start.selectionText;
    m_movingUntil.reset();
    m_expectedUntil.reset();
    m_emptyLooks = 0;
    m_restsFrom.reset();
    m_isRunning = true;
    m_loopTask.restart(
        [self = QPointer(this)](std::stop_token stop) { return follow(self, std::move(stop)); });
}

void WritingToolsLiveTracker::stop() {
    m_isRunning = false;
    m_loopTask.cancelAll();
}

// Of many in a row only the first ends a pause.
void WritingToolsLiveTracker::expectMovement() {
    if (!m_isRunning) return;
    const bool isExpected = isIn(m_expectedUntil);
    m_expectedUntil = m_clock.now() + m_pace.stillTime;
    noteChange();
    if (!isExpected) m_pauseEnd.request_stop();
}

QCoro::Task<> WritingToolsLiveTracker::follow(QPointer<WritingToolsLiveTracker> self,
                                              std::stop_token stop) {
    if (!self) co_return;
    Clock::Duration duration = self->nextPause(true);
    while (true) {
        co_await self->pause(duration, stop);
        if (!self || stop.stop_requested()) co_return;
        if (std::exchange(self->m_isLooking, true)) continue;
        const std::optional<SelectionSight> sight =
            co_await self->m_looker.look(self->m_sourcePID, self->m_seedPoint, stop);
        if (self) self->m_isLooking = false;
        if (!self || stop.stop_requested()) co_return;
        if (sight)
            self->consider(*sight);
        else
            emit self->sawNothing();
        if (!self || stop.stop_requested()) co_return;
        duration = self->nextPause(sight.has_value());
    }
}

// Touches nothing of its own after it has waited.
QCoro::Task<> WritingToolsLiveTracker::pause(Clock::Duration duration, std::stop_token stop) {
    std::stop_source end;
    m_pauseEnd = end;
    const std::stop_callback onStop(std::move(stop), [end]() mutable { end.request_stop(); });
    co_await sleepFor(m_clock, duration, end.get_token());
}

// Two empty looks in a row are told as such only if time has passed between them.
Clock::Duration WritingToolsLiveTracker::nextPause(bool hasSeen) const {
    if (!hasSeen) return m_pace.slowInterval;
    if (m_emptyLooks > 0) return m_pace.interval;
    if (isIn(m_movingUntil) || isIn(m_expectedUntil)) return m_pace.movingInterval;
    return isIn(m_restsFrom) ? m_pace.interval : m_pace.restingInterval;
}

bool WritingToolsLiveTracker::isIn(const std::optional<Clock::Duration>& time) const {
    return time && m_clock.now() < *time;
}

bool WritingToolsLiveTracker::isAt(const QRectF& frame) const {
    const auto isNear = [this](double one, double other) {
        return std::abs(one - other) <= m_pace.tolerance;
    };
    if (!m_lastPlacement) return false;
    const QRectF& last = m_lastPlacement->screenFrame;
    return isNear(frame.x(), last.x()) && isNear(frame.y(), last.y()) &&
           isNear(frame.width(), last.width()) && isNear(frame.height(), last.height());
}

// What becomes known is told, but is no change. Whoever hears of it may end the session.
void WritingToolsLiveTracker::consider(const SelectionSight& sight) {
    const QPointer<WritingToolsLiveTracker> self(this);
    if (sight.text.isEmpty()) {
        if (++m_emptyLooks >= emptyLooksOfGone) emit selectionGone();
        return;
    }
    m_emptyLooks = 0;
    const bool isKnownPlace = m_lastPlacement.has_value();
    const bool isElsewhere = sight.placement && !isAt(sight.placement->screenFrame);
    const bool isMoving = isElsewhere && isKnownPlace;
    const bool hasBegunToMove = isMoving && !isIn(m_movingUntil);
    if (isMoving) m_movingUntil = m_clock.now() + m_pace.stillTime;
    const bool isOther =
        m_lastSelectionText && trimmed(*m_lastSelectionText) != trimmed(sight.text);
    if (isElsewhere || isOther) noteChange();
    if (isElsewhere) m_lastPlacement = sight.placement;
    m_lastSelectionText = sight.text;
    if (isElsewhere) emit placement(*sight.placement);
    if (hasBegunToMove && self && m_isRunning) emit interaction(Kind::highlightMoved());
    if (isOther && self && m_isRunning) emit interaction(Kind::selectionTextChanged(sight.text));
}

} // namespace vorq
