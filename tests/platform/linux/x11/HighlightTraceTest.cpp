#include "platform/linux/x11/HighlightTrace.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

constexpr std::int32_t browser = 7;
constexpr std::int32_t other = 8;
constexpr HighlightTrace::Front firstWindow{.window = 100, .process = browser};
constexpr HighlightTrace::Front secondWindow{.window = 101, .process = browser};
constexpr HighlightTrace::Front otherWindow{.window = 200, .process = other};
constexpr QRect contents(0, 0, 800, 600);
constexpr QPoint place(300, 300);

class HighlightTraceTest : public testing::Test {
  protected:
    HighlightTraceTest() {
        trace.windowCameToFront(firstWindow);
        trace.claimed(browser);
    }

    void click(QPoint at, std::uint32_t time) {
        trace.pressed(at, time);
        trace.released(at, contents);
    }

    HighlightTrace trace;
};

TEST_F(HighlightTraceTest, KnowsTheWindowOfAHighlight) {
    EXPECT_FALSE(trace.isElsewhere(browser));
    trace.windowCameToFront(secondWindow);
    EXPECT_TRUE(trace.isElsewhere(browser));
    trace.windowCameToFront(firstWindow);
    EXPECT_FALSE(trace.isElsewhere(browser));
}

TEST_F(HighlightTraceTest, GoesByTheLastWindowWhileAnotherProgramIsInFront) {
    trace.windowCameToFront(otherWindow);
    EXPECT_FALSE(trace.isElsewhere(browser));
    trace.windowCameToFront(secondWindow);
    trace.windowCameToFront(otherWindow);
    EXPECT_TRUE(trace.isElsewhere(browser));
    EXPECT_FALSE(trace.isElsewhere(other));
}

TEST_F(HighlightTraceTest, ANewHighlightIsOfTheWindowInFront) {
    trace.windowCameToFront(secondWindow);
    trace.claimed(browser);
    EXPECT_FALSE(trace.isElsewhere(browser));
    trace.windowCameToFront(firstWindow);
    EXPECT_TRUE(trace.isElsewhere(browser));
}

TEST_F(HighlightTraceTest, KnowsNothingOfAHighlightMadeBehindAnotherProgram) {
    trace.windowCameToFront(otherWindow);
    trace.claimed(browser);
    trace.windowCameToFront(secondWindow);
    EXPECT_FALSE(trace.isElsewhere(browser));
}

TEST_F(HighlightTraceTest, KnowsNothingOfWhatWasThereBefore) {
    HighlightTrace fresh;
    EXPECT_FALSE(fresh.isElsewhere(browser));
    fresh.windowCameToFront(firstWindow);
    fresh.pressed(place, 0);
    fresh.released(place, contents);
    EXPECT_FALSE(fresh.isElsewhere(browser));
    EXPECT_FALSE(fresh.isClickedAway(browser));
}

TEST_F(HighlightTraceTest, AClickIntoTheWindowMayUndoTheHighlight) {
    click(place, 1000);
    EXPECT_TRUE(trace.isClickedAway(browser));
    EXPECT_FALSE(trace.isClickedAway(other));
    trace.claimed(browser);
    EXPECT_FALSE(trace.isClickedAway(browser));
}

TEST_F(HighlightTraceTest, AClickElsewhereDoesNot) {
    click(QPoint(900, 20), 1000);
    EXPECT_FALSE(trace.isClickedAway(browser)) << "outside the contents";
    trace.windowCameToFront(otherWindow);
    click(place, 3000);
    EXPECT_FALSE(trace.isClickedAway(browser)) << "in another program";
}

TEST_F(HighlightTraceTest, ADragSelects) {
    trace.pressed(place, 1000);
    trace.released(place + QPoint(80, 0), contents);
    EXPECT_FALSE(trace.isClickedAway(browser));
}

TEST_F(HighlightTraceTest, ADoubleClickSelects) {
    click(place, 1000);
    click(place + QPoint(1, 0), 1200);
    EXPECT_FALSE(trace.isClickedAway(browser));
    click(place + QPoint(1, 0), 3000);
    EXPECT_TRUE(trace.isClickedAway(browser));
}

TEST_F(HighlightTraceTest, AClickThatExtendsTheHighlightDoesNotUndoIt) {
    trace.pressed(place, 1000);
    trace.claimed(browser);
    trace.released(place, contents);
    EXPECT_FALSE(trace.isClickedAway(browser));
}

} // namespace
} // namespace vorq
