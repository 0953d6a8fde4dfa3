#include "doubles/desktop/PanelDesktopFixture.h"
#include "platform/linux/x11/X11Reply.h"

#include <xcb/shape.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using enum PanelDockTarget;

// The one output of the virtual server, told to be two monitors side by side.
class PanelScreensDesktop : public PanelDesktopFixture {
  protected:
    void randr(const QStringList& arguments) {
        desktop::run("xrandr", "x11-xserver-utils", arguments, m_session.environment());
    }

    void splitScreen() {
        randr({"--setmonitor", "left", "960/250x1080/280+0+0", "screen"});
        randr({"--setmonitor", "right", "960/250x1080/280+960+0", "none"});
        waitUntil("two screens", [this] { return m_screens.screens().size() == 2; });
        m_isSplit = true;
    }

    void joinScreens() {
        randr({"--delmonitor", "right"});
        randr({"--delmonitor", "left"});
        m_isSplit = false;
        waitUntil("one screen", [this] { return m_screens.screens().size() == 1; });
    }

    void TearDown() override {
        if (m_isSplit) joinScreens();
    }

    bool m_isSplit = false;
};

TEST_F(PanelScreensDesktop, OneScreenHasItsOriginAtTheLowerLeft) {
    ASSERT_EQ(m_screens.screens().size(), 1U);
    EXPECT_EQ(m_screens.screens().front().frame, QRectF(0, 0, 1920, 1080));
    EXPECT_EQ(m_screens.screens().front().visibleFrame, QRectF(0, 0, 1920, 1080));
    xdotool({"mousemove", "100", "200"});
    EXPECT_EQ(m_screens.pointer(), QPointF(100, 880));
    const Window terminal = startTerminal("source");
    const QRect geometry = m_session.geometry(terminal);
    EXPECT_EQ(m_screens.windowFrame(terminal), m_screens.flipped(QRectF(geometry)));
}

TEST_F(PanelScreensDesktop, AMinimisedOrClosedWindowStandsNowhere) {
    const Window terminal = startTerminal("source");
    xdotool({"windowminimize", QString::number(terminal)});
    waitUntil("the window to go", [&] { return !m_screens.windowFrame(terminal); });
    EXPECT_FALSE(m_screens.windowFrame(0x7fffffff));
}

TEST_F(PanelScreensDesktop, LeavesRoomForABarWhileItIsThere) {
    const QString config =
        m_session.write("tint2rc", "panel_items = C\npanel_size = 100% 40\n"
                                   "panel_position = bottom center horizontal\n"
                                   "panel_monitor = 1\nstrut_policy = follow_size\n"
                                   "wm_menu = 0\n");
    desktop::DesktopProgram& bar = m_session.start("tint2", "tint2", {"-c", config});
    waitUntil("the bar", [this] {
        return m_screens.screens().front().visibleFrame == QRectF(0, 40, 1920, 1040);
    });
    startTerminal("source");
    showPanel();
    waitForGeometry(dockedGeometry(Left));
    m_session.click({960, 1070});
    waitForHidden();
    showPanel();
    bar.kill();
    waitUntil("the bar to go", [this] {
        return m_screens.screens().front().visibleFrame == QRectF(0, 0, 1920, 1080);
    });
    waitForGeometry(dockedGeometry(Left));
}

TEST_F(PanelScreensDesktop, ABarTakesRoomOfItsOwnScreenOnly) {
    splitScreen();
    const QString config =
        m_session.write("tint2rc", "panel_items = C\npanel_size = 100% 40\n"
                                   "panel_position = top center horizontal\n"
                                   "panel_monitor = 2\nstrut_policy = follow_size\n");
    desktop::DesktopProgram& bar = m_session.start("tint2", "tint2", {"-c", config});
    const auto free = [this](int x) {
        return m_screens.screen(QPointF(x, 500))->visibleFrame.height();
    };
    waitUntil("the bar", [&] { return free(100) == 1040 || free(1000) == 1040; });
    letSettle();
    EXPECT_EQ(free(100) + free(1000), 1080 + 1040);
    bar.kill();
    waitUntil("the bar to go", [&] { return free(100) == 1080 && free(1000) == 1080; });
}

