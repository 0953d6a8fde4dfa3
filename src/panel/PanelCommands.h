#pragma once

#include "panel/LateAnswers.h"
#include "panel/LocalRoutes.h"

namespace vorq {

class LibraryAreas;
class PanelChats;
class PanelConversation;
class StudyNotes;

/// The commands of the panel: keep the chat, load a note, save what was found out, make
/// flashcards. Main thread only.
class PanelCommands final : public LocalRoutes {
  public:
    /// What it works with; all must outlive it, and may be made after it.
    struct Services {
        LibraryAreas& areas;
        PanelConversation& panel;
        PanelChats& chats;
        StudyNotes& study;
    };

    explicit PanelCommands(const Services& services)
        : m_services(services), m_lateAnswers(services.panel) {}

    bool take(QStringView prompt) override;

  private:
    void saveChat();

    Services m_services;
    LateAnswers m_lateAnswers;
};

} // namespace vorq
