#include "shell/window/OutsidePresses.h"

#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedPresses.h"
#include "shell/notices/ShellNotifications.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using enum PressedSurface;

// The panel is all that lies left of 100.
class OutsidePressesTest : public testing::Test {
  protected:
    ManualClock m_clock;
    ScriptedPresses m_presses;
    PanelHolds m_holds;
    ShellNotifications m_notifications;
    OutsidePresses m_outside{{m_clock, m_presses, m_holds, m_notifications},
                             [](const ScreenPress& press) { return press.at.x() < 100; }};
    int m_dismissals = 0;

    void SetUp() override {
        QObject::connect(&m_outside, &OutsidePresses::dismissed, [this] { ++m_dismissals; });
        m_outside.start();
    }

    static ScreenPress on(PressedSurface surface, PressedButton button = PressedButton::Left) {
        return {.at = {500, 500}, .surface = surface, .button = button};
    }

    /// How often the panel is dismissed by a click, at once.
    int click(PressedSurface surface, PressedButton button = PressedButton::Left) {
        const int before = m_dismissals;
        m_presses.click(on(surface, button));
        m_clock.advance(0ms);
        return m_dismissals - before;
    }
};

TEST_F(OutsidePressesTest, ListensOnlyWhileItIsAskedTo) {
    EXPECT_TRUE(m_presses.isOn);
    m_outside.stop();
    EXPECT_FALSE(m_presses.isOn);
    EXPECT_EQ(click(Foreign), 0);
    m_outside.start();
    EXPECT_EQ(click(Foreign), 1);
}

TEST_F(OutsidePressesTest, AClickElsewhereDismissesAfterItsEvent) {
    m_presses.click(on(Foreign));
    EXPECT_EQ(m_dismissals, 0);
    m_clock.advance(0ms);
    EXPECT_EQ(m_dismissals, 1);
}

TEST_F(OutsidePressesTest, APressElsewhereIsAClickOnceTheButtonIsUp) {
    emit m_presses.pressed(on(Foreign));
    m_clock.advance(10s);
    EXPECT_EQ(m_dismissals, 0);
    emit m_presses.released();
    m_clock.advance(0ms);
    EXPECT_EQ(m_dismissals, 1);
}

TEST_F(OutsidePressesTest, APressThatBeginsADragDoesNothing) {
    emit m_presses.pressed(on(Foreign));
    emit m_presses.dragBegan();
    emit m_presses.released();
    m_clock.advance(10s);
    EXPECT_EQ(m_dismissals, 0);
    EXPECT_EQ(click(Foreign), 1) << "the next is a click again";
}

TEST_F(OutsidePressesTest, ARightButtonDragsNothing) {
    emit m_presses.pressed(on(Foreign, PressedButton::Right));
    m_clock.advance(0ms);
    EXPECT_EQ(m_dismissals, 1);
}

TEST_F(OutsidePressesTest, AnotherWindowOfOursDismissesAtOnce) {
    emit m_presses.pressed(on(OwnWindow));
    m_clock.advance(0ms);
    EXPECT_EQ(m_dismissals, 1);
}

TEST_F(OutsidePressesTest, AClickInsideOrOnAMenuOfOursDoesNothing) {
    m_presses.click({.at = {50, 500}});
    m_clock.advance(0ms);
    EXPECT_EQ(m_dismissals, 0);
    EXPECT_EQ(click(OwnMenu) + click(OwnStatusItem), 0);
    EXPECT_EQ(click(OwnMenu, PressedButton::Right), 0);
}

TEST_F(OutsidePressesTest, AClickWhileThePanelIsHeldDoesNothing) {
    for (const PanelHoldKind kind : {PanelHoldKind::Menu, PanelHoldKind::Dialog}) {
        PanelHold hold = m_holds.take(kind);
        EXPECT_EQ(click(Foreign) + click(OwnWindow) + click(ForeignBar), 0);
        m_clock.advance(1s);
        hold.giveBack();
        EXPECT_EQ(click(Foreign), 1);
    }
}

