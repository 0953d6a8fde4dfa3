#include "auth/RateLimiter.h"
#include "gateway/support/ManualClock.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

TEST(RateLimiterTest, AllowsABurstAndThenAsksToWait) {
    const ManualClock clock;
    RateLimiter limiter(clock, 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(limiter.secondsToWait("a"), 0);
    EXPECT_EQ(limiter.secondsToWait("a"), 20);
}

TEST(RateLimiterTest, AllowsAgainAfterTheTimeItNamed) {
    ManualClock clock;
    RateLimiter limiter(clock, 2);
    for (int i = 0; i < 2; ++i)
        static_cast<void>(limiter.secondsToWait("a"));
    const int wait = limiter.secondsToWait("a");
    ASSERT_EQ(wait, 30);
    clock.advanceSeconds(wait);
    EXPECT_EQ(limiter.secondsToWait("a"), 0);
    EXPECT_GT(limiter.secondsToWait("a"), 0);
}

TEST(RateLimiterTest, CountsAddressesApart) {
    const ManualClock clock;
    RateLimiter limiter(clock, 1);
    EXPECT_EQ(limiter.secondsToWait("a"), 0);
    EXPECT_GT(limiter.secondsToWait("a"), 0);
    EXPECT_EQ(limiter.secondsToWait("b"), 0);
}

TEST(RateLimiterTest, AClockSetBackNeitherBlocksNorOpens) {
    ManualClock clock;
    RateLimiter limiter(clock, 2);
    EXPECT_EQ(limiter.secondsToWait("a"), 0);
    clock.advanceSeconds(-3600);
    EXPECT_EQ(limiter.secondsToWait("a"), 0);
    EXPECT_EQ(limiter.secondsToWait("a"), 30);
}

TEST(RateLimiterTest, RemembersABoundedNumberOfAddresses) {
    const ManualClock clock;
    RateLimiter limiter(clock, 1);
    for (int i = 0; i < 20'000; ++i) {
        static_cast<void>(limiter.secondsToWait("address " + std::to_string(i)));
    }
    EXPECT_LE(limiter.trackedAddresses(), 4096U);
}

} // namespace
} // namespace vorq::gateway::testing
