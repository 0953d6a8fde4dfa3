#pragma once

#include "support/Clock.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>

namespace vorq::gateway {

/// Allows each key a burst of attempts, and then as many a minute. Thread-safe.
class RateLimiter {
  public:
    /// `perMinute` at least 1. `clock` outlives the limiter.
    RateLimiter(const Clock& clock, int perMinute);

    /// 0 if an attempt may be made, else the seconds until it may.
    [[nodiscard]] int secondsToWait(const std::string& key) const;
    /// An attempt was made.
    void spend(const std::string& key);
    /// An attempt counts no more.
    void giveBack(const std::string& key);
    [[nodiscard]] std::size_t trackedKeys() const;

  private:
    struct Bucket {
        double allowance = 0;
        std::int64_t updatedMs = 0; ///< uptime
    };
    [[nodiscard]] double allowance(const Bucket& bucket) const;
    void makeRoom();

    const Clock& m_clock;
    double m_perMinute;
    mutable std::mutex m_mutex;
    std::unordered_map<std::string, Bucket> m_buckets;
};

} // namespace vorq::gateway
