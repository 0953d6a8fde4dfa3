#include "platform/testing/ManualClock.h"
#include "support/async/Wakeup.h"
#include "writing/WritingToolsLiveTracker.h"

#include <gmock/gmock.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Kind = WritingToolsInteraction::Kind;

// An application whose selection a test sets.
class ScriptedLooker final : public SelectionLooker {
  public:
    std::optional<SelectionSight> sight;
    /// While set, a look ends by answer() only, not even when it is stopped.
    bool waits = false;
    int looks = 0;
    int atOnce = 0;
    int mostAtOnce = 0;
    std::optional<ProcessId> asked;
    QPointF seed;

    void answer() { std::exchange(m_waiting, Wakeup()).fire(); }

    QCoro::Task<std::optional<SelectionSight>> look(std::optional<ProcessId> source, QPointF at,
                                                    std::stop_token) override {
        ++looks;
        asked = source;
        seed = at;
        mostAtOnce = std::max(mostAtOnce, ++atOnce);
        if (waits) {
            const Wakeup answered = m_waiting;
            co_await answered;
        }
        --atOnce;
        const auto given = sight;
        co_return given;
    }

  private:
    Wakeup m_waiting;
};

class LiveTrackerTest : public testing::Test {
  protected:
    LiveTrackerTest() {
        QObject::connect(tracker.get(), &WritingToolsLiveTracker::placement, tracker.get(),
                         [this](const TrackedPlacement& placement) {
                             placements.push_back(placement.screenFrame.y());
                         });
        QObject::connect(tracker.get(), &WritingToolsLiveTracker::interaction, tracker.get(),
                         [this](const Kind& kind) { interactions.push_back(kind); });
        looker.sight = {.text = "text", .placement = at(100)};
        tracker->setPace({.restingInterval = 400ms});
    }

    static TrackedPlacement at(double y) {
        return {.screenFrame = {10, y, 200, 14}, .clickPoint = {110, y + 7}};
    }
    void start() {
        tracker->start(
            {.sourcePID = 42, .seedPoint = {5, 6}, .placement = at(100), .selectionText = "text"});
    }
    void see(const QString& text, std::optional<double> y, Clock::Duration during = 400ms) {
        looker.sight = SelectionSight{.text = text, .placement = {}};
        if (y) looker.sight->placement = at(*y);
        clock.advance(during);
    }

    ManualClock clock;
    ScriptedLooker looker;
    std::unique_ptr<WritingToolsLiveTracker> tracker =
        std::make_unique<WritingToolsLiveTracker>(clock, looker);
    std::vector<double> placements;
    std::vector<Kind> interactions;
};

TEST_F(LiveTrackerTest, LooksAtTheSourceOnceAnInterval) {
    start();
    EXPECT_TRUE(tracker->isRunning());
    clock.advance(399ms);
    EXPECT_EQ(looker.looks, 0);
    clock.advance(1ms);
    EXPECT_EQ(looker.looks, 1);
    EXPECT_EQ(looker.asked, 42);
    EXPECT_EQ(looker.seed, QPointF(5, 6));
    clock.advance(800ms);
    EXPECT_EQ(looker.looks, 3);
    EXPECT_THAT(placements, IsEmpty());
    EXPECT_THAT(interactions, IsEmpty());
}

TEST_F(LiveTrackerTest, TellsWhereTheSelectionWent) {
    start();
    see("text", 140);
    EXPECT_THAT(placements, ElementsAre(140));
    EXPECT_THAT(interactions, ElementsAre(Kind::highlightMoved()));
    EXPECT_EQ(tracker->lastPlacement(), at(140));
}

TEST_F(LiveTrackerTest, AMovementIsOneEventHoweverLongItTakes) {
    start();
    see("text", 120);
    for (const double y : {140, 160, 180})
        see("text", y, 250ms);
    EXPECT_THAT(placements, ElementsAre(120, 140, 160, 180));
    EXPECT_THAT(interactions, ElementsAre(Kind::highlightMoved()));
    see("text", 180);
    see("text", 200);
    EXPECT_THAT(interactions, ElementsAre(Kind::highlightMoved(), Kind::highlightMoved()));
}

