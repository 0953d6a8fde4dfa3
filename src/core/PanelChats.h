#pragma once

#include <QString>
#include <QUuid>

#include <functional>
#include <optional>

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

    // What these give is whether it worked; if not, libraryMessage says why.

    bool savePanelChatToHistory();
    bool exportCurrentChatToAppleNotes();
    /// On success libraryMessage is the feedback.
    bool exportChatTextToAppleNotes(const QString& text,
                                    const std::optional<QString>& feedbackPrefix = std::nullopt);

    /// The same, answered where it was asked for.
    bool saveContentToNotes(const QString& text, bool fromHub);
    void replySaveToNotesFeedback(const QString& message, bool fromHub);

    /// An unknown id does nothing.
    void loadPanelChatFromHistory(const QUuid& id);

  private:
    Services m_services;
    HubReply m_hubReply;
};

} // namespace vorq
