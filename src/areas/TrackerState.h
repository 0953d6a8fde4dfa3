#pragma once

#include "areas/HubLists.h"
#include "library/store/LibraryFile.h"

#include <QObject>

#include <chrono>
#include <optional>

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

    /// Tries again to write what is in memory alone. False if it still cannot be written.
    bool retrySaves(std::chrono::milliseconds patience, bool isLast);

  signals:
    /// Something is in memory alone; it is for retrySaves().
    void savesAreDue();

  private:
    void follow(std::optional<std::vector<HubTracker>> changed);

    LibraryFile<HubTracker> m_file;
    Clock& m_clock;
    HubTrackerList m_trackers;
};

} // namespace vorq
