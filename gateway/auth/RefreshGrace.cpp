#include "auth/RefreshGrace.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

constexpr std::int64_t kGraceMs = 10'000;

int wholeSeconds(std::int64_t ms) {
    return static_cast<int>((ms + 999) / 1000);
}

} // namespace

void RefreshGrace::begin(std::int64_t familyId, std::int64_t generation) {
    const std::scoped_lock lock(m_mutex);
    std::erase_if(m_last, [this](const auto& entry) { return msLeft(entry.second) == 0; });
    m_last.insert_or_assign(familyId, Trade{generation, m_clock.uptimeMs()});
}

int RefreshGrace::secondsLeft(std::int64_t familyId, std::int64_t generation) const {
    const std::scoped_lock lock(m_mutex);
    const auto entry = m_last.find(familyId);
    if (entry == m_last.end() || entry->second.generation != generation) return 0;
    return wholeSeconds(msLeft(entry->second));
}

int RefreshGrace::secondsLeftOf(std::int64_t tradedAtMs) const {
    const std::int64_t passed = m_clock.nowMs() - tradedAtMs;
    // The clocks of two gateways differ a little. By more, one was set, and nothing can be told.
    if (passed < -kGraceMs || passed >= kGraceMs) return 0;
    return wholeSeconds(std::min(kGraceMs, kGraceMs - passed));
}

std::int64_t RefreshGrace::msLeft(const Trade& trade) const {
    return std::max<std::int64_t>(0, trade.uptimeMs + kGraceMs - m_clock.uptimeMs());
}

} // namespace vorq::gateway
