#include "doubles/desktop/PanelDesktopFixture.h"

#include <QGuiApplication>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using enum PanelDockTarget;

class PanelDragDesktop : public PanelDesktopFixture {
  protected:
    void SetUp() override {
        startTerminal("source");
        showPanel();
        waitForGeometry(dockedGeometry(Left));
    }
};

TEST_F(PanelDragDesktop, GoesFromTheLeftToTheCentreToTheRight) {
    drag(onPanel(300, 500), {120, 0}, 0.8);
    waitForGeometry(dockedGeometry(Center));
    drag(onPanel(300, 500), {120, 0}, 0.8);
    waitForGeometry(dockedGeometry(Right));
    drag(onPanel(300, 500), {-120, 0}, 0.8);
    waitForGeometry(dockedGeometry(Center));
    EXPECT_EQ(m_defaults.string("vorq.panel.dock"), "center");
    EXPECT_EQ(m_screens.windowFrame(panel()), m_window.frame());
}

TEST_F(PanelDragDesktop, IsThereAgainWhenItIsShownNext) {
    drag(onPanel(300, 500), {120, 0}, 0.8);
    waitForGeometry(dockedGeometry(Center));
    m_controller.hide();
    letSettle();
    showPanel();
    waitForGeometry(dockedGeometry(Center));
}

TEST_F(PanelDragDesktop, SpringsBackFromASlowShortDrag) {
    drag(onPanel(300, 500), {20, 0}, 0.8);
    EXPECT_EQ(m_controller.dock(), Left);
    waitForGeometry(dockedGeometry(Left));
}

TEST_F(PanelDragDesktop, FollowsOutwardAndSpringsBack) {
    xdotool({"mousemove", "300", "500", "mousedown", "1", "sleep", "0.1", "mousemove", "290", "500",
             "sleep", "0.3", "mousemove", "100", "510", "sleep", "0.3"});
    waitForGeometry(dockedGeometry(Left).translated(-56, 10));
    xdotool({"mouseup", "1"});
    waitForGeometry(dockedGeometry(Left));
}

TEST_F(PanelDragDesktop, AFlickIsEnough) {
    xdotool(
        {"mousemove", "300", "500", "mousedown", "1", "mousemove", "325", "500", "mouseup", "1"});
    waitForGeometry(dockedGeometry(Center));
}

TEST_F(PanelDragDesktop, AVerticalDragIsTheViews) {
    drag(onPanel(100, 90), {3, 60}, 0.5);
    letSettle();
    EXPECT_EQ(m_window.geometry(), dockedGeometry(Left));
    drag(onPanel(100, 90), {2, 20}, 0.5);
    EXPECT_EQ(scene()->property("buttonClicks").toInt(), 1) << "released inside the button";
}

TEST_F(PanelDragDesktop, NeverStartsInTheComposer) {
    drag(onPanel(220, 700), {150, 0}, 0.6);
    letSettle();
    EXPECT_EQ(m_window.geometry(), dockedGeometry(Left));
    drag(onPanel(3, 663), {150, 0}, 0.6);
    letSettle();
    EXPECT_EQ(m_window.geometry(), dockedGeometry(Left)) << "beside the field, 87 from the edge";
}

TEST_F(PanelDragDesktop, LeavesSelectableTextRoomToBeSelected) {
    const auto* reply = scene()->findChild<QQuickItem*>("reply");
    drag(onPanel(30, 210), {18, 0}, 0.4);
    EXPECT_NE(reply->property("selectedText").toString(), "");
    EXPECT_EQ(m_window.geometry(), dockedGeometry(Left));
    drag(onPanel(30, 210), {90, 0}, 0.6);
    letSettle();
    EXPECT_GT(reply->property("selectedText").toString().size(), 8) << "a line, not two letters";
    EXPECT_EQ(m_window.geometry(), dockedGeometry(Left));
    drag(onPanel(30, 380), {18, 0}, 0.4);
    EXPECT_EQ(m_window.geometry(), dockedGeometry(Left));
    drag(onPanel(30, 380), {90, 0}, 0.6);
    waitForGeometry(dockedGeometry(Center));
}

TEST_F(PanelDragDesktop, WhatWasPressedIsLetGoAndNotClicked) {
    drag(onPanel(100, 90), {30, 0}, 0.5);
    waitForGeometry(dockedGeometry(Left));
    EXPECT_FALSE(scene()->property("isButtonPressed").toBool());
    EXPECT_EQ(scene()->property("buttonClicks").toInt(), 0);
    m_session.click(onPanel(100, 90));
    waitUntil("the click", [this] { return scene()->property("buttonClicks") == 1; });
}

TEST_F(PanelDragDesktop, IsOnUntilTheButtonGoesUp) {
    std::vector<bool> changes;
    QObject::connect(&m_notifications, &ShellNotifications::vorqPanelDockDragChanged,
                     [&](bool isOn) { changes.push_back(isOn); });
    drag(onPanel(300, 500), {120, 0}, 0.8);
    EXPECT_THAT(changes, testing::ElementsAre(true, false));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(PanelDragDesktop, JumpsWhereMotionIsReduced) {
    m_window.setReducedMotion(true);
    m_window.setFrame(dockFrame(Right, m_screens.screens().front().visibleFrame), true);
    EXPECT_EQ(m_window.geometry(), dockedGeometry(Right));
}

} // namespace
} // namespace vorq
