#include "capture/selection/CaptureThread.h"

#include "support/async/Wakeup.h"

#include <atomic>
#include <optional>
#include <utility>

namespace vorq {

struct CaptureThread::Run {
    std::stop_source stop;
    std::atomic<bool> isDone = false;
    // Of the main thread.
    Wakeup wake;
    std::optional<Clock::TimerId> limit;
    bool hasEnded = false;
};

// Whoever waits may have given up long before this ends.
QCoro::Task<> CaptureThread::perform(BlockingThread& thread, std::shared_ptr<Run> running,
                                     Job job) {
    const std::stop_token stopped = running->stop.get_token();
    co_await thread.run(
        [running, job = std::move(job)](const std::stop_token& stop) {
            if (!stop.stop_requested()) job(stop);
            running->isDone = true;
        },
        stopped);
    running->hasEnded = true;
    running->wake.fire();
}

QCoro::Task<bool> CaptureThread::run(Job job, Clock::Duration limit, std::stop_token stop) {
    // After the wait this object may be gone, so all that is needed is kept here.
    Clock& clock = m_clock;
    const auto running = std::make_shared<Run>();
    // The clock too may be gone when the wait ends, so a stop gives the timer up at once.
    const auto forgetLimit = [running, &clock] {
        if (const auto timer = std::exchange(running->limit, std::nullopt)) clock.cancel(*timer);
    };
    const auto end = [running, forgetLimit] {
        forgetLimit();
        running->stop.request_stop();
        running->wake.fire();
    };
    const std::stop_callback onStop(std::move(stop), end);
    const std::stop_callback onDestruction(m_stop.get_token(), end);
    // While the main thread is busy, as with the first picture of a window, the limit may be seen
    // before the end that came in time.
    running->limit = clock.after(limit, [running, end] {
        running->limit.reset();
        if (!running->isDone) end();
    });
    perform(m_thread, running, std::move(job));
    co_await running->wake;
    forgetLimit();
    co_return running->hasEnded && !running->stop.stop_requested();
}

} // namespace vorq
