#pragma once

#include "shell/PanelColorEdit.h"

#include <QMenu>
#include <QPointer>
#include <QStringList>

#include <optional>

class QActionGroup;

namespace vorq {

class VorqAppState;

/// The menu of the status item. It shows the state as it is whenever that changes, also while it is
/// open. Main thread only.
class StatusMenu final : public QMenu {
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

  private:
    QAction* addLine(const QString& text);
    void addAppearance();
    void addColors(QMenu* customize);
    void editBackgroundColor();
    void editUserBlockColor();
    void refreshAccount();
    void refreshAccessibility();
    void refreshAppearance();

    QPointer<VorqAppState> m_state;
    QAction* m_account;
    QAction* m_signInAdvice;
    QAction* m_noticesEnd; // the line below the notices
    QList<QAction*> m_notices;
    QAction* m_clearChat;
    QAction* m_accessibility;
    QAction* m_signOut;
    QActionGroup* m_themes;
    QActionGroup* m_glasses;
    QList<QAction*> m_colors;
    std::optional<PanelColorEdit> m_background;
    std::optional<PanelColorEdit> m_userBlock;
};

} // namespace vorq
