// How the application starts, is started again, and ends.

#include "doubles/backend/ScriptedBrowserSignIn.h"
#include "doubles/shell/ShellFixture.h"
#include "platform/testing/ScriptedPermissionProbe.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class LaunchTest : public ShellFixture {};

// The ports that are asked for something at the launch, which note when.
class NotingWorkspace final : public Workspace {
  public:
    explicit NotingWorkspace(CallList& calls) : m_calls(calls) {}
    [[nodiscard]] std::optional<ProcessId> frontmostProcess() const override {
        m_calls += "frontmost application";
        return 7;
    }
    [[nodiscard]] std::optional<WindowId> activeWindow() const override { return {}; }
    [[nodiscard]] std::optional<RunningApplication> application(ProcessId) const override {
        return RunningApplication{7, u"org.gnome.gedit"_s, {}};
    }
    [[nodiscard]] std::optional<ProcessId> processOf(WindowId) const override { return {}; }
    void activate(WindowId) override {}
    PortSupport hide(ProcessId) override { return {}; }

  private:
    CallList& m_calls;
};

class NotingHotKeys final : public GlobalHotKeys {
  public:
    explicit NotingHotKeys(CallList& calls) : m_calls(calls) {}
    Outcome installEventHandler() override {
        m_calls += "hot key handler";
        return {};
    }
    Outcome registerHotKey(const HotKeyChord& chord, HotKeyId) override {
        m_calls += u"hot key "_s + QLatin1Char(chord.letter);
        return {};
    }
    void unregisterHotKey(HotKeyId) override {}

  private:
    CallList& m_calls;
};

class NotingLoginItem final : public LoginItem {
  public:
    explicit NotingLoginItem(CallList& calls) : m_calls(calls) {}
    std::function<void()> onRegister;
    std::expected<void, QString> registerAtLogin() override {
        m_calls += "login item";
        onRegister();
        return {};
    }
    std::expected<void, QString> unregisterAtLogin() override { return {}; }

  private:
    CallList& m_calls;
};

TEST_F(LaunchTest, PartsStartInOrder) {
    NotingWorkspace workspace(m_calls);
    NotingHotKeys hotKeys(m_calls);
    NotingLoginItem loginItem(m_calls);
    AppDelegate delegate({m_host,
                          m_clock,
                          m_defaults,
                          workspace,
                          hotKeys,
                          loginItem,
                          m_capture,
                          m_notes,
                          m_signIn,
                          m_statusItem,
                          ports().makePanel,
                          {self, u"com.vorq.desk"_s},
                          {}});
    const auto openLibrary = [&] {
        m_log.clear();
        emit delegate.notifications().vorqOpenLibrary();
        return !m_log.all().isEmpty();
    };
    loginItem.onRegister = [&] { EXPECT_FALSE(openLibrary()) << "nobody observes that yet"; };
    m_host.active = true;
    delegate.applicationDidFinishLaunching({});
    EXPECT_THAT(m_calls, ElementsAre("accessory", "application icon", "status item",
                                     "frontmost application", "hot key handler", "hot key A",
                                     "hot key S", "hot key P", "hot key T", "login item"));
    EXPECT_EQ(delegate.frontmost().lastForeignFrontmostPID(), 7);
    EXPECT_TRUE(openLibrary());
    m_calls.clear();
    advance(250ms);
    EXPECT_THAT(m_calls, ElementsAre("menu"));
}

TEST_F(LaunchTest, TheMenuOpensWhenTheUserIsWithVorq) {
    m_host.active = true;
    m_delegate.applicationDidFinishLaunching({});
    advance(249ms);
    EXPECT_THAT(m_calls, Not(Contains("menu")));
    advance(1ms);
    EXPECT_THAT(m_calls, Contains("menu"));
}

TEST_F(LaunchTest, BesideAnotherApplicationThePanelComesUpInsteadOfTheMenu) {
    m_delegate.applicationDidFinishLaunching({});
    m_delegate.bindAppState(state());
    advance(249ms);
    EXPECT_THAT(m_calls, Not(Contains("show")));
    advance(1s);
    EXPECT_THAT(m_calls, Contains("show"));
    EXPECT_THAT(m_calls, Not(Contains("menu")));
}

