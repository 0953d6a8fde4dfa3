#include "WatchFixture.h"
#include "doubles/shell/LogLines.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class FrontmostWatchTest : public WatchTest {};

TEST_F(FrontmostWatchTest, DoesNothingUntilItIsStarted) {
    EXPECT_FALSE(watch->isWatching());
    EXPECT_FALSE(watch->isPausedForVorq());
    EXPECT_EQ(watch->statusMessage(), "");
    EXPECT_FALSE(watch->latest());
    bring(browser);
    stream.deliver(1);
    EXPECT_FALSE(watch->latestCGImage());
    EXPECT_THAT(stream.starts, IsEmpty());
    EXPECT_THAT(accessibility.reads(), IsEmpty());
}

TEST_F(FrontmostWatchTest, SamplesTheApplicationInFront) {
    select("  a line ");
    start();
    stream.deliver(7);
    EXPECT_TRUE(watch->isWatching());
    EXPECT_EQ(watch->statusMessage(), "Watching Source");
    const WatchSample expected{.appName = "Source",
                               .bundleID = "org.xfce.mousepad",
                               .pid = source,
                               .windowTitle = "letter.txt",
                               .selection = "a line",
                               .windowFrameAX = {}};
    EXPECT_THAT(samples, ElementsAre(expected));
    EXPECT_EQ(watch->latest(), expected);
    EXPECT_THAT(stream.starts, ElementsAre(StreamedWindow{.process = source, .window = source}));
    EXPECT_EQ(watch->latestCGImage()->bytes[0], 7);
    EXPECT_EQ(watch->latestFramePID(), source);
    EXPECT_EQ(watch->latestFrameAt(), clock.wallTime());
    EXPECT_EQ(watch->latestWindowFrameAX(), QRectF(10, 20, 1, 1));
}

TEST_F(FrontmostWatchTest, CallsBackOnlyWhenSelectionOrTitleChanges) {
    select("one");
    start();
    poll();
    poll();
    EXPECT_THAT(samples, SizeIs(1));
    select("two");
    poll();
    workspace.entitle(source, "other.txt");
    poll();
    poll();
    ASSERT_THAT(samples, SizeIs(3));
    EXPECT_EQ(samples[1].selection, "two");
    EXPECT_EQ(samples[2].selection, "two");
    EXPECT_EQ(samples[2].windowTitle, "other.txt");
    stream.deliver(1);
    select("");
    poll();
    EXPECT_EQ(samples.back().selection, "");
    EXPECT_EQ(samples.back().windowFrameAX, QRectF(10, 20, 1, 1));
}

TEST_F(FrontmostWatchTest, PausesWhileVorqIsInFront) {
    select("one");
    start();
    stream.deliver(1);
    bring(self);
    EXPECT_TRUE(watch->isPausedForVorq());
    EXPECT_EQ(watch->statusMessage(), "Watch: paused while Vorq is in front");
    EXPECT_FALSE(stream.shown());
    const qsizetype reads = accessibility.reads().size();
    stream.deliver(2);
    watch->ingestFrame({});
    select("of Vorq");
    poll();
    EXPECT_EQ(accessibility.reads().size(), reads);
    // What was seen before is what the user is asked about.
    EXPECT_EQ(watch->latestCGImage()->bytes[0], 1);
    EXPECT_EQ(watch->latest()->selection, "one");

    select("one");
    bring(source);
    EXPECT_FALSE(watch->isPausedForVorq());
    EXPECT_TRUE(stream.shown());
    EXPECT_THAT(samples, SizeIs(1));
}

TEST_F(FrontmostWatchTest, AnotherApplicationIsSampledAnewAndNothingOfTheFormerIsKept) {
    select("one");
    start();
    stream.deliver(1);
    workspace.entitle(browser, "letter.txt");
    bring(browser);
    EXPECT_EQ(watch->statusMessage(), "Watching Browser");
    EXPECT_FALSE(watch->latestCGImage());
    EXPECT_TRUE(watch->latestWindowFrameAX().isNull());
    ASSERT_THAT(samples, SizeIs(2));
    EXPECT_EQ(samples[1].pid, browser);
    EXPECT_EQ(stream.shown()->process, browser);
}

