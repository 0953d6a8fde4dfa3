#include "doubles/capture/CaptureFixture.h"

#include <semaphore>

namespace vorq {
namespace {

using namespace std::chrono_literals;

class SelectionReaderTest : public CaptureTest {};

TEST_F(SelectionReaderTest, GivesAnApplicationThatHangsAQuarterOfASecond) {
    accessibility.hangs = true;
    primary.hangs = true;
    const Running<QString> running = startHotKey();
    waitUntilHanging();
    clock.advance(SelectionReader::headStart);
    waitUntilPrimaryHangs();
    clock.advance(CaptureBudget::captureLimit - SelectionReader::headStart - 1ms);
    for (int turn = 0; turn < 20; ++turn)
        Running<QString>::turnOnce();
    EXPECT_FALSE(running.hasEnded());

    clock.advance(1ms);
    EXPECT_EQ(running.result(), "");
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(SelectionReaderTest, GoesOnToTheHighlightWhenAccessibilityTakesTooLong) {
    accessibility.hangs = true;
    highlight("highlighted");
    const Running<QString> running = startHotKey();
    waitUntilHanging();

    clock.advance(CaptureBudget::accessibilityLimit);
    EXPECT_EQ(running.result(), "highlighted");
}

// An application whose reads wait until they are let go.
class SlowApplication : public CaptureTest {
  protected:
    SlowApplication() {
        focus();
        accessibility.onRead = [this](const QString&) {
            isAsked.release();
            isLetGo.acquire();
            isLetGo.release();
        };
    }
    // The reading thread ends before what it waits for goes.
    ~SlowApplication() override {
        isLetGo.release();
        captures.reset();
    }
    // The clock stands still once PRIMARY is being read.
    [[nodiscard]] Running<QString> startAndFallBehind() {
        Running<QString> running = startHotKey();
        isAsked.acquire();
        clock.advance(SelectionReader::headStart);
        for (const QDeadlineTimer guard(20'000); primary.reads == 0 && !guard.hasExpired();)
            Running<QString>::turnOnce();
        EXPECT_EQ(primary.reads, 1);
        return running;
    }

    std::counting_semaphore<> isAsked{0};
    std::counting_semaphore<> isLetGo{0};
};

TEST_F(SlowApplication, IsAskedForItsHighlightMeanwhile) {
    highlight("highlighted");
    const Running<QString> running = startAndFallBehind();
    EXPECT_FALSE(running.hasEnded());

    clock.advance(CaptureBudget::accessibilityLimit - SelectionReader::headStart);
    EXPECT_EQ(running.result(), "highlighted");
    isLetGo.release();
}

TEST_F(SlowApplication, IsBelievedByAccessibilityAllTheSame) {
    highlight("highlighted");
    select("selected");
    const Running<QString> running = startAndFallBehind();

    isLetGo.release();
    EXPECT_EQ(running.result(), "selected");
}

TEST_F(SlowApplication, IsBelievedThatNothingIsSelected) {
    highlight("old text");
    focus().text = "";
    focus().range = TextRange{.location = 3, .length = 0};
    const Running<QString> running = startAndFallBehind();

    isLetGo.release();
    EXPECT_EQ(running.result(), "");
}

TEST_F(SlowApplication, WaitsForNoHighlightOnceItHasTold) {
    primary.hangs = true;
    select("selected");
    const Running<QString> running = startAndFallBehind();

    isLetGo.release();
    EXPECT_EQ(running.result(), "selected");
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(SelectionReaderTest, GivesAHighlightThatHangsTheRestOfTheTime) {
    primary.hangs = true;
    const Running<QString> running = startHotKey();
    waitUntilPrimaryHangs();

    clock.advance(CaptureBudget::captureLimit);
    EXPECT_EQ(running.result(), "");
}

TEST_F(SelectionReaderTest, GivesAHighlightItsTurnThoughTheMainThreadWasBusy) {
    primary.hangs = true;
    const Running<QString> running = startHotKey();
    clock.passUnattended(CaptureBudget::captureLimit);
    waitUntilPrimaryHangs();

    clock.advance(CaptureBudget::captureLimit - CaptureBudget::accessibilityLimit - 1ms);
    EXPECT_FALSE(running.hasEnded());
    clock.advance(1ms);
    EXPECT_EQ(running.result(), "");
}

TEST_F(SelectionReaderTest, ReadsAgainAfterAnApplicationThatHung) {
    accessibility.hangs = true;
    const Running<QString> first = startHotKey();
    waitUntilHanging();
    clock.advance(CaptureBudget::captureLimit);
    EXPECT_EQ(first.result(), "");

    accessibility.hangs = false;
    select("some words");
    EXPECT_EQ(hotKey(), "some words");
}

TEST_F(SelectionReaderTest, ASecondCaptureWaitsForTheFirstAndIsRightAfterIt) {
    accessibility.hangs = true;
    const Running<QString> first = startHotKey();
    waitUntilHanging();
    std::stop_source secondStop;
    const Running<QString> second(
        textOf(captures->panel.captureSelectedTextForHotKey(source, secondStop.get_token())));
    stop.request_stop();
    EXPECT_EQ(first.result(), "");

    accessibility.hangs = false;
    secondStop.request_stop();
    EXPECT_EQ(second.result(), "");
}

TEST_F(SelectionReaderTest, TheHighlightOfABrowserIsGoneIfAClickMayHaveUndoneIt) {
    identify("org.kde.falkon");
    highlight("a passage");
    primary.highlight.mayBeUndone = true;
    EXPECT_EQ(hotKey(), "");
    primary.highlight.mayBeUndone = false;
    EXPECT_EQ(hotKey(), "a passage");
}

TEST_F(SelectionReaderTest, TheHighlightOfATerminalOutlivesAClick) {
    identify("xterm");
    highlight("a passage");
    primary.highlight.mayBeUndone = true;
    EXPECT_EQ(hotKey(), "a passage");
}

} // namespace
} // namespace vorq