TEST_F(LaunchTest, AUserWhoIsAtWorkElsewhereKeepsTheKeyboard) {
    m_host.userIsBusy = true;
    m_delegate.applicationDidFinishLaunching({});
    m_delegate.bindAppState(state());
    advance(1s);
    EXPECT_THAT(m_calls, Contains("show beside"));
    EXPECT_THAT(m_calls, Not(Contains("show")));
    EXPECT_THAT(texts(), SizeIs(1)) << "the greeting";
}

TEST_F(LaunchTest, APanelThatIsUpAlreadyIsEnough) {
    m_delegate.applicationDidFinishLaunching({});
    m_delegate.bindAppState(state());
    m_delegate.togglePanel();
    m_host.active = true;
    m_calls.clear();
    advance(1s);
    EXPECT_THAT(m_calls, IsEmpty());
}

TEST_F(LaunchTest, NothingOpensAtLoginOrInTheBackground) {
    m_host.active = true;
    m_delegate.applicationDidFinishLaunching({.launchedAtLogin = true});
    m_delegate.applicationDidFinishLaunching({.background = true});
    m_delegate.bindAppState(state());
    advance(1s);
    for (const char* call : {"menu", "show", "show beside"})
        EXPECT_THAT(m_calls, Not(Contains(call)));
}

TEST_F(LaunchTest, ALoginItemThatFailsIsLogged) {
    m_loginItem.failure = "the disk is full";
    m_delegate.applicationDidFinishLaunching({.background = true});
    EXPECT_THAT(m_log.all(), Contains("Vorq Open at Login register failed: the disk is full"));
}

TEST_F(LaunchTest, BindingDropsTheWalkthroughOnce) {
    state().permissions().setShowAccessibilityWalkthrough(true);
    m_delegate.bindAppState(state());
    EXPECT_FALSE(state().permissions().showAccessibilityWalkthrough());
    state().permissions().setShowAccessibilityWalkthrough(true);
    m_delegate.bindAppState(state());
    EXPECT_TRUE(state().permissions().showAccessibilityWalkthrough());
}

TEST_F(LaunchTest, StartingItAgainOpensTheMenu) {
    launch();
    EXPECT_FALSE(m_delegate.applicationShouldHandleReopen());
    EXPECT_THAT(m_calls, ElementsAre("yield", "menu"));
}

TEST_F(LaunchTest, QuitInTheMenuEndsTheProgram) {
    launch();
    emit m_statusItem.chosen(StatusCommand::Quit);
    EXPECT_THAT(m_calls, ElementsAre("terminate"));
}

TEST_F(LaunchTest, TheEndGivesTheHotKeysBackAndHearsNothingMore) {
    launch();
    m_delegate.applicationWillTerminate();
    EXPECT_THAT(m_hotKeys.registered(), IsEmpty());
    emit m_delegate.notifications().vorqShowPanel();
    m_workspace.bringToFront(editor);
    EXPECT_THAT(m_calls, IsEmpty());
    EXPECT_EQ(m_delegate.frontmost().lastForeignFrontmostPID(), std::nullopt);
}

TEST_F(LaunchTest, TheLibraryIsReadBeforeAnybodyAsksForIt) {
    EXPECT_FALSE(state().isLibraryLoaded());
    launch();
    EXPECT_TRUE(state().isLibraryLoaded());
}

TEST_F(LaunchTest, ALoadedConversationBringsThePanelForward) {
    launch();
    const QSignalSpy focused(&m_delegate.notifications(), &ShellNotifications::vorqFocusPrompt);
    panel().bringForward();
    EXPECT_THAT(m_calls, ElementsAre("show"));
    EXPECT_EQ(focused.count(), 1);
}

