#include "platform/Clock.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/testing/ManualClock.h"
#include "support/async/TaskSlot.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <vector>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

TEST(ManualClock, FiresDueTimersInOrderOfTheirMoment) {
    ManualClock clock;
    std::vector<std::pair<int, Clock::Duration>> fired;
    clock.after(20ms, [&] { fired.emplace_back(2, clock.now()); });
    clock.after(10ms, [&] { fired.emplace_back(1, clock.now()); });
    clock.after(30ms, [&] { fired.emplace_back(3, clock.now()); });
    clock.advance(20ms);
    EXPECT_THAT(fired, ElementsAre(std::pair{1, 10ms}, std::pair{2, 20ms}));
    EXPECT_EQ(clock.now(), Clock::Duration(20ms));
    EXPECT_EQ(clock.pendingTimers(), 1u);
}

TEST(ManualClock, RunsWhatATimerAddsWithinTheSameAdvance) {
    ManualClock clock;
    std::vector<Clock::Duration> fired;
    clock.after(10ms, [&] { clock.after(10ms, [&] { fired.push_back(clock.now()); }); });
    clock.advance(25ms);
    EXPECT_THAT(fired, ElementsAre(20ms));
}

TEST(ManualClock, ForgetsACancelledTimer) {
    ManualClock clock;
    bool fired = false;
    clock.cancel(clock.after(10ms, [&] { fired = true; }));
    clock.advance(20ms);
    EXPECT_FALSE(fired);
}

TEST(ManualClock, TellsTheTimeOfDayFromTheSameCount) {
    ManualClock clock;
    clock.advance(90s);
    EXPECT_EQ(clock.wallTime().toString(Qt::ISODate), "2026-01-01T00:01:30Z");
}

TEST(Sleep, EndsWhenTheTimeIsOver) {
    ManualClock clock;
    TaskSlot slot;
    Clock::Duration woke{};
    slot.restart([&](std::stop_token stop) -> QCoro::Task<> {
        co_await sleepFor(clock, 650ms, stop);
        woke = clock.now();
    });
    clock.advance(649ms);
    EXPECT_TRUE(slot.isRunning());
    clock.advance(1ms);
    EXPECT_FALSE(slot.isRunning());
    EXPECT_EQ(woke, Clock::Duration(650ms));
}

TEST(Sleep, EndsEarlyWhenStoppedAndLeavesNoTimer) {
    ManualClock clock;
    TaskSlot slot;
    bool stopped = false;
    slot.restart([&](std::stop_token stop) -> QCoro::Task<> {
        co_await sleepFor(clock, 1h, stop);
        stopped = stop.stop_requested();
    });
    clock.settle();
    EXPECT_EQ(clock.pendingTimers(), 1u);
    slot.cancel();
    EXPECT_FALSE(stopped) << "the sleeper is woken by the loop, not by the canceller";
    EXPECT_EQ(clock.pendingTimers(), 0u);
    clock.settle();
    EXPECT_TRUE(stopped);
}

TEST(Sleep, RestartedMidwayOnlyTheNewOneRuns) {
    ManualClock clock;
    TaskSlot slot;
    std::vector<int> ended;
    const auto sleeper = [&](int id) {
        return [&, id](std::stop_token stop) -> QCoro::Task<> {
            co_await sleepFor(clock, 100ms, stop);
            if (!stop.stop_requested()) ended.push_back(id);
        };
    };
    slot.restart(sleeper(1));
    clock.advance(50ms);
    slot.restart(sleeper(2));
    clock.advance(100ms);
    EXPECT_THAT(ended, ElementsAre(2));
}

TEST(Sleep, SlotDestroyedMidwayWakesTheSleeperAsStopped) {
    ManualClock clock;
    auto slot = std::make_unique<TaskSlot>();
    bool stopped = false;
    slot->restart([&](std::stop_token stop) -> QCoro::Task<> {
        co_await sleepFor(clock, 100ms, stop);
        stopped = stop.stop_requested();
    });
    clock.settle();
    slot.reset();
    clock.settle();
    EXPECT_TRUE(stopped);
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST(SystemClock, CallsBackAfterTheDelay) {
    SystemClock clock;
    const Clock::Duration start = clock.now();
    Clock::Duration end{};
    clock.after(5ms, [&] { end = clock.now(); });
    while (end == Clock::Duration{})
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_GE(end - start, 5ms);
}

// What the kernel tells of this program's timers.
QByteArrayList kernelTimers() {
    QByteArrayList timers;
    for (const QString& name : QDir("/proc/self/fdinfo").entryList(QDir::Files)) {
        QFile file("/proc/self/fdinfo/" + name);
        if (!file.open(QIODevice::ReadOnly)) continue;
        const QByteArray content = file.readAll();
        if (content.contains("clockid:")) timers += content;
    }
    return timers;
}

TEST(SystemClock, TimersCountTheSuspensionOfTheMachine) {
    SystemClock clock;
    const Clock::TimerId id = clock.after(1h, [] {});
    const auto waitsAnHour = [](const QByteArray& timer) {
        return timer.contains("clockid: " + QByteArray::number(CLOCK_BOOTTIME) + '\n') &&
               timer.contains("it_value: (359");
    };
    EXPECT_TRUE(std::ranges::any_of(kernelTimers(), waitsAnHour));
    clock.cancel(id);
    EXPECT_FALSE(std::ranges::any_of(kernelTimers(), waitsAnHour));
}

TEST(SystemClock, TimersFireInTheOrderOfTheirMoments) {
    SystemClock clock;
    std::vector<int> fired;
    clock.after(20ms, [&] { fired.push_back(3); });
    clock.after(0ms, [&] { fired.push_back(1); });
    clock.after(5ms, [&] { fired.push_back(2); });
    while (fired.size() < 3)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_THAT(fired, ElementsAre(1, 2, 3));
}

TEST(SystemClock, ATimerMayAddCancelAndWaitForOthers) {
    SystemClock clock;
    std::vector<int> fired;
    const Clock::TimerId cancelled = clock.after(1ms, [&] { fired.push_back(0); });
    bool waited = false;
    clock.after(0ms, [&] {
        clock.cancel(cancelled);
        clock.after(2ms, [&] { waited = true; });
        while (!waited)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        fired.push_back(1);
    });
    while (fired.empty())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_THAT(fired, ElementsAre(1));
}

TEST(SystemClock, OneThatKeepsAddingTimersHoldsUpNothingElse) {
    SystemClock clock;
    std::function<void()> again = [&] { clock.after(0ms, again); };
    again();
    bool posted = false;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&posted] { posted = true; }, Qt::QueuedConnection);
    for (int turn = 0; turn < 10 && !posted; ++turn)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_TRUE(posted);
}

TEST(SystemClock, ATimerMayEndTheClock) {
    auto clock = std::make_unique<SystemClock>();
    bool fired = false;
    clock->after(0ms, [&] {
        clock.reset();
        fired = true;
    });
    clock->after(0ms, [] { FAIL(); });
    while (!fired)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

TEST(SystemClock, ForgetsACancelledTimer) {
    SystemClock clock;
    bool cancelled = false, done = false;
    const Clock::TimerId id = clock.after(1ms, [&] { cancelled = true; });
    clock.after(5ms, [&] { done = true; });
    clock.cancel(id);
    while (!done)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_FALSE(cancelled);
}

} // namespace
} // namespace vorq
