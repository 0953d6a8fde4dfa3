#include "shell/window/PanelDock.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using enum PanelDockTarget;
using Phase = PanelDockDragSession::Phase;

const PanelDockStep passed{};

class PanelDockDragTest : public testing::Test {
  protected:
    QRectF m_screen{0, 0, 1920, 1000};
    std::vector<bool> m_changes;
    PanelDockDragSession m_session{[this](bool isOn) { m_changes.push_back(isOn); }};
    double m_seconds = 10;

    [[nodiscard]] PanelPress pressAt(PanelDockTarget target) const {
        const QRectF frame = dockFrame(target, m_screen);
        return {.at = {500, 500},
                .yInWindow = 375,
                .target = PanelPressTarget::Plain,
                .windowFrame = frame,
                .visibleFrame = m_screen,
                .seconds = m_seconds};
    }

    void press(PanelDockTarget target) { m_session.mouseDown(pressAt(target)); }

    // To a distance from the press, by default too slowly for a flick.
    PanelDockStep dragTo(double dx, double dy = 0, double after = 1) {
        m_seconds += after;
        return m_session.mouseDragged({500 + dx, 500 + dy}, m_seconds);
    }

    [[nodiscard]] PanelDockStep followed(PanelDockTarget start, double dx, double dy = 0) const {
        return {.isSwallowed = true,
                .frame = dockFrame(start, m_screen).translated(dx, dy),
                .isAnimated = false};
    }

    [[nodiscard]] PanelDockStep docked(PanelDockTarget target) const {
        return {.isSwallowed = true, .frame = dockFrame(target, m_screen), .isAnimated = true};
    }
};

TEST_F(PanelDockDragTest, PassesThePressAndWaits) {
    EXPECT_EQ(m_session.mouseDown(pressAt(Left)), passed);
    EXPECT_EQ(m_session.phase(), Phase::Pending);
    EXPECT_FALSE(m_session.isDockDragging());
}

TEST_F(PanelDockDragTest, NeverStartsInTheComposer) {
    PanelPress inComposer = pressAt(Left);
    inComposer.yInWindow = 88;
    EXPECT_EQ(m_session.mouseDown(inComposer), passed);
    EXPECT_EQ(dragTo(60), passed);
    EXPECT_EQ(m_session.phase(), Phase::Idle);
    inComposer.yInWindow = 88.5;
    m_session.mouseDown(inComposer);
    EXPECT_EQ(m_session.phase(), Phase::Pending);
}

TEST_F(PanelDockDragTest, NeverStartsOnTextBeingEdited) {
    press(Left);
    PanelPress onEditor = pressAt(Left);
    onEditor.target = PanelPressTarget::EditableText;
    EXPECT_EQ(m_session.mouseDown(onEditor), passed);
    EXPECT_EQ(m_session.phase(), Phase::Idle);
}

TEST_F(PanelDockDragTest, NeverStartsWithoutAScreen) {
    PanelPress nowhere = pressAt(Left);
    nowhere.visibleFrame.reset();
    EXPECT_EQ(m_session.mouseDown(nowhere), passed);
    EXPECT_EQ(m_session.phase(), Phase::Idle);
}

TEST_F(PanelDockDragTest, StartsAtTheThreshold) {
    press(Left);
    EXPECT_EQ(dragTo(3.9), passed);
    EXPECT_EQ(m_session.phase(), Phase::Pending);
    EXPECT_EQ(dragTo(4), followed(Left, 4));
    EXPECT_EQ(m_session.phase(), Phase::Dragging);
    EXPECT_THAT(m_changes, testing::ElementsAre(true));
}

TEST_F(PanelDockDragTest, LeavesSelectableTextRoomToBeSelected) {
    PanelPress onReply = pressAt(Left);
    onReply.target = PanelPressTarget::SelectableText;
    m_session.mouseDown(onReply);
    EXPECT_EQ(dragTo(21.9), passed);
    EXPECT_EQ(dragTo(22), followed(Left, 22));
}

TEST_F(PanelDockDragTest, LeavesADragOverGlyphsToTheText) {
    PanelPress onWord = pressAt(Left);
    onWord.target = PanelPressTarget::Glyphs;
    m_session.mouseDown(onWord);
    EXPECT_EQ(m_session.phase(), Phase::Idle);
    EXPECT_EQ(dragTo(200), passed);
    EXPECT_THAT(m_changes, testing::IsEmpty());
}

TEST_F(PanelDockDragTest, GivesUpOnAVerticalMove) {
    press(Left);
    EXPECT_EQ(dragTo(10, 11.1), passed);
    EXPECT_EQ(m_session.phase(), Phase::Idle);
    EXPECT_EQ(dragTo(100), passed);
    EXPECT_THAT(m_changes, testing::IsEmpty());
}

