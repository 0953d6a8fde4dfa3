#pragma once

#include "areas/HubLists.h"
#include "library/store/LibraryFile.h"

#include <QObject>

#include <chrono>
#include <optional>

namespace vorq {

class Clock;

/// The area of the task board. Main thread only.
class TaskState final : public QObject {
    Q_OBJECT
    Q_PROPERTY(vorq::HubTaskList* hubTasks READ taskModel CONSTANT)
    Q_PROPERTY(vorq::HubTaskColumnList* hubTaskColumns READ columnModel CONSTANT)

  public:
    /// Both must outlive this object. The lists are empty until they are reloaded.
    TaskState(const LibraryStore& store, Clock& clock)
        : m_taskFile(store), m_columnFile(store), m_clock(clock) {}

    [[nodiscard]] const HubTaskList& hubTasks() const { return m_tasks; }
    [[nodiscard]] const HubTaskColumnList& hubTaskColumns() const { return m_columns; }
    [[nodiscard]] HubTaskList* taskModel() { return &m_tasks; }
    [[nodiscard]] HubTaskColumnList* columnModel() { return &m_columns; }

    /// Takes in the board as it stands in its files, with all that older versions lack, and writes
    /// it back.
    void reload();

    /// Takes in what other programs have changed in the files since.
    void takeInChanges();

    /// Tries again to write what could not be written. False if something still cannot.
    bool retrySaves(std::chrono::milliseconds patience, bool isLast);

  signals:
    /// Something could not be written, or is in memory alone; it is for retrySaves().
    void savesAreDue();

  private:
    void follow(std::optional<std::vector<HubTask>> tasks,
                std::optional<std::vector<HubTaskColumn>> columns);
    void show(std::vector<HubTask> tasks, std::vector<HubTaskColumn> columns);
    void save();

    LibraryFile<HubTask> m_taskFile;
    LibraryFile<HubTaskColumn> m_columnFile;
    Clock& m_clock;
    HubTaskList m_tasks;
    HubTaskColumnList m_columns;
};

} // namespace vorq
