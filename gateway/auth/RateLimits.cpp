#include "auth/RateLimits.h"

#include "storage/AttemptTable.h"

#include <algorithm>
#include <cstdint>

namespace vorq::gateway {
namespace {

std::string keyOf(const RateLimit& limit) {
    return std::string(limit.purpose) + '\0' + limit.key;
}

} // namespace

RateLimiter& LocalRateLimits::limiterFor(const RateLimit& limit) {
    const auto entry = m_limiters.find(limit.purpose);
    if (entry != m_limiters.end()) return entry->second;
    return m_limiters.try_emplace(std::string(limit.purpose), m_clock, limit.perMinute)
        .first->second;
}

int LocalRateLimits::take(std::span<const RateLimit> limits) {
    const std::scoped_lock lock(m_mutex);
    int wait = 0;
    for (const RateLimit& limit : limits)
        wait = std::max(wait, limiterFor(limit).secondsToWait(limit.key));
    if (wait > 0) return wait;
    for (const RateLimit& limit : limits)
        limiterFor(limit).spend(limit.key);
    return 0;
}

void LocalRateLimits::giveBack(std::span<const RateLimit> limits) {
    const std::scoped_lock lock(m_mutex);
    for (const RateLimit& limit : limits)
        limiterFor(limit).giveBack(limit.key);
}

int SharedRateLimits::take(std::span<const RateLimit> limits) {
    const std::int64_t now = m_clock.nowMs();
    auto turn = m_database.write();
    AttemptTable attempts(turn.database());
    std::size_t taken = 0;
    while (taken < limits.size() &&
           attempts.take(keyOf(limits[taken]), limits[taken].perMinute, now)) {
        ++taken;
    }
    std::int64_t waitMs = 0;
    if (taken < limits.size()) {
        for (const RateLimit& limit : limits.first(taken))
            attempts.giveBack(keyOf(limit), limit.perMinute);
        for (const RateLimit& limit : limits)
            waitMs = std::max(waitMs, attempts.msToWait(keyOf(limit), limit.perMinute, now));
        waitMs = std::max<std::int64_t>(waitMs, 1);
    }
    turn.commit();
    return static_cast<int>((waitMs + 999) / 1000);
}

void SharedRateLimits::giveBack(std::span<const RateLimit> limits) {
    try {
        auto turn = m_database.write();
        AttemptTable attempts(turn.database());
        for (const RateLimit& limit : limits)
            attempts.giveBack(keyOf(limit), limit.perMinute);
        turn.commit();
    } catch (const DatabaseError&) {
        return;
    }
}

} // namespace vorq::gateway