TEST_F(FrontmostWatchTest, StoppedItForgetsAllAndCallsBackNoMore) {
    select("one");
    start();
    stream.deliver(1);
    watch->stop();
    EXPECT_FALSE(watch->isWatching());
    EXPECT_EQ(watch->statusMessage(), "");
    EXPECT_FALSE(watch->latest());
    EXPECT_FALSE(watch->latestCGImage());
    EXPECT_FALSE(stream.shown());
    select("two");
    stream.deliver(2);
    watch->ingestFrame({});
    bring(browser);
    clock.advance(1min);
    EXPECT_FALSE(watch->latestCGImage());
    EXPECT_THAT(samples, SizeIs(1));
    EXPECT_EQ(clock.pendingTimers(), 0U);
    start();
    EXPECT_THAT(samples, SizeIs(2));
}

TEST_F(FrontmostWatchTest, APasswordIsNeitherReadNorSeen) {
    select("Tr0ub4dor");
    focus().hidesText = true;
    start();
    EXPECT_EQ(watch->statusMessage(), "Watch: not while a password is typed");
    EXPECT_THAT(stream.starts, IsEmpty());
    EXPECT_THAT(selections(), ElementsAre(""));
    EXPECT_FALSE(accessibility.reads().contains("field.selectedText"));
    focus().hidesText = false;
    select("a word");
    poll();
    EXPECT_EQ(watch->statusMessage(), "Watching Source");
    EXPECT_TRUE(stream.shown());
    stream.deliver(1);
    // The focus moves on to the password, with what is selected there.
    select("Tr0ub4dor");
    focus().hidesText = true;
    poll();
    EXPECT_FALSE(stream.shown());
    EXPECT_FALSE(watch->latestCGImage());
    EXPECT_THAT(selections(), ElementsAre("", "a word", ""));
}

TEST_F(FrontmostWatchTest, AFocusThatMovesToAPasswordDuringTheReadGivesNoText) {
    select("Tr0ub4dor");
    accessibility.onRead = [this](const QString& read) {
        if (read == "field.selectedText") focus().hidesText = true;
    };
    start();
    EXPECT_THAT(selections(), ElementsAre(""));
    EXPECT_THAT(stream.starts, IsEmpty());
}

TEST_F(FrontmostWatchTest, AnExcludedApplicationIsNeitherReadNorSeen) {
    select("one");
    exclude({"org.xfce.mousepad"});
    start();
    EXPECT_EQ(watch->statusMessage(), "Watch: Source is excluded");
    EXPECT_THAT(accessibility.reads(), IsEmpty());
    EXPECT_THAT(stream.starts, IsEmpty());
    EXPECT_THAT(samples, IsEmpty());
    exclude({});
    poll();
    EXPECT_THAT(selections(), ElementsAre("one"));
    stream.deliver(1);
    // It counts from the next turn on, and for what has been seen.
    exclude({"org.xfce.mousepad"});
    poll();
    EXPECT_FALSE(stream.shown());
    EXPECT_FALSE(watch->latest());
    EXPECT_FALSE(watch->latestCGImage());
}

TEST_F(FrontmostWatchTest, WithoutTrustNothingIsSeen) {
    accessibility.trusted = false;
    start();
    EXPECT_EQ(watch->statusMessage(), "Watch: not while accessibility is disabled");
    EXPECT_THAT(stream.starts, IsEmpty());
    EXPECT_THAT(accessibility.reads(), IsEmpty());
}

TEST_F(FrontmostWatchTest, SaysWhyItCannotWatch) {
    stream.support = std::unexpected(u"No window is shown."_s);
    watch->start();
    EXPECT_FALSE(watch->isWatching());
    EXPECT_EQ(watch->statusMessage(), "No window is shown.");
    EXPECT_EQ(clock.pendingTimers(), 0U);
    watch->stop();
    EXPECT_EQ(watch->statusMessage(), "");
}

