#pragma once

#include "areas/RecordList.h"
#include "library/records/SavedChat.h"
#include "library/records/SavedNote.h"

namespace vorq {

/// The notes, the newest first.
class NoteList final : public RecordList<SavedNote> {
    Q_OBJECT

  public:
    enum DataRole {
        IdRole = Qt::UserRole + 1,
        TitleRole,
        SnippetRole, ///< "" without one
        AreaRole,    ///< its raw string
        TextRole,
        ThoughtsRole,
        FlashcardCountRole,
        CreatedAtRole,
    };

    using RecordList::RecordList;

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  protected:
    [[nodiscard]] QVariant value(const SavedNote& note, int role) const override;
};

/// The kept conversations of the panel, the newest first.
class ChatList final : public RecordList<SavedChat> {
    Q_OBJECT

  public:
    enum DataRole {
        IdRole = Qt::UserRole + 1,
        TitleRole,
        MessageCountRole,
        CreatedAtRole,
    };

    using RecordList::RecordList;

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  protected:
    [[nodiscard]] QVariant value(const SavedChat& chat, int role) const override;
};

} // namespace vorq
