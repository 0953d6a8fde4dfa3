#include "panel/PanelChats.h"

#include "areas/LibraryAreas.h"
#include "library/records/DraftTitle.h"
#include "panel/PanelConversation.h"
#include "panel/PanelHistory.h"
#include "panel/PanelNotices.h"
#include "platform/Clock.h"
#include "platform/NotesBridge.h"
#include "support/text/Text.h"

#include <QPointer>

#include <memory>
#include <utility>

namespace vorq {

bool PanelChats::savePanelChatToHistory() {
    LibraryState& library = m_services.areas.library();
    std::optional<SavedChat> chat =
        savedChat(m_services.panel.messages().messages(), dateOf(m_services.clock.wallTime()));
    if (!chat) {
        library.setLibraryMessage(panel_notices::noChatToSave.toString());
        return false;
    }
    library.keepChat(*std::move(chat));
    const std::optional<QString> unsaved = library.chatsUnsaved();
    library.setLibraryMessage(unsaved.value_or(QString()));
    return !unsaved;
}

void PanelChats::loadPanelChatFromHistory(const QUuid& id) {
    if (const SavedChat* chat = m_services.areas.library().savedChats().find(id))
        m_services.panel.restorePanelHistory(*chat);
}

QCoro::Task<bool> PanelChats::exportCurrentChatToAppleNotes() {
    return exportChatTextToAppleNotes(exportedText(m_services.panel.messages().messages()));
}

QCoro::Task<bool> PanelChats::exportChatTextToAppleNotes(QString text,
                                                         std::optional<QString> feedbackPrefix) {
    LibraryState& library = m_services.areas.library();
    const QString body = trimmed(text).toString();
    if (body.isEmpty()) {
        library.setLibraryMessage(panel_notices::noChatToSave.toString());
        co_return false;
    }
    const QPointer<PanelConversation> panel(&m_services.panel); // goes when all of this goes
    const auto created = co_await m_services.notes.createNote(draftTitle(body), body, {});
    if (!panel) co_return false;
    library.setLibraryMessage(created ? feedbackPrefix.value_or(QString()) : created.error());
    co_return created.has_value();
}

bool PanelChats::saveContentToNotes(const QString& text, bool fromHub) {
    if (trimmed(text).isEmpty()) {
        replySaveToNotesFeedback(panel_notices::noReplyToSave.toString(), fromHub);
        return false;
    }
    m_saving.release();
    m_saving.restart([this, text, fromHub](std::stop_token stop) {
        return runSave(this, text, fromHub, std::move(stop));
    });
    return true;
}

QCoro::Task<> PanelChats::runSave(PanelChats* self, QString text, bool fromHub,
                                  std::stop_token stop) {
    // A task that has not begun when its owner goes never begins.
    const auto isDropped = std::make_shared<bool>(false);
    PanelConversation* panel = &self->m_services.panel;
    QObject::connect(
        panel, &PanelConversation::dropped, panel, [isDropped] { *isDropped = true; },
        Qt::SingleShotConnection);
    const bool isSaved = co_await self->exportChatTextToAppleNotes(text);
    if (stop.stop_requested()) co_return;
    // In another conversation nobody knows what was saved; that it was not must be known.
    if (isSaved && *isDropped && !fromHub) co_return;
    QString message = panel_notices::savedToNotes.toString();
    if (!isSaved) {
        const QString& reason = self->m_services.areas.library().libraryMessage();
        message = reason.isEmpty() ? panel_notices::notSavedToNotes.toString() : reason;
    }
    self->replySaveToNotesFeedback(message, fromHub);
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
