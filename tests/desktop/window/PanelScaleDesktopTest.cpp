#include "doubles/desktop/PanelDesktopFixture.h"

#include <QImage>

#include <cmath>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

// Also run with more than one pixel to a point.
class PanelScaleDesktop : public PanelDesktopFixture {
  protected:
    double m_scale = m_window.devicePixelRatio();

    // A place in the panel in pixels of the screen, from pixels from its corner.
    [[nodiscard]] QPoint pixel(int x, int y) const {
        return m_session.geometry(panel()).topLeft() + QPoint(x, y);
    }
    [[nodiscard]] int pixels(double points) const {
        return static_cast<int>(std::lround(points * m_scale));
    }
};

TEST_F(PanelScaleDesktop, ScreensAndWindowsAreMeasuredInPoints) {
    const QRectF frame = m_screens.screens().front().frame;
    EXPECT_EQ(frame, QRectF(0, 0, 1920 / m_scale, 1080 / m_scale));
    EXPECT_EQ(m_screens.screens().front().visibleFrame, frame);
    const Window terminal = startTerminal("source");
    const QRect geometry = m_session.geometry(terminal);
    const QRectF inPoints(QPointF(geometry.topLeft()) / m_scale, QSizeF(geometry.size()) / m_scale);
    EXPECT_EQ(m_screens.windowFrame(terminal), m_screens.flipped(inPoints));
}

TEST_F(PanelScaleDesktop, ThePanelFillsItsDockInPixels) {
    startTerminal("source");
    showPanel();
    letSettle();
    const QRect docked = dockedGeometry(PanelDockTarget::Left);
    const QRect geometry = m_session.geometry(panel());
    EXPECT_NEAR(geometry.x(), docked.x() * m_scale, 1);
    EXPECT_NEAR(geometry.y(), docked.y() * m_scale, 1);
    EXPECT_NEAR(geometry.width(), docked.width() * m_scale, 1);
    EXPECT_NEAR(geometry.height(), docked.height() * m_scale, 1);
}

TEST_F(PanelScaleDesktop, TheCornersAreCutInPixels) {
    desktop::run("xsetroot", "x11-xserver-utils", {"-solid", "#2e8b57"}, m_session.environment());
    startTerminal("source");
    showPanel();
    letSettle(500ms);
    const QImage screen = screenshot(u"panel-scale-%1"_s.arg(m_scale));
    // Where the arc crosses the diagonal.
    const int arc = pixels(QuickPanelWindow::cornerRadius * (1 - std::sqrt(0.5)));
    EXPECT_EQ(screen.pixelColor(pixel(arc - 2, arc - 2)).name(), "#2e8b57");
    EXPECT_EQ(screen.pixelColor(pixel(arc + 2, arc + 2)).name(), "#24262d");
}

TEST_F(PanelScaleDesktop, AClickInsideIsInsideAndOneOutsideIsOutside) {
    startTerminal("source");
    showPanel();
    const QRect geometry = m_session.geometry(panel());
    m_session.click(pixel(geometry.width() - 20, geometry.height() / 2));
    letSettle();
    EXPECT_TRUE(m_controller.isPanelVisible());
    m_session.click(pixel(geometry.width() + 20, geometry.height() / 2));
    waitForHidden();
}

TEST_F(PanelScaleDesktop, ADragCountsPoints) {
    startTerminal("source");
    showPanel();
    drag(pixel(pixels(300), pixels(160)), {pixels(30), 0}, 0.8);
    EXPECT_EQ(m_controller.dock(), PanelDockTarget::Left);
    drag(pixel(pixels(300), pixels(160)), {pixels(60), 0}, 0.8);
    EXPECT_EQ(m_controller.dock(), PanelDockTarget::Center);
}

} // namespace
} // namespace vorq
