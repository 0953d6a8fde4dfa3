#include "panel/PanelCommands.h"

#include "areas/LibraryAreas.h"
#include "conversation/PromptCommands.h"
#include "panel/PanelChats.h"
#include "panel/PanelConversation.h"
#include "panel/PanelNotices.h"
#include "panel/StudyNotes.h"

namespace vorq {

bool PanelCommands::take(QStringView prompt) {
    switch (route(prompt)) {
    case PromptRoute::SaveChat:
        saveChat();
        return true;
    case PromptRoute::Library:
        m_services.panel.answer(panel_notices::libraryArchived.toString());
        return true;
    case PromptRoute::RecallNote:
        m_services.study.recallLatestNoteIntoPanel();
        return true;
    case PromptRoute::SaveResearch:
        m_services.study.saveStudyResearchToActiveNote();
        return true;
    case PromptRoute::Study:
        m_services.study.makeFlashcardsForActiveNote();
        return true;
    case PromptRoute::Backend:
        return false;
    }
    return false;
}

void PanelCommands::saveChat() {
    const QString saved = panel_notices::savedToHistory.toString();
    if (m_services.chats.savePanelChatToHistory()) return m_services.panel.answer(saved);
    LibraryState& library = m_services.areas.library();
    const QString& reason = library.libraryMessage();
    m_services.panel.answer(reason.isEmpty() ? panel_notices::nothingToSave.toString() : reason);
    if (!reason.isEmpty() && reason == library.chatsUnsaved())
        m_lateAnswers.sayOnce(saved, library, &LibraryState::chatsSaved);
}

} // namespace vorq
