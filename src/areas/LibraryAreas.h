#pragma once

#include "areas/HubState.h"
#include "areas/LibraryState.h"
#include "areas/LibraryWatch.h"
#include "areas/SaveRetries.h"
#include "areas/TaskState.h"
#include "areas/TrackerState.h"
#include "library/store/LibraryStore.h"

#include <chrono>
#include <functional>
#include <optional>

namespace vorq {

/// The areas whose lists are the files of the library. They are read together when one of them is
/// first asked for, so a program that needs none of them reads no file. Main thread only.
class LibraryAreas final {
  public:
    /// Clock and defaults must outlive the areas.
    LibraryAreas(Clock& clock, Defaults& defaults, const QString& applicationSupportFolder);

    /// Takes up the settings of the areas; reads no file of the library.
    void restore() { m_hub.restore(); }

    /// Reads all files anew and carries over what older versions left. What is better in memory
    /// than in its file stays.
    void reloadLibrary();

    /// Writes what could not be written so far, for the last time: the program ends. Blocks for
    /// some seconds while another program holds the library.
    void finish();

    /// How the user is told of damaged files; a sentence each.
    void setNoticeHandler(std::function<void(const QString& sentence)> notice);

    /// From now on, what other programs change in the files is taken in when it happens, not only
    /// with the next save.
    void watchLibrary();

    [[nodiscard]] LibraryState& library() { return loaded(m_library); }
    [[nodiscard]] HubState& hub() { return loaded(m_hub); }
    [[nodiscard]] TaskState& tasks() { return loaded(m_tasks); }
    [[nodiscard]] TrackerState& trackers() { return loaded(m_trackers); }

    [[nodiscard]] bool isLoaded() const { return m_isLoaded; }

  private:
    template<typename Area>
    Area& loaded(Area& area) {
        if (!m_isLoaded) reloadLibrary();
        return area;
    }
    void takeInChanges();
    void followChanges();
    bool retrySaves(std::chrono::milliseconds patience, bool isLast);
    [[nodiscard]] std::vector<SavedChat> legacyPanelChats();
    [[nodiscard]] bool isInFile(const std::vector<HubAIChat>& chats) const;

    Defaults& m_defaults;
    const LibraryStore m_store;
    LibraryState m_library;
    HubState m_hub;
    TaskState m_tasks;
    TrackerState m_trackers;
    bool m_isLoaded = false;
    SaveRetries m_retries;
    std::optional<LibraryWatch> m_watch;
};

} // namespace vorq
