#include "auth/Housekeeping.h"

#include "storage/AttemptTable.h"
#include "storage/TokenTable.h"

namespace vorq::gateway {
namespace {

constexpr std::int64_t kPeriodMs = 60'000;

} // namespace

void Housekeeping::run() {
    const std::int64_t uptime = m_clock.uptimeMs();
    std::int64_t next = m_nextMs;
    if (uptime < next || !m_nextMs.compare_exchange_strong(next, uptime + kPeriodMs)) return;
    try {
        if (auto turn = m_database.tryWrite()) {
            TokenTable(turn->database()).dropExpired(m_clock.nowMs());
            AttemptTable(turn->database()).dropExpired(m_clock.nowMs());
            turn->commit();
        }
    } catch (const DatabaseError&) {
        return; // What has expired is worth nothing as it is.
    }
}

} // namespace vorq::gateway
