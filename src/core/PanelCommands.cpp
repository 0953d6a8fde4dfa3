#include "core/PanelCommands.h"

#include "conversation/PanelNotices.h"
#include "conversation/PromptCommands.h"
#include "core/LibraryAreas.h"
#include "core/PanelChats.h"
#include "core/PanelConversation.h"
#include "core/StudyNotes.h"

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
    QString reply = panel_notices::savedToHistory.toString();
    if (!m_services.chats.savePanelChatToHistory()) {
        const QString& reason = m_services.areas.library().libraryMessage();
        reply = reason.isEmpty() ? panel_notices::nothingToSave.toString() : reason;
    }
    m_services.panel.answer(reply);
}

} // namespace vorq
