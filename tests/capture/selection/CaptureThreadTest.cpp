#include "capture/selection/CaptureThread.h"
#include "doubles/capture/CaptureFixture.h"

#include <memory>
#include <semaphore>
#include <thread>

namespace vorq {
namespace {

using namespace std::chrono_literals;

class CaptureThreadTest : public testing::Test {
  protected:
    [[nodiscard]] Running<bool> run(CaptureThread::Job job) {
        return Running<bool>(thread.run(std::move(job), 180ms, {}));
    }

    ManualClock clock;
    CaptureThread thread{clock};
};

TEST_F(CaptureThreadTest, TellsWhatEndedInTimeFromWhatDidNot) {
    const Running<bool> quick = run([](const std::stop_token&) {});
    EXPECT_TRUE(quick.result());

    // A busy machine may begin the job after the test has given it up.
    const auto isStopped = std::make_shared<std::binary_semaphore>(0);
    const Running<bool> slow = run([isStopped](std::stop_token stop) {
        const std::stop_callback onStop(std::move(stop), [&] { isStopped->release(); });
        isStopped->acquire();
    });
    clock.advance(180ms);
    EXPECT_FALSE(slow.result());
}

// As while the first picture of a window is drawn.
TEST_F(CaptureThreadTest, WhatEndedWhileTheMainThreadWasBusyWasInTime) {
    std::binary_semaphore isNext(0);
    const Running<bool> first = run([](const std::stop_token&) {});
    const Running<bool> next = run([&](const std::stop_token&) { isNext.release(); });
    isNext.acquire();
    clock.passUnattended(400ms);
    EXPECT_TRUE(first.result());
}

// As at the end of the program, where what waits is unwound last.
TEST_F(CaptureThreadTest, TheClockNeedNotOutliveTheWait) {
    auto dying = std::make_unique<ManualClock>();
    auto ending = std::make_unique<CaptureThread>(*dying);
    const Running<bool> slow(ending->run(
        [](const std::stop_token& stop) {
            while (!stop.stop_requested())
                std::this_thread::yield();
        },
        180ms, {}));
    ending.reset();
    EXPECT_EQ(dying->pendingTimers(), 0U);
    dying.reset();
    EXPECT_FALSE(slow.result());
}

} // namespace
} // namespace vorq
