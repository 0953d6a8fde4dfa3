#include "areas/LibraryState.h"

#include "library/notes/VorqNoteImport.h"
#include "platform/Clock.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/StableSort.h"
#include "support/text/Characters.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <algorithm>
#include <utility>

namespace vorq {
namespace {

constexpr qsizetype longestSeed = 120;

template<typename Record>
std::vector<Record> newestFirst(std::vector<Record> records) {
    const auto isNewer = [](const Record& a, const Record& b) { return a.createdAt > b.createdAt; };
    if (!std::ranges::is_sorted(records, isNewer)) stableSort(records, isNewer);
    return records;
}

template<typename Record>
void follow(RecordList<Record>& list, std::optional<std::vector<Record>> changed) {
    if (changed) list.replace(newestFirst(*std::move(changed)));
}

std::optional<QString> sentenceOn(const std::optional<SaveFailure>& failure) {
    if (!failure) return std::nullopt;
    return LibraryState::tr("Not saved yet: %1. Vorq keeps trying.").arg(failure->reason);
}

QString sentenceOn(QStringView file, const ReplacedFile& replaced) {
    if (replaced.failure.kind == ReadFailure::Kind::Unreadable)
        return LibraryState::tr(
                   "The file %1 could not be read (%2). Vorq made it anew from what it "
                   "had in memory and keeps the former one beside it as %3.")
            .arg(file, replaced.failure.reason, replaced.keptName);
    return LibraryState::tr("The file %1 was damaged. Vorq made it anew from what it had in memory "
                            "and keeps the damaged one beside it as %2.")
        .arg(file, replaced.keptName);
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

LibraryState::LibraryState(const LibraryStore& store, Clock& clock)
    : m_noteFile(store),
      m_chatFile(store),
      m_clock(clock),
      m_noteFollower(m_noteFile, m_notes, newestFirst<SavedNote>,
                     [this](auto changed) { followNotes(std::move(changed)); }),
      m_chatFollower(m_chatFile, m_chats, newestFirst<SavedChat>,
                     [this](auto changed) { followChats(std::move(changed)); }) {}

void LibraryState::setLibraryMessage(const QString& message) {
    if (m_message == message) return;
    m_message = message;
    emit libraryMessageChanged();
}

void LibraryState::reload() {
    m_chats.replace(newestFirst(m_chatFile.load(m_chats.records())));
    m_notes.replace(newestFirst(m_noteFile.load(m_notes.records())));
    tellWhatBecame();
}

void LibraryState::takeInChanges() {
    followChats(m_chatFile.takeIn(m_chats.records()));
    followNotes(m_noteFile.takeIn(m_notes.records()));
}

void LibraryState::followChanges() {
    m_chatFollower.look();
    m_noteFollower.look();
}

void LibraryState::followNotes(std::optional<std::vector<SavedNote>> changed) {
    follow(m_notes, std::move(changed));
    if (m_noteFile.isDue()) follow(m_notes, m_noteFile.save(m_notes.records()));
    tellWhatBecame();
}

void LibraryState::followChats(std::optional<std::vector<SavedChat>> changed) {
    follow(m_chats, std::move(changed));
    if (m_chatFile.isDue()) follow(m_chats, m_chatFile.save(m_chats.records()));
    tellWhatBecame();
}

bool LibraryState::retrySaves(std::chrono::milliseconds patience, bool isLast) {
    follow(m_chats, m_chatFile.retry(m_chats.records(), patience, isLast));
    if (m_chatFile.unsaved()) patience = {};
    follow(m_notes, m_noteFile.retry(m_notes.records(), patience, isLast));
    tellWhatBecame();
    return !m_chatFile.unsaved() && !m_noteFile.unsaved();
}

std::optional<QString> LibraryState::notesUnsaved() const {
    return sentenceOn(m_noteFile.unsaved());
}

std::optional<QString> LibraryState::chatsUnsaved() const {
    return sentenceOn(m_chatFile.unsaved());
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
    tellWhatBecame();
}

void LibraryState::saveChats() {
    follow(m_chats, m_chatFile.save(m_chats.records()));
    tellWhatBecame();
}

void LibraryState::tellWhatBecame() {
    const bool areNotesUnsaved = m_noteFile.unsaved().has_value();
    const bool areChatsUnsaved = m_chatFile.unsaved().has_value();
    const bool areNotesSaved =
        std::exchange(m_wereNotesUnsaved, areNotesUnsaved) && !areNotesUnsaved;
    const bool areChatsSaved =
        std::exchange(m_wereChatsUnsaved, areChatsUnsaved) && !areChatsUnsaved;
    if (const auto replaced = m_noteFile.releaseReplaced())
        emit noticed(sentenceOn(LibraryStore::notesFile, *replaced));
    if (const auto replaced = m_chatFile.releaseReplaced())
        emit noticed(sentenceOn(LibraryStore::chatsFile, *replaced));
    if (areNotesSaved) emit notesSaved();
    if (areChatsSaved) emit chatsSaved();
    if (areNotesUnsaved || areChatsUnsaved) emit savesAreDue();
}

} // namespace vorq
