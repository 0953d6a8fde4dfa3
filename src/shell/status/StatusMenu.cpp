#include "shell/status/StatusMenu.h"

#include "core/VorqAppState.h"
#include "shell/notices/Advice.h"

#include <map>

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
    addCommands();
    addSeparator();
    addMenu(&m_customize);
    connect(&m_customize, &CustomizeMenu::colorEditBegan, this, &StatusMenu::colorEditBegan);
    connect(&m_customize, &CustomizeMenu::colorEditEnded, this, &StatusMenu::colorEditEnded);
    m_accessibility = addAction(QString());
    connect(m_accessibility, &QAction::triggered, this, &StatusMenu::accessibilityChosen);
    m_backendAtLogin = addAction(QStringLiteral("Start Local Backend at Login"));
    m_backendAtLogin->setCheckable(true);
    connect(m_backendAtLogin, &QAction::triggered, this, &StatusMenu::backendAtLoginChosen);
    setBackendAtLogin({});
    m_signOut = addAction(QStringLiteral("Sign out"));
    connect(m_signOut, &QAction::triggered, this, &StatusMenu::signOutChosen);
    connect(addAction(QStringLiteral("Delete Vorq")), &QAction::triggered, this,
            &StatusMenu::deleteVorqChosen);
    addSeparator();
    connect(addAction(QStringLiteral("Quit Vorq")), &QAction::triggered, this,
            &StatusMenu::quitChosen);
    refreshAccount();
    refreshAccessibility();
    refreshChat();
}

void StatusMenu::addCommands() {
    m_toggle = addAction(QStringLiteral("Toggle Vorq"));
    connect(m_toggle, &QAction::triggered, this, &StatusMenu::toggleVorqChosen);
    m_saveChat = addAction(QStringLiteral("Save Chat to Notes"));
    connect(m_saveChat, &QAction::triggered, this, &StatusMenu::saveChatChosen);
    m_saveHighlight = addAction(QStringLiteral("Save Highlight as Note"));
    connect(m_saveHighlight, &QAction::triggered, this, &StatusMenu::saveHighlightChosen);
    m_pushNoteDraft = addAction(QStringLiteral("Push Note Draft"));
    connect(m_pushNoteDraft, &QAction::triggered, this, &StatusMenu::pushNoteDraftChosen);
    m_clearChat = addAction(QStringLiteral("Clear Chat"));
    connect(m_clearChat, &QAction::triggered, this, &StatusMenu::clearChatChosen);
    setOffersNotes(false);
}

void StatusMenu::setOffersNotes(bool offersNotes) {
    for (QAction* entry : {m_saveHighlight, m_pushNoteDraft})
        entry->setVisible(offersNotes);
}

void StatusMenu::setBackendAtLogin(const BackendAtLoginEntry& entry) {
    m_backendAtLogin->setVisible(entry.isOffered);
    m_backendAtLogin->setChecked(entry.isOn);
    m_backendAtLogin->setEnabled(!entry.isBusy);
}

// Menus show what stands behind a tab in a column of its own.
void StatusMenu::setHotKeys(const std::set<HotKeyAction>& registered) {
    const std::map<HotKeyAction, QAction*> entries{{HotKeyAction::Panel, m_toggle},
                                                   {HotKeyAction::SaveNote, m_saveHighlight},
                                                   {HotKeyAction::PushNote, m_pushNoteDraft},
                                                   {HotKeyAction::ClearChat, m_clearChat}};
    for (const HotKeyEntry& hotKey : hotKeyTable) {
        QAction* entry = entries.at(hotKey.action);
        const QString text = entry->text().section(u'\t', 0, 0);
        entry->setText(registered.contains(hotKey.action) ? text + u'\t' + keysOf(hotKey) : text);
    }
}

void StatusMenu::bindAppState(VorqAppState& state) {
    if (m_state == &state) return;
    m_state = &state;
    m_customize.bind(state.appearance());
    const AccountSession* account = &state.account();
    connect(account, &AccountSession::signedInChanged, this, &StatusMenu::refreshAccount);
    connect(account, &AccountSession::displayNameChanged, this, &StatusMenu::refreshAccount);
    connect(&state.permissions(), &Permissions::changed, this, &StatusMenu::refreshAccessibility);
    connect(&state.panel(), &PanelConversation::stateChanged, this, &StatusMenu::refreshChat);
    connect(this, &QMenu::aboutToShow, this, &StatusMenu::refreshChat);
    refreshAccount();
    refreshAccessibility();
    refreshChat();
}

void StatusMenu::refreshChat() {
    m_saveChat->setEnabled(m_state && m_state->panel().canSaveCurrentChat());
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
