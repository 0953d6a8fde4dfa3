#pragma once

#include "shell/status/CustomizeMenu.h"
#include "shell/status/FactMenu.h"
#include "shell/status/HistoryMenu.h"
#include "shell/status/ModelMenu.h"
#include "shell/status/SessionLimitsMenu.h"
#include "shell/status/StatusItem.h"

#include <QPointer>
#include <QStringList>

#include <set>

namespace vorq {

class VorqAppState;

/// The menu of the status item. It shows the state as it is whenever that changes, also while it is
/// open. Main thread only.
class StatusMenu final : public FactMenu {
    Q_OBJECT

  public:
    StatusMenu();

    /// The state must outlive the menu.
    void bindAppState(VorqAppState& state);

    void setHotKeyNotices(const QStringList& notices);

    /// Those that reach the program stand beside what they do.
    void setHotKeys(const std::set<HotKeyAction>& registered);

    /// Whether notes can be made of what is highlighted. At first they cannot.
    void setOffersNotes(bool offersNotes);

    /// Why the last note was not saved stands above the commands for notes, until one is.
    void setNoteAdvice(const NoteAdvice& advice);

    /// At first it is not offered.
    void setBackendAtLogin(const BackendAtLoginEntry& entry);

    /// It stands above the commands, so that the watch is never on unseen. "" for none.
    void setWatchStatus(const QString& status);

    /// They stand in a menu of their own, which is there only if there are any.
    void setSessionLimits(const QStringList& reasons);

    /// The entry to sign in, while nobody is.
    [[nodiscard]] QAction* signInEntry() const;

  signals:
    void chosen(vorq::StatusCommand command);

    /// A colour of the panel is being chosen, and no longer.
    void colorEditBegan();
    void colorEditEnded();

  private:
    QAction* addCommand(const QString& text, StatusCommand command);
    void addSignIn();
    void addSubmenus();
    void addCommands();
    void addSettings();
    void addBackendAtLogin();
    void refreshAccount();
    void refreshSignIn();
    void refreshChat();
    void refreshAccessibility();

    QPointer<VorqAppState> m_state;
    QAction* m_account;
    QAction* m_signIn;
    QAction* m_signInFailure;
    QAction* m_watch;
    QAction* m_noticesEnd; // the line below the notices
    QList<QAction*> m_notices;
    QAction* m_toggle;
    QAction* m_saveChat;
    QAction* m_noteFailure;
    QAction* m_saveHeldText;
    QAction* m_discardHeldText;
    QAction* m_saveHighlight;
    QAction* m_pushNoteDraft;
    QAction* m_clearChat;
    QAction* m_accessibility;
    QAction* m_backendAtLogin;
    QAction* m_signOut;
    HistoryMenu m_history;
    ModelMenu m_model;
    CustomizeMenu m_customize;
    SessionLimitsMenu m_limits;
};

} // namespace vorq
