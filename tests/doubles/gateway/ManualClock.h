#pragma once

#include "support/Clock.h"

#include <atomic>

namespace vorq::gateway::testing {

/// A clock that stands still until told otherwise.
class ManualClock final : public Clock {
  public:
    [[nodiscard]] std::int64_t nowMs() const override { return now_; }
    [[nodiscard]] std::int64_t uptimeMs() const override { return uptime_; }
    void advanceSeconds(std::int64_t seconds) {
        now_ += seconds * 1000;
        uptime_ += seconds * 1000;
    }
    /// Somebody sets the time of day.
    void setTimeOfDay(std::int64_t secondsLater) { now_ += secondsLater * 1000; }

  private:
    std::atomic<std::int64_t> now_ = 1'700'000'000'000;
    std::atomic<std::int64_t> uptime_ = 1'000'000;
};

} // namespace vorq::gateway::testing
