#include "support/Clock.h"

#include <chrono>

namespace vorq::gateway {

std::int64_t SystemClock::nowMs() const {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

} // namespace vorq::gateway
