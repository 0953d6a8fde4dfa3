#include "support/Clock.h"

#include <chrono>
#include <ctime>

namespace vorq::gateway {

std::int64_t SystemClock::nowMs() const {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

std::int64_t SystemClock::uptimeMs() const {
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now); // counts while the computer sleeps
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

} // namespace vorq::gateway
