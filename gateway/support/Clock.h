#pragma once

#include <cstdint>

namespace vorq::gateway {

/// Time, behind an interface so that expiry is tested without waiting.
class Clock {
  public:
    virtual ~Clock() = default;
    /// Milliseconds since 1970 UTC. May be called from any thread.
    [[nodiscard]] virtual std::int64_t nowMs() const = 0;
    /// Milliseconds since the computer was started; they never go back. May be called from any
    /// thread.
    [[nodiscard]] virtual std::int64_t uptimeMs() const = 0;
};

class SystemClock final : public Clock {
  public:
    [[nodiscard]] std::int64_t nowMs() const override;
    [[nodiscard]] std::int64_t uptimeMs() const override;
};

} // namespace vorq::gateway
