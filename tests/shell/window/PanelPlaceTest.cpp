#include "doubles/shell/PanelWindowFixture.h"

namespace vorq {
namespace {

using enum PanelDockTarget;
using testing::ElementsAre;

const Screen laptop{
    .name = "laptop", .frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 870}, .scale = 2};
const Screen monitor{.name = "monitor",
                     .frame = {1440, -200, 1920, 1200},
                     .visibleFrame = {1440, -200, 1920, 1160},
                     .scale = 1};
const Screen television{.name = "television",
                        .frame = {5000, 0, 1920, 1080},
                        .visibleFrame = {5000, 0, 1920, 1080},
                        .scale = 1};

class PanelPlaceTest : public PanelWindowFixture {
  protected:
    void SetUp() override {
        m_screens.all = {laptop, monitor};
        PanelWindowFixture::SetUp();
    }

    void showBesideWorkAt(QPointF middle) {
        m_screens.windows[writer] = QRectF(middle - QPointF(50, 50), QSizeF(100, 100));
        m_workspace.bringToFront(writer);
        m_controller->show();
    }
};

TEST_F(PanelPlaceTest, ComesUpOnTheScreenOfTheWork) {
    m_screens.pointerAt = {10, 10};
    showBesideWorkAt({2000, 300});
    EXPECT_EQ(m_window.at, docked(Left, 1));
    m_controller->hide();
    showBesideWorkAt({500, 300});
    EXPECT_EQ(m_window.at, docked(Left, 0));
}

TEST_F(PanelPlaceTest, ComesUpAtThePointerWhereNothingIsInFront) {
    m_workspace.bringNoneToFront();
    m_screens.pointerAt = {3000, 100};
    m_controller->show();
    EXPECT_EQ(m_window.at, docked(Left, 1));
}

TEST_F(PanelPlaceTest, ComesUpOnTheNearestScreenToWorkThatIsOnNone) {
    m_screens.all = {laptop, television};
    showBesideWorkAt({4000, 300});
    EXPECT_EQ(m_window.at, docked(Left, 1));
}

TEST_F(PanelPlaceTest, RemembersItsDockForTheNextShowing) {
    m_controller->show();
    drag({60, 0});
    EXPECT_EQ(m_controller->dock(), Center);
    EXPECT_EQ(m_defaults.string("vorq.panel.dock"), "center");
    m_controller->hide();
    showBesideWorkAt({2000, 300});
    EXPECT_EQ(m_window.at, docked(Center, 1));
}

TEST_F(PanelPlaceTest, RemembersItsDockForTheNextStart) {
    m_defaults.setString("vorq.panel.dock", "right");
    start();
    EXPECT_EQ(m_window.at, docked(Right));
}

TEST_F(PanelPlaceTest, TakesAnUnknownDockForTheLeftOne) {
    m_defaults.setString("vorq.panel.dock", "top");
    start();
    EXPECT_EQ(m_window.at, docked(Left));
}

TEST_F(PanelPlaceTest, FitsIntoAScreenThatIsTooSmallForIt) {
    Screen small = laptop;
    small.visibleFrame = {0, 40, 1024, 560};
    m_screens.all = {small};
    m_controller->show();
    EXPECT_EQ(m_window.at, QRectF(18, 40, 440, 560));
    drag({60, 0});
    EXPECT_TRUE(small.visibleFrame.contains(m_window.at));
    EXPECT_EQ(m_controller->dock(), Center);
}

TEST_F(PanelPlaceTest, FollowsADragOnASmallScreenFromWhereItStands) {
    Screen small = laptop;
    small.visibleFrame = {0, 40, 1024, 560};
    m_screens.all = {small};
    m_controller->show();
    const QPointF from = m_window.at.center();
    mouse(PanelMouse::Kind::Down, from, 0);
    mouse(PanelMouse::Kind::Dragged, from + QPointF(10, 0), 2);
    EXPECT_EQ(m_window.at, QRectF(28, 40, 440, 560));
}

TEST_F(PanelPlaceTest, GoesToTheNearestScreenThatIsLeft) {
    m_screens.all = {laptop, monitor, television};
    showBesideWorkAt({2000, 300});
    m_screens.change({laptop, television});
    EXPECT_EQ(m_window.at, dockFrame(Left, laptop.visibleFrame));
    EXPECT_FALSE(m_window.wasAnimated);
}

TEST_F(PanelPlaceTest, GoesWithItsScreenWhereverThatMoves) {
    showBesideWorkAt({2000, 300});
    Screen moved = monitor;
    moved.frame.translate(-5000, 0);
    moved.visibleFrame.translate(-5000, 0);
    m_screens.change({laptop, moved});
    EXPECT_EQ(m_window.at, docked(Left, 1));
}

TEST_F(PanelPlaceTest, FollowsTheResolutionAndTheBars) {
    m_controller->show();
    Screen lower = laptop;
    lower.frame = {0, 0, 1280, 720};
    lower.visibleFrame = {0, 0, 1280, 700};
    m_screens.change({lower, monitor});
    EXPECT_EQ(m_window.at, QRectF(18, 0, 440, 700));
    lower.visibleFrame = {60, 0, 1220, 720};
    m_screens.change({lower, monitor});
    EXPECT_EQ(m_window.at, QRectF(78, 0, 440, 720));
}

TEST_F(PanelPlaceTest, StaysPutWhenAnotherScreenChanges) {
    m_controller->show();
    const QPointF from = m_window.at.center();
    mouse(PanelMouse::Kind::Down, from, 0);
    mouse(PanelMouse::Kind::Dragged, from + QPointF(10, 0), 2);
    m_screens.change({laptop, television});
    EXPECT_EQ(m_window.at, docked(Left).translated(10, 0)) << "the drag goes on";
}

TEST_F(PanelPlaceTest, EndsADragOnAScreenThatGoes) {
    showBesideWorkAt({2000, 300});
    const QPointF from = m_window.at.center();
    mouse(PanelMouse::Kind::Down, from, 0);
    mouse(PanelMouse::Kind::Dragged, from + QPointF(10, 0), 2);
    m_screens.change({laptop});
    EXPECT_EQ(m_window.at, docked(Left));
    EXPECT_THAT(m_window.dockDragging, ElementsAre(true, false));
}

TEST_F(PanelPlaceTest, WaitsForAScreenWhileThereIsNone) {
    m_controller->show();
    const QRectF before = m_window.at;
    m_screens.change({});
    EXPECT_EQ(m_window.at, before);
    m_controller->hide();
    m_controller->show();
    EXPECT_TRUE(m_controller->isPanelVisible());
    m_screens.change({television});
    EXPECT_EQ(m_window.at, docked(Left));
}

TEST_F(PanelPlaceTest, AHiddenPanelIsPlacedWhenItIsShown) {
    m_screens.change({television});
    m_workspace.bringNoneToFront();
    m_controller->show();
    EXPECT_EQ(m_window.at, docked(Left));
}

class PanelMouseTest : public PanelWindowFixture {
  protected:
    void SetUp() override {
        PanelWindowFixture::SetUp();
        m_controller->show();
        m_window.calls.clear();
        m_focusPrompts = 0;
    }
};

TEST_F(PanelMouseTest, APressBringsThePanelUpAndFocusesThePrompt) {
    EXPECT_FALSE(mouse(PanelMouse::Kind::Down, m_window.at.center(), 0));
    EXPECT_THAT(m_window.calls, ElementsAre("front", "activate"));
    EXPECT_EQ(m_focusPrompts, 1);
}

TEST_F(PanelMouseTest, APressOnTextLeavesTheFocusToTheText) {
    mouse(PanelMouse::Kind::Down, m_window.at.center(), 0, PanelPressTarget::SelectableText);
    mouse(PanelMouse::Kind::Down, m_window.at.center(), 0, PanelPressTarget::EditableText);
    EXPECT_EQ(m_focusPrompts, 0);
}

TEST_F(PanelMouseTest, ADragIsToldAndSwallowed) {
    std::vector<bool> changes;
    int cleared = 0;
    QObject::connect(&m_notifications, &ShellNotifications::vorqPanelDockDragChanged,
                     [&](bool isOn) { changes.push_back(isOn); });
    QObject::connect(&m_notifications, &ShellNotifications::vorqClearChatGlyphIBeam,
                     [&] { ++cleared; });
    const QPointF from = m_window.at.center();
    mouse(PanelMouse::Kind::Down, from, 0);
    EXPECT_FALSE(mouse(PanelMouse::Kind::Dragged, from + QPointF(3, 0), 1));
    EXPECT_TRUE(mouse(PanelMouse::Kind::Dragged, from + QPointF(20, 0), 2));
    EXPECT_EQ(m_window.at, docked(Left).translated(20, 0));
    EXPECT_TRUE(mouse(PanelMouse::Kind::Up, from + QPointF(20, 0), 3));
    EXPECT_EQ(m_window.at, docked(Left)) << "springs back";
    EXPECT_TRUE(m_window.wasAnimated);
    EXPECT_THAT(changes, ElementsAre(true, false));
    EXPECT_EQ(cleared, 1);
    EXPECT_EQ(m_defaults.writes(), 0);
}

TEST_F(PanelMouseTest, AFlickDocksAnew) {
    const QPointF from = m_window.at.center();
    mouse(PanelMouse::Kind::Down, from, 0);
    mouse(PanelMouse::Kind::Dragged, from + QPointF(20, 0), 0.02);
    EXPECT_EQ(m_window.at, docked(Center));
    EXPECT_FALSE(mouse(PanelMouse::Kind::Up, from + QPointF(20, 0), 0.03));
}

TEST_F(PanelMouseTest, GoesFromDockToDock) {
    drag({60, 0});
    drag({60, 0});
    EXPECT_EQ(m_window.at, docked(Right));
    drag({60, 0});
    EXPECT_EQ(m_controller->dock(), Right);
    drag({-60, 0});
    drag({-60, 0});
    EXPECT_EQ(m_window.at, docked(Left));
}

TEST_F(PanelMouseTest, AVerticalMovePasses) {
    const QPointF from = m_window.at.center();
    mouse(PanelMouse::Kind::Down, from, 0);
    EXPECT_FALSE(mouse(PanelMouse::Kind::Dragged, from + QPointF(2, 30), 1));
    EXPECT_FALSE(mouse(PanelMouse::Kind::Dragged, from + QPointF(60, 30), 2));
    EXPECT_EQ(m_window.at, docked(Left));
}

TEST_F(PanelMouseTest, AMouseElsewhereEndsTheDrag) {
    const QPointF from = m_window.at.center();
    mouse(PanelMouse::Kind::Down, from, 0);
    m_window.input->mouseElsewhere();
    EXPECT_FALSE(mouse(PanelMouse::Kind::Dragged, from + QPointF(60, 0), 1));
}

} // namespace
} // namespace vorq
