#pragma once

#include <QCoroTask>
#include <QDateTime>

#include <chrono>
#include <cstdint>
#include <functional>
#include <stop_token>

namespace vorq {

/// The one source of time: a continuous clock, the time of day, and timers. Main thread only.
class Clock {
  public:
    using Duration = std::chrono::nanoseconds;
    using TimerId = std::uint64_t;

    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// Time since some fixed moment; it never goes back and counts suspension of the machine.
    [[nodiscard]] virtual Duration now() const = 0;

    /// The time of day, in UTC.
    [[nodiscard]] virtual QDateTime wallTime() const = 0;

    /// Calls back once from the event loop when the delay is over. A delay of zero or less is due
    /// at once.
    virtual TimerId after(Duration delay, std::function<void()> callback) = 0;

    /// Forgets a timer; one that has fired or is unknown is left alone.
    virtual void cancel(TimerId timer) = 0;
};

/// Waits for the duration. A stopped sleep ends early as if it were over; the caller looks at its
/// stop token. The clock must outlive the wait.
QCoro::Task<> sleepFor(Clock& clock, Clock::Duration duration, std::stop_token stop);

} // namespace vorq
