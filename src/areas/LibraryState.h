#pragma once

#include "areas/LibraryFollower.h"
#include "areas/LibraryLists.h"
#include "library/store/LibraryFile.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <optional>

namespace vorq {

class Clock;

/// The library area: the user's notes and kept conversations, each change written at once, and the
/// outcome of the last library action as a line for the user. Operations with an unknown id do
/// nothing. Main thread only.
class LibraryState final : public QObject {
    Q_OBJECT
    Q_PROPERTY(vorq::NoteList* savedNotes READ noteModel CONSTANT)
    Q_PROPERTY(vorq::ChatList* savedChats READ chatModel CONSTANT)
    Q_PROPERTY(QString libraryMessage READ libraryMessage WRITE setLibraryMessage NOTIFY
                   libraryMessageChanged)

  public:
    /// Both must outlive this object. The lists are empty until they are reloaded.
    LibraryState(const LibraryStore& store, Clock& clock);

    [[nodiscard]] const NoteList& savedNotes() const { return m_notes; }
    [[nodiscard]] const ChatList& savedChats() const { return m_chats; }
    [[nodiscard]] NoteList* noteModel() { return &m_notes; }
    [[nodiscard]] ChatList* chatModel() { return &m_chats; }
    /// "" means none.
    [[nodiscard]] const QString& libraryMessage() const { return m_message; }
    void setLibraryMessage(const QString& message);

    /// Takes in the chats and the notes as they stand in their files, the newest first. What is
    /// better in memory stays: what is not written yet, and the list of a file that does not read.
    void reload();

    /// Takes in what other programs have changed in the files since.
    void takeInChanges();
    /// The same, in a while: large files are read without holding this thread.
    void followChanges();

    /// Tries again to write what could not be written. False if something still cannot.
    bool retrySaves(std::chrono::milliseconds patience, bool isLast);

    // Why the latest notes or chats are not on the disk, as a sentence; nothing if they are.
    [[nodiscard]] std::optional<QString> notesUnsaved() const;
    [[nodiscard]] std::optional<QString> chatsUnsaved() const;

    /// Makes a note at the top of the list and gives its id.
    QUuid createBlankNote(const QString& title, HubArea area);

    /// Without a rich form the stored one goes. A seed that still shows Markdown becomes the first
    /// line of the body.
    void updateNoteThoughts(const QUuid& id, const QString& thoughts,
                            const std::optional<QByteArray>& thoughtsRTF);
    void updateNoteFlashcards(const QUuid& id, const std::vector<Flashcard>& flashcards);
    void updateNoteArea(const QUuid& id, HubArea area);
    void deleteSavedNote(const SavedNote& note);

    /// Gives the note another body. A seed that shows Markdown, or nothing, becomes the title.
    void replaceNoteContent(const QUuid& id, const QString& title, const QString& plain,
                            const std::optional<QByteArray>& rtf);

    /// Puts a note at the top of the list.
    void keepNote(SavedNote note);

    /// Puts a conversation at the top of the list.
    void keepChat(SavedChat chat);

    /// Drops all kept conversations, which are elsewhere now.
    void clearChats();

  signals:
    void libraryMessageChanged();
    /// Something could not be written, or is in memory alone; it is for retrySaves().
    void savesAreDue();
    // After a while of being unsaved, the list is on the disk.
    void notesSaved();
    void chatsSaved();
    /// What the user should know of the files, as a sentence.
    void noticed(const QString& sentence);

  private:
    void saveNotes();
    void saveChats();
    void followNotes(std::optional<std::vector<SavedNote>> changed);
    void followChats(std::optional<std::vector<SavedChat>> changed);
    void tellWhatBecame();

    LibraryFile<SavedNote> m_noteFile;
    LibraryFile<SavedChat> m_chatFile;
    Clock& m_clock;
    NoteList m_notes;
    ChatList m_chats;
    bool m_wereNotesUnsaved = false;
    bool m_wereChatsUnsaved = false;
    QString m_message;
    LibraryFollower<SavedNote> m_noteFollower;
    LibraryFollower<SavedChat> m_chatFollower;
};

} // namespace vorq
