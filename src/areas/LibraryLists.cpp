#include "areas/LibraryLists.h"

#include "support/RecordTable.h"

#include <QDateTime>

namespace vorq {
namespace {

constexpr auto noteRoles = recordTable<SavedNote>(
    NoteList::TitleRole,
    {
        {NoteList::IdRole, "noteId", [](const SavedNote& note) -> QVariant { return note.id; }},
        {NoteList::TitleRole, "title",
         [](const SavedNote& note) -> QVariant { return displayTitle(note); }},
        {NoteList::SnippetRole, "snippet",
         [](const SavedNote& note) -> QVariant { return noteSnippet(note).value_or(QString()); }},
        {NoteList::AreaRole, "area",
         [](const SavedNote& note) -> QVariant { return rawString(note.area); }},
        {NoteList::TextRole, "text", [](const SavedNote& note) -> QVariant { return note.text; }},
        {NoteList::ThoughtsRole, "thoughts",
         [](const SavedNote& note) -> QVariant { return note.thoughts; }},
        {NoteList::FlashcardCountRole, "flashcardCount",
         [](const SavedNote& note) -> QVariant {
             return static_cast<int>(note.flashcards.size());
         }},
        {NoteList::CreatedAtRole, "createdAt",
         [](const SavedNote& note) -> QVariant { return dateTimeOf(note.createdAt); }},
    });

constexpr auto chatRoles = recordTable<SavedChat>(
    ChatList::TitleRole,
    {
        {ChatList::IdRole, "chatId", [](const SavedChat& chat) -> QVariant { return chat.id; }},
        {ChatList::TitleRole, "title",
         [](const SavedChat& chat) -> QVariant { return chat.title; }},
        {ChatList::MessageCountRole, "messageCount",
         [](const SavedChat& chat) -> QVariant { return static_cast<int>(chat.messages.size()); }},
        {ChatList::CreatedAtRole, "createdAt",
         [](const SavedChat& chat) -> QVariant { return dateTimeOf(chat.createdAt); }},
    });

} // namespace

QVariant NoteList::value(const SavedNote& note, int role) const {
    return noteRoles.value(note, role);
}

QHash<int, QByteArray> NoteList::roleNames() const {
    return noteRoles.roleNames();
}

QVariant ChatList::value(const SavedChat& chat, int role) const {
    return chatRoles.value(chat, role);
}

QHash<int, QByteArray> ChatList::roleNames() const {
    return chatRoles.roleNames();
}

} // namespace vorq
