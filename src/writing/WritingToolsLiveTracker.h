#pragma once

#include "platform/Clock.h"
#include "support/async/TaskSlot.h"
#include "writing/SelectionLooker.h"
#include "writing/WritingToolsInteraction.h"

#include <QObject>
#include <QPointer>

#include <optional>
#include <stop_token>

namespace vorq {

/// Follows the selection of an application while a writing session is open: tells where it went
/// when the writer scrolls, and what it reads when the writer selects anew. One look at a time,
/// with a pause after each: a long one, since looks cost the application time too, and shorter ones
/// after something has happened and while the selection moves or may be about to. Main thread only.
class WritingToolsLiveTracker final : public QObject {
    Q_OBJECT

  public:
    struct Pace {
        /// From the end of a look to the next.
        Clock::Duration interval = std::chrono::milliseconds(400);
        /// The same if nothing has happened yet, or not for a while.
        Clock::Duration restingInterval = std::chrono::milliseconds(1000);
        Clock::Duration timeToRest = std::chrono::seconds(4);
        /// The same while the selection moves.
        Clock::Duration movingInterval = std::chrono::milliseconds(40);
        /// A selection that was still for so long no longer moves.
        Clock::Duration stillTime = std::chrono::milliseconds(300);
        /// The same as the interval after one that saw nothing: the application may be slow to
        /// answer.
        Clock::Duration slowInterval = std::chrono::milliseconds(1200);
        /// By how many points a selection may be off and still be where it was.
        double tolerance = 2;
    };

    /// What is followed, and what of it is known.
    struct Start {
        std::optional<ProcessId> sourcePID;
        /// Where the mouse was, in screen coordinates.
        QPointF seedPoint;
        std::optional<TrackedPlacement> placement;
        std::optional<QString> selectionText;
    };

    /// So many looks in a row that find nothing selected tell that the selection is gone.
    static constexpr int emptyLooksOfGone = 2;

    /// Both must outlive this object and what it has under way.
    WritingToolsLiveTracker(Clock& clock, SelectionLooker& looker, QObject* parent = nullptr)
        : QObject(parent), m_clock(clock), m_looker(looker) {}

    void setPace(const Pace& pace) { m_pace = pace; }

    /// Follows this from now on. The first look comes after a resting interval.
    void start(const Start& start);
    /// Something has happened that may move the selection: looks at once, and for a while as if it
    /// moved.
    void expectMovement();
    /// Nothing is told any more from now on.
    void stop();
    [[nodiscard]] bool isRunning() const { return m_isRunning; }

    /// The last that was told, or is known from the start.
    [[nodiscard]] const std::optional<TrackedPlacement>& lastPlacement() const {
        return m_lastPlacement;
    }
    [[nodiscard]] const std::optional<QString>& lastSelectionText() const {
        return m_lastSelectionText;
    }

  signals:
    /// The selection is elsewhere; again and again while it moves.
    void placement(const vorq::TrackedPlacement& placement);
    /// What happened, for the session's log. A movement is one event, however long it takes.
    void interaction(const vorq::WritingToolsInteraction::Kind& kind);
    /// The application says that nothing is selected any more, and has said so the time before: a
    /// program that draws its text anew may do so once. Told again as long as it is so.
    void selectionGone();
    /// A look saw nothing: the application hangs, has ended or does not tell.
    void sawNothing();

  private:
    static QCoro::Task<> follow(QPointer<WritingToolsLiveTracker> self, std::stop_token stop);
    QCoro::Task<> pause(Clock::Duration duration, std::stop_token stop);
    [[nodiscard]] Clock::Duration nextPause(bool hasSeen) const;
    void noteChange() { m_restsFrom = m_clock.now() + m_pace.timeToRest; }
    [[nodiscard]] bool isIn(const std::optional<Clock::Duration>& time) const;
    void consider(const SelectionSight& sight);
    [[nodiscard]] bool isAt(const QRectF& frame) const;

    Clock& m_clock;
    SelectionLooker& m_looker;
    Pace m_pace;
    std::optional<ProcessId> m_sourcePID;
    QPointF m_seedPoint;
    std::optional<TrackedPlacement> m_lastPlacement;
    std::optional<QString> m_lastSelectionText;
    bool m_isRunning = false;
    std::optional<Clock::Duration> m_movingUntil;   // if it does not move on
    std::optional<Clock::Duration> m_expectedUntil; // that it may begin to move
    std::optional<Clock::Duration>
        m_restsFrom;             // if nothing happens before; from the start if empty
    std::stop_source m_pauseEnd; // of the pause that is or was the last
    int m_emptyLooks = 0;        // one after the other, as of the last look
    bool m_isLooking = false;    // a stopped look may still be under way
    TaskSlot m_loopTask;
};

} // namespace vorq
