// A press in the bar of another program, which may have been one on our status item.

#include "doubles/shell/PanelWindowFixture.h"

namespace vorq {
namespace {

using namespace std::chrono_literals;

class LateMenuTest : public PanelWindowFixture {
  protected:
    void SetUp() override {
        PanelWindowFixture::SetUp();
        m_controller->show();
    }
    void pressBar() { clickAt({1000, 5}, PressedSurface::ForeignBar); }
    void waitForDecision() {
        m_clock.advance(OutsidePresses::statusItemDelay);
        EXPECT_FALSE(m_controller->isPanelVisible());
    }
    [[nodiscard]] bool menuBringsItBack() {
        emit m_notifications.vorqStatusMenuChanged(true);
        return m_controller->isPanelVisible();
    }
};

TEST_F(LateMenuTest, BringsThePanelBack) {
    pressBar();
    waitForDecision();
    m_clock.advance(2s);
    EXPECT_TRUE(menuBringsItBack());
}

TEST_F(LateMenuTest, BringsItBackAlsoWhereTheKeyboardWentBackMeanwhile) {
    pressBar();
    waitForDecision();
    m_workspace.bringToFront(writer);
    m_clock.advance(2s);
    EXPECT_TRUE(menuBringsItBack());
}

TEST_F(LateMenuTest, IsNotWhatWasPressedIfAnotherApplicationComesToTheFront) {
    pressBar();
    waitForDecision();
    m_workspace.bringToFront(browser);
    EXPECT_FALSE(menuBringsItBack());
    m_workspace.bringToFront(writer);
    EXPECT_FALSE(menuBringsItBack());
}

TEST_F(LateMenuTest, IsNotWhatWasPressedIfAnotherApplicationCameToTheFrontAtOnce) {
    pressBar();
    m_workspace.bringToFront(browser);
    waitForDecision();
    EXPECT_FALSE(menuBringsItBack());
    m_controller->show();
    m_workspace.bringToFront(writer);
    m_controller->show();
    pressBar();
    waitForDecision();
    EXPECT_TRUE(menuBringsItBack()) << "the next press is another";
}

TEST_F(LateMenuTest, IsNotWhatWasPressedIfVorqOpensItItself) {
    pressBar();
    waitForDecision();
    emit m_notifications.vorqWillOpenStatusMenu();
    EXPECT_FALSE(menuBringsItBack());
}

} // namespace
} // namespace vorq
