#pragma once

#include "areas/AppearanceSettings.h"
#include "areas/LibraryAreas.h"
#include "areas/Permissions.h"
#include "areas/Previews.h"
#include "areas/UpdateState.h"
#include "backend/account/AccountSession.h"
#include "backend/account/AccountSignIn.h"
#include "backend/account/PreferredModel.h"
#include "backend/account/PrivacyForm.h"
#include "backend/account/ProfileForm.h"
#include "backend/api/VorqAPIService.h"
#include "panel/HotKeyContext.h"
#include "panel/PanelChats.h"
#include "panel/PanelCommands.h"
#include "panel/PanelConversation.h"
#include "panel/PanelDraft.h"
#include "panel/StudyContext.h"
#include "panel/StudyNotes.h"

#include <QImage>
#include <QObject>

namespace vorq {

class AppPaths;
class Clock;
class Defaults;
class HttpTransport;
class SelectionCapture;

/// The one observable root of the application: owns an object for each area, wires them, and
/// restores what was stored. Main thread only.
class VorqAppState final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString promptPlaceholder READ promptPlaceholder NOTIFY promptPlaceholderChanged)
    Q_PROPERTY(bool canUsePanelAI READ canUsePanelAI NOTIFY accountChanged)
    Q_PROPERTY(QImage profileImage READ profileImage NOTIFY profileImageChanged)
    Q_PROPERTY(bool canChooseAIModel READ canChooseAIModel NOTIFY accountChanged)

  public:
    /// What the system offers; all must outlive the state.
    struct Platform {
        Clock& clock;
        Defaults& defaults;
        AppPaths& paths;
        HttpTransport& transport;
        SelectionCapture& capture;
        NotesBridge& notes;
    };

    explicit VorqAppState(const Platform& platform);

    [[nodiscard]] VorqAPIService& api() { return m_api; }
    [[nodiscard]] AccountSession& account() { return m_account; }
    [[nodiscard]] AccountSignIn& signIn() { return m_signIn; }
    [[nodiscard]] ProfileForm& profileForm() { return m_profileForm; }
    [[nodiscard]] PrivacyForm& privacyForm() { return m_privacyForm; }
    [[nodiscard]] PreferredModel& model() { return m_model; }
    [[nodiscard]] AppearanceSettings& appearance() { return m_appearance; }
    [[nodiscard]] Permissions& permissions() { return m_permissions; }
    [[nodiscard]] Previews& previews() { return m_previews; }
    [[nodiscard]] StudyContext& study() { return m_study; }
    [[nodiscard]] PanelDraft& panelDraft() { return m_panelDraft; }
    // The library is read from its files when one of these is first asked for.
    [[nodiscard]] LibraryState& library() { return m_libraryAreas.library(); }
    [[nodiscard]] HubState& hub() { return m_libraryAreas.hub(); }
    [[nodiscard]] TaskState& tasks() { return m_libraryAreas.tasks(); }
    [[nodiscard]] TrackerState& trackers() { return m_libraryAreas.trackers(); }
    [[nodiscard]] UpdateState& updates() { return m_updates; }
    [[nodiscard]] PanelConversation& panel() { return m_panel; }
    [[nodiscard]] HotKeyContext& hotKeyContext() { return m_hotKeyContext; }
    [[nodiscard]] PanelChats& panelChats() { return m_panelChats; }
    [[nodiscard]] NotesBridge& notes() { return m_notes; }
    [[nodiscard]] StudyNotes& studyNotes() { return m_studyNotes; }

    /// Reads the library anew, whatever of it is in memory.
    Q_INVOKABLE void reloadLibrary() { m_libraryAreas.reloadLibrary(); }
    /// Keeps it in step with what other programs write to its files.
    void watchLibrary() { m_libraryAreas.watchLibrary(); }
    /// Writes what of it could not be written so far; the program ends.
    void finishLibrary() { m_libraryAreas.finish(); }
    [[nodiscard]] bool isLibraryLoaded() const { return m_libraryAreas.isLoaded(); }

    [[nodiscard]] QString promptPlaceholder() const;
    [[nodiscard]] bool canUsePanelAI() const { return m_account.signedIn(); }
    /// The avatar; null if there is none or it cannot be read.
    [[nodiscard]] QImage profileImage() const;
    [[nodiscard]] bool canChooseAIModel() const { return m_account.signedIn(); }

  signals:
    void promptPlaceholderChanged();
    void accountChanged();
    void profileImageChanged();

  private:
    void restore();

    NotesBridge& m_notes;
    VorqAPIService m_api;
    PreferredModel m_model;
    AccountSession m_account;
    AccountSignIn m_signIn;
    ProfileForm m_profileForm;
    PrivacyForm m_privacyForm;
    AppearanceSettings m_appearance;
    Permissions m_permissions;
    Previews m_previews;
    StudyContext m_study;
    PanelDraft m_panelDraft;
    LibraryAreas m_libraryAreas;
    UpdateState m_updates;
    PanelCommands m_panelCommands;
    PanelConversation m_panel;
    HotKeyContext m_hotKeyContext;
    PanelChats m_panelChats;
    StudyNotes m_studyNotes;
};

} // namespace vorq
