#include "core/TrackerState.h"

#include "platform/Clock.h"

namespace vorq {

void TrackerState::reload() {
    m_trackers.replace(m_file.load(m_trackers.records(), dateOf(m_clock.wallTime())));
}

void TrackerState::takeInChanges() {
    auto changed = m_file.takeIn(m_trackers.records(), dateOf(m_clock.wallTime()));
    if (changed) m_trackers.replace(*std::move(changed));
}

} // namespace vorq