TEST_F(LiveTrackerTest, WhileItMovesLooksComeInShortIntervals) {
    start();
    see("text", 140);
    EXPECT_EQ(looker.looks, 1);
    see("text", 150, 40ms);
    EXPECT_EQ(looker.looks, 2);
    EXPECT_THAT(placements, ElementsAre(140, 150));
    clock.advance(300ms);
    const int looks = looker.looks;
    EXPECT_GE(looks, 9);
    clock.advance(400ms);
    EXPECT_EQ(looker.looks, looks + 1) << "it is still again";
}

TEST_F(LiveTrackerTest, WhereNothingHappensItLooksMoreRarely) {
    tracker->setPace({});
    start();
    clock.advance(10s);
    EXPECT_EQ(looker.looks, 10);
    see("other", 100, 1s);
    const int then = looker.looks;
    clock.advance(2s);
    EXPECT_EQ(looker.looks, then + 5) << "something has happened";
    clock.advance(3s);
    const int later = looker.looks;
    clock.advance(10s);
    EXPECT_EQ(looker.looks, later + 10);
}

TEST_F(LiveTrackerTest, WhatMayMoveItIsFollowedByALookAtOnce) {
    start();
    clock.advance(100ms);
    looker.sight->placement = at(140);
    tracker->expectMovement();
    clock.settle();
    EXPECT_THAT(placements, ElementsAre(140));
    EXPECT_EQ(looker.looks, 1);
}

TEST_F(LiveTrackerTest, ManyThingsThatMayMoveItAreNotAsManyLooks) {
    start();
    for (int i = 0; i < 100; ++i) {
        tracker->expectMovement();
        clock.advance(4ms);
    }
    EXPECT_LE(looker.looks, 11);
    EXPECT_GE(looker.looks, 9);
    clock.advance(2s);
    EXPECT_LE(looker.looks, 23) << "it did not move";
}

TEST_F(LiveTrackerTest, WhatMayMoveItDuringALookIsFollowedByAShortPause) {
    start();
    looker.waits = true;
    clock.advance(400ms);
    tracker->expectMovement();
    looker.waits = false;
    looker.answer();
    clock.settle();
    EXPECT_EQ(looker.looks, 1);
    clock.advance(40ms);
    EXPECT_EQ(looker.looks, 2);
}

TEST_F(LiveTrackerTest, WhatMayMoveItIsOfNoMatterOnceStopped) {
    start();
    tracker->stop();
    tracker->expectMovement();
    clock.advance(10s);
    EXPECT_EQ(looker.looks, 0);
}

TEST_F(LiveTrackerTest, AProgramThatDrawsItsTextAnewWhileItScrollsIsGivenTime) {
    int gone = 0;
    QObject::connect(tracker.get(), &WritingToolsLiveTracker::selectionGone, [&] { ++gone; });
    start();
    clock.advance(1ms);
    looker.sight = SelectionSight{};
    tracker->expectMovement();
    clock.advance(399ms);
    EXPECT_EQ(looker.looks, 1);
    see("text", 140, 1ms);
    EXPECT_EQ(gone, 0);
    EXPECT_THAT(placements, ElementsAre(140));
}

TEST_F(LiveTrackerTest, AHairsBreadthIsNoMovementUnlessItAddsUp) {
    start();
    see("text", 102);
    EXPECT_THAT(placements, IsEmpty());
    see("text", 103);
    EXPECT_THAT(placements, ElementsAre(103));
}

TEST_F(LiveTrackerTest, TellsWhatTheSelectionReadsNow) {
    start();
    see("other", 100);
    see("other\n", 100);
    see("third", 100);
    EXPECT_THAT(interactions, ElementsAre(Kind::selectionTextChanged("other"),
                                          Kind::selectionTextChanged("third")));
    EXPECT_THAT(placements, IsEmpty());
    EXPECT_EQ(tracker->lastSelectionText(), "third");
}

TEST_F(LiveTrackerTest, ASelectionIsGoneOnceTwoLooksInARowFindNone) {
    int gone = 0;
    QObject::connect(tracker.get(), &WritingToolsLiveTracker::selectionGone, [&] { ++gone; });
    start();
    see("", {});
    EXPECT_EQ(gone, 0);
    see("text", 100);
    see("", {});
    EXPECT_EQ(gone, 0);
    see("", {});
    EXPECT_EQ(gone, 1);
    see("", {});
    EXPECT_EQ(gone, 2) << "whoever could not use it hears it again";
    EXPECT_THAT(interactions, IsEmpty());
    EXPECT_EQ(tracker->lastSelectionText(), "text");
}

