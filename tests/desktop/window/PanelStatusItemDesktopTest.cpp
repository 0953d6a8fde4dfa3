#include "doubles/desktop/PanelDesktopFixture.h"

#include <QPixmap>
#include <QSystemTrayIcon>

namespace vorq {
namespace {

using namespace std::chrono_literals;

// A bar with a tray along the lower edge.
class PanelStatusItemDesktop : public PanelDesktopFixture {
  protected:
    desktop::DesktopProgram* m_bar = nullptr;

    void SetUp() override {
        const QString config =
            m_session.write("tint2rc", "panel_items = CS\npanel_size = 100% 40\n"
                                       "panel_position = bottom center horizontal\n"
                                       "strut_policy = follow_size\n");
        m_bar = &m_session.start("tint2", "tint2", {"-c", config});
        waitUntil("the tray", [] { return QSystemTrayIcon::isSystemTrayAvailable(); });
        startTerminal("source");
    }

    void TearDown() override { m_bar->kill(); }
};

TEST_F(PanelStatusItemDesktop, AClickOnItKeepsThePanelUp) {
    QPixmap picture(22, 22);
    picture.fill(Qt::red);
    QSystemTrayIcon item{QIcon(picture)};
    int clicks = 0;
    QObject::connect(&item, &QSystemTrayIcon::activated, [&] { ++clicks; });
    item.show();
    waitUntil("the status item to have its place",
              [&] { return item.geometry().y() > 1000 && !item.geometry().isEmpty(); });
    letSettle();
    showPanel();
    m_session.click(item.geometry().center());
    waitUntil("the click", [&] { return clicks == 1; });
    letSettle(500ms);
    EXPECT_TRUE(m_controller.isPanelVisible());
}

TEST_F(PanelStatusItemDesktop, AClickOnTheBarBesideItClosesThePanelALittleLater) {
    showPanel();
    m_session.click({600, 1060});
    waitForHidden();
}

TEST_F(PanelStatusItemDesktop, AClickOnTheBarThatOpensOurMenuKeepsThePanelUp) {
    showPanel();
    m_session.click({600, 1060});
    m_notifications.vorqStatusMenuChanged(true);
    letSettle(600ms);
    EXPECT_TRUE(m_controller.isPanelVisible());
}

} // namespace
} // namespace vorq
