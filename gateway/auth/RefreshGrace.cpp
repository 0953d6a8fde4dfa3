#include "auth/RefreshGrace.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

constexpr std::int64_t kGraceMs = 10'000;

} // namespace

void RefreshGrace::begin(std::int64_t familyId, std::int64_t generation) {
    std::erase_if(last_, [this](const auto& entry) { return msLeft(entry.second) == 0; });
    last_.insert_or_assign(familyId, Trade{generation, clock_.uptimeMs()});
}

int RefreshGrace::secondsLeft(std::int64_t familyId, std::int64_t generation) const {
    const auto entry = last_.find(familyId);
    if (entry == last_.end() || entry->second.generation != generation) return 0;
    return static_cast<int>((msLeft(entry->second) + 999) / 1000);
}

std::int64_t RefreshGrace::msLeft(const Trade& trade) const {
    return std::max<std::int64_t>(0, trade.uptimeMs + kGraceMs - clock_.uptimeMs());
}

} // namespace vorq::gateway
