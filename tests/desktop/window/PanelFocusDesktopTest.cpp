#include "doubles/desktop/PanelDesktopFixture.h"

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

class PanelFocusDesktop : public PanelDesktopFixture {};

TEST_F(PanelFocusDesktop, TakesTheKeyboardAndGivesItBackToTheVeryWindow) {
    const Window first = startTerminal("first", "60x10+800+100");
    const Window second = startTerminal("second", "60x10+800+400");
    m_session.activate(first);
    showPanel();
    m_session.type("to the panel");
    waitUntil("the text", [this] { return scene()->property("draft") == "to the panel"; });
    m_session.key({"Escape"});
    waitForHidden();
    waitUntil("the first terminal", [&] { return m_session.activeWindow() == first; });
    m_session.type("back");
    m_session.key({"Return"});
    waitUntil("the text", [this] { return typedInto("first") == "back\n"; });
    EXPECT_EQ(typedInto("second"), "");
    EXPECT_NE(first, second);
}

TEST_F(PanelFocusDesktop, StandsOnAllWorkspacesAndInNoList) {
    startTerminal("source");
    for (int time = 0; time < 2; ++time) {
        showPanel();
        EXPECT_THAT(property(panel(), "_NET_WM_DESKTOP").toStdString(), HasSubstr("4294967295"));
        const std::string state = property(panel(), "_NET_WM_STATE").toStdString();
        for (const char* each : {"ABOVE", "SKIP_TASKBAR", "SKIP_PAGER"})
            EXPECT_THAT(state, HasSubstr(std::string("_NET_WM_STATE_") + each));
        m_controller.hide();
        letSettle();
    }
}

TEST_F(PanelFocusDesktop, StaysInSightOnAnotherWorkspaceAndDoesNotPullTheUserBack) {
    startTerminal("source");
    showPanel();
    xdotool({"set_desktop", "1"});
    letSettle();
    EXPECT_TRUE(m_screens.windowFrame(panel()));
    m_controller.hide();
    letSettle();
    EXPECT_EQ(m_session.geometry(panel()), m_window.geometry());
    EXPECT_EQ(
        desktop::run("xdotool", "xdotool", {"get_desktop"}, m_session.environment()).trimmed(),
        "1");
    xdotool({"set_desktop", "0"});
}

TEST_F(PanelFocusDesktop, AClickOnAnotherWindowClosesItAndIsTheWindows) {
    const Window first = startTerminal("first", "60x10+800+100");
    const Window second = startTerminal("second", "60x10+800+500");
    m_session.activate(first);
    showPanel();
    m_session.click(m_session.geometry(second).center());
    waitForHidden();
    letSettle();
    EXPECT_EQ(m_session.activeWindow(), second);
    m_session.type("clicked");
    m_session.key({"Return"});
    waitUntil("the text", [this] { return typedInto("second") == "clicked\n"; });
}

TEST_F(PanelFocusDesktop, AClickOnTheDesktopClosesItAndTheWorkHasTheKeyboard) {
    const Window source = startTerminal("source");
    showPanel();
    m_session.click({1900, 1000});
    waitForHidden();
    waitUntil("the terminal", [&] { return m_session.activeWindow() == source; });
}

TEST_F(PanelFocusDesktop, AClickInsideKeepsItUp) {
    startTerminal("source");
    showPanel();
    m_session.click(onPanel(100, 90));
    waitUntil("the click", [this] { return scene()->property("buttonClicks") == 1; });
    letSettle();
    EXPECT_TRUE(m_controller.isPanelVisible());
}

TEST_F(PanelFocusDesktop, AClickOnAMenuOfOursKeepsItUp) {
    startTerminal("source");
    showPanel();
    QWindow menu;
    menu.setFlags(Qt::Popup);
    menu.setGeometry(1000, 700, 200, 100);
    menu.show();
    waitUntil("the menu", [&] { return menu.isExposed(); });
    m_session.click({1100, 750});
    letSettle();
    EXPECT_TRUE(m_controller.isPanelVisible());
}

TEST_F(PanelFocusDesktop, AClickOnAnotherWindowOfOursClosesIt) {
    startTerminal("source");
    showPanel();
    QWindow other;
    other.setGeometry(1000, 700, 200, 100);
    other.show();
    waitUntil("the window", [&] { return other.isExposed(); });
    m_session.click({1100, 750});
    waitForHidden();
}

TEST_F(PanelFocusDesktop, EscapeInAnotherWindowOfOursKeepsItUp) {
    startTerminal("source");
    showPanel();
    QWindow other;
    other.setGeometry(1000, 700, 200, 100);
    other.show();
    other.requestActivate();
    waitUntil("the window", [&] { return other.isActive(); });
    m_session.key({"Escape"});
    letSettle();
    EXPECT_TRUE(m_controller.isPanelVisible());
}

TEST_F(PanelFocusDesktop, AClickGivesAnInactivePanelTheKeyboard) {
    const Window source = startTerminal("source");
    showPanel();
    m_session.activate(source);
    EXPECT_TRUE(m_controller.isPanelVisible());
    m_session.click(onPanel(300, 500));
    waitUntil("the panel", [this] { return m_session.activeWindow() == panel(); });
    m_session.type("again");
    waitUntil("the text", [this] { return scene()->property("draft") == "again"; });
}

} // namespace
} // namespace vorq
