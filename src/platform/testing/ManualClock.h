#pragma once

#include "platform/Clock.h"

#include <map>

namespace vorq {

/// A clock that stands still until it is advanced. It starts at zero, on 2026-01-01 00:00 UTC.
class ManualClock final : public Clock {
  public:
    [[nodiscard]] Duration now() const override { return m_now; }
    [[nodiscard]] QDateTime wallTime() const override;
    TimerId after(Duration delay, std::function<void()> callback) override;
    void cancel(TimerId timer) override;

    /// Moves time on. Everything that becomes due runs in order of its moment, with the clock
    /// showing that moment, and the event loop is run dry after each.
    void advance(Duration duration);

    /// Time goes by while the main thread is busy: what has become due runs late, before anything
    /// that was posted meanwhile.
    void passUnattended(Duration duration);

    /// Runs what is posted to the event loop, and what that posts in turn, without moving time.
    void settle();

    /// Until the first timer is due; the longest time there is if none waits.
    [[nodiscard]] Duration untilNextTimer() const {
        return m_timers.empty() ? Duration::max() : m_timers.begin()->first - m_now;
    }

    [[nodiscard]] std::size_t pendingTimers() const { return m_timers.size(); }

  private:
    struct Timer {
        TimerId id;
        std::function<void()> callback;
    };

    Duration m_now{0};
    TimerId m_lastId = 0;
    std::multimap<Duration, Timer> m_timers;
};

} // namespace vorq
