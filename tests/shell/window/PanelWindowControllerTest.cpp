#include "doubles/shell/PanelWindowFixture.h"

namespace vorq {
namespace {

using namespace std::chrono_literals;
using enum PanelDockTarget;
using testing::ElementsAre;
using testing::IsEmpty;

class PanelShowTest : public PanelWindowFixture {};

TEST_F(PanelShowTest, IsDockedLeftAndHiddenAtFirst) {
    EXPECT_FALSE(m_controller->isPanelVisible());
    EXPECT_EQ(m_window.at, docked(Left));
    EXPECT_THAT(m_window.calls, IsEmpty());
    EXPECT_EQ(m_window.input, nullptr);
    EXPECT_FALSE(m_presses.isOn);
}

TEST_F(PanelShowTest, ComesToTheFrontAndThenTakesTheKeyboard) {
    m_controller->show();
    EXPECT_THAT(m_window.calls, ElementsAre("front", "activate"));
    EXPECT_TRUE(m_controller->isPanelVisible());
    EXPECT_NE(m_window.input, nullptr);
    EXPECT_TRUE(m_presses.isOn);
}

TEST_F(PanelShowTest, FocusesThePromptAtOnceAndAgainALittleLater) {
    m_controller->show();
    EXPECT_EQ(m_focusPrompts, 1);
    m_clock.advance(79ms);
    EXPECT_EQ(m_focusPrompts, 1);
    m_clock.advance(1ms);
    EXPECT_EQ(m_focusPrompts, 2);
    m_clock.advance(10s);
    EXPECT_EQ(m_focusPrompts, 2);
}

TEST_F(PanelShowTest, DoesNotFocusThePromptOfAPanelThatHasGone) {
    m_controller->show();
    m_controller->hide();
    m_clock.advance(1s);
    EXPECT_EQ(m_focusPrompts, 1);
}

TEST_F(PanelShowTest, ShowingAgainTakesTheKeyboardButDoesNotMoveThePanel) {
    m_controller->show();
    drag({60, 0});
    const QRectF before = m_window.at;
    m_window.calls.clear();
    m_controller->show();
    EXPECT_THAT(m_window.calls, ElementsAre("front", "activate"));
    EXPECT_EQ(m_window.at, before);
}

TEST_F(PanelShowTest, TellsOfEachChangeOnce) {
    int changes = 0;
    QObject::connect(m_controller.get(), &PanelWindowController::panelVisibleChanged,
                     [&] { ++changes; });
    m_controller->hide();
    EXPECT_EQ(changes, 0);
    m_controller->show();
    m_controller->show();
    EXPECT_EQ(changes, 1);
    m_controller->hide();
    m_controller->hide();
    EXPECT_EQ(changes, 2);
}

TEST_F(PanelShowTest, GoesDownWithItsController) {
    m_controller->show();
    m_controller.reset();
    EXPECT_FALSE(m_window.isShown);
    EXPECT_EQ(m_window.input, nullptr);
    EXPECT_EQ(m_clock.pendingTimers(), 0U);
}

class PanelHideTest : public PanelWindowFixture {
  protected:
    // As a window manager does it.
    void takeOffScreen() {
        m_window.isShown = false;
        m_window.input->exposureChanged();
    }