TEST_F(PanelScreensDesktop, ThePanelComesUpBesideTheWork) {
    splitScreen();
    const Window left = startTerminal("left", "40x10+200+300");
    const Window right = startTerminal("right", "40x10+1300+300");
    for (const auto& [window, x] : {std::pair(left, 100), std::pair(right, 1000)}) {
        m_session.activate(window);
        showPanel();
        const QRectF free = m_screens.screen(QPointF(x, 500))->visibleFrame;
        waitForGeometry(m_screens.flipped(dockFrame(Left, free)).toRect());
        m_controller.hide();
        letSettle();
    }
}

TEST_F(PanelScreensDesktop, ThePanelLeavesAScreenThatIsTakenAway) {
    splitScreen();
    startTerminal("right", "40x10+1300+300");
    showPanel();
    const QRectF free = m_screens.screen(QPointF(1000, 500))->visibleFrame;
    waitForGeometry(m_screens.flipped(dockFrame(Left, free)).toRect());
    joinScreens();
    waitForGeometry(dockedGeometry(Left));
    EXPECT_TRUE(m_controller.isPanelVisible());
}

// Also run with screens of different scales.
class PanelMixedScaleDesktop : public PanelScreensDesktop {
  protected:
    // A frame in points, in pixels.
    [[nodiscard]] QRect pixelsOf(const QRectF& frame) const {
        const Screen screen = m_screens.screen(frame.center()).value();
        const QPointF corner = m_screens.flipped(screen.frame).topLeft();
        const QRectF points = m_screens.flipped(frame);
        return QRectF(corner + (points.topLeft() - corner) * screen.scale,
                      points.size() * screen.scale)
            .toRect();
    }
};

// What the window is cut to.
QSize shapeOf(std::uint32_t window) {
    const X11Connection server;
    const X11Reply<xcb_shape_query_extents_reply_t> reply(xcb_shape_query_extents_reply(
        server.get(), xcb_shape_query_extents(server.get(), window), nullptr));
    return reply ? QSize(reply->bounding_shape_extents_width, reply->bounding_shape_extents_height)
                 : QSize();
}

TEST_F(PanelMixedScaleDesktop, ThePanelFillsItsDockOnEachScreen) {
    splitScreen();
    const Window left = startTerminal("left", "40x10+200+300");
    const Window right = startTerminal("right", "40x10+1300+300");
    for (const auto& [window, name] : {std::pair(left, "left"), std::pair(right, "right")}) {
        m_session.activate(window);
        showPanel();
        const Screen screen = m_screens.screen(m_window.frame().center()).value();
        EXPECT_EQ(screen.name, name);
        const bool isMixed = qEnvironmentVariableIsSet("QT_SCREEN_SCALE_FACTORS");
        EXPECT_EQ(screen.scale > 1, isMixed && screen.name == "right");
        EXPECT_EQ(m_window.frame(),
                  clampedToScreen(dockFrame(Left, screen.visibleFrame), screen.visibleFrame));
        waitForGeometry(pixelsOf(m_window.frame()));
        m_controller.hide();
        letSettle();
    }
}

// Where its size in points stays the same, too.
TEST_F(PanelMixedScaleDesktop, ItsCornersAreCutInPixelsOfEachScreen) {
    splitScreen();
    const Window left = startTerminal("left", "40x10+200+300");
    const Window right = startTerminal("right", "40x10+1300+300");
    for (const Window window : {right, left, right}) {
        m_session.activate(window);
        showPanel();
        waitForGeometry(pixelsOf(m_window.frame()));
        waitUntil("the shape to be that of the window",
                  [this] { return shapeOf(panel()) == m_session.geometry(panel()).size(); });
        m_controller.hide();
        letSettle();
    }
}

} // namespace
} // namespace vorq