TEST_F(LaunchTest, PermissionsAreReadAnewWhenTheMenuOpens) {
    launch();
    ScriptedPermissionProbe probe;
    state().permissions().setProbe(&probe);
    probe.text = PermissionState::Granted;
    emit m_statusItem.menuWillOpen();
    EXPECT_EQ(state().permissions().textCapturePermission(), PermissionState::Granted);
}

TEST_F(LaunchTest, TheMenuIsToldOfWhileItIsOpen) {
    launch();
    const QSignalSpy menu(&m_delegate.notifications(), &ShellNotifications::vorqStatusMenuChanged);
    emit m_statusItem.menuWillOpen();
    emit m_statusItem.menuDidClose();
    ASSERT_EQ(menu.count(), 2);
    EXPECT_EQ(menu[0][0], true);
    EXPECT_EQ(menu[1][0], false);
}

TEST_F(LaunchTest, ChoosingAccessibilityOpensItAndDropsTheAdviceOnceItIsGranted) {
    launch();
    ScriptedPermissionProbe probe;
    state().permissions().setProbe(&probe);
    state().permissions().adviseToGrantAgain();
    emit m_statusItem.chosen(StatusCommand::OpenAccessibility);
    EXPECT_THAT(m_calls, ElementsAre("open accessibility"));
    EXPECT_NE(state().permissions().permissionMessage(), "");
    probe.text = PermissionState::Granted;
    m_delegate.refreshPermissions();
    EXPECT_EQ(state().permissions().permissionMessage(), "");
}

TEST_F(LaunchTest, ALinkForTheLibraryIsOnlyLogged) {
    launch();
    emit m_delegate.notifications().vorqOpenLibrary();
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq: open Hub ignored (Setup archived)."));
    EXPECT_THAT(m_calls, IsEmpty());
}

TEST_F(LaunchTest, ChoosingToSignInOpensTheBrowser) {
    launch();
    ScriptedBrowserSignIn browser;
    state().account().signOut();
    state().signIn().setBrowserSignIn(&browser);
    emit m_statusItem.chosen(StatusCommand::SignIn);
    m_clock.settle();
    EXPECT_THAT(browser.modes, ElementsAre("sign-in"));
    EXPECT_TRUE(state().signIn().isSigningIn());
    state().signIn().cancelBrowserSignIn();
    state().signIn().setBrowserSignIn(nullptr);
    m_clock.settle();
}

TEST_F(LaunchTest, ASignInByALinkLeavesTheKeyboardWhereItIs) {
    launch();
    emit m_delegate.notifications().vorqOpenStatusMenu();
    EXPECT_THAT(m_calls, ElementsAre("flash check"));
    m_calls.clear();
    m_host.active = true;
    emit m_delegate.notifications().vorqOpenStatusMenu();
    EXPECT_THAT(m_calls, ElementsAre("yield", "menu"));
}

TEST_F(LaunchTest, ThePanelStaysInViewWhileItsColoursAreChosen) {
    launch();
    const PanelHolds& holds = m_delegate.holds();
    emit m_statusItem.colorEditBegan();
    EXPECT_THAT(m_calls, Contains("show"));
    EXPECT_TRUE(holds.isHeld());
    emit m_statusItem.menuDidClose();
    EXPECT_TRUE(holds.isHeld()) << "the menu was opened beside the dialog";
    emit m_statusItem.colorEditBegan();
    emit m_statusItem.colorEditEnded();
    EXPECT_TRUE(holds.isHeld()) << "the other colour is still being chosen";
    emit m_statusItem.colorEditEnded();
    EXPECT_FALSE(holds.isHeld());
}

TEST_F(LaunchTest, ThePanelStaysWhileTheUserIsAskedWhetherToDelete) {
    launch();
    emit m_statusItem.chosen(StatusCommand::DeleteVorq);
    EXPECT_TRUE(m_delegate.holds().isHeld(PanelHoldKind::Dialog));
    m_host.answer(1);
    EXPECT_FALSE(m_delegate.holds().isHeld());
}

} // namespace
} // namespace vorq