TEST_F(FrontmostWatchTest, AnApplicationThatHangsIsAskedLessOften) {
    accessibility.hangs = true;
    watch->start();
    clock.advance(0ms);
    waitUntilHanging();
    clock.advance(FrontmostWatchService::readLimit);
    waitUntil([this] { return accessibility.hanging == 0; });
    accessibility.hangs = false;
    settle();
    EXPECT_EQ(clock.untilNextTimer(), FrontmostWatchService::slowPollInterval);
    EXPECT_THAT(samples, IsEmpty());
    EXPECT_THAT(stream.starts, IsEmpty()) << "what has the focus is not known";
    clock.advance(FrontmostWatchService::slowPollInterval);
    settle();
    EXPECT_THAT(samples, SizeIs(1));
}

TEST_F(FrontmostWatchTest, NothingIsSeenOnceAnApplicationNoLongerTellsWhatHasTheFocus) {
    select("a word");
    start();
    ASSERT_TRUE(stream.shown());
    stream.deliver(1);
    // The focus moves on, and the application hangs.
    accessibility.hangs = true;
    clock.advance(FrontmostWatchService::pollInterval);
    waitUntilHanging();
    clock.advance(FrontmostWatchService::readLimit);
    waitUntil([this] { return accessibility.hanging == 0 && !stream.shown(); });
    stream.deliver(2);
    EXPECT_FALSE(watch->latestCGImage()) << "it may show a password";
    accessibility.hangs = false;
    settle();
    clock.advance(FrontmostWatchService::slowPollInterval);
    settle();
    EXPECT_TRUE(stream.shown());
}

TEST_F(FrontmostWatchTest, MakesRoomForACaptureOfTheUser) {
    select("one");
    accessibility.hangs = true;
    watch->start();
    clock.advance(0ms);
    waitUntilHanging();
    accessibility.hangs = false;
    // Without time going by.
    EXPECT_EQ(hotKey(), "one");
}

TEST_F(FrontmostWatchTest, HoweverOftenApplicationsComeToTheFrontReadsAreApart) {
    start();
    const auto asked = [this] { return accessibility.reads().count("field.isPasswordField"); };
    const qsizetype before = asked();
    for (int time = 0; time < 50; ++time) {
        workspace.bringToFront(time % 2 == 0 ? browser : source);
        clock.advance(1ms);
    }
    EXPECT_EQ(asked(), before);
    EXPECT_EQ(watch->statusMessage(), "Watching Source");
    clock.advance(FrontmostWatchService::leastPollGap - 50ms);
    settle();
    EXPECT_GT(asked(), before);
}

TEST_F(FrontmostWatchTest, AStreamThatStopsIsLoggedAndTriedAgainLater) {
    start();
    const LogLines log;
    stream.fail("The window is gone.");
    EXPECT_THAT(log.all(), ElementsAre("Vorq Watch stream stopped: The window is gone."));
    EXPECT_TRUE(watch->isWatching());
    EXPECT_EQ(watch->statusMessage(), "Watching Source");
    poll();
    EXPECT_THAT(stream.starts, SizeIs(1));
    for (int second = 0; second < 10; ++second)
        poll();
    EXPECT_THAT(stream.starts, SizeIs(2));
    watch->stop();
    watch->noteStreamStopped("Later.");
    EXPECT_THAT(log.all(), SizeIs(1));
}

TEST_F(FrontmostWatchTest, WithoutAnApplicationInFrontItWaitsForOne) {
    start();
    workspace.bringNoneToFront();
    poll();
    EXPECT_EQ(watch->statusMessage(), "Watch: no application is in front that is known");
    EXPECT_FALSE(stream.shown());
    EXPECT_TRUE(watch->isWatching());
    bring(source);
    EXPECT_EQ(watch->statusMessage(), "Watching Source");
}

TEST_F(FrontmostWatchTest, TheCallbackMayEndIt) {
    watch->setOnSample([this](const WatchSample&) { watch->stop(); });
    watch->start();
    waitUntil([this] {
        clock.advance(0ms);
        return !watch->isWatching();
    });
    EXPECT_FALSE(watch->latest());
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(FrontmostWatchTest, MayGoWhileItReads) {
    accessibility.hangs = true;
    watch->start();
    clock.advance(0ms);
    waitUntilHanging();
    watch.reset();
    waitUntil([this] { return accessibility.hanging == 0; });
    EXPECT_FALSE(stream.shown());
    EXPECT_THAT(samples, IsEmpty());
}

} // namespace
} // namespace vorq
