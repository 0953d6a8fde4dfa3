#include "shell/PanelWindowFixture.h"

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
    m_workspace.bringToFront(NotedPanelWindow::number);
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

class OutsideClickTest : public PanelHideTest {
  protected:
    QPointF m_outside{1500, 500};
};

TEST_F(OutsideClickTest, HidesThePanelAfterTheEvent) {
    emit m_presses.pressed({.at = m_outside});
    EXPECT_TRUE(m_controller->isPanelVisible());
    m_clock.settle();
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

TEST_F(OutsideClickTest, OnAWindowOfOursHides) {
    clickAt(m_outside, PressedSurface::OwnWindow, 55);
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, OnThePanelOrItsDialogDoesNothing) {
    clickAt(m_outside, PressedSurface::OwnWindow, NotedPanelWindow::number);
    clickAt(m_outside, PressedSurface::OwnWindow, 55, NotedPanelWindow::number);
    EXPECT_TRUE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, OnAMenuOrTheStatusItemDoesNothing) {
    clickAt(m_outside, PressedSurface::OwnMenu, 55);
    clickAt(m_outside, PressedSurface::OwnStatusItem);
    EXPECT_TRUE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, IsNoticedByTheKeyboardToo) {
    m_workspace.bringToFront(browser);
    m_controller->hideForFocusElsewhere();
    EXPECT_FALSE(m_controller->isPanelVisible());
    m_clock.advance(1s);
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
}

TEST_F(OutsideClickTest, ByTheKeyboardIsSuppressedAsWell) {
    m_controller->setSuppressOutsideClose(true);
    m_controller->hideForFocusElsewhere();
    m_controller->setSuppressOutsideClose(false);
    emit m_notifications.vorqStatusMenuChanged(true);
    m_controller->hideForFocusElsewhere();
    EXPECT_TRUE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, AWindowWithoutANumberIsNotGivenTheKeyboardBack) {
    emit m_workspace.frontmostChanged(browser, 0);
    m_screens.windows[0] = {0, 0, 10, 10};
    m_controller->hide();
    EXPECT_THAT(m_workspace.activations(), IsEmpty());
}

TEST_F(OutsideClickTest, IsSuppressedOnDemand) {
    m_controller->setSuppressOutsideClose(true);
    clickAt(m_outside);
    EXPECT_TRUE(m_controller->isPanelVisible());
    m_controller->setSuppressOutsideClose(false);
    clickAt(m_outside);
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, IsSuppressedByTheNotification) {
    emit m_notifications.vorqSuppressPanelOutsideClose(true);
    clickAt(m_outside);
    EXPECT_TRUE(m_controller->isPanelVisible());
    emit m_notifications.vorqSuppressPanelOutsideClose(false);
    clickAt(m_outside);
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, OnABarWaitsForOurStatusItemToAnswer) {
    clickAt(m_outside, PressedSurface::ForeignBar);
    m_controller->setSuppressOutsideClose(true);
    m_clock.advance(1s);
    EXPECT_TRUE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, OnABarThatOpensOurMenuDoesNothing) {
    clickAt(m_outside, PressedSurface::ForeignBar);
    emit m_notifications.vorqStatusMenuChanged(true);
    m_clock.advance(1s);
    EXPECT_TRUE(m_controller->isPanelVisible());
    emit m_notifications.vorqStatusMenuChanged(false);
    clickAt(m_outside, PressedSurface::ForeignBar);
    m_clock.advance(1s);
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, ElsewhereHidesAlsoWhereTheEndOfOurMenuWasNotTold) {
    emit m_notifications.vorqStatusMenuChanged(true);
    clickAt(m_outside);
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, OnABarHidesWhenNothingComesOfIt) {
    clickAt(m_outside, PressedSurface::ForeignBar);
    m_clock.advance(249ms);
    EXPECT_TRUE(m_controller->isPanelVisible());
    m_clock.advance(1ms);
    EXPECT_FALSE(m_controller->isPanelVisible());
}

TEST_F(OutsideClickTest, OfAFormerShowingDoesNotHideTheNext) {
    clickAt(m_outside, PressedSurface::ForeignBar);
    m_controller->hide();
    m_controller->show();
    m_clock.advance(1s);
    EXPECT_TRUE(m_controller->isPanelVisible());
}

} // namespace
} // namespace vorq
