#include "support/async/TaskSlot.h"
#include "support/async/Wakeup.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <stdexcept>

namespace vorq {
namespace {

void spin() {
    for (int round = 0; round < 10; ++round)
        QCoreApplication::processEvents();
}

TEST(TaskSlot, StartsTheBodyOnALaterTurnOfTheLoop) {
    TaskSlot slot;
    bool ran = false;
    slot.restart([&ran](std::stop_token) -> QCoro::Task<> {
        ran = true;
        co_return;
    });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(slot.isRunning());
    spin();
    EXPECT_TRUE(ran);
    EXPECT_FALSE(slot.isRunning());
}

TEST(TaskSlot, ABodyCancelledBeforeItBeganStartsStopped) {
    TaskSlot slot;
    std::optional<bool> stopped;
    slot.restart([&stopped](std::stop_token stop) -> QCoro::Task<> {
        stopped = stop.stop_requested();
        co_return;
    });
    slot.cancel();
    EXPECT_FALSE(slot.isRunning());
    spin();
    EXPECT_EQ(stopped, true);
}

TEST(TaskSlot, ABodyThatHasNotBegunNeverStartsOnceTheSlotIsGone) {
    bool ran = false;
    {
        TaskSlot slot;
        slot.restart([&ran](std::stop_token) -> QCoro::Task<> {
            ran = true;
            co_return;
        });
    }
    spin();
    EXPECT_FALSE(ran);
}

TEST(TaskSlot, RestartStopsTheFormerAndKeepsTheNew) {
    TaskSlot slot;
    Wakeup first, second;
    bool firstStopped = false, secondStopped = true;
    slot.restart([&](std::stop_token stop) -> QCoro::Task<> {
        co_await first;
        firstStopped = stop.stop_requested();
    });
    spin();
    slot.restart([&](std::stop_token stop) -> QCoro::Task<> {
        co_await second;
        secondStopped = stop.stop_requested();
    });
    first.fire();
    spin();
    EXPECT_TRUE(firstStopped);
    EXPECT_TRUE(slot.isRunning()) << "the former's end must not empty the slot";
    second.fire();
    spin();
    EXPECT_FALSE(secondStopped);
    EXPECT_FALSE(slot.isRunning());
}

TEST(TaskSlot, ReleaseLetsTheTaskRunOn) {
    TaskSlot slot;
    Wakeup wake;
    std::optional<bool> stopped;
    slot.restart([&](std::stop_token stop) -> QCoro::Task<> {
        co_await wake;
        stopped = stop.stop_requested();
    });
    spin();
    slot.release();
    EXPECT_FALSE(slot.isRunning());
    wake.fire();
    spin();
    EXPECT_EQ(stopped, false);
}

TEST(TaskSlot, DestructionStopsEvenReleasedTasks) {
    auto slot = std::make_unique<TaskSlot>();
    Wakeup wake;
    std::optional<bool> stopped;
    slot->restart([&](std::stop_token stop) -> QCoro::Task<> {
        co_await wake;
        stopped = stop.stop_requested();
    });
    spin();
    slot->release();
    slot.reset();
    wake.fire();
    spin();
    EXPECT_EQ(stopped, true);
}

TEST(TaskSlot, AThrowingBodyEmptiesTheSlot) {
    TaskSlot slot;
    slot.restart([](std::stop_token) -> QCoro::Task<> {
        throw std::runtime_error("broken");
        co_return;
    });
    spin();
    EXPECT_FALSE(slot.isRunning());
}

TEST(Wakeup, NeverResumesInsideFire) {
    const Wakeup wake;
    bool resumed = false;
    TaskSlot slot;
    slot.restart([&](std::stop_token) -> QCoro::Task<> {
        co_await wake;
        resumed = true;
    });
    spin();
    wake.fire();
    wake.fire();
    EXPECT_FALSE(resumed);
    spin();
    EXPECT_TRUE(resumed);
}

} // namespace
} // namespace vorq
