#include "support/Pacer.h"

#include <algorithm>
#include <thread>

namespace vorq::gateway {

bool SleepingPacer::pause(std::chrono::milliseconds time, const Cancelled& cancelled) {
    using SteadyClock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds slice{50};
    const SteadyClock::time_point end = SteadyClock::now() + time;
    while (!cancelled()) {
        const SteadyClock::duration left = end - SteadyClock::now();
        if (left <= SteadyClock::duration::zero()) return true;
        std::this_thread::sleep_for(std::min<SteadyClock::duration>(left, slice));
    }
    return false;
}

} // namespace vorq::gateway
