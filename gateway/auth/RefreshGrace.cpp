#include "auth/RefreshGrace.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

constexpr std::int64_t kGraceMs = 10'000;

} // namespace

void RefreshGrace::begin(std::int64_t familyId, std::int64_t generation) {
    std::erase_if(m_last, [this](const auto& entry) { return msLeft(entry.second) == 0; });
    m_last.insert_or_assign(familyId, Trade{generation, m_clock.uptimeMs()});
}

int RefreshGrace::secondsLeft(std::int64_t familyId, std::int64_t generation) const {
    const auto entry = m_last.find(familyId);
    if (entry == m_last.end() || entry->second.generation != generation) return 0;
    return static_cast<int>((msLeft(entry->second) + 999) / 1000);
}

std::int64_t RefreshGrace::msLeft(const Trade& trade) const {
    return std::max<std::int64_t>(0, trade.uptimeMs + kGraceMs - m_clock.uptimeMs());
}

} // namespace vorq::gateway
