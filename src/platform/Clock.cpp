#include "platform/Clock.h"

#include "support/async/Wakeup.h"

namespace vorq {

QCoro::Task<> sleepFor(Clock& clock, Clock::Duration duration, std::stop_token stop) {
    if (stop.stop_requested()) co_return;
    const Wakeup wake;
    const Clock::TimerId timer = clock.after(duration, [wake] { wake.fire(); });
    const std::stop_callback onStop(stop, [&clock, timer, wake] {
        clock.cancel(timer);
        wake.fire();
    });
    co_await wake;
}

} // namespace vorq
