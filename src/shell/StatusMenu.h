#pragma once

#include "shell/CustomizeMenu.h"
#include "shell/FactMenu.h"

#include <QPointer>
#include <QStringList>

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

  signals:
    /// While other applications cannot be read.
    void accessibilityChosen();
    void showVorqChosen();
    void clearChatChosen();
    void signOutChosen();
    void deleteVorqChosen();
    void quitChosen();

    /// A colour of the panel is being chosen, and no longer.
    void colorEditBegan();
    void colorEditEnded();

  private:
    void refreshAccount();
    void refreshAccessibility();

    QPointer<VorqAppState> m_state;
    QAction* m_account;
    QAction* m_signInAdvice;
    QAction* m_noticesEnd; // the line below the notices
    QList<QAction*> m_notices;
    QAction* m_clearChat;
    QAction* m_accessibility;
    QAction* m_signOut;
    CustomizeMenu m_customize;
};

} // namespace vorq