TEST_F(LiveTrackerTest, ALookThatSeesNothingIsToldAndIsNoEmptyOne) {
    int gone = 0;
    int nothing = 0;
    QObject::connect(tracker.get(), &WritingToolsLiveTracker::selectionGone, [&] { ++gone; });
    QObject::connect(tracker.get(), &WritingToolsLiveTracker::sawNothing, [&] { ++nothing; });
    start();
    looker.sight.reset();
    clock.advance(4s);
    EXPECT_EQ(gone, 0);
    EXPECT_GE(nothing, 3);
}

TEST_F(LiveTrackerTest, WhatBecomesKnownIsNoChange) {
    tracker->start({.sourcePID = 42, .seedPoint = {}, .placement = {}, .selectionText = {}});
    see("text", {});
    see("text", 100);
    EXPECT_THAT(placements, ElementsAre(100));
    EXPECT_THAT(interactions, IsEmpty());
}

TEST_F(LiveTrackerTest, ALookThatSeesNothingChangesNothingAndIsFollowedByALongerPause) {
    start();
    looker.sight.reset();
    clock.advance(400ms);
    EXPECT_EQ(looker.looks, 1);
    clock.advance(1199ms);
    EXPECT_EQ(looker.looks, 1);
    clock.advance(1ms);
    EXPECT_EQ(looker.looks, 2);
    EXPECT_THAT(interactions, IsEmpty());
    EXPECT_EQ(tracker->lastSelectionText(), "text");
    EXPECT_EQ(tracker->lastPlacement(), at(100));
}

TEST_F(LiveTrackerTest, LooksNeverOverlap) {
    start();
    looker.waits = true;
    clock.advance(10s);
    EXPECT_EQ(looker.looks, 1);
    start();
    clock.advance(10s);
    EXPECT_EQ(looker.mostAtOnce, 1);
    looker.answer();
    clock.advance(10s);
    EXPECT_EQ(looker.looks, 2);
    EXPECT_EQ(looker.mostAtOnce, 1);
    looker.waits = false;
    looker.answer();
    clock.advance(10s);
    EXPECT_GT(looker.looks, 10);
}

TEST_F(LiveTrackerTest, OnceStoppedNothingIsTold) {
    start();
    looker.waits = true;
    clock.advance(400ms);
    looker.sight = {.text = "other", .placement = at(500)};
    tracker->stop();
    EXPECT_FALSE(tracker->isRunning());
    looker.answer();
    clock.advance(10s);
    EXPECT_EQ(looker.looks, 1);
    EXPECT_THAT(placements, IsEmpty());
    EXPECT_THAT(interactions, IsEmpty());
}

TEST_F(LiveTrackerTest, WhoeverHearsOfItMayStopOrDestroyIt) {
    start();
    const QMetaObject::Connection stopping =
        QObject::connect(tracker.get(), &WritingToolsLiveTracker::placement, tracker.get(),
                         [this] { tracker->stop(); });
    see("other", 300);
    EXPECT_THAT(interactions, IsEmpty());
    QObject::disconnect(stopping);
    start();
    QObject context;
    QObject::connect(tracker.get(), &WritingToolsLiveTracker::placement, &context,
                     [this] { tracker.reset(); });
    see("third", 600);
    EXPECT_THAT(interactions, IsEmpty());
    clock.advance(10s);
}

TEST_F(LiveTrackerTest, MayGoDuringALook) {
    start();
    looker.waits = true;
    clock.advance(400ms);
    tracker.reset();
    looker.answer();
    clock.advance(10s);
    EXPECT_EQ(looker.looks, 1);
}

TEST_F(LiveTrackerTest, ItsPaceCanBeSet) {
    tracker->setPace(
        {.interval = 50ms, .restingInterval = 50ms, .slowInterval = 50ms, .tolerance = 60});
    start();
    clock.advance(50ms);
    EXPECT_EQ(looker.looks, 1);
    see("text", 160);
    EXPECT_THAT(placements, IsEmpty());
}

} // namespace
} // namespace vorq
