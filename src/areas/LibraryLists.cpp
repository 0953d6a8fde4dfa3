#include "areas/LibraryLists.h"

#include <QDateTime>

namespace vorq {

QVariant NoteList::value(const SavedNote& note, int role) const {
    switch (role) {
    case IdRole:
        return note.id;
    case Qt::DisplayRole:
    case TitleRole:
        return displayTitle(note);
    case SnippetRole:
        return noteSnippet(note).value_or(QString());
    case AreaRole:
        return rawString(note.area);
    case TextRole:
        return note.text;
    case ThoughtsRole:
        return note.thoughts;
    case FlashcardCountRole:
        return static_cast<int>(note.flashcards.size());
    case CreatedAtRole:
        return dateTimeOf(note.createdAt);
    default:
        return {};
    }
}

QHash<int, QByteArray> NoteList::roleNames() const {
    return {{IdRole, "noteId"},
            {TitleRole, "title"},
            {SnippetRole, "snippet"},
            {AreaRole, "area"},
            {TextRole, "text"},
            {ThoughtsRole, "thoughts"},
            {FlashcardCountRole, "flashcardCount"},
            {CreatedAtRole, "createdAt"}};
}

QVariant ChatList::value(const SavedChat& chat, int role) const {
    switch (role) {
    case IdRole:
        return chat.id;
    case Qt::DisplayRole:
    case TitleRole:
        return chat.title;
    case MessageCountRole:
        return static_cast<int>(chat.messages.size());
    case CreatedAtRole:
        return dateTimeOf(chat.createdAt);
    default:
        return {};
    }
}

QHash<int, QByteArray> ChatList::roleNames() const {
    return {{IdRole, "chatId"},
            {TitleRole, "title"},
            {MessageCountRole, "messageCount"},
            {CreatedAtRole, "createdAt"}};
}

} // namespace vorq
