#include "areas/TaskState.h"

#include "platform/Clock.h"
#include "support/StableSort.h"

namespace vorq {

void TaskState::reload() {
    std::vector<HubTask> tasks = m_taskFile.load(m_tasks.records());
    show(std::move(tasks), m_columnFile.load(m_columns.records(), dateOf(m_clock.wallTime())));
    save();
}

void TaskState::takeInChanges() {
    auto tasks = m_taskFile.takeIn(m_tasks.records());
    auto columns = m_columnFile.takeIn(m_columns.records(), dateOf(m_clock.wallTime()));
    const bool isChanged = tasks || columns;
    follow(std::move(tasks), std::move(columns));
    const bool hasMore = isChanged && !(m_columnFile.holds(m_columns.records()) &&
                                        m_taskFile.holds(m_tasks.records()));
    if (hasMore || m_columnFile.isDue() || m_taskFile.isDue()) save();
}

bool TaskState::retrySaves(std::chrono::milliseconds patience, bool isLast) {
    auto columns =
        m_columnFile.retry(m_columns.records(), patience, isLast, dateOf(m_clock.wallTime()));
    if (m_columnFile.unsaved()) patience = {};
    follow(m_taskFile.retry(m_tasks.records(), patience, isLast), std::move(columns));
    return !m_columnFile.unsaved() && !m_taskFile.unsaved();
}

// What is shown of changes that were taken in.
void TaskState::follow(std::optional<std::vector<HubTask>> tasks,
                       std::optional<std::vector<HubTaskColumn>> columns) {
    if (tasks || columns)
        show(tasks ? *std::move(tasks) : m_tasks.records(),
             columns ? *std::move(columns) : m_columns.records());
    if (m_columnFile.unsaved() || m_taskFile.unsaved()) emit savesAreDue();
}

void TaskState::show(std::vector<HubTask> tasks, std::vector<HubTaskColumn> columns) {
    HubTaskBoard board =
        migrateHubTasks(std::move(tasks), std::move(columns), dateOf(m_clock.wallTime()));
    m_columns.replace(std::move(board.columns));
    stableSort(board.tasks, sortHubTasks);
    m_tasks.replace(std::move(board.tasks));
}

// The columns first: a task without its column would lose its place. At a launch neither has
// changed as a rule, and waiting for the disk twice would be most of what the launch takes.
void TaskState::save() {
    auto columns = m_columnFile.settle(m_columns.records(), dateOf(m_clock.wallTime()));
    follow(m_taskFile.settle(m_tasks.records()), std::move(columns));
}

} // namespace vorq
