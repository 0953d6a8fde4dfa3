#include "support/async/OnPool.h"
#include "doubles/async/TurnUntil.h"

#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <semaphore>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

using Semaphore = std::counting_semaphore<>;

template<typename T>
QCoro::Task<> storePoolResult(QCoro::Task<T> task, std::shared_ptr<std::optional<T>> result) {
    result->emplace(co_await task);
}

template<typename T>
std::shared_ptr<std::optional<T>> resultOf(QCoro::Task<T> task) {
    auto result = std::make_shared<std::optional<T>>();
    (void)storePoolResult(std::move(task), result);
    return result;
}

TEST(OnPool, RunsTheWorkElsewhereAndGivesItsResultOnTheMainThread) {
    const auto isElsewhere = resultOf(onPool(
        [] { return QThread::currentThread() != QCoreApplication::instance()->thread(); }, {}));
    ASSERT_TRUE(turnUntil([&] { return isElsewhere->has_value(); }));
    EXPECT_TRUE(**isElsewhere);
    EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
}

// Whatever asked would be re-entered otherwise.
TEST(OnPool, GivesNothingBeforeTheEventLoopTurns) {
    std::latch isDone(1);
    const auto result = resultOf(onPool(
        [&isDone] {
            isDone.count_down();
            return 1;
        },
        {}));
    isDone.wait();
    QThread::msleep(20);
    EXPECT_FALSE(result->has_value());
    ASSERT_TRUE(turnUntil([&] { return result->has_value(); }));
    EXPECT_EQ(**result, 1);
}

TEST(OnPool, WorkSeesItsStopAndItsResultComesAllTheSame) {
    std::stop_source stop;
    const auto hasBegun = std::make_shared<Semaphore>(0);
    const auto result = resultOf(onPool(
        [hasBegun](const std::stop_token& token) {
            Semaphore isStopped(0);
            const std::stop_callback onStop(token, [&] { isStopped.release(); });
            hasBegun->release();
            isStopped.acquire();
            return u"what there was"_s;
        },
        stop.get_token()));
    hasBegun->acquire();
    stop.request_stop();
    ASSERT_TRUE(turnUntil([&] { return result->has_value(); }));
    EXPECT_EQ(**result, u"what there was");
}

TEST(OnPool, ThrowsWhatTheWorkThrew) {
    const auto caught = std::make_shared<std::optional<std::string>>();
    const auto follow = [](QCoro::Task<> task,
                           std::shared_ptr<std::optional<std::string>> message) -> QCoro::Task<> {
        try {
            co_await task;
        } catch (const std::runtime_error& error) {
            message->emplace(error.what());
        }
    };
    (void)follow(onPool([] { throw std::runtime_error("no disk"); }, {}), caught);
    ASSERT_TRUE(turnUntil([&] { return caught->has_value(); }));
    EXPECT_EQ(**caught, "no disk");
}

// More than there are processors: none waits until another that hangs is done.
TEST(OnPool, EightHangingDoNotHoldUpANinth) {
    const auto mayEnd = std::make_shared<Semaphore>(0);
    std::vector<std::shared_ptr<std::optional<int>>> hanging;
    hanging.reserve(8);
    for (int number = 0; number < 8; ++number)
        hanging.push_back(resultOf(onPool(
            [mayEnd, number] {
                mayEnd->acquire();
                return number;
            },
            {})));
    const auto ninth = resultOf(onPool([] { return 8; }, {}));
    EXPECT_TRUE(turnUntil([&] { return ninth->has_value(); }));
    mayEnd->release(8);
    for (int number = 0; number < 8; ++number) {
        const auto& result = hanging[static_cast<std::size_t>(number)];
        ASSERT_TRUE(turnUntil([&] { return result->has_value(); }));
        EXPECT_EQ(**result, number);
    }
}

TEST(OnPool, AThousandAllComeBack) {
    std::vector<std::shared_ptr<std::optional<int>>> results;
    results.reserve(1000);
    for (int number = 0; number < 1000; ++number)
        results.push_back(resultOf(onPool([number] { return number; }, {})));
    for (int number = 0; number < 1000; ++number) {
        const auto& result = results[static_cast<std::size_t>(number)];
        ASSERT_TRUE(turnUntil([&] { return result->has_value(); }));
        ASSERT_EQ(**result, number);
    }
}

// As of a window's object, which no other thread may end.
TEST(OnPool, WhatTheWorkOwnsDiesOnTheMainThread) {
    for (int round = 0; round < 200; ++round) {
        const auto diedOn = std::make_shared<QThread*>(nullptr);
        std::shared_ptr<int> owned(new int(round), [diedOn](const int* value) {
            *diedOn = QThread::currentThread();
            delete value;
        });
        // The task is dropped at once, as by a caller whose object died.
        (void)onPool([owned] { return *owned; }, {});
        owned.reset();
        ASSERT_TRUE(turnUntil([&] { return *diedOn != nullptr; }));
        ASSERT_EQ(*diedOn, QCoreApplication::instance()->thread());
    }
}

} // namespace
} // namespace vorq
