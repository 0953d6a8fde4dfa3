#include "areas/TrackerState.h"

#include "platform/Clock.h"

namespace vorq {

void TrackerState::reload() {
    follow(m_file.load(m_trackers.records(), dateOf(m_clock.wallTime())));
}

void TrackerState::takeInChanges() {
    follow(m_file.takeIn(m_trackers.records(), dateOf(m_clock.wallTime())));
}

bool TrackerState::retrySaves(std::chrono::milliseconds patience, bool isLast) {
    follow(m_file.retry(m_trackers.records(), patience, isLast, dateOf(m_clock.wallTime())));
    return !m_file.unsaved();
}

void TrackerState::follow(std::optional<std::vector<HubTracker>> changed) {
    if (changed) m_trackers.replace(*std::move(changed));
    if (m_file.unsaved()) emit savesAreDue();
}

} // namespace vorq
