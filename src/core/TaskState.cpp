#include "core/TaskState.h"

#include "library/LibraryStore.h"
#include "platform/Clock.h"
#include "support/StableSort.h"

namespace vorq {

void TaskState::reload() {
    const Date now = dateOf(m_clock.wallTime());
    std::vector<HubTask> tasks = m_store.loadTasks();
    std::vector<HubTaskColumn> columns = m_store.loadTaskColumns(now);
    HubTaskBoard board = migrateHubTasks(std::move(tasks), std::move(columns), now);
    m_columns.replace(std::move(board.columns));
    stableSort(board.tasks, sortHubTasks);
    m_tasks.replace(std::move(board.tasks));
    m_store.save(m_columns.records());
    m_store.save(m_tasks.records());
}

} // namespace vorq
