#include "auth/RateLimits.h"
#include "doubles/gateway/ManualClock.h"
#include "doubles/gateway/TestState.h"
#include "storage/AttemptTable.h"

#include <gtest/gtest.h>

#include <array>
#include <future>
#include <vector>

namespace vorq::gateway::testing {
namespace {

enum class Place { Memory, File, Server };

/// What limits keep to wherever they are counted.
class RateLimitsTest : public ::testing::TestWithParam<Place> {
  protected:
    int take(const std::string& key, int perMinute = 3) {
        return limits->take(std::array{RateLimit{"test", perMinute, key}});
    }
    int takeBoth(const std::string& key) {
        return limits->take(std::array{RateLimit{"narrow", 2, key}, RateLimit{"wide", 4, "all"}});
    }
    std::unique_ptr<RateLimits> another() {
        if (!database) return std::make_unique<LocalRateLimits>(clock);
        return std::make_unique<SharedRateLimits>(*database, clock);
    }

    ManualClock clock;
    TestState state{GetParam() == Place::Server ? StateKind::Server : StateKind::File};
    std::unique_ptr<SharedDatabase> database = GetParam() == Place::Memory ? nullptr : state.open();
    std::unique_ptr<RateLimits> limits = another();
};

INSTANTIATE_TEST_SUITE_P(Places, RateLimitsTest,
                         ::testing::Values(Place::Memory, Place::File, Place::Server),
                         [](const auto& info) {
                             return info.param == Place::Memory ? "Memory"
                                    : info.param == Place::File ? "Sqlite"
                                                                : "Postgres";
                         });

TEST_P(RateLimitsTest, ABurstIsAllowedAndThenOneWaits) {
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(take("a"), 0);
    EXPECT_EQ(take("a"), 20);
    EXPECT_EQ(take("a"), 20) << "what was refused does not count";
    EXPECT_EQ(take("b"), 0) << "keys are counted apart";
}

TEST_P(RateLimitsTest, TheTimeThatWasNamedIsEnough) {
    for (int i = 0; i < 3; ++i)
        ASSERT_EQ(take("a"), 0);
    clock.advanceSeconds(20);
    EXPECT_EQ(take("a"), 0);
    EXPECT_EQ(take("a"), 20);
    clock.advanceSeconds(3600);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(take("a"), 0) << "and no more than a burst is saved up";
    EXPECT_EQ(take("a"), 20);
}

TEST_P(RateLimitsTest, WhatIsGivenBackDoesNotCount) {
    for (int i = 0; i < 10; ++i) {
        ASSERT_EQ(take("a"), 0);
        limits->giveBack(std::array{RateLimit{"test", 3, "a"}});
    }
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(take("a"), 0);
    EXPECT_GT(take("a"), 0);
}

TEST_P(RateLimitsTest, AnAttemptThatOneLimitRefusesCountsUnderNone) {
    EXPECT_EQ(takeBoth("a"), 0);
    EXPECT_EQ(takeBoth("a"), 0);
    EXPECT_EQ(takeBoth("a"), 30) << "by the narrow one";
    EXPECT_EQ(takeBoth("b"), 0);
    EXPECT_EQ(takeBoth("b"), 0);
    EXPECT_EQ(takeBoth("c"), 15) << "by the wide one";
    clock.advanceSeconds(15);
    EXPECT_EQ(takeBoth("c"), 0);
}

TEST_P(RateLimitsTest, AClockThatIsSetBackKeepsNobodyWaitingForLong) {
    for (int i = 0; i < 3; ++i)
        ASSERT_EQ(take("a"), 0);
    clock.setTimeOfDay(-3600);
    EXPECT_EQ(take("a"), 20) << "nor is anybody let in";
    clock.advanceSeconds(20);
    EXPECT_EQ(take("a"), 0);
}

TEST_P(RateLimitsTest, OfManyAtOnceNoMorePassThanAreAllowed) {
    std::vector<std::future<int>> all;
    all.reserve(12);
    for (int i = 0; i < 12; ++i)
        all.push_back(std::async(std::launch::async, [this] { return take("a", 5); }));
    int passed = 0;
    for (auto& each : all)
        passed += each.get() == 0 ? 1 : 0;
    EXPECT_EQ(passed, 5);
}

TEST_P(RateLimitsTest, OthersOverTheSameDatabaseCountTheSame) {
    if (GetParam() == Place::Memory) return; // each gateway for itself
    const auto other = another();
    for (int i = 0; i < 3; ++i)
        ASSERT_EQ(take("a"), 0);
    EXPECT_EQ(other->take(std::array{RateLimit{"test", 3, "a"}}), 20);
}

TEST_P(RateLimitsTest, WhatCountsNoMoreIsRemoved) {
    if (GetParam() == Place::Memory) return; // see RateLimiterTest
    for (int i = 0; i < 20; ++i)
        ASSERT_EQ(take(std::to_string(i)), 0);
    const auto rows = [this] {
        return database->read([](Database& in) {
            Statement statement = in.prepare("SELECT count(*) FROM attempts");
            statement.step();
            return statement.integer(0);
        });
    };
    EXPECT_EQ(rows(), 20);
    clock.advanceSeconds(20);
    ASSERT_EQ(take("stays"), 0);
    auto turn = database->write();
    AttemptTable(turn.database()).dropExpired(clock.nowMs());
    turn.commit();
    EXPECT_EQ(rows(), 1);
}

} // namespace
} // namespace vorq::gateway::testing