TEST_F(PanelDockDragTest, TakesASlantedMoveForSideways) {
    press(Left);
    EXPECT_EQ(dragTo(10, 10.9), followed(Left, 10, 11));
}

TEST_F(PanelDockDragTest, SpringsBackFromASlowShortDrag) {
    press(Left);
    EXPECT_EQ(dragTo(20), followed(Left, 20));
    EXPECT_EQ(m_session.mouseUp(), docked(Left));
    EXPECT_EQ(m_session.phase(), Phase::Idle);
    EXPECT_THAT(m_changes, testing::ElementsAre(true, false));
}

TEST_F(PanelDockDragTest, DocksAnewOnAFastShortFlick) {
    press(Left);
    EXPECT_EQ(dragTo(20, 0, 0.02), docked(Center));
    EXPECT_EQ(m_session.phase(), Phase::Idle);
}

TEST_F(PanelDockDragTest, AFlickHasToBeFastSidewaysAndFarEnough) {
    press(Left);
    EXPECT_EQ(dragTo(20.3125, 0, 0.03125), followed(Left, 20))
        << "650 points a second are too slow";
    m_session.mouseUp();
    press(Left);
    EXPECT_EQ(dragTo(20, 17, 0.02), followed(Left, 20, 17)) << "too steep";
    m_session.mouseUp();
    press(Left);
    EXPECT_EQ(dragTo(17, 0, 0.001), followed(Left, 17)) << "too short";
}

TEST_F(PanelDockDragTest, MeasuresSpeedBetweenEventsOfTheSameInstant) {
    press(Left);
    EXPECT_EQ(dragTo(18, 0, 0), docked(Center));
}

TEST_F(PanelDockDragTest, DocksAnewAtTheCommitDistance) {
    press(Left);
    EXPECT_EQ(dragTo(35), followed(Left, 35));
    EXPECT_EQ(dragTo(36), docked(Center));
}

TEST_F(PanelDockDragTest, GoesToEitherSideFromTheCentre) {
    press(Center);
    EXPECT_EQ(dragTo(-36), docked(Left));
    m_session.mouseUp();
    press(Center);
    EXPECT_EQ(dragTo(36), docked(Right));
}

TEST_F(PanelDockDragTest, GoesToTheCentreFromTheRight) {
    press(Right);
    EXPECT_EQ(dragTo(-36), docked(Center));
}

TEST_F(PanelDockDragTest, FollowsOutwardToACapAndNeverDocks) {
    press(Left);
    EXPECT_EQ(dragTo(-300), followed(Left, -56));
    m_session.mouseUp();
    press(Right);
    EXPECT_EQ(dragTo(300, 200), followed(Right, 56, 20));
    EXPECT_EQ(dragTo(300, -200), followed(Right, 56, -20));
}

TEST_F(PanelDockDragTest, CountsAsADragUntilTheButtonGoesUp) {
    press(Left);
    dragTo(40);
    EXPECT_TRUE(m_session.isDockDragging());
    EXPECT_EQ(dragTo(400), passed);
    EXPECT_EQ(m_session.mouseUp(), passed);
    EXPECT_FALSE(m_session.isDockDragging());
    EXPECT_THAT(m_changes, testing::ElementsAre(true, false));
}

TEST_F(PanelDockDragTest, PassesAClick) {
    press(Left);
    EXPECT_EQ(m_session.mouseUp(), passed);
    EXPECT_EQ(m_session.phase(), Phase::Idle);
}

TEST_F(PanelDockDragTest, StartsFromTheDockAndNotFromWhereTheWindowIs) {
    PanelPress displaced = pressAt(Left);
    displaced.windowFrame.translate(30, 12);
    m_session.mouseDown(displaced);
    EXPECT_EQ(dragTo(10), followed(Left, 10));
}

TEST_F(PanelDockDragTest, KeepsTheSizeOfTheWindowWhileItFollows) {
    PanelPress smaller = pressAt(Left);
    smaller.windowFrame.setSize({300, 400});
    m_session.mouseDown(smaller);
    EXPECT_EQ(dragTo(10).frame, QRectF(28, 125, 300, 400));
}

TEST_F(PanelDockDragTest, ResettingEndsTheDragWhereItIs) {
    press(Left);
    dragTo(10);
    m_session.reset();
    EXPECT_EQ(m_session.phase(), Phase::Idle);
    EXPECT_EQ(m_session.mouseUp(), passed);
    EXPECT_THAT(m_changes, testing::ElementsAre(true, false));
}

} // namespace
} // namespace vorq