    void SetUp() override {
        PanelWindowFixture::SetUp();
        m_controller->show();
    }
};

TEST_F(PanelHideTest, LetsGoOfAllInput) {
    m_controller->hide();
    EXPECT_FALSE(m_window.isShown);
    EXPECT_FALSE(m_controller->isPanelVisible());
    EXPECT_EQ(m_window.input, nullptr);
    EXPECT_FALSE(m_presses.isOn);
    EXPECT_EQ(m_clock.pendingTimers(), 0U);
}

TEST_F(PanelHideTest, GivesTheKeyboardBackToTheWindowItCameFrom) {
    m_controller->hide();
    EXPECT_THAT(m_workspace.activations(), ElementsAre(writer));
}

TEST_F(PanelHideTest, LeavesTheKeyboardToAUserWhoHasMovedOn) {
    m_workspace.bringToFront(browser);
    m_controller->hide();
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
}

TEST_F(PanelHideTest, LeavesTheKeyboardToAnotherWindowOfOurs) {
    m_workspace.bringToFront(ours);
    m_controller->hide();
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
}

TEST_F(PanelHideTest, GivesTheKeyboardBackToWhereTheUserWorkedLast) {
    m_workspace.bringToFront(browser);
    m_workspace.bringToFront(ScriptedPanelWindow::number);
    m_controller->hide();
    EXPECT_THAT(m_workspace.activations(), ElementsAre(browser));
}

TEST_F(PanelHideTest, ShowingAgainFromWithinKeepsTheWindowItCameFrom) {
    m_controller->show();
    m_workspace.bringToFront(ours);
    m_controller->show();
    m_controller->hide();
    EXPECT_THAT(m_workspace.activations(), ElementsAre(writer));
}

TEST_F(PanelHideTest, DoesNotBringUpAWindowThatIsOutOfSight) {
    m_screens.windows.erase(writer);
    m_controller->hide();
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
    EXPECT_FALSE(m_window.isShown);
}

TEST_F(PanelHideTest, GivesTheKeyboardToNobodyWhereNobodyHadIt) {
    m_controller->hide();
    m_workspace.bringNoneToFront();
    m_controller->show();
    m_controller->hide();
    EXPECT_THAT(m_workspace.activations(), ElementsAre(writer)) << "only the first time";
}

TEST_F(PanelHideTest, IsHiddenByTheNotification) {
    emit m_notifications.vorqHidePanel();
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(PanelHideTest, YieldsTheKeyboardAndStaysUp) {
    m_controller->yieldFocus();
    EXPECT_TRUE(m_window.isShown);
    EXPECT_THAT(m_workspace.activations(), ElementsAre(writer));
}

TEST_F(PanelHideTest, EscapeIsSwallowedAndHidesAfterTheEvent) {
    EXPECT_TRUE(m_window.input->escapePressed());
    EXPECT_TRUE(m_controller->isPanelVisible());
    m_clock.settle();
    EXPECT_FALSE(m_controller->isPanelVisible());
    EXPECT_THAT(m_workspace.activations(), ElementsAre(writer));
}

TEST_F(PanelHideTest, EscapeBelongsToAnotherWindowOfOursThatHasTheKeyboard) {
    m_window.isAnotherOfOursActive = true;
    EXPECT_FALSE(m_window.input->escapePressed());
    m_clock.settle();
    EXPECT_TRUE(m_controller->isPanelVisible());
}

TEST_F(PanelHideTest, EndsADragWhereItIs) {
    const QPointF from = m_window.at.center();
    mouse(PanelMouse::Kind::Down, from, 0);
    mouse(PanelMouse::Kind::Dragged, from + QPointF(20, 0), 2);
    m_controller->hide();
    EXPECT_THAT(m_window.dockDragging, ElementsAre(true, false));
    m_controller->show();
    EXPECT_EQ(m_window.at, docked(Left));
}

TEST_F(PanelHideTest, ClosedByTheWindowManagerItIsHiddenAndTheKeyboardGoesBack) {
    m_window.input->closed();
    EXPECT_FALSE(m_controller->isPanelVisible());
    EXPECT_FALSE(m_window.isShown);
    EXPECT_THAT(m_workspace.activations(), ElementsAre(writer));
}

TEST_F(PanelHideTest, TakenOffTheScreenItIsNotVisibleAnyMore) {
    takeOffScreen();
    m_clock.advance(1s);
    EXPECT_FALSE(m_controller->isPanelVisible());
    EXPECT_EQ(m_window.calls.back(), "out");
    EXPECT_EQ(m_clock.pendingTimers(), 0U);
}

TEST_F(PanelHideTest, OffTheScreenForAMomentItStays) {
    takeOffScreen();
    m_clock.advance(50ms);
    m_window.isShown = true;
    m_window.input->exposureChanged();
    m_clock.advance(1s);
    EXPECT_TRUE(m_controller->isPanelVisible());
}

TEST_F(PanelHideTest, ShownWhileItIsOffTheScreenItComesUpAnew) {
    takeOffScreen();
    m_window.calls.clear();
    m_controller->show();
    EXPECT_THAT(m_window.calls, ElementsAre("out", "front", "activate"));
    m_clock.advance(1s);
    EXPECT_TRUE(m_controller->isPanelVisible());
}

TEST_F(PanelHideTest, AWindowManagerThatHidesAllWindowsKeepsTheKeyboard) {
    m_workspace.bringNoneToFront();
    m_screens.windows.clear();
    takeOffScreen();
    m_clock.advance(1s);
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
}

class PanelBesideTest : public PanelWindowFixture {};

TEST_F(PanelBesideTest, ComesUpWithoutTheKeyboard) {
    m_controller->showBeside();
    EXPECT_THAT(m_window.calls, ElementsAre("front"));
    EXPECT_EQ(m_workspace.activeWindow(), writer);
    EXPECT_TRUE(m_controller->isPanelVisible());
    m_clock.advance(1s);
    EXPECT_EQ(m_focusPrompts, 0);
}

TEST_F(PanelBesideTest, GoesWithoutGivingTheKeyboardToAnybody) {
    m_controller->showBeside();
    m_controller->hide();
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
}

class OutsideClickTest : public PanelHideTest {
  protected:
    QPointF m_outside{1500, 500};
};

TEST_F(OutsideClickTest, HidesThePanelAfterTheEvent) {
    m_presses.click({.at = m_outside});
    EXPECT_TRUE(m_controller->isPanelVisible());
    m_clock.advance(0ms);
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, LeavesTheKeyboardToTheWindowThatWasClicked) {
    clickAt(m_outside);
    m_workspace.bringToFront(browser);
    m_clock.advance(1s);
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
}

TEST_F(OutsideClickTest, OnTheDesktopGivesTheKeyboardBack) {
    clickAt(m_outside);
    m_clock.advance(1s);
    EXPECT_THAT(m_workspace.activations(), ElementsAre(writer));
}

TEST_F(OutsideClickTest, ShowingAgainAtOnceKeepsTheKeyboard) {
    clickAt(m_outside);
    m_controller->show();
    m_clock.advance(1s);
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
}

TEST_F(OutsideClickTest, InsideTheFrameDoesNothing) {
    clickAt(m_window.at.center());
    EXPECT_TRUE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, CountsWhereTheWindowReallyStands) {
    const QPointF formerly = m_window.at.center();
    m_window.at.translate(900, 0);
    clickAt(m_window.at.center());
    EXPECT_TRUE(m_controller->isPanelVisible());
    clickAt(formerly);
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, OnAWindowOfOursHides) {
    clickAt(m_outside, PressedSurface::OwnWindow, 55);
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, OnThePanelOrItsDialogDoesNothing) {
    clickAt(m_outside, PressedSurface::OwnWindow, ScriptedPanelWindow::number);
    clickAt(m_outside, PressedSurface::OwnWindow, 55, ScriptedPanelWindow::number);
    EXPECT_TRUE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, IsNoticedByTheKeyboardToo) {
    m_workspace.bringToFront(browser);
    m_controller->hideForFocusElsewhere();
    EXPECT_FALSE(m_controller->isPanelVisible());
    m_clock.advance(1s);
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
}

TEST_F(OutsideClickTest, ByTheKeyboardIsHeldAsWell) {
    emit m_notifications.vorqSuppressPanelOutsideClose(true);
    m_controller->hideForFocusElsewhere();
    emit m_notifications.vorqSuppressPanelOutsideClose(false);
    emit m_notifications.vorqStatusMenuChanged(true);
    m_controller->hideForFocusElsewhere();
    EXPECT_TRUE(m_controller->isPanelVisible());
}

class SlowBarPressTest : public OutsideClickTest {
  protected:
    void SetUp() override {
        OutsideClickTest::SetUp();
        clickAt(m_outside, PressedSurface::ForeignBar);
        m_clock.advance(OutsidePresses::statusItemDelay);
        ASSERT_FALSE(m_controller->isPanelVisible());
    }

    bool isBackWithTheMenu() {
        emit m_notifications.vorqStatusMenuChanged(true);
        return m_controller->isPanelVisible();
    }
};

TEST_F(SlowBarPressTest, OurMenuBringsThePanelBackAndLeavesTheKeyboardWhereItIs) {
    m_clock.advance(3s);
    m_workspace.bringToFront(writer);
    m_window.calls.clear();
    EXPECT_TRUE(isBackWithTheMenu());
    EXPECT_THAT(m_window.calls, ElementsAre("front"));
    clickAt(m_outside);
    EXPECT_TRUE(m_controller->isPanelVisible()) << "the click was the menu's";
    clickAt(m_outside);
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(SlowBarPressTest, AMenuAfterAnotherPressDoesNot) {
    clickAt(m_outside);
    EXPECT_FALSE(isBackWithTheMenu());
    EXPECT_FALSE(m_presses.isOn);
}

TEST_F(SlowBarPressTest, NorDoesOneAfterAPressThatIsToldLate) {
    m_presses.late = [this] { emit m_presses.pressed({.at = m_outside}); };
    EXPECT_FALSE(isBackWithTheMenu());
}

TEST_F(SlowBarPressTest, NorDoesOneThatNoBarIsSoSlowFor) {
    m_clock.advance(OutsidePresses::slowestBar);
    EXPECT_FALSE(m_presses.isOn);
    EXPECT_FALSE(isBackWithTheMenu());
}

TEST_F(SlowBarPressTest, NorDoesOneOfALaterShowing) {
    m_controller->show();
    m_controller->hide();
    EXPECT_FALSE(m_presses.isOn);
    EXPECT_FALSE(isBackWithTheMenu());
}

TEST_F(OutsideClickTest, AWindowWithoutANumberIsNotGivenTheKeyboardBack) {
    emit m_workspace.frontmostChanged(browser, 0);
    m_screens.windows[0] = {0, 0, 10, 10};
    m_controller->hide();
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
}

} // namespace
} // namespace vorq
