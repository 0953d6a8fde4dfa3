#include "core/PanelChats.h"

#include "conversation/PanelHistory.h"
#include "core/LibraryAreas.h"
#include "core/PanelConversation.h"
#include "library/DraftTitle.h"
#include "platform/NotesBridge.h"
#include "support/Text.h"

namespace vorq {
namespace {

const QString nothingToKeep = QStringLiteral("Nothing to save yet — start a chat first.");

} // namespace

bool PanelChats::savePanelChatToHistory() {
    LibraryState& library = m_services.areas.library();
    std::optional<SavedChat> chat =
        savedChat(m_services.panel.messages().messages(), dateOf(m_services.clock.wallTime()));
    if (!chat) {
        library.setLibraryMessage(nothingToKeep);
        return false;
    }
    library.keepChat(*std::move(chat));
    library.setLibraryMessage({});
    return true;
}

void PanelChats::loadPanelChatFromHistory(const QUuid& id) {
    if (const SavedChat* chat = m_services.areas.library().savedChats().find(id))
        m_services.panel.restorePanelHistory(*chat);
}

bool PanelChats::exportCurrentChatToAppleNotes() {
    return exportChatTextToAppleNotes(exportedText(m_services.panel.messages().messages()));
}

bool PanelChats::exportChatTextToAppleNotes(const QString& text,
                                            const std::optional<QString>& feedbackPrefix) {
    LibraryState& library = m_services.areas.library();
    const QString body = trimmed(text).toString();
    if (body.isEmpty()) {
        library.setLibraryMessage(nothingToKeep);
        return false;
    }
    const auto created = m_services.notes.createNote(draftTitle(body), body);
    library.setLibraryMessage(created ? feedbackPrefix.value_or(QString()) : created.error());
    return created.has_value();
}

bool PanelChats::saveContentToNotes(const QString& text, bool fromHub) {
    if (trimmed(text).isEmpty()) {
        replySaveToNotesFeedback(QStringLiteral("Nothing to save yet — ask me something first."),
                                 fromHub);
        return false;
    }
    const bool isSaved = exportChatTextToAppleNotes(text);
    QString message = QStringLiteral("Saved to Notes.");
    if (!isSaved) {
        const QString& reason = m_services.areas.library().libraryMessage();
        message = reason.isEmpty() ? QStringLiteral("Couldn’t save to Notes.") : reason;
    }
    replySaveToNotesFeedback(message, fromHub);
    return isSaved;
}

void PanelChats::replySaveToNotesFeedback(const QString& message, bool fromHub) {
    if (!fromHub)
        m_services.panel.answer(message);
    else if (m_hubReply && m_services.areas.hub().activeHubAIChatID())
        m_hubReply(message);
    else
        m_services.areas.library().setLibraryMessage(message);
}

} // namespace vorq
