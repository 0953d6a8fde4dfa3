#include "panel/StudyNotes.h"

#include "areas/LibraryAreas.h"
#include "backend/account/AccountSession.h"
#include "backend/api/VorqAPIService.h"
#include "library/notes/NoteUpdate.h"
#include "panel/PanelChats.h"
#include "panel/PanelConversation.h"
#include "panel/PanelNotices.h"
#include "panel/StudyContext.h"
#include "support/text/Text.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QString announcement(const std::vector<Flashcard>& cards, const std::optional<QString>& unsaved) {
    const QString count =
        panel_notices::flashcardsBefore.toString() + QString::number(cards.size());
    QStringList lines = {unsaved ? count + u" flashcards. "_s + *unsaved
                                 : count + panel_notices::flashcardsAfter.toString(),
                         QString()};
    for (std::size_t index = 0; index < cards.size(); ++index)
        lines += {u"**%1.** "_s.arg(index + 1) + cards[index].front, u"→ "_s + cards[index].back,
                  QString()};
    lines += u"Say “quiz me” anytime to regenerate, or open the note in Hub to review."_s;
    return lines.join(u'\n');
}

} // namespace

const SavedNote* StudyNotes::activeStudyNote() {
    const std::optional<QUuid> id = m_services.study.activeStudyNoteID();
    return id ? m_services.areas.library().savedNotes().find(*id) : nullptr;
}

bool StudyNotes::loadNoteIntoStudyContext(const SavedNote& note) {
    const QString source = studySource(note);
    const QString seed = trimmed(note.text).toString();
    m_services.study.setActiveNote(note.id, seed.isEmpty() ? source : seed);
    m_services.study.setLastStudyResearch({});
    showInPanel(source);
    m_services.panel.bringForward();
    return true;
}

void StudyNotes::showInPanel(const QString& noteText) {
    m_shownText = noteText;
    m_services.panel.setHighlightedText(noteText);
}

void StudyNotes::leaveStudy() {
    m_services.study.clearActiveStudyNote();
    if (m_services.panel.highlightedText() == m_shownText) m_services.panel.setHighlightedText({});
    m_shownText.clear();
}

bool StudyNotes::recallLatestNoteIntoPanel() {
    m_services.areas.reloadLibrary();
    const std::vector<SavedNote>& notes = m_services.areas.library().savedNotes().records();
    if (!notes.empty()) return loadNoteIntoStudyContext(SavedNote(notes.front()));
    m_services.panel.answer(panel_notices::noNotes.toString());
    return false;
}

bool StudyNotes::saveStudyResearchToActiveNote() {
    QString research = trimmed(m_services.study.lastStudyResearch()).toString();
    if (research.isEmpty())
        research = trimmed(m_services.panel.latestPanelAssistantText()).toString();
    const SavedNote* note = activeStudyNote();
    if (!note) return m_services.chats.saveContentToNotes(research, false);

    std::optional<VorqNoteImport::Payload> content;
    if (!research.isEmpty()) {
        const QString body = trimmed(m_services.study.studyNoteOriginalBody()).toString();
        content = withReply(*note, body, research);
    }
    if (!content) {
        m_services.panel.answer(panel_notices::noResearchToSave.toString());
        return false;
    }
    m_services.areas.library().replaceNoteContent(QUuid(note->id), content->title, content->plain,
                                                  content->rtf);
    showInPanel(content->plain);
    answerSave(panel_notices::noteUpdated.toString());
    return true;
}

// Says that the notes are saved when they are, and until then why not.
void StudyNotes::answerSave(const QString& saved) {
    LibraryState& library = m_services.areas.library();
    const std::optional<QString> unsaved = library.notesUnsaved();
    m_services.panel.answer(unsaved.value_or(saved));
    if (unsaved) m_lateAnswers.sayOnce(saved, library, &LibraryState::notesSaved);
}

void StudyNotes::makeFlashcardsForActiveNote() {
    m_services.areas.reloadLibrary();
    const std::vector<SavedNote>& notes = m_services.areas.library().savedNotes().records();
    const SavedNote* note = activeStudyNote();
    if (!note && !notes.empty()) note = &notes.front();
    if (!note) return m_services.panel.answer(panel_notices::noNoteLoaded.toString());
    m_services.study.setActiveStudyNoteID(note->id);
    const QString source = studySource(*note);
    if (source.isEmpty()) return m_services.panel.answer(panel_notices::noteIsEmpty.toString());
    m_services.panel.startLocalTurn(
        [self = QPointer(this), id = note->id, source](std::stop_token stop) {
            return makeFlashcards(self, id, source, std::move(stop));
        });
}

QCoro::Task<std::optional<QString>> StudyNotes::makeFlashcards(QPointer<StudyNotes> self,
                                                               QUuid note, QString source,
                                                               std::stop_token stop) {
    const auto ask = [self, source, stop](const QString& token) {
        if (!self) throw OperationCancelled();
        return self->m_services.api.flashcards(resolvedAIToken(token), source, stop);
    };
    const FlashcardsResult result =
        co_await self->m_services.account.tokens().withFreshSessionToken(ask, stop);
    if (!self || stop.stop_requested()) co_return std::nullopt;
    co_return self->keepFlashcards(note, result);
}

// Gives the reply.
QString StudyNotes::keepFlashcards(const QUuid& note, const FlashcardsResult& result) {
    if (result.flashcards.empty()) return panel_notices::noFlashcards.toString();
    std::vector<Flashcard> cards;
    cards.reserve(result.flashcards.size());
    for (const FlashcardDTO& card : result.flashcards)
        cards.push_back({QUuid::createUuid(), card.front, card.back});
    LibraryState& library = m_services.areas.library();
    library.updateNoteFlashcards(note, cards);
    const std::optional<QString> unsaved = library.notesUnsaved();
    if (unsaved)
        m_lateAnswers.sayOnce(panel_notices::flashcardsSaved.toString(), library,
                              &LibraryState::notesSaved);
    return announcement(cards, unsaved);
}

} // namespace vorq
