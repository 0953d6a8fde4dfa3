#pragma once

#include "areas/RecordList.h"
#include "library/records/HubAIChat.h"
#include "library/records/HubTask.h"
#include "library/records/HubTracker.h"

namespace vorq {

/// The conversations of the hub: what is not saved yet, then the latest first.
class HubChatList final : public RecordList<HubAIChat> {
    Q_OBJECT

  public:
    enum DataRole {
        IdRole = Qt::UserRole + 1,
        TitleRole,
        IsSavedRole,
        MessageCountRole,
        UpdatedAtRole,
    };

    using RecordList::RecordList;

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  protected:
    [[nodiscard]] QVariant value(const HubAIChat& chat, int role) const override;
};

/// The tasks of the board in their order.
class HubTaskList final : public RecordList<HubTask> {
    Q_OBJECT

  public:
    enum DataRole {
        IdRole = Qt::UserRole + 1,
        TitleRole,
        DoneRole,
        DueDateRole,  ///< invalid without one
        AreaRole,     ///< its raw string
        ColumnIdRole, ///< a null id without a column
        OrderRole,
    };

    using RecordList::RecordList;

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  protected:
    [[nodiscard]] QVariant value(const HubTask& task, int role) const override;
};

/// The columns of the board.
class HubTaskColumnList final : public RecordList<HubTaskColumn> {
    Q_OBJECT

  public:
    enum DataRole {
        IdRole = Qt::UserRole + 1,
        NameRole,
        IconRole,
        ColorRole, ///< its raw string
        IsCollapsedRole,
    };

    using RecordList::RecordList;

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  protected:
    [[nodiscard]] QVariant value(const HubTaskColumn& column, int role) const override;
};

/// The tracker boards in the user's order.
class HubTrackerList final : public RecordList<HubTracker> {
    Q_OBJECT

  public:
    enum DataRole {
        IdRole = Qt::UserRole + 1,
        TitleRole,
        UrgencyRole, ///< its raw string
        EntryCountRole,
        CreatedAtRole,
    };

    using RecordList::RecordList;

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  protected:
    [[nodiscard]] QVariant value(const HubTracker& tracker, int role) const override;
};

} // namespace vorq
