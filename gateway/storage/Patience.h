#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <optional>

namespace vorq::gateway {

/// The threads that wait for a database that others hold, or that is away. Thread-safe.
class Patience {
  public:
    /// How long that may last before threads give up.
    static constexpr std::chrono::seconds kLimit{2};

    /// Runs the work until it throws no DatabaseError that says busy, or patience is over.
    void attempt(const std::function<void()>& work);

  private:
    using Moment = std::chrono::steady_clock::time_point;

    /// How long the database has been found busy, now included.
    [[nodiscard]] std::chrono::steady_clock::duration busyFor();

    std::mutex m_mutex;
    std::optional<Moment> m_busySince;
    Moment m_lastBusy;
};

} // namespace vorq::gateway
