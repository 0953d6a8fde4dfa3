#pragma once

#include "core/HubLists.h"
#include "library/LibraryFile.h"

#include <QObject>

namespace vorq {

class Clock;

/// The area of the tracker boards. Main thread only.
class TrackerState final : public QObject {
    Q_OBJECT
    Q_PROPERTY(vorq::HubTrackerList* hubTrackers READ trackerModel CONSTANT)

  public:
    /// Both must outlive this object. The list is empty until it is reloaded.
    TrackerState(const LibraryStore& store, Clock& clock) : m_file(store), m_clock(clock) {}

    [[nodiscard]] const HubTrackerList& hubTrackers() const { return m_trackers; }
    [[nodiscard]] HubTrackerList* trackerModel() { return &m_trackers; }

    /// Takes in the boards as they stand in their file, in its order.
    void reload();

    /// Takes in what other programs have changed in the file since.
    void takeInChanges();

  private:
    LibraryFile<HubTracker> m_file;
    Clock& m_clock;
    HubTrackerList m_trackers;
};

} // namespace vorq
