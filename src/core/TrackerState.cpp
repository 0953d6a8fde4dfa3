#include "core/TrackerState.h"

#include "library/LibraryStore.h"
#include "platform/Clock.h"

namespace vorq {

void TrackerState::reload() {
    m_trackers.replace(m_store.loadTrackers(dateOf(m_clock.wallTime())));
}

} // namespace vorq
