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
    m_isMoving = false;
    m_emptyLooks = 0;
    m_isRunning = true;
    m_loopTask.restart(
        [self = QPointer(this)](std::stop_token stop) { return follow(self, std::move(stop)); });
}

void WritingToolsLiveTracker::stop() {
    m_isRunning = false;
    m_loopTask.cancelAll();
}

QCoro::Task<> WritingToolsLiveTracker::follow(QPointer<WritingToolsLiveTracker> self,
                                              std::stop_token stop) {
    if (!self) co_return;
    Clock& clock = self->m_clock;
    Clock::Duration pause = self->m_pace.interval;
    while (true) {
        co_await sleepFor(clock, pause, stop);
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
        pause = sight ? self->m_pace.interval : self->m_pace.slowInterval;
    }
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
        if (++m_emptyLooks == emptyLooksOfGone) emit selectionGone();
        return;
    }
    m_emptyLooks = 0;
    const bool isKnownPlace = m_lastPlacement.has_value();
    const bool isElsewhere = sight.placement && !isAt(sight.placement->screenFrame);
    const bool wasMoving = std::exchange(m_isMoving, isElsewhere && isKnownPlace);
    const bool hasBegunToMove = m_isMoving && !wasMoving;
    const bool isOther =
        m_lastSelectionText && trimmed(*m_lastSelectionText) != trimmed(sight.text);
    if (isElsewhere) m_lastPlacement = sight.placement;
    m_lastSelectionText = sight.text;
    if (isElsewhere) emit placement(*sight.placement);
    if (hasBegunToMove && self && m_isRunning) emit interaction(Kind::highlightMoved());
    if (isOther && self && m_isRunning) emit interaction(Kind::selectionTextChanged(sight.text));
}

} // namespace vorq
