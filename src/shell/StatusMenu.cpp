#include "shell/StatusMenu.h"

#include "core/VorqAppState.h"
#include "shell/Advice.h"

namespace vorq {
namespace {

// Menus underline the character behind a single "&".
QString menuText(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

} // namespace

StatusMenu::StatusMenu() : FactMenu(QStringLiteral("Vorq")) {
    setAccessibleName(QStringLiteral("Vorq"));
    m_account = addFact(QStringLiteral("Starting…"));
    m_signInAdvice = addFact(menuText(signInAdvice));
    m_noticesEnd = addSeparator();
    connect(addAction(QStringLiteral("Show Vorq")), &QAction::triggered, this,
            &StatusMenu::showVorqChosen);
    m_clearChat = addAction(QStringLiteral("Clear Chat"));
    connect(m_clearChat, &QAction::triggered, this, &StatusMenu::clearChatChosen);
    addSeparator();
    addMenu(&m_customize);
    connect(&m_customize, &CustomizeMenu::colorEditBegan, this, &StatusMenu::colorEditBegan);
    connect(&m_customize, &CustomizeMenu::colorEditEnded, this, &StatusMenu::colorEditEnded);
    m_accessibility = addAction(QString());
    connect(m_accessibility, &QAction::triggered, this, &StatusMenu::accessibilityChosen);
    m_signOut = addAction(QStringLiteral("Sign out"));
    connect(m_signOut, &QAction::triggered, this, &StatusMenu::signOutChosen);
    connect(addAction(QStringLiteral("Delete Vorq")), &QAction::triggered, this,
            &StatusMenu::deleteVorqChosen);
    addSeparator();
    connect(addAction(QStringLiteral("Quit Vorq")), &QAction::triggered, this,
            &StatusMenu::quitChosen);
    refreshAccount();
    refreshAccessibility();
}

void StatusMenu::bindAppState(VorqAppState& state) {
    if (m_state == &state) return;
    m_state = &state;
    m_customize.bind(state.appearance());
    const AccountSession* account = &state.account();
    connect(account, &AccountSession::signedInChanged, this, &StatusMenu::refreshAccount);
    connect(account, &AccountSession::displayNameChanged, this, &StatusMenu::refreshAccount);
    connect(&state.permissions(), &Permissions::changed, this, &StatusMenu::refreshAccessibility);
    refreshAccount();
    refreshAccessibility();
}

void StatusMenu::refreshAccount() {
    const bool isSignedIn = m_state && m_state->account().signedIn();
    m_clearChat->setEnabled(isSignedIn);
    m_signInAdvice->setVisible(m_state && !isSignedIn);
    m_signOut->setVisible(isSignedIn);
    if (!m_state) return;
    const QString name = menuText(m_state->account().displayName());
    m_account->setText(isSignedIn ? QStringLiteral("Signed in as %1").arg(name)
                                  : QStringLiteral("Not signed in"));
}

// There is something to choose only while it is off.
void StatusMenu::refreshAccessibility() {
    const bool isEnabled =
        m_state && m_state->permissions().textCapturePermission() == PermissionState::Granted;
    m_accessibility->setText(isEnabled ? QStringLiteral("Accessibility: Enabled")
                                       : QStringLiteral("Accessibility: Disabled"));
    setFact(m_accessibility, !m_state || isEnabled);
}

void StatusMenu::setHotKeyNotices(const QStringList& notices) {
    qDeleteAll(m_notices);
    m_notices.clear();
    for (const QString& notice : notices)
        m_notices += insertFact(m_noticesEnd, notice);
}

} // namespace vorq
