#include "auth/RateLimiter.h"

#include <algorithm>
#include <cmath>

namespace vorq::gateway {
namespace {

constexpr std::size_t kMostAddresses = 4096;
constexpr double kMsPerMinute = 60'000;

} // namespace

RateLimiter::RateLimiter(const Clock& clock, int perMinute)
    : clock_(clock), perMinute_(perMinute) {}

int RateLimiter::secondsToWait(const std::string& address) {
    const std::scoped_lock lock(mutex_);
    const std::int64_t now = clock_.nowMs();
    if (buckets_.size() >= kMostAddresses && !buckets_.contains(address)) forgetFullBuckets(now);
    const auto [entry, isNew] = buckets_.try_emplace(address, Bucket{perMinute_, now});
    Bucket& bucket = entry->second;
    // A clock that was set back gives nothing and takes nothing.
    const auto passed = static_cast<double>(std::max<std::int64_t>(0, now - bucket.updatedMs));
    bucket.allowance = std::min(perMinute_, bucket.allowance + passed * perMinute_ / kMsPerMinute);
    bucket.updatedMs = now;
    if (bucket.allowance >= 1) {
        bucket.allowance -= 1;
        return 0;
    }
    return std::max(1, static_cast<int>(std::ceil((1 - bucket.allowance) * 60 / perMinute_)));
}

std::size_t RateLimiter::trackedAddresses() const {
    const std::scoped_lock lock(mutex_);
    return buckets_.size();
}

void RateLimiter::forgetFullBuckets(std::int64_t nowMs) {
    std::erase_if(buckets_, [&](const auto& entry) {
        const auto passed = static_cast<double>(nowMs - entry.second.updatedMs);
        return entry.second.allowance + passed * perMinute_ / kMsPerMinute >= perMinute_;
    });
    if (buckets_.size() >= kMostAddresses) buckets_.clear();
}

} // namespace vorq::gateway
