#pragma once

#include "support/Clock.h"

#include <atomic>

namespace vorq::gateway::testing {

/// A clock that stands still until told otherwise.
class ManualClock final : public Clock {
  public:
    [[nodiscard]] std::int64_t nowMs() const override { return m_now; }
    [[nodiscard]] std::int64_t uptimeMs() const override { return m_uptime; }
    void advanceSeconds(std::int64_t seconds) {
        m_now += seconds * 1000;
        m_uptime += seconds * 1000;
    }
    /// Somebody sets the time of day.
    void setTimeOfDay(std::int64_t secondsLater) { m_now += secondsLater * 1000; }

  private:
    std::atomic<std::int64_t> m_now = 1'700'000'000'000;
    std::atomic<std::int64_t> m_uptime = 1'000'000;
};

} // namespace vorq::gateway::testing
