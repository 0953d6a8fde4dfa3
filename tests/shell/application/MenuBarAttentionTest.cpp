// How the status item shows itself to who has just installed Vorq.

#include "shell/status/MenuBarAttention.h"
#include "doubles/shell/ShellFixture.h"

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::Not;

const QString needs = QStringLiteral("vorq.needsMenuBarAttention");
const QString didShow = QStringLiteral("vorq.didShowMenuBarAttention");

class MenuBarAttentionTest : public ShellFixture {
  protected:
    // A shell of a copy that is installed.
    AppDelegate& launchInstalled() {
        AppDelegate::Ports all = ports();
        all.isInstalled = true;
        m_installed = std::make_unique<AppDelegate>(all);
        m_installed->applicationDidFinishLaunching({.background = true});
        m_installed->bindAppState(state());
        m_clock.settle();
        return *m_installed;
    }
    void expectFound() {
        EXPECT_FALSE(m_statusItem.callsForAttention);
        EXPECT_EQ(m_defaults.boolean(needs), false);
        EXPECT_EQ(m_defaults.boolean(didShow), true);
        m_calls.clear();
        launchInstalled();
        EXPECT_THAT(m_calls, Not(Contains("attention"))) << "it was found";
    }

    std::unique_ptr<AppDelegate> m_installed;
};

TEST_F(MenuBarAttentionTest, TheFirstStartOfAnInstalledCopyCallsOnce) {
    launchInstalled();
    EXPECT_EQ(m_calls.count("attention"), 1);
    EXPECT_EQ(m_defaults.boolean(needs), true);
    EXPECT_FALSE(m_defaults.contains(didShow));
    advance(1min);
    EXPECT_TRUE(m_statusItem.callsForAttention) << "nobody has found it";
}

TEST_F(MenuBarAttentionTest, ACopyThatIsNotInstalledNeverCalls) {
    m_defaults.setBoolean(needs, true);
    launch();
    advance(1min);
    EXPECT_FALSE(m_statusItem.callsForAttention);
}

TEST_F(MenuBarAttentionTest, WhoDidNotFindItIsCalledAtTheNextStart) {
    launchInstalled();
    m_statusItem.callsForAttention = false; // with the program
    m_calls.clear();
    launchInstalled();
    EXPECT_TRUE(m_statusItem.callsForAttention);
}

TEST_F(MenuBarAttentionTest, ItStopsAsTheMenuOpens) {
    launchInstalled();
    emit m_statusItem.menuWillOpen();
    expectFound();
}

TEST_F(MenuBarAttentionTest, ItStopsAtAFlash) {
    AppDelegate& delegate = launchInstalled();
    emit delegate.notifications().vorqOpenStatusMenu();
    EXPECT_THAT(m_calls, Contains("flash check"));
    expectFound();
}

TEST_F(MenuBarAttentionTest, ItStopsAsVorqIsStartedAgain) {
    launchInstalled().applicationShouldHandleReopen();
    expectFound();
}

TEST_F(MenuBarAttentionTest, AMenuThatOpensWithoutACallLeavesTheNextOne) {
    launch();
    emit m_statusItem.menuWillOpen();
    EXPECT_FALSE(m_defaults.contains(didShow));
    launchInstalled();
    EXPECT_TRUE(m_statusItem.callsForAttention);
}

TEST_F(MenuBarAttentionTest, AfterTheItemHasLeftTheTrayItIsNotCalledAgainInThisRun) {
    AppDelegate& delegate = launchInstalled();
    m_statusItem.callsForAttention = false;
    delegate.bindAppState(state());
    EXPECT_FALSE(m_statusItem.callsForAttention);
    EXPECT_FALSE(m_defaults.contains(didShow));
}

class MenuBarAttentionRetryTest : public MenuBarAttentionTest {
  protected:
    MenuBarAttentionRetryTest() { m_statusItem.inTray = false; }

    MenuBarAttention m_attention{{m_clock, m_defaults, m_statusItem, true}};
};

TEST_F(MenuBarAttentionRetryTest, AnItemThatIsInItsTrayAtTheLastTryIsCalledFor) {
    m_attention.startInstalledMenuBarAttentionIfNeeded();
    advance(39 * 120ms);
    m_statusItem.inTray = true;
    advance(119ms);
    EXPECT_FALSE(m_statusItem.callsForAttention);
    advance(1ms);
    EXPECT_TRUE(m_statusItem.callsForAttention);
}

TEST_F(MenuBarAttentionRetryTest, AfterFortyTriesNobodyLooksAnyMore) {
    m_attention.startInstalledMenuBarAttentionIfNeeded();
    advance(40 * 120ms);
    EXPECT_EQ(m_clock.pendingTimers(), 0U);
    m_statusItem.inTray = true;
    advance(1min);
    EXPECT_FALSE(m_statusItem.callsForAttention);
    EXPECT_FALSE(m_defaults.contains(needs));
}

} // namespace
} // namespace vorq
