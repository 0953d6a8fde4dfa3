#include "support/Pacer.h"

#include <algorithm>
#include <thread>

namespace vorq::gateway {

bool SleepingPacer::pause(std::chrono::milliseconds time, const Cancelled& cancelled) {
    using Steady = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds slice{50};
    const Steady::time_point end = Steady::now() + time;
    while (!cancelled()) {
        const Steady::duration left = end - Steady::now();
        if (left <= Steady::duration::zero()) return true;
        std::this_thread::sleep_for(std::min<Steady::duration>(left, slice));
    }
    return false;
}

} // namespace vorq::gateway