TEST_F(OutsidePressesTest, TheNotificationHoldsBesideOthers) {
    PanelHold dialog = m_holds.take(PanelHoldKind::Dialog);
    emit m_notifications.vorqSuppressPanelOutsideClose(true);
    emit m_notifications.vorqSuppressPanelOutsideClose(true);
    dialog.giveBack();
    EXPECT_EQ(click(Foreign), 0);
    dialog = m_holds.take(PanelHoldKind::Dialog);
    emit m_notifications.vorqSuppressPanelOutsideClose(false);
    EXPECT_EQ(click(Foreign), 0) << "the dialog is still open";
    dialog.giveBack();
    EXPECT_EQ(click(Foreign), 1);
}

TEST_F(OutsidePressesTest, ThePressThatClosesTheMenuOfTheGuideIsTheMenus) {
    emit m_notifications.vorqSuppressPanelOutsideClose(true);
    m_presses.late = [this] { emit m_presses.pressed(on(Foreign)); };
    emit m_notifications.vorqSuppressPanelOutsideClose(false);
    emit m_presses.released();
    m_clock.advance(1s);
    EXPECT_EQ(m_dismissals, 0) << "though the end of the menu is told before the press";
    EXPECT_EQ(click(Foreign), 1);
}

TEST_F(OutsidePressesTest, ABarThatShowsNoMenuOfOursDismissesALittleLater) {
    EXPECT_EQ(click(ForeignBar), 0);
    m_clock.advance(OutsidePresses::statusItemDelay);
    EXPECT_EQ(m_dismissals, 1);
}

TEST_F(OutsidePressesTest, ABarThatShowsOurMenuDoesNot) {
    EXPECT_EQ(click(ForeignBar), 0);
    emit m_notifications.vorqStatusMenuChanged(true);
    m_clock.advance(1s);
    EXPECT_EQ(m_dismissals, 0);
}

TEST_F(OutsidePressesTest, OfAFormerShowingNothingIsLeft) {
    click(ForeignBar);
    m_outside.stop();
    m_outside.start();
    m_clock.advance(1s);
    EXPECT_EQ(m_dismissals, 0);
    emit m_presses.pressed(on(Foreign));
    m_outside.stop();
    m_outside.start();
    emit m_presses.released();
    m_clock.advance(1s);
    EXPECT_EQ(m_dismissals, 0);
}

class DrawnMenuTest : public OutsidePressesTest {
  protected:
    void SetUp() override {
        OutsidePressesTest::SetUp();
        emit m_notifications.vorqStatusMenuChanged(true);
    }
};

TEST_F(DrawnMenuTest, ItsEntriesAreOurs) {
    EXPECT_EQ(click(ForeignMenu) + click(ForeignMenu), 0);
    EXPECT_TRUE(m_holds.isHeld());
}

TEST_F(DrawnMenuTest, TheMenuOfAnotherProgramIsNot) {
    emit m_notifications.vorqStatusMenuChanged(false);
    EXPECT_EQ(click(ForeignMenu), 1);
}

TEST_F(DrawnMenuTest, AClickBesideItClosesItAloneAlsoWhereItsEndIsNotTold) {
    EXPECT_EQ(click(Foreign), 0);
    EXPECT_FALSE(m_holds.isHeld());
    EXPECT_EQ(click(Foreign), 1);
}

TEST_F(DrawnMenuTest, AClickBesideItClosesItAloneAlsoWhereItsEndIsToldFirst) {
    m_presses.late = [this] { emit m_presses.pressed(on(Foreign)); };
    emit m_notifications.vorqStatusMenuChanged(false);
    emit m_presses.released();
    m_clock.advance(1s);
    EXPECT_EQ(m_dismissals, 0);
    EXPECT_EQ(click(Foreign), 1);
}

TEST_F(DrawnMenuTest, ItHoldsNothingOnceThePanelHasGone) {
    m_outside.stop();
    EXPECT_FALSE(m_holds.isHeld());
    m_outside.start();
    EXPECT_EQ(click(Foreign), 1);
}

TEST_F(DrawnMenuTest, WhileThePanelIsHiddenItHoldsNothing) {
    m_outside.stop();
    emit m_notifications.vorqStatusMenuChanged(false);
    emit m_notifications.vorqStatusMenuChanged(true);
    EXPECT_FALSE(m_holds.isHeld());
}

} // namespace
} // namespace vorq
