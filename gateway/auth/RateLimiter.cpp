#include "auth/RateLimiter.h"

#include <algorithm>
#include <cmath>

namespace vorq::gateway {
namespace {

constexpr std::size_t kMostKeys = 4096;
constexpr double kMsPerMinute = 60'000;

} // namespace

RateLimiter::RateLimiter(const Clock& clock, int perMinute)
    : clock_(clock), perMinute_(perMinute) {}

int RateLimiter::secondsToWait(const std::string& key) const {
    const std::scoped_lock lock(mutex_);
    const auto entry = buckets_.find(key);
    const double left = entry == buckets_.end() ? perMinute_ : allowance(entry->second);
    if (left >= 1) return 0;
    return std::max(1, static_cast<int>(std::ceil((1 - left) * 60 / perMinute_)));
}

void RateLimiter::spend(const std::string& key) {
    const std::scoped_lock lock(mutex_);
    if (buckets_.size() >= kMostKeys && !buckets_.contains(key)) forgetFullBuckets();
    Bucket& bucket = buckets_.try_emplace(key, Bucket{perMinute_, clock_.uptimeMs()}).first->second;
    bucket.allowance = std::max(0.0, allowance(bucket) - 1);
    bucket.updatedMs = clock_.uptimeMs();
}

std::size_t RateLimiter::trackedKeys() const {
    const std::scoped_lock lock(mutex_);
    return buckets_.size();
}

double RateLimiter::allowance(const Bucket& bucket) const {
    const auto passed = static_cast<double>(clock_.uptimeMs() - bucket.updatedMs);
    return std::min(perMinute_, bucket.allowance + passed * perMinute_ / kMsPerMinute);
}

void RateLimiter::forgetFullBuckets() {
    std::erase_if(buckets_,
                  [this](const auto& entry) { return allowance(entry.second) >= perMinute_; });
    if (buckets_.size() >= kMostKeys) buckets_.clear();
}

} // namespace vorq::gateway
