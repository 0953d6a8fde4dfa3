#include "shell/application/AppDelegate.h"

#include "backend/account/PendingSignIn.h"
#include "core/VorqAppState.h"
#include "platform/Clock.h"
#include "platform/LoginItem.h"
#include "shell/application/ApplicationHost.h"
#include "shell/notices/ShellLog.h"

#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

using namespace std::chrono_literals;

namespace {

constexpr Clock::Duration launchDelay = 250ms;

// Calls back after a delay unless the object is gone by then.
template<typename Callback>
void after(Clock& clock, Clock::Duration delay, QObject* owner, Callback callback) {
    clock.after(delay, [owner = QPointer(owner), callback] {
        if (owner) callback();
    });
}

} // namespace

AppDelegate::AppDelegate(const Ports& ports, QObject* parent)
    : QObject(parent),
      m_ports(ports),
      m_frontmost(ports.workspace, ports.self),
      m_hotKeyHandler(ports.hotKeys, ports.workspace, ports.clock),
      m_panel({ports.workspace, ports.capture, m_frontmost, m_holds, ports.makePanel}),
      m_noteHotKeys(ports.notes, ports.workspace, m_frontmost),
      m_urlRouter(ports.signIn, m_notifications),
      m_reveal(ports.workspace, ports.self),
      m_attention({ports.clock, ports.defaults, ports.statusItem, ports.isInstalled}),
      m_guide({ports.clock, ports.defaults, ports.statusItem, m_notifications,
               [this] { yieldPanelFocus(); }, [this] { openStatusItemMenu(); }}) {
    connect(&m_hotKeyHandler, &HotKeyHandler::activated, this, &AppDelegate::perform);
    m_hotKeyHandler.setOffersNotes(ports.notes.isAvailable());
    connect(&m_hotKeyHandler, &HotKeyHandler::noticesChanged, this, &AppDelegate::refreshHotKeys);
    connect(&m_noteHotKeys, &NoteHotKeys::flashNoteSaveStatus, this,
            [this](bool succeeded) { flash(succeeded ? StatusImage::Check : StatusImage::Fail); });
    connect(&m_noteHotKeys, &NoteHotKeys::adviceChanged, &ports.statusItem,
            &StatusItem::setNoteAdvice);
    connectStatusItem();
    connectColorEdits();
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::connectStatusItem() {
    StatusItem* item = &m_ports.statusItem;
    connect(item, &StatusItem::menuWillOpen, this, [this] {
        m_attention.stop();
        emit m_notifications.vorqStatusMenuChanged(true);
        refreshPermissions();
        m_hotKeyHandler.retryMissing();
    });
    connect(item, &StatusItem::menuDidClose, this, [this] {
        emit m_notifications.vorqStatusMenuChanged(false);
        emit m_notifications.vorqSuppressPanelOutsideClose(false);
    });
    connect(item, &StatusItem::chosen, this, &AppDelegate::performCommand);
}

void AppDelegate::performCommand(StatusCommand command) {
    switch (command) {
    case StatusCommand::ToggleVorq:
        return togglePanel();
    case StatusCommand::SaveChat:
        return saveChatToNotes();
    case StatusCommand::SaveHighlight:
        return m_noteHotKeys.saveHighlightAsNote();
    case StatusCommand::PushNoteDraft:
        return m_noteHotKeys.handlePushNoteHotKey();
    case StatusCommand::SaveHeldText:
        return m_noteHotKeys.saveHeldText();
    case StatusCommand::DiscardHeldText:
        return m_noteHotKeys.discardHeldText();
    case StatusCommand::ClearChat:
        return clearChat();
    case StatusCommand::OpenAccessibility:
        return openAccessibilityFromMenu();
    case StatusCommand::SignIn:
        return signIn();
    case StatusCommand::SignOut:
        return signOut();
    case StatusCommand::DeleteVorq:
        return deleteVorqFromMenu();
    case StatusCommand::Quit:
        return m_ports.host.terminate();
    case StatusCommand::EnableBackendAtLogin:
    case StatusCommand::DisableBackendAtLogin:
        return; // for BackendAtLoginChoice
    }
}

void AppDelegate::refreshHotKeys() {
    m_ports.statusItem.setHotKeyNotices(m_hotKeyHandler.notices());
    m_ports.statusItem.setHotKeys(m_hotKeyHandler.registered());
}

// The panel is there to be looked at while its colours are chosen beside it.
void AppDelegate::connectColorEdits() {
    connect(&m_ports.statusItem, &StatusItem::colorEditBegan, this, [this] {
        m_colorEdits.push_back(m_holds.take(PanelHoldKind::Dialog));
        showPanel();
    });
    connect(&m_ports.statusItem, &StatusItem::colorEditEnded, this,
            [this] { m_colorEdits.pop_back(); });
}

void AppDelegate::applicationDidFinishLaunching(LaunchOptions options) {
    m_ports.host.becomeAccessory();
    m_ports.host.installApplicationIcon();
    m_ports.statusItem.installStatusItem();
    m_ports.statusItem.setOffersNotes(m_ports.notes.isAvailable());
    m_attention.startInstalledMenuBarAttentionIfNeeded();
    m_frontmost.startFrontmostTracking();
    m_hotKeyHandler.registerHotKeys();
    registerOpenAtLoginIfNeeded();
    observeNotifications();
    appearAfterLaunch(options);
}

void AppDelegate::registerOpenAtLoginIfNeeded() {
    const auto outcome = m_ports.loginItem.registerAtLogin();
    if (!outcome)
        qCWarning(shellLog, "Vorq Open at Login register failed: %s",
                  qUtf8Printable(outcome.error()));
}

void AppDelegate::observeNotifications() {
    const ShellNotifications* sender = &m_notifications;
    connect(sender, &ShellNotifications::vorqOpenLibrary, this,
            [] { qCInfo(shellLog, "Vorq: open Hub ignored (Setup archived)."); });
    connect(sender, &ShellNotifications::vorqShowPanel, this, &AppDelegate::showPanel);
    connect(sender, &ShellNotifications::vorqOpenStatusMenu, this, &AppDelegate::tellOfSignIn);
    connect(sender, &ShellNotifications::vorqMacHandoffCode, this,
            &AppDelegate::activateFromMacHandoff);
    connect(sender, &ShellNotifications::vorqGuidePanelAccess, this,
            [this] { m_guide.guidePanelAccessFromNotification(); });
}

void AppDelegate::appearAfterLaunch(LaunchOptions options) {
    if (options.background || options.launchedAtLogin) return;
    after(m_ports.clock, launchDelay, this, [this] { appear(); });
}

// Whoever starts a program wants to see it. A menu takes all keys, which belong to the application
// in front.
void AppDelegate::appear() {
    const PanelPresence* panel = m_panel.panel();
    if (panel != nullptr && panel->isPanelVisible()) return;
    if (m_ports.host.isActive())
        openStatusItemMenu();
    else if (m_ports.host.isUserBusy())
        m_panel.showPanelBeside();
    else
        showPanel();
}

// A menu would take the keyboard from the browser or the terminal that the sign-in came from,
// unless the browser is out of the way.
void AppDelegate::tellOfSignIn() {
    if (std::exchange(m_isDesktopRevealed, false) || m_ports.host.isActive())
        openStatusItemMenu();
    else
        flash(StatusImage::Check);
}

void AppDelegate::bindAppState(VorqAppState& state) {
    const bool isFirst = m_state == nullptr;
    m_state = &state;
    m_panel.bind(state);
    m_noteHotKeys.setBound();
    m_ports.statusItem.bindAppState(state);
    if (!isFirst) return;
    // At the launch rather than when somebody looks, so that no key waits for the files.
    if (!state.isLibraryLoaded()) state.reloadLibrary();
    state.watchLibrary();
    state.permissions().setShowAccessibilityWalkthrough(false);
    m_attention.startInstalledMenuBarAttentionIfNeeded();
    connectSignIn(state);
    connect(&state.panel(), &PanelConversation::vorqShowPanel, &m_notifications,
            &ShellNotifications::vorqShowPanel);
    connect(&state.panel(), &PanelConversation::vorqFocusPrompt, &m_notifications,
            &ShellNotifications::vorqFocusPrompt);
}

void AppDelegate::connectSignIn(VorqAppState& state) {
    connect(&state.signIn(), &AccountSignIn::desktopRevealRequested, this, [this] {
        m_isDesktopRevealed =
            m_reveal.revealDesktopAfterBrowserSignIn(m_ports.signIn.takeBrowserApplication());
    });
    connect(&state.signIn(), &AccountSignIn::statusMenuRequested, &m_notifications,
            &ShellNotifications::vorqOpenStatusMenu);
}

bool AppDelegate::applicationShouldHandleReopen() {
    openStatusItemMenu();
    return false;
}

void AppDelegate::applicationWillTerminate() {
    m_frontmost.stopFrontmostTracking();
    m_notifications.disconnect(this);
    m_hotKeyHandler.unregisterHotKeys();
}

void AppDelegate::perform(HotKeyAction action, const HotKeySource& source) {
    switch (action) {
    case HotKeyAction::Panel:
        return m_panel.handlePanelHotKey(source.process);
    case HotKeyAction::SaveNote:
        return m_noteHotKeys.handleSaveNoteHotKey(source);
    case HotKeyAction::PushNote:
        return m_noteHotKeys.handlePushNoteHotKey();
    case HotKeyAction::ClearChat:
        return clearChat();
    case HotKeyAction::Rewrite:
        emit rewriteRequested(m_frontmost.resolveSourcePID(source.process));
        return;
    }
}

void AppDelegate::refreshPermissions() {
    if (m_state == nullptr) return;
    Permissions& permissions = m_state->permissions();
    permissions.refreshPermissions();
    // What was advised has been done.
    if (permissions.textCapturePermission() == PermissionState::Granted)
        permissions.setPermissionMessage({});
}

// The system may take a moment; its answer comes as a change of the permission.
void AppDelegate::openAccessibilityFromMenu() {
    m_ports.openAccessibility();
    refreshPermissions();
}

void AppDelegate::clearChat() {
    if (m_state != nullptr && m_state->account().signedIn()) m_state->panel().clearPanelChat();
}

void AppDelegate::signIn() {
    if (m_state != nullptr) m_state->signIn().signInInBrowser(u"sign-in"_s);
}

void AppDelegate::signOut() {
    if (m_state != nullptr) m_state->account().signOut();
}

void AppDelegate::saveChatToNotes() {
    if (m_state == nullptr || !m_state->panel().canSaveCurrentChat()) return;
    m_chatSave.release();
    m_chatSave.restart([this](std::stop_token stop) { return runChatSave(this, std::move(stop)); });
}

QCoro::Task<> AppDelegate::runChatSave(AppDelegate* self, std::stop_token stop) {
    const bool isSaved = co_await self->m_state->panelChats().exportCurrentChatToAppleNotes();
    if (!stop.stop_requested()) self->tellChatSave(isSaved);
}

void AppDelegate::tellChatSave(bool isSaved) {
    flash(isSaved ? StatusImage::Check : StatusImage::Fail);
    if (isSaved) return;
    showAlert({tr("Couldn’t save to Notes."), m_state->library().libraryMessage(), {tr("OK")}});
}

void AppDelegate::showAlert(const Alert& alert, const std::function<void(qsizetype)>& chosen) {
    const auto hold = std::make_shared<PanelHold>(m_holds.take(PanelHoldKind::Dialog));
    m_ports.host.show(alert, [self = QPointer(this), hold, chosen](qsizetype button) {
        hold->giveBack();
        if (self && chosen) chosen(button);
    });
}

void AppDelegate::deleteVorqFromMenu() {
    const QString whatGoes =
        tr("This moves Vorq to the Trash and quits. Vorq won’t appear in Applications anymore — "
           "reinstall anytime from the website.");
    const QString whatElseGoes =
        tr("Your saved notes and chats, your tasks and trackers, and the accounts of a local "
           "backend go to the trash with it. Settings, sign-in and the start at login are removed "
           "for good. Notes in other applications stay.");
    const Alert alert{
        tr("Delete Vorq?"), whatGoes + u"\n\n"_s + whatElseGoes, {tr("Delete Vorq"), tr("Cancel")}};
    showAlert(alert, [this](qsizetype button) {
        if (button == 0) uninstallVorqAndQuit();
    });
}

void AppDelegate::uninstallVorqAndQuit() {
    m_ports.host.terminateAndDelete();
}

// The panel gives up the keyboard, which the menu is about to take.
void AppDelegate::openStatusItemMenu() {
    m_attention.stop();
    yieldPanelFocus();
    emit m_notifications.vorqWillOpenStatusMenu();
    m_ports.statusItem.openMenu();
}

void AppDelegate::activateFromMacHandoff(const QString& code) {
    if (m_state != nullptr) m_state->signIn().activateFromMacHandoff(code);
}

void AppDelegate::flash(StatusImage image) {
    m_attention.stop();
    m_ports.statusItem.flashStatusImage(image);
}

void AppDelegate::yieldPanelFocus() {
    if (PanelPresence* panel = m_panel.panel()) panel->yieldFocus();
}

} // namespace vorq
