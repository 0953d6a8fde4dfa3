// How the application starts, is started again, and ends.

#include "shell/ScriptedPermissionProbe.h"
#include "shell/ShellFixture.h"

#include <QSignalSpy>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class LaunchTest : public ShellFixture {};

TEST_F(LaunchTest, PartsStartInOrder) {
    m_delegate.applicationDidFinishLaunching({.background = true});
    EXPECT_THAT(m_calls, ElementsAre("accessory", "application icon", "status item"));
    EXPECT_THAT(m_hotKeys.registered(), SizeIs(4));
    EXPECT_TRUE(m_loginItem.isRegistered);
}

TEST_F(LaunchTest, TheMenuOpensWhenTheUserIsWithVorq) {
    m_host.active = true;
    m_delegate.applicationDidFinishLaunching({});
    advance(249ms);
    EXPECT_THAT(m_calls, Not(Contains("menu")));
    advance(1ms);
    EXPECT_THAT(m_calls, Contains("menu"));
}

TEST_F(LaunchTest, NoMenuOpensBesideAnotherApplication) {
    m_delegate.applicationDidFinishLaunching({});
    advance(1s);
    EXPECT_THAT(m_calls, Not(Contains("menu")));
}

TEST_F(LaunchTest, NoMenuOpensAtLoginOrInTheBackground) {
    m_host.active = true;
    m_delegate.applicationDidFinishLaunching({.launchedAtLogin = true});
    m_delegate.applicationDidFinishLaunching({.background = true});
    advance(1s);
    EXPECT_THAT(m_calls, Not(Contains("menu")));
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
    emit m_statusItem.quitChosen();
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
    emit m_statusItem.accessibilityChosen();
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

TEST_F(LaunchTest, ThePanelIsGuidedToTheMenu) {
    launch();
    emit m_delegate.notifications().vorqGuidePanelAccess();
    EXPECT_THAT(m_calls, ElementsAre("suppress close", "yield"));
    m_calls.clear();
    advance(140ms);
    EXPECT_THAT(m_calls, ElementsAre("yield", "menu"));
    m_calls.clear();
    emit m_statusItem.menuDidClose();
    EXPECT_THAT(m_calls, ElementsAre("allow close"));
}

TEST_F(LaunchTest, ThePanelStaysInViewWhileItsColoursAreChosen) {
    launch();
    emit m_statusItem.colorEditBegan();
    EXPECT_THAT(m_calls, Contains("show"));
    EXPECT_EQ(m_calls.last(), "suppress close");
    emit m_statusItem.menuDidClose();
    EXPECT_EQ(m_calls.last(), "suppress close") << "the menu was opened beside the dialog";
    emit m_statusItem.colorEditBegan();
    emit m_statusItem.colorEditEnded();
    EXPECT_EQ(m_calls.last(), "suppress close") << "the other colour is still being chosen";
    emit m_statusItem.colorEditEnded();
    EXPECT_EQ(m_calls.last(), "allow close");
}

} // namespace
} // namespace vorq
