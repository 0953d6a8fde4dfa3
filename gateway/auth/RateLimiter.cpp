#include "auth/RateLimiter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace vorq::gateway {
namespace {

constexpr std::size_t kMostKeys = 4096;
constexpr double kMsPerMinute = 60'000;

} // namespace

RateLimiter::RateLimiter(const Clock& clock, int perMinute)
    : m_clock(clock), m_perMinute(perMinute) {}

int RateLimiter::secondsToWait(const std::string& key) const {
    const std::scoped_lock lock(m_mutex);
    const auto entry = m_buckets.find(key);
    const double left = entry == m_buckets.end() ? m_perMinute : allowance(entry->second);
    if (left >= 1) return 0;
    return std::max(1, static_cast<int>(std::ceil((1 - left) * 60 / m_perMinute)));
}

void RateLimiter::spend(const std::string& key) {
    const std::scoped_lock lock(m_mutex);
    if (m_buckets.size() >= kMostKeys && !m_buckets.contains(key)) makeRoom();
    Bucket& bucket =
        m_buckets.try_emplace(key, Bucket{m_perMinute, m_clock.uptimeMs()}).first->second;
    bucket.allowance = std::max(0.0, allowance(bucket) - 1);
    bucket.updatedMs = m_clock.uptimeMs();
}

void RateLimiter::giveBack(const std::string& key) {
    const std::scoped_lock lock(m_mutex);
    const auto entry = m_buckets.find(key);
    if (entry == m_buckets.end()) return;
    entry->second.allowance = std::min(m_perMinute, entry->second.allowance + 1);
}

std::size_t RateLimiter::trackedKeys() const {
    const std::scoped_lock lock(m_mutex);
    return m_buckets.size();
}

double RateLimiter::allowance(const Bucket& bucket) const {
    const auto passed = static_cast<double>(m_clock.uptimeMs() - bucket.updatedMs);
    return std::min(m_perMinute, bucket.allowance + passed * m_perMinute / kMsPerMinute);
}

/// Those that have to wait stay the longest: many keys made up for the purpose free none of them.
void RateLimiter::makeRoom() {
    std::vector<double> allowances;
    allowances.reserve(m_buckets.size());
    for (const auto& [key, bucket] : m_buckets)
        allowances.push_back(allowance(bucket));
    const auto middle = allowances.begin() + static_cast<std::ptrdiff_t>(allowances.size() / 2);
    std::ranges::nth_element(allowances, middle);
    const double enough = *middle;
    std::size_t dropped = 0;
    std::erase_if(m_buckets, [&](const auto& entry) {
        return allowance(entry.second) >= enough && ++dropped <= kMostKeys / 2;
    });
}

} // namespace vorq::gateway
