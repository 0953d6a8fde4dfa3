#include "areas/HubLists.h"

#include <QDateTime>

namespace vorq {

QVariant HubChatList::value(const HubAIChat& chat, int role) const {
    switch (role) {
    case IdRole:
        return chat.id;
    case Qt::DisplayRole:
    case TitleRole:
        return chat.title;
    case IsSavedRole:
        return chat.isSaved;
    case MessageCountRole:
        return static_cast<int>(chat.messages.size());
    case UpdatedAtRole:
        return dateTimeOf(chat.updatedAt);
    default:
        return {};
    }
}

QHash<int, QByteArray> HubChatList::roleNames() const {
    return {{IdRole, "chatId"},
            {TitleRole, "title"},
            {IsSavedRole, "isSaved"},
            {MessageCountRole, "messageCount"},
            {UpdatedAtRole, "updatedAt"}};
}

QVariant HubTaskList::value(const HubTask& task, int role) const {
    switch (role) {
    case IdRole:
        return task.id;
    case Qt::DisplayRole:
    case TitleRole:
        return task.title;
    case DoneRole:
        return task.done;
    case DueDateRole:
        return task.dueDate ? dateTimeOf(*task.dueDate) : QDateTime();
    case AreaRole:
        return rawString(task.area);
    case ColumnIdRole:
        return task.columnID.value_or(QUuid());
    case OrderRole:
        return task.orderInColumn;
    default:
        return {};
    }
}

QHash<int, QByteArray> HubTaskList::roleNames() const {
    return {{IdRole, "taskId"},          {TitleRole, "title"}, {DoneRole, "done"},
            {DueDateRole, "dueDate"},    {AreaRole, "area"},   {ColumnIdRole, "columnId"},
            {OrderRole, "orderInColumn"}};
}

QVariant HubTaskColumnList::value(const HubTaskColumn& column, int role) const {
    switch (role) {
    case IdRole:
        return column.id;
    case Qt::DisplayRole:
    case NameRole:
        return column.name;
    case IconRole:
        return column.icon;
    case ColorRole:
        return rawString(column.color);
    case IsCollapsedRole:
        return column.isCollapsed;
    default:
        return {};
    }
}

QHash<int, QByteArray> HubTaskColumnList::roleNames() const {
    return {{IdRole, "columnId"},
            {NameRole, "name"},
            {IconRole, "icon"},
            {ColorRole, "color"},
            {IsCollapsedRole, "isCollapsed"}};
}

QVariant HubTrackerList::value(const HubTracker& tracker, int role) const {
    switch (role) {
    case IdRole:
        return tracker.id;
    case Qt::DisplayRole:
    case TitleRole:
        return tracker.title;
    case UrgencyRole:
        return rawString(tracker.urgency);
    case EntryCountRole:
        return static_cast<int>(tracker.entries.size());
    case CreatedAtRole:
        return dateTimeOf(tracker.createdAt);
    default:
        return {};
    }
}

QHash<int, QByteArray> HubTrackerList::roleNames() const {
    return {{IdRole, "trackerId"},
            {TitleRole, "title"},
            {UrgencyRole, "urgency"},
            {EntryCountRole, "entryCount"},
            {CreatedAtRole, "createdAt"}};
}

} // namespace vorq
