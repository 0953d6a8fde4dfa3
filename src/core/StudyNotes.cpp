#include "core/StudyNotes.h"

#include "backend/AccountSession.h"
#include "backend/VorqAPIService.h"
#include "core/LibraryAreas.h"
#include "core/PanelChats.h"
#include "core/PanelConversation.h"
#include "core/StudyContext.h"
#include "library/VorqNoteImport.h"
#include "support/Characters.h"
#include "support/Text.h"

namespace vorq {
namespace {

const QString nothingToFoldIn =
    QStringLiteral("Nothing to save yet — ask me to research or explain the note first.");

QString announcement(const std::vector<Flashcard>& cards) {
    QStringList lines = {
        QStringLiteral("Here are %1 flashcards — saved on your note.").arg(cards.size()),
        QString()};
    for (std::size_t index = 0; index < cards.size(); ++index)
        lines += {QStringLiteral("**%1.** ").arg(index + 1) + cards[index].front,
                  QStringLiteral("→ ") + cards[index].back, QString()};
    lines +=
        QStringLiteral("Say “quiz me” anytime to regenerate, or open the note in Hub to review.");
    return lines.join(u'\n');
}

// The note with what was found out about it: below its body, or in place of a body that the
// research repeats.
std::optional<VorqNoteImport::Payload> withResearch(const SavedNote& note, const QString& body,
                                                    const QString& research) {
    if (body.isEmpty() || containsCharacters(research, body))
        return VorqNoteImport::structure(research);
    return VorqNoteImport::append(research, body, note.thoughtsRTF);
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
    m_services.panel.answer(
        QStringLiteral("No notes yet. Highlight text in a browser and press ⌘⇧S to save one."));
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
        content = withResearch(*note, body, research);
    }
    if (!content) {
        m_services.panel.answer(nothingToFoldIn);
        return false;
    }
    m_services.areas.library().replaceNoteContent(QUuid(note->id), content->title, content->plain,
                                                  content->rtf);
    showInPanel(content->plain);
    m_services.panel.answer(QStringLiteral("Saved — original note plus the update."));
    return true;
}

void StudyNotes::makeFlashcardsForActiveNote() {
    m_services.areas.reloadLibrary();
    const std::vector<SavedNote>& notes = m_services.areas.library().savedNotes().records();
    const SavedNote* note = activeStudyNote();
    if (!note && !notes.empty()) note = &notes.front();
    if (!note)
        return m_services.panel.answer(QStringLiteral(
            "No note loaded. Say “open notes” first, or save a highlight with ⌘⇧S."));
    m_services.study.setActiveStudyNoteID(note->id);
    const QString source = studySource(*note);
    if (source.isEmpty())
        return m_services.panel.answer(
            QStringLiteral("That note is empty — nothing to make flashcards from."));
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
        co_await self->m_services.account.withFreshSessionToken(ask, stop);
    if (!self || stop.stop_requested()) co_return std::nullopt;
    co_return self->keepFlashcards(note, result);
}

// Gives the reply.
QString StudyNotes::keepFlashcards(const QUuid& note, const FlashcardsResult& result) {
    if (result.flashcards.empty())
        return QStringLiteral(
            "I couldn’t build flashcards from that note. Try enriching it first.");
    std::vector<Flashcard> cards;
    for (const FlashcardDTO& card : result.flashcards)
        cards.push_back({QUuid::createUuid(), card.front, card.back});
    m_services.areas.library().updateNoteFlashcards(note, cards);
    return announcement(cards);
}

} // namespace vorq
