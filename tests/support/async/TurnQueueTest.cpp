#include "support/async/TurnQueue.h"

#include <QCoreApplication>
#include <QCoroTask>

#include <gmock/gmock.h>

#include <optional>
#include <random>
#include <vector>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void turnLoop() {
    for (int round = 0; round < 10; ++round)
        QCoreApplication::processEvents();
}

QCoro::Task<> waitFor(const TurnQueue::Turn& turn, std::vector<int>& begun, int number) {
    co_await turn.begins();
    begun.push_back(number);
}

TEST(TurnQueue, EachBeginsWhenThoseBeforeItHaveEnded) {
    TurnQueue queue;
    std::vector<int> begun;
    std::optional<TurnQueue::Turn> first(queue.takeTurn());
    std::optional<TurnQueue::Turn> second(queue.takeTurn());
    waitFor(*second, begun, 2);
    waitFor(*first, begun, 1);
    turnLoop();
    EXPECT_THAT(begun, ElementsAre(1));
    first.reset();
    turnLoop();
    EXPECT_THAT(begun, ElementsAre(1, 2));
}

TEST(TurnQueue, OneThatIsGivenUpBeforeItBeganHoldsNobodyUp) {
    TurnQueue queue;
    std::vector<int> begun;
    std::optional<TurnQueue::Turn> first(queue.takeTurn());
    std::optional<TurnQueue::Turn> second(queue.takeTurn());
    const TurnQueue::Turn third = queue.takeTurn();
    waitFor(third, begun, 3);
    second.reset();
    turnLoop();
    EXPECT_THAT(begun, IsEmpty());
    first.reset();
    turnLoop();
    EXPECT_THAT(begun, ElementsAre(3));
}

TEST(TurnQueue, AnEmptyQueueBeginsAnew) {
    TurnQueue queue;
    std::vector<int> begun;
    {
        const TurnQueue::Turn unused = queue.takeTurn();
    }
    const TurnQueue::Turn later = queue.takeTurn();
    waitFor(later, begun, 1);
    turnLoop();
    EXPECT_THAT(begun, ElementsAre(1));
}

TEST(TurnQueue, ATurnMayOutliveItsQueue) {
    std::optional<TurnQueue> queue(std::in_place);
    std::vector<int> begun;
    std::optional<TurnQueue::Turn> first(queue->takeTurn());
    const TurnQueue::Turn second = queue->takeTurn();
    waitFor(second, begun, 2);
    queue.reset();
    first.reset();
    turnLoop();
    EXPECT_THAT(begun, ElementsAre(2));
}

TEST(TurnQueue, WhateverEndsInWhateverOrderAllBeginInTheirs) {
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        TurnQueue queue;
        std::vector<int> begun;
        std::vector<std::optional<TurnQueue::Turn>> turns;
        for (int number = 0; number < 20; ++number) {
            turns.emplace_back(queue.takeTurn());
            waitFor(*turns.back(), begun, number);
        }
        // Only one that has begun ends: the others are still waited for.
        for (std::size_t ended = 0; ended < turns.size(); ++ended) {
            if (random() % 2 == 0) turnLoop();
            while (begun.size() <= ended)
                turnLoop();
            turns[ended].reset();
        }
        EXPECT_EQ(begun.size(), turns.size());
        EXPECT_TRUE(std::ranges::is_sorted(begun));
    }
}

} // namespace
} // namespace vorq
