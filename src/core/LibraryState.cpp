#include "core/LibraryState.h"

#include "library/VorqNoteImport.h"
#include "platform/Clock.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/Characters.h"
#include "support/Graphemes.h"
#include "support/StableSort.h"
#include "support/Text.h"

namespace vorq {
namespace {

constexpr qsizetype longestSeed = 120;

template<typename Record>
std::vector<Record> newestFirst(std::vector<Record> records) {
    stableSort(records, [](const Record& a, const Record& b) { return a.createdAt > b.createdAt; });
    return records;
}

template<typename Record>
void follow(RecordList<Record>& list, std::optional<std::vector<Record>> changed) {
    if (changed) list.replace(newestFirst(*std::move(changed)));
}

// The line that may stand as the seed of a note with this body; "" if none may.
QString seedFrom(QStringView thoughts) {
    const QString plain = AssistantReplyDocument::inlinePlain(firstLine(thoughts));
    const QStringView line = trimmed(plain);
    return graphemeCountAtLeast(line, longestSeed + 1) ? QString() : line.toString();
}

bool showsMarkdownOrNothing(QStringView seed) {
    return startsWithCharacters(seed, u"**") || startsWithCharacters(seed, u"#") ||
           startsWithCharacters(seed, u"---") || trimmed(seed).isEmpty();
}

} // namespace

void LibraryState::setLibraryMessage(const QString& message) {
    if (m_message == message) return;
    m_message = message;
    emit libraryMessageChanged();
}

void LibraryState::reload() {
    m_chats.replace(newestFirst(m_chatFile.load(m_chats.records())));
    m_notes.replace(newestFirst(m_noteFile.load(m_notes.records())));
}

void LibraryState::takeInChanges() {
    follow(m_chats, m_chatFile.takeIn(m_chats.records()));
    follow(m_notes, m_noteFile.takeIn(m_notes.records()));
    if (m_chatFile.isDue()) saveChats();
    if (m_noteFile.isDue()) saveNotes();
}

QUuid LibraryState::createBlankNote(const QString& title, HubArea area) {
    SavedNote note;
    note.id = QUuid::createUuid();
    note.text = trimmed(title).toString();
    if (!note.text.isEmpty()) note.thoughts = note.text + u'\n';
    note.area = area;
    note.createdAt = dateOf(m_clock.wallTime());
    const QUuid id = note.id;
    keepNote(std::move(note));
    setLibraryMessage({});
    return id;
}

void LibraryState::keepNote(SavedNote note) {
    m_notes.insertFirst(std::move(note));
    saveNotes();
}

void LibraryState::updateNoteThoughts(const QUuid& id, const QString& thoughts,
                                      const std::optional<QByteArray>& thoughtsRTF) {
    const bool isThere = m_notes.edit(id, [&](SavedNote& note) {
        note.thoughts = thoughts;
        note.thoughtsRTF = thoughtsRTF;
        const QString seed = seedFrom(thoughts);
        if (!seed.isEmpty() && VorqNoteImport::needsMigration(note.text)) note.text = seed;
    });
    if (isThere) saveNotes();
}

void LibraryState::updateNoteFlashcards(const QUuid& id, const std::vector<Flashcard>& flashcards) {
    if (m_notes.edit(id, [&](SavedNote& note) { note.flashcards = flashcards; })) saveNotes();
}

void LibraryState::updateNoteArea(const QUuid& id, HubArea area) {
    if (m_notes.edit(id, [area](SavedNote& note) { note.area = area; })) saveNotes();
}

void LibraryState::deleteSavedNote(const SavedNote& note) {
    const QUuid id = note.id;
    m_notes.removeAll(id);
    saveNotes();
}

void LibraryState::replaceNoteContent(const QUuid& id, const QString& title, const QString& plain,
                                      const std::optional<QByteArray>& rtf) {
    const bool isThere = m_notes.edit(id, [&](SavedNote& note) {
        note.thoughts = plain;
        note.thoughtsRTF = rtf;
        if (showsMarkdownOrNothing(note.text)) note.text = title;
    });
    if (isThere) saveNotes();
}

void LibraryState::keepChat(SavedChat chat) {
    m_chats.insertFirst(std::move(chat));
    saveChats();
}

void LibraryState::clearChats() {
    m_chats.replace({});
    saveChats();
}

void LibraryState::saveNotes() {
    follow(m_notes, m_noteFile.save(m_notes.records()));
}

void LibraryState::saveChats() {
    follow(m_chats, m_chatFile.save(m_chats.records()));
}

} // namespace vorq
