#pragma once

#include "support/Clock.h"

#include <cstdint>
#include <mutex>
#include <unordered_map>

namespace vorq::gateway {

/// Remembers for a moment which refresh tokens were traded: a second request with the same token
/// may have overlapped with the first, whose answer is still on its way. Thread-safe.
class RefreshGrace {
  public:
    explicit RefreshGrace(const Clock& clock) : m_clock(clock) {}

    /// The sign-in's token of that generation was traded.
    void begin(std::int64_t familyId, std::int64_t generation);
    /// In whole seconds, 0 if it is over or another token was traded last.
    [[nodiscard]] int secondsLeft(std::int64_t familyId, std::int64_t generation) const;
    /// The same of a trade that another gateway noted by the time of day.
    [[nodiscard]] int secondsLeftOf(std::int64_t tradedAtMs) const;

  private:
    struct Trade {
        std::int64_t generation = 0;
        std::int64_t uptimeMs = 0;
    };
    [[nodiscard]] std::int64_t msLeft(const Trade& trade) const;

    const Clock& m_clock;
    mutable std::mutex m_mutex;
    std::unordered_map<std::int64_t, Trade> m_last; // by sign-in
};

} // namespace vorq::gateway
