#include "shell/status/StatusMenu.h"

#include "core/VorqAppState.h"

#include <map>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Menus underline the character behind a single "&".
QString menuText(QString text) {
    return text.replace(u'&', u"&&"_s);
}

} // namespace

StatusMenu::StatusMenu() : FactMenu(u"Vorq"_s) {
    setAccessibleName(u"Vorq"_s);
    m_account = addFact(tr("Starting…"));
    m_watch = addFact(QString());
    setWatchStatus({});
    m_noticesEnd = addSeparator();
    addSignIn();
    addSubmenus();
    addSeparator();
    addCommands();
    addSeparator();
    addSettings();
    addSeparator();
    addCommand(tr("Quit Vorq"), StatusCommand::Quit);
    refreshAccount();
    refreshAccessibility();
    refreshChat();
}

void StatusMenu::addSignIn() {
    m_signIn = addCommand(QString(), StatusCommand::SignIn);
    m_signInFailure = addFact(QString());
}

// A bar that draws the menu may ask for all of it at once.
void StatusMenu::addSubmenus() {
    addMenu(&m_history);
    addMenu(&m_model);
    connect(this, &QMenu::aboutToShow, &m_history, &HistoryMenu::rebuildHistorySubmenu);
}

void StatusMenu::addSettings() {
    addMenu(&m_customize);
    connect(&m_customize, &CustomizeMenu::colorEditBegan, this, &StatusMenu::colorEditBegan);
    connect(&m_customize, &CustomizeMenu::colorEditEnded, this, &StatusMenu::colorEditEnded);
    m_accessibility = addCommand(QString(), StatusCommand::OpenAccessibility);
    addBackendAtLogin();
    addMenu(&m_limits);
    m_signOut = addCommand(tr("Sign out"), StatusCommand::SignOut);
    addCommand(tr("Delete Vorq"), StatusCommand::DeleteVorq);
}

QAction* StatusMenu::addCommand(const QString& text, StatusCommand command) {
    QAction* entry = addAction(text);
    connect(entry, &QAction::triggered, this, [this, command] { emit chosen(command); });
    return entry;
}

void StatusMenu::addCommands() {
    m_toggle = addCommand(tr("Toggle Vorq"), StatusCommand::ToggleVorq);
    m_saveChat = addCommand(tr("Save Chat to Notes"), StatusCommand::SaveChat);
    m_noteFailure = addFact(QString());
    m_saveHeldText = addCommand(tr("Save Held Text as Note"), StatusCommand::SaveHeldText);
    m_discardHeldText = addCommand(tr("Discard Held Text"), StatusCommand::DiscardHeldText);
    setNoteAdvice({});
    m_saveHighlight = addCommand(tr("Save Highlight as Note"), StatusCommand::SaveHighlight);
    m_pushNoteDraft = addCommand(tr("Push Note Draft"), StatusCommand::PushNoteDraft);
    m_clearChat = addCommand(tr("Clear Chat"), StatusCommand::ClearChat);
    setOffersNotes(false);
}

void StatusMenu::addBackendAtLogin() {
    m_backendAtLogin = addAction(tr("Start Local Backend at Login"));
    m_backendAtLogin->setCheckable(true);
    connect(m_backendAtLogin, &QAction::triggered, this, [this](bool isOn) {
        emit chosen(isOn ? StatusCommand::EnableBackendAtLogin
                         : StatusCommand::DisableBackendAtLogin);
    });
    setBackendAtLogin({});
}

void StatusMenu::setOffersNotes(bool offersNotes) {
    for (QAction* entry : {m_saveHighlight, m_pushNoteDraft})
        entry->setVisible(offersNotes);
}

void StatusMenu::setNoteAdvice(const NoteAdvice& advice) {
    m_noteFailure->setText(menuText(advice.failure));
    m_noteFailure->setVisible(!advice.failure.isEmpty());
    for (QAction* entry : {m_saveHeldText, m_discardHeldText})
        entry->setVisible(advice.holdsText);
}

void StatusMenu::setWatchStatus(const QString& status) {
    m_watch->setText(menuText(status));
    m_watch->setVisible(!status.isEmpty());
}

void StatusMenu::setSessionLimits(const QStringList& reasons) {
    m_limits.tell(reasons);
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
        const auto found = entries.find(hotKey.action);
        if (found == entries.end()) continue;
        QAction* entry = found->second;
        const QString text = entry->text().section(u'\t', 0, 0);
        entry->setText(registered.contains(hotKey.action) ? text + u'\t' + keysOf(hotKey) : text);
    }
}

void StatusMenu::bindAppState(VorqAppState& state) {
    if (m_state == &state) return;
    m_state = &state;
    m_history.bind(state);
    m_model.bind(state.model());
    m_customize.bind(state.appearance());
    const AccountSession* account = &state.account();
    connect(account, &AccountSession::signedInChanged, this, &StatusMenu::refreshAccount);
    connect(account, &AccountSession::profileChanged, this, &StatusMenu::refreshAccount);
    const AccountSignIn* signIn = &state.signIn();
    connect(signIn, &AccountSignIn::progressChanged, this, &StatusMenu::refreshSignIn);
    connect(signIn, &AccountSignIn::authErrorChanged, this, &StatusMenu::refreshSignIn);
    connect(&state.permissions(), &Permissions::changed, this, &StatusMenu::refreshAccessibility);
    connect(&state.panel(), &PanelConversation::stateChanged, this, &StatusMenu::refreshChat);
    connect(this, &QMenu::aboutToShow, this, &StatusMenu::refreshChat);
    connect(this, &QMenu::aboutToShow, &state.model(), &PreferredModel::refreshOffered);
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
    m_signOut->setVisible(isSignedIn);
    refreshSignIn();
    if (!m_state) return;
    const QString name = menuText(m_state->account().profile().displayName());
    m_account->setText(isSignedIn ? tr("Signed in as %1").arg(name) : tr("Not signed in"));
}

void StatusMenu::refreshSignIn() {
    const bool isMissing = m_state && !m_state->account().signedIn();
    const bool isWaiting = m_state && m_state->signIn().isSigningIn();
    m_signIn->setVisible(isMissing);
    m_signIn->setText(isWaiting ? tr("Waiting for browser…") : tr("Sign in"));
    m_signIn->setEnabled(!isWaiting);
    const QString failure = isMissing ? m_state->signIn().authError() : QString();
    m_signInFailure->setText(menuText(failure));
    m_signInFailure->setVisible(!failure.isEmpty());
}

QAction* StatusMenu::signInEntry() const {
    return m_signIn->isVisible() ? m_signIn : nullptr;
}

// There is something to choose only while it is off.
void StatusMenu::refreshAccessibility() {
    const bool isEnabled =
        m_state && m_state->permissions().textCapturePermission() == PermissionState::Granted;
    m_accessibility->setText(tr("Accessibility") + u'\t' +
                             (isEnabled ? tr("Enabled") : tr("Disabled")));
    setFact(m_accessibility, !m_state || isEnabled);
}

void StatusMenu::setHotKeyNotices(const QStringList& notices) {
    qDeleteAll(m_notices);
    m_notices.clear();
    for (const QString& notice : notices)
        m_notices += insertFact(m_noticesEnd, notice);
}

} // namespace vorq
