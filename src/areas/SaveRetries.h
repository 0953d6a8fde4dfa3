#pragma once

#include "platform/Clock.h"

#include <functional>
#include <optional>

namespace vorq {

/// Tries again, for as long as it takes, to write what could not be written: each second at first,
/// since another program may be about to finish, then each quarter of a minute. Main thread only.
class SaveRetries {
  public:
    /// The clock must outlive it. `retry` gives whether all is written.
    SaveRetries(Clock& clock, std::function<bool()> retry);
    SaveRetries(const SaveRetries&) = delete;
    SaveRetries& operator=(const SaveRetries&) = delete;
    ~SaveRetries();

    /// There is something to write. While tries are under way this changes nothing.
    void request();

  private:
    void wait();
    void handleTimer();

    Clock& m_clock;
    std::function<bool()> m_retry;
    std::optional<Clock::TimerId> m_timer;
    int m_tries = 0;
};

} // namespace vorq
