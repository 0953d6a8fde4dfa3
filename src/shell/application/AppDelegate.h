#pragma once

#include "capture/source/FrontmostTracker.h"
#include "shell/application/AccessGuide.h"
#include "shell/application/DesktopReveal.h"
#include "shell/application/UrlRouter.h"
#include "shell/hotkeys/HotKeyHandler.h"
#include "shell/hotkeys/NoteHotKeys.h"
#include "shell/notices/Alert.h"
#include "shell/notices/PanelHold.h"
#include "shell/notices/ShellNotifications.h"
#include "shell/status/MenuBarAttention.h"
#include "shell/status/StatusItem.h"
#include "shell/window/PanelSummoner.h"
#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QObject>

#include <functional>
#include <stop_token>
#include <vector>

namespace vorq {

class ApplicationHost;
class Clock;
class Defaults;
class LoginItem;

/// How the program was started.
struct LaunchOptions {
    bool background = false;
    bool launchedAtLogin = false;

    bool operator==(const LaunchOptions&) const = default;
};

/// The life of the application: starts its parts in order, gives each event to the part that deals
/// with it, and takes all down again. Main thread only.
class AppDelegate final : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object.
    struct Ports {
        ApplicationHost& host;
        Clock& clock;
        Defaults& defaults;
        Workspace& workspace;
        GlobalHotKeys& hotKeys;
        LoginItem& loginItem;
        SelectionCapture& capture;
        NoteCaptureFlow& notes;
        PendingSignIn& signIn;
        StatusItem& statusItem;
        PanelSummoner::MakePanel makePanel;
        FrontmostTracker::Self self;
        /// Has the system let the program read others. The user has agreed.
        std::function<void()> openAccessibility;
        /// Whether the program is one of the applications that the desktop knows.
        bool isInstalled = false;
    };

    explicit AppDelegate(const Ports& ports, QObject* parent = nullptr);
    ~AppDelegate() override;

    void applicationDidFinishLaunching(LaunchOptions options);

    /// Until a state is bound, hot keys but those for notes do nothing, and those fail.
    void bindAppState(VorqAppState& state);

    /// The user has started the program once more. Always false: there is no window to bring back.
    bool applicationShouldHandleReopen();

    void applicationOpen(const QList<QUrl>& urls) { m_urlRouter.open(urls); }
    void applicationWillTerminate();

    /// What a hot key does, or the command of the same meaning.
    void perform(HotKeyAction action, const HotKeySource& source);

    /// What the user chooses in the menu of the status item, or elsewhere to the same end.
    void performCommand(StatusCommand command);

    void togglePanel() { m_panel.togglePanel(); }
    void showPanel() { m_panel.showPanel(); }
    void openStatusItemMenu();

    /// Keeps the conversation in the user's notes. The status item tells whether that worked, and
    /// an alert why not.
    void saveChatToNotes();

    /// Asks first.
    void deleteVorqFromMenu();

    /// Shows an alert that keeps the panel up until it is answered. Calls back with the index of
    /// the button, unless this object is gone by then.
    void showAlert(const Alert& alert, const std::function<void(qsizetype button)>& chosen = {});

    /// Takes note of what the system lets the program do now.
    void refreshPermissions();

    /// Shows that a command came to nothing.
    void tellFailure() { flash(StatusImage::Fail); }

    [[nodiscard]] ShellNotifications& notifications() { return m_notifications; }
    [[nodiscard]] HotKeyHandler& hotKeys() { return m_hotKeyHandler; }
    [[nodiscard]] PanelHolds& holds() { return m_holds; }
    [[nodiscard]] const FrontmostTracker& frontmost() const { return m_frontmost; }

  signals:
    /// What is highlighted in the application is to be rewritten.
    void rewriteRequested(std::optional<vorq::ProcessId> source);

  private:
    void connectStatusItem();
    void refreshHotKeys();
    void connectColorEdits();
    void observeNotifications();
    void registerOpenAtLoginIfNeeded();
    void appearAfterLaunch(LaunchOptions options);
    void appear();
    void connectSignIn(VorqAppState& state);
    void tellOfSignIn();
    void openAccessibilityFromMenu();
    static QCoro::Task<> runChatSave(AppDelegate* self, std::stop_token stop);
    void tellChatSave(bool isSaved);
    void uninstallVorqAndQuit();
    void clearChat();
    void signIn();
    void signOut();
    void activateFromMacHandoff(const QString& code);
    void flash(StatusImage image);
    void yieldPanelFocus();

    Ports m_ports;
    VorqAppState* m_state = nullptr;
    ShellNotifications m_notifications;
    PanelHolds m_holds;
    /// One for each colour that is being chosen.
    std::vector<PanelHold> m_colorEdits;
    FrontmostTracker m_frontmost;
    HotKeyHandler m_hotKeyHandler;
    PanelSummoner m_panel;
    NoteHotKeys m_noteHotKeys;
    UrlRouter m_urlRouter;
    DesktopReveal m_reveal;
    MenuBarAttention m_attention;
    AccessGuide m_guide;
    bool m_isDesktopRevealed = false; // by the sign-in that is about to be told
    TaskSlot m_chatSave;              // all that are under way, the latest in the slot
};

} // namespace vorq
