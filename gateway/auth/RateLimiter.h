#pragma once

#include "support/Clock.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>

namespace vorq::gateway {

/// Allows each address a burst of requests, and then as many a minute. Thread-safe.
class RateLimiter {
  public:
    /// `perMinute` at least 1. `clock` outlives the limiter.
    RateLimiter(const Clock& clock, int perMinute);

    /// 0 if the request may pass, else the seconds until the next one may.
    [[nodiscard]] int secondsToWait(const std::string& address);
    [[nodiscard]] std::size_t trackedAddresses() const;

  private:
    struct Bucket {
        double allowance = 0;
        std::int64_t updatedMs = 0;
    };
    void forgetFullBuckets(std::int64_t nowMs);

    const Clock& clock_;
    double perMinute_;
    mutable std::mutex mutex_;
    std::unordered_map<std::string, Bucket> buckets_;
};

} // namespace vorq::gateway
