#include "platform/linux/desktop/ProcessStart.h"
#include "doubles/async/ForkAlone.h"

#include "platform/linux/desktop/SystemClock.h"

#include <gtest/gtest.h>

#include <array>
#include <sys/wait.h>
#include <unistd.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

// Starts a process that tells when it was started, after it has slept.
Clock::Duration startToldBySleeper(useconds_t microseconds) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return {};
    const pid_t child = forkAlone();
    if (child == 0) {
        ::usleep(microseconds);
        const std::int64_t start = startOfThisProcess().value_or(0ns).count();
        ::_exit(::write(ends[1], &start, sizeof start) == sizeof start ? 0 : 1);
    }
    std::int64_t told = 0;
    const bool isTold = ::read(ends[0], &told, sizeof told) == sizeof told;
    ::waitpid(child, nullptr, 0);
    for (const int end : ends)
        ::close(end);
    return isTold ? Clock::Duration(told) : Clock::Duration{};
}

TEST(ProcessStartTest, IsTheMomentOfTheStartHoweverLateTheProcessAsks) {
    const SystemClock clock;
    const Clock::Duration before = clock.now();
    const Clock::Duration told = startToldBySleeper(300'000);
    EXPECT_GE(told, before - 20ms);
    EXPECT_LT(told, clock.now() - 280ms);
}

} // namespace
} // namespace vorq
