#include "auth/RateLimiter.h"
#include "doubles/gateway/ManualClock.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

TEST(RateLimiterTest, AllowsABurstAndThenAsksToWait) {
    const ManualClock clock;
    RateLimiter limiter(clock, 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(limiter.secondsToWait("a"), 0);
        limiter.spend("a");
    }
    EXPECT_EQ(limiter.secondsToWait("a"), 20);
}

TEST(RateLimiterTest, AskingCostsNothing) {
    const ManualClock clock;
    const RateLimiter limiter(clock, 1);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(limiter.secondsToWait("a"), 0);
}

TEST(RateLimiterTest, AllowsAgainAfterTheTimeItNamed) {
    ManualClock clock;
    RateLimiter limiter(clock, 2);
    for (int i = 0; i < 2; ++i)
        limiter.spend("a");
    const int wait = limiter.secondsToWait("a");
    ASSERT_EQ(wait, 30);
    clock.advanceSeconds(wait);
    EXPECT_EQ(limiter.secondsToWait("a"), 0);
    limiter.spend("a");
    EXPECT_GT(limiter.secondsToWait("a"), 0);
}

TEST(RateLimiterTest, CountsKeysApart) {
    const ManualClock clock;
    RateLimiter limiter(clock, 1);
    limiter.spend("a");
    EXPECT_GT(limiter.secondsToWait("a"), 0);
    EXPECT_EQ(limiter.secondsToWait("b"), 0);
}

TEST(RateLimiterTest, SettingTheTimeOfDayNeitherBlocksNorOpens) {
    ManualClock clock;
    RateLimiter limiter(clock, 2);
    limiter.spend("a");
    clock.setTimeOfDay(-3600);
    EXPECT_EQ(limiter.secondsToWait("a"), 0);
    limiter.spend("a");
    clock.setTimeOfDay(7200);
    EXPECT_EQ(limiter.secondsToWait("a"), 30);
}

TEST(RateLimiterTest, RemembersABoundedNumberOfKeys) {
    const ManualClock clock;
    RateLimiter limiter(clock, 1);
    for (int i = 0; i < 20'000; ++i)
        limiter.spend("key " + std::to_string(i));
    EXPECT_LE(limiter.trackedKeys(), 4096U);
}

TEST(RateLimiterTest, KeysMadeUpForThePurposeFreeNoneThatHasToWait) {
    const ManualClock clock;
    RateLimiter limiter(clock, 2);
    for (int i = 0; i < 2; ++i)
        limiter.spend("locked");
    for (int i = 0; i < 20'000; ++i)
        limiter.spend("key " + std::to_string(i));
    EXPECT_GT(limiter.secondsToWait("locked"), 0);
}

} // namespace
} // namespace vorq::gateway::testing
