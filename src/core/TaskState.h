#pragma once

#include "core/HubLists.h"

#include <QObject>

namespace vorq {

class Clock;
class LibraryStore;

/// The area of the task board. Main thread only.
class TaskState final : public QObject {
    Q_OBJECT
    Q_PROPERTY(vorq::HubTaskList* hubTasks READ taskModel CONSTANT)
    Q_PROPERTY(vorq::HubTaskColumnList* hubTaskColumns READ columnModel CONSTANT)

  public:
    /// Both must outlive this object. The lists are empty until they are reloaded.
    TaskState(const LibraryStore& store, Clock& clock) : m_store(store), m_clock(clock) {}

    [[nodiscard]] const HubTaskList& hubTasks() const { return m_tasks; }
    [[nodiscard]] const HubTaskColumnList& hubTaskColumns() const { return m_columns; }
    [[nodiscard]] HubTaskList* taskModel() { return &m_tasks; }
    [[nodiscard]] HubTaskColumnList* columnModel() { return &m_columns; }

    /// Takes in the board as it stands in its files, with all that older versions lack, and writes
    /// it back.
    void reload();

  private:
    const LibraryStore& m_store;
    Clock& m_clock;
    HubTaskList m_tasks;
    HubTaskColumnList m_columns;
};

} // namespace vorq
