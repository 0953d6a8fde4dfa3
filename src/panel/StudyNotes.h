#pragma once

#include "library/records/SavedNote.h"
#include "panel/LateAnswers.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <stop_token>

namespace vorq {

class AccountSession;
class LibraryAreas;
class PanelChats;
class PanelConversation;
class StudyContext;
class VorqAPIService;
struct FlashcardsResult;

/// Brings notes of the library into the panel as the subject of its conversation, folds replies
/// back into them, and makes their flashcards. What is refused is said as a reply of the panel.
/// Main thread only.
class StudyNotes final : public QObject {
    Q_OBJECT

  public:
    /// What it works with; all must outlive it.
    struct Services {
        LibraryAreas& areas;
        StudyContext& study;
        PanelConversation& panel;
        PanelChats& chats;
        AccountSession& account;
        VorqAPIService& api;
    };

    explicit StudyNotes(const Services& services)
        : m_services(services), m_lateAnswers(services.panel) {}

    /// The loaded note; nothing if none is loaded or it is no longer there. Valid until the notes
    /// change.
    [[nodiscard]] const SavedNote* activeStudyNote();

    bool loadNoteIntoStudyContext(const SavedNote& note);

    /// Loads the newest note; false if there is none.
    bool recallLatestNoteIntoPanel();

    /// Ends the study of the loaded note. Its text is no context of the panel any more, unless
    /// something else has taken its place there.
    void leaveStudy();

    /// Adds the latest reply to the loaded note, or takes it to the user's notes if none is loaded.
    /// Those answer later, so that true only means that there was something to save.
    bool saveStudyResearchToActiveNote();

    /// Asks for the flashcards of the loaded note, else of the newest, and loads that.
    void makeFlashcardsForActiveNote();

  private:
    static QCoro::Task<std::optional<QString>> makeFlashcards(QPointer<StudyNotes> self, QUuid note,
                                                              QString source, std::stop_token stop);
    QString keepFlashcards(const QUuid& note, const FlashcardsResult& result);

    void showInPanel(const QString& noteText);
    void answerSave(const QString& saved);

    Services m_services;
    LateAnswers m_lateAnswers;
    QString m_shownText; // what a note has last put into the panel as its context
};

} // namespace vorq
