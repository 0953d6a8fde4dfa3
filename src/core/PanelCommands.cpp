#include "core/PanelCommands.h"

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
        m_services.panel.answer(QStringLiteral("Hub is archived. Use ⌘⇧A for Vorq."));
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
    QString reply = QStringLiteral("Saved to History.");
    if (!m_services.chats.savePanelChatToHistory()) {
        const QString& reason = m_services.areas.library().libraryMessage();
        reply = reason.isEmpty() ? QStringLiteral("Nothing to save yet.") : reason;
    }
    m_services.panel.answer(reply);
}

} // namespace vorq
