#include "doubles/desktop/PanelDesktopFixture.h"

#include <QImage>

namespace vorq {
namespace {

using namespace std::chrono_literals;

class PanelTierDesktop : public PanelDesktopFixture {
  protected:
    void SetUp() override {
        desktop::run("xsetroot", "x11-xserver-utils", {"-solid", "#2e8b57"},
                     m_session.environment());
        startTerminal("source");
    }

    // The colour of the screen at a place of the panel.
    [[nodiscard]] QString colourAt(const QString& shot, QPoint inPanel) {
        letSettle(500ms);
        return screenshot(shot).pixelColor(onPanel(inPanel.x(), inPanel.y())).name();
    }

    void waitFor(Translucency translucency) {
        waitUntil("another translucency",
                  [&] { return m_compositor.translucency() == translucency; });
    }

    static constexpr const char* plate = "#24262d";
    static constexpr const char* desktop = "#2e8b57";
};

TEST_F(PanelTierDesktop, WithoutACompositorTheCornersAreCutOff) {
    EXPECT_EQ(m_compositor.translucency(), Translucency::None);
    showPanel();
    EXPECT_EQ(colourAt("panel-opaque", {2, 2}), desktop);
    const QRect geometry = m_window.geometry();
    EXPECT_EQ(colourAt("panel-opaque", {geometry.width() - 3, geometry.height() - 3}), desktop);
    EXPECT_EQ(colourAt("panel-opaque", {12, 12}), plate);
}

TEST_F(PanelTierDesktop, IsCutAnewWhenItsSizeChanges) {
    showPanel();
    m_window.setReducedMotion(true);
    m_window.setFrame(dockFrame(PanelDockTarget::Center, m_screens.screens().front().visibleFrame),
                      true);
    waitForGeometry(dockedGeometry(PanelDockTarget::Center));
    const QRect geometry = m_window.geometry();
    EXPECT_EQ(colourAt("panel-center", {geometry.width() - 3, 2}), desktop);
    EXPECT_EQ(colourAt("panel-center", {geometry.width() - 12, 12}), plate);
}

TEST_F(PanelTierDesktop, ACompositorMakesItTranslucentAndItsEndOpaqueAgain) {
    startTerminal("behind", "80x40+0+60");
    showPanel();
    desktop::DesktopProgram& picom =
        m_session.start("picom", "picom", {"--config", "/dev/null", "--backend", "xrender"});
    waitFor(Translucency::Plain);
    EXPECT_EQ(scene()->property("radius").toInt(), 34);
    EXPECT_EQ(colourAt("panel-picom", {2, 2}), "#ffffff") << "the terminal behind";
    EXPECT_EQ(colourAt("panel-picom", {12, 12}), plate);
    EXPECT_TRUE(property(panel(), "_KDE_NET_WM_BLUR_BEHIND_REGION").contains("not found"))
        << "no blur";
    picom.kill();
    waitFor(Translucency::None);
    EXPECT_EQ(colourAt("panel-opaque-again", {2, 2}), "#ffffff");
    EXPECT_EQ(colourAt("panel-opaque-again", {12, 12}), plate);
}

TEST_F(PanelTierDesktop, AnnouncedBlurIsAskedFor) {
    desktop::DesktopProgram& picom =
        m_session.start("picom", "picom", {"--config", "/dev/null", "--backend", "xrender"});
    waitFor(Translucency::Plain);
    desktop::run("xprop", "x11-utils",
                 {"-root", "-f", "_KDE_NET_WM_BLUR_BEHIND_REGION", "32c", "-set",
                  "_KDE_NET_WM_BLUR_BEHIND_REGION", "0"},
                 m_session.environment());
    waitFor(Translucency::Blurred);
    showPanel();
    const QByteArray region = property(panel(), "_KDE_NET_WM_BLUR_BEHIND_REGION");
    EXPECT_FALSE(region.contains("not found"));
    EXPECT_GT(region.count(','), 40) << "round corners take many rectangles";
    desktop::run("xprop", "x11-utils", {"-root", "-remove", "_KDE_NET_WM_BLUR_BEHIND_REGION"},
                 m_session.environment());
    waitFor(Translucency::Plain);
    EXPECT_TRUE(property(panel(), "_KDE_NET_WM_BLUR_BEHIND_REGION").contains("not found"));
    picom.kill();
    waitFor(Translucency::None);
}

} // namespace
} // namespace vorq
