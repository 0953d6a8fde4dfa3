#pragma once

#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>
#include <stop_token>

namespace vorq {

class Clock;
class LibraryAreas;
class NotesBridge;
class PanelConversation;

/// Keeps conversations of the panel in the library, brings them back, and exports what they hold
/// to the user's notes. Main thread only.
class PanelChats final {
  public:
    /// What it works with; all must outlive it.
    struct Services {
        Clock& clock;
        LibraryAreas& areas;
        PanelConversation& panel;
        NotesBridge& notes;
    };

    explicit PanelChats(const Services& services) : m_services(services) {}

    /// How a message becomes a reply in the active chat of the hub.
    using HubReply = std::function<void(const QString& message)>;
    /// Without one, a message for the hub goes to the library's line.
    void setHubReply(HubReply reply) { m_hubReply = std::move(reply); }

    // What these give is whether it worked; if not, libraryMessage says why. The notes application
    // takes its time, and false is also the answer if this object is gone by then.

    /// What could not be written yet is kept all the same, and tried again.
    bool savePanelChatToHistory();
    QCoro::Task<bool> exportCurrentChatToAppleNotes();
    /// On success libraryMessage is the feedback.
    QCoro::Task<bool>
    exportChatTextToAppleNotes(QString text, std::optional<QString> feedbackPrefix = std::nullopt);

    /// The same, answered where it was asked for when it is done. False if there is nothing to
    /// save.
    bool saveContentToNotes(const QString& text, bool fromHub);
    void replySaveToNotesFeedback(const QString& message, bool fromHub);

    /// An unknown id does nothing.
    void loadPanelChatFromHistory(const QUuid& id);

  private:
    static QCoro::Task<> runSave(PanelChats* self, QString text, bool fromHub,
                                 std::stop_token stop);

    Services m_services;
    HubReply m_hubReply;
    TaskSlot m_saving; // all that are under way, the latest in the slot
};

} // namespace vorq
