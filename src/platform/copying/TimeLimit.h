#pragma once

#include "platform/Clock.h"

#include <stop_token>
#include <utility>

namespace vorq {

/// Stops a token when a limit of time is over, or another token is stopped. The clock must outlive
/// it. Main thread only.
class TimeLimit {
  public:
    TimeLimit(Clock& clock, Clock::Duration limit, std::stop_token stop)
        : m_clock(clock),
          m_timer(clock.after(limit, [source = m_source]() mutable { source.request_stop(); })),
          m_onStop(std::move(stop), Forward{m_source}) {}
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;
    ~TimeLimit() { m_clock.cancel(m_timer); }

    [[nodiscard]] std::stop_token token() const { return m_source.get_token(); }

  private:
    struct Forward {
        std::stop_source source;
        void operator()() { source.request_stop(); }
    };

    Clock& m_clock;
    std::stop_source m_source;
    Clock::TimerId m_timer;
    std::stop_callback<Forward> m_onStop;
};

} // namespace vorq
