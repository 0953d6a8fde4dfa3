#include "areas/HubLists.h"

#include "support/RecordTable.h"

#include <QDateTime>

namespace vorq {
namespace {

constexpr auto hubChatRoles = recordTable<HubAIChat>(
    HubChatList::TitleRole,
    {
        {HubChatList::IdRole, "chatId", [](const HubAIChat& chat) -> QVariant { return chat.id; }},
        {HubChatList::TitleRole, "title",
         [](const HubAIChat& chat) -> QVariant { return chat.title; }},
        {HubChatList::IsSavedRole, "isSaved",
         [](const HubAIChat& chat) -> QVariant { return chat.isSaved; }},
        {HubChatList::MessageCountRole, "messageCount",
         [](const HubAIChat& chat) -> QVariant { return static_cast<int>(chat.messages.size()); }},
        {HubChatList::UpdatedAtRole, "updatedAt",
         [](const HubAIChat& chat) -> QVariant { return dateTimeOf(chat.updatedAt); }},
    });

constexpr auto hubTaskRoles = recordTable<HubTask>(
    HubTaskList::TitleRole,
    {
        {HubTaskList::IdRole, "taskId", [](const HubTask& task) -> QVariant { return task.id; }},
        {HubTaskList::TitleRole, "title",
         [](const HubTask& task) -> QVariant { return task.title; }},
        {HubTaskList::DoneRole, "done", [](const HubTask& task) -> QVariant { return task.done; }},
        {HubTaskList::DueDateRole, "dueDate",
         [](const HubTask& task) -> QVariant {
             return task.dueDate ? dateTimeOf(*task.dueDate) : QDateTime();
         }},
        {HubTaskList::AreaRole, "area",
         [](const HubTask& task) -> QVariant { return rawString(task.area); }},
        {HubTaskList::ColumnIdRole, "columnId",
         [](const HubTask& task) -> QVariant { return task.columnID.value_or(QUuid()); }},
        {HubTaskList::OrderRole, "orderInColumn",
         [](const HubTask& task) -> QVariant { return task.orderInColumn; }},
    });

constexpr auto hubTaskColumnRoles = recordTable<HubTaskColumn>(
    HubTaskColumnList::NameRole,
    {
        {HubTaskColumnList::IdRole, "columnId",
         [](const HubTaskColumn& column) -> QVariant { return column.id; }},
        {HubTaskColumnList::NameRole, "name",
         [](const HubTaskColumn& column) -> QVariant { return column.name; }},
        {HubTaskColumnList::IconRole, "icon",
         [](const HubTaskColumn& column) -> QVariant { return column.icon; }},
        {HubTaskColumnList::ColorRole, "color",
         [](const HubTaskColumn& column) -> QVariant { return rawString(column.color); }},
        {HubTaskColumnList::IsCollapsedRole, "isCollapsed",
         [](const HubTaskColumn& column) -> QVariant { return column.isCollapsed; }},
    });

constexpr auto hubTrackerRoles = recordTable<HubTracker>(
    HubTrackerList::TitleRole,
    {
        {HubTrackerList::IdRole, "trackerId",
         [](const HubTracker& tracker) -> QVariant { return tracker.id; }},
        {HubTrackerList::TitleRole, "title",
         [](const HubTracker& tracker) -> QVariant { return tracker.title; }},
        {HubTrackerList::UrgencyRole, "urgency",
         [](const HubTracker& tracker) -> QVariant { return rawString(tracker.urgency); }},
        {HubTrackerList::EntryCountRole, "entryCount",
         [](const HubTracker& tracker) -> QVariant {
             return static_cast<int>(tracker.entries.size());
         }},
        {HubTrackerList::CreatedAtRole, "createdAt",
         [](const HubTracker& tracker) -> QVariant { return dateTimeOf(tracker.createdAt); }},
    });

} // namespace

QVariant HubChatList::value(const HubAIChat& chat, int role) const {
    return hubChatRoles.value(chat, role);
}

QHash<int, QByteArray> HubChatList::roleNames() const {
    return hubChatRoles.roleNames();
}

QVariant HubTaskList::value(const HubTask& task, int role) const {
    return hubTaskRoles.value(task, role);
}

QHash<int, QByteArray> HubTaskList::roleNames() const {
    return hubTaskRoles.roleNames();
}

QVariant HubTaskColumnList::value(const HubTaskColumn& column, int role) const {
    return hubTaskColumnRoles.value(column, role);
}

QHash<int, QByteArray> HubTaskColumnList::roleNames() const {
    return hubTaskColumnRoles.roleNames();
}

QVariant HubTrackerList::value(const HubTracker& tracker, int role) const {
    return hubTrackerRoles.value(tracker, role);
}

QHash<int, QByteArray> HubTrackerList::roleNames() const {
    return hubTrackerRoles.roleNames();
}

} // namespace vorq
