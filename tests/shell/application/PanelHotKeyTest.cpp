// What the panel hot key does with the panel and the selection.

#include "doubles/shell/ShellFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class PanelHotKeyTest : public ShellFixture {
  protected:
    PanelHotKeyTest() {
        launch();
        m_workspace.bringToFront(editor);
    }
};

TEST_F(PanelHotKeyTest, ShowsThePanelGreetsAndLogs) {
    press(1);
    advance(2s);
    EXPECT_THAT(m_calls, ElementsAre("show"));
    EXPECT_THAT(texts(), ElementsAre(u"Hello 👋, Vorq here…"_s));
    EXPECT_THAT(m_log.all().first(1),
                ElementsAre("Vorq ⌘⇧A: sourcePID=7 app=Text Editor trusted=true canAI=true"));
}

TEST_F(PanelHotKeyTest, TheLogSaysWhatIsUnknown) {
    m_workspace.quit(editor);
    m_workspace.quit(browser);
    m_delegate.perform(HotKeyAction::Panel, {});
    m_capture.trusted = false;
    state().account().markSessionExpired();
    AppDelegate fresh(ports());
    fresh.bindAppState(state());
    m_log.clear();
    fresh.perform(HotKeyAction::Panel, {});
    EXPECT_THAT(m_log.all(),
                ElementsAre("Vorq ⌘⇧A: sourcePID=nil app=nil trusted=false canAI=false"));
    m_clock.settle();
}

TEST_F(PanelHotKeyTest, ASelectionIsTakenUp) {
    m_capture.selections[editor] = "a passage";
    press(1);
    EXPECT_THAT(m_calls, ElementsAre("show"));
    EXPECT_EQ(panel().highlightedText(), "a passage");
    EXPECT_EQ(exchange().json()["text"], "a passage");
}

TEST_F(PanelHotKeyTest, WithoutASelectionItClosesAVisiblePanel) {
    press(1);
    press(1);
    EXPECT_THAT(m_calls, ElementsAre("show", "show", "hide"));
}

TEST_F(PanelHotKeyTest, WithASelectionAVisiblePanelStaysAndTakesTheKeyboard) {
    press(1);
    m_capture.selections[editor] = "a passage";
    press(1);
    EXPECT_THAT(m_calls, ElementsAre("show", "show"));
    EXPECT_EQ(panel().highlightedText(), "a passage");
}

TEST_F(PanelHotKeyTest, WhatReadsLikeASecretIsHeldAndTheVisiblePanelStays) {
    press(1);
    m_capture.selections[editor] = "kT4vB9nQz2Lm";
    m_capture.readsLikeSecret = true;
    press(1);
    EXPECT_THAT(m_calls, ElementsAre("show", "show"));
    EXPECT_FALSE(state().hotKeyContext().held().isEmpty());
    EXPECT_EQ(panel().highlightedText(), "");
}

TEST_F(PanelHotKeyTest, ASecretThatIsReadOnceThePanelIsHiddenDoesNotWaitUnseen) {
    m_capture.selections[editor] = "kT4vB9nQz2Lm";
    m_capture.readsLikeSecret = true;
    m_delegate.perform(HotKeyAction::Panel, {.process = editor, .bundleIdentifier = {}});
    // Once the capture has begun, which is on the next turn, and before it ends.
    QMetaObject::invokeMethod(
        &m_delegate, [this] { m_delegate.togglePanel(); }, Qt::QueuedConnection);
    m_clock.settle();
    ASSERT_THAT(m_calls, ElementsAre("show", "hide"));
    ASSERT_THAT(m_capture.asked, ElementsAre(editor));
    EXPECT_TRUE(state().hotKeyContext().held().isEmpty());
}

TEST_F(PanelHotKeyTest, WithoutTrustItDoesNotClose) {
    m_capture.trusted = false;
    press(1);
    press(1);
    EXPECT_THAT(m_calls, ElementsAre("show", "show"));
}

TEST_F(PanelHotKeyTest, ADialogKeepsPanelAndKeyboard) {
    press(1);
    {
        const PanelHold dialog = m_delegate.holds().take(PanelHoldKind::Dialog);
        press(1);
        m_delegate.togglePanel();
        EXPECT_THAT(m_calls, ElementsAre("show"));
        m_capture.selections[editor] = "a passage";
        press(1);
        EXPECT_THAT(m_calls, ElementsAre("show"));
        EXPECT_EQ(panel().highlightedText(), "a passage");
    }
    m_delegate.togglePanel();
    EXPECT_THAT(m_calls, ElementsAre("show", "hide"));
}

TEST_F(PanelHotKeyTest, AMenuDoesNotKeepThePanelFromTheHotKey) {
    press(1);
    const PanelHold menu = m_delegate.holds().take(PanelHoldKind::Menu);
    press(1);
    EXPECT_THAT(m_calls, ElementsAre("show", "show", "hide"));
}

TEST_F(PanelHotKeyTest, PressesDuringACaptureWaitAndTheNewestCounts) {
    for (int count = 0; count < 3; ++count)
        m_delegate.perform(HotKeyAction::Panel, {.process = editor, .bundleIdentifier = {}});
    m_clock.settle();
    EXPECT_THAT(m_calls, ElementsAre("show", "show", "hide"));
    EXPECT_THAT(m_capture.asked, ElementsAre(editor, editor));
}

TEST_F(PanelHotKeyTest, ToggleShowsAndHides) {
    m_delegate.togglePanel();
    advance(2s);
    EXPECT_THAT(m_calls, ElementsAre("show"));
    EXPECT_THAT(texts(), ElementsAre(u"Hello 👋, Vorq here…"_s));
    m_delegate.togglePanel();
    EXPECT_THAT(m_calls, ElementsAre("show", "hide"));
}

TEST_F(PanelHotKeyTest, ShowBringsAVisiblePanelUpAgain) {
    emit m_delegate.notifications().vorqShowPanel();
    emit m_delegate.notifications().vorqShowPanel();
    EXPECT_THAT(m_calls, ElementsAre("show", "show"));
}

TEST_F(PanelHotKeyTest, TheMenuShowsAndHides) {
    emit m_statusItem.chosen(StatusCommand::ToggleVorq);
    emit m_statusItem.chosen(StatusCommand::ToggleVorq);
    EXPECT_THAT(m_calls, ElementsAre("show", "hide"));
}

TEST_F(PanelHotKeyTest, TheShellGoneDuringTheCaptureIsNoHarm) {
    auto fresh = std::make_unique<AppDelegate>(ports());
    fresh->bindAppState(state());
    m_capture.selections[editor] = "a passage";
    fresh->perform(HotKeyAction::Panel, {.process = editor, .bundleIdentifier = {}});
    QCoreApplication::sendPostedEvents();
    fresh.reset();
    m_clock.settle();
    EXPECT_EQ(panel().highlightedText(), "");
}

TEST_F(PanelHotKeyTest, WithoutAStateNothingHappens) {
    AppDelegate unbound(ports());
    unbound.togglePanel();
    unbound.showPanel();
    unbound.perform(HotKeyAction::Panel, {});
    m_clock.settle();
    EXPECT_THAT(m_calls, IsEmpty());
}

} // namespace
} // namespace vorq
