// The panel that is made after the launch.

#include "shell/window/DeferredPanel.h"

#include "doubles/shell/ScriptedPanelPresence.h"
#include "platform/testing/ManualClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PanelInPieces final : public ScriptedPanelPresence {
  public:
    explicit PanelInPieces(CallList& calls) : ScriptedPanelPresence(calls), m_calls(calls) {
        m_calls += "make";
    }

    bool prepareFurther() override {
        m_calls += "prepare";
        return ++m_pieces < 3;
    }

  private:
    CallList& m_calls;
    int m_pieces = 0;
};

class DeferredPanelTest : public testing::Test {
  protected:
    ManualClock m_clock;
    CallList m_calls;
    std::optional<DeferredPanel> m_panel{
        std::in_place, m_clock, [this] { return std::make_unique<PanelInPieces>(m_calls); }};
};

TEST_F(DeferredPanelTest, ThePanelIsMadeAPieceAtATimeAfterTheLaunch) {
    EXPECT_THAT(m_calls, IsEmpty());
    m_clock.advance(DeferredPanel::delay);
    EXPECT_THAT(m_calls, ElementsAre("make"));
    m_clock.advance(DeferredPanel::pause);
    EXPECT_THAT(m_calls, ElementsAre("make", "prepare"));
    m_clock.advance(10 * DeferredPanel::pause);
    EXPECT_THAT(m_calls, ElementsAre("make", "prepare", "prepare", "prepare"));
}

TEST_F(DeferredPanelTest, WhoShowsItBeforeGetsItAtOnce) {
    m_panel->show();
    EXPECT_THAT(m_calls, ElementsAre("make", "show"));
    EXPECT_TRUE(m_panel->isPanelVisible());
    m_clock.advance(DeferredPanel::delay);
    EXPECT_EQ(m_calls.count("make"), 1);
}

TEST_F(DeferredPanelTest, WhatDoesNotShowItDoesNotMakeIt) {
    EXPECT_FALSE(m_panel->isPanelVisible());
    m_panel->hide();
    m_panel->yieldFocus();
    EXPECT_THAT(m_calls, IsEmpty());
    m_panel->show();
    EXPECT_THAT(m_calls, ElementsAre("make", "show"));
}

TEST_F(DeferredPanelTest, ItIsMadeAlsoForWhoLeavesTheKeyboardAlone) {
    m_panel->showBeside();
    EXPECT_THAT(m_calls, ElementsAre("make", "show beside"));
}

TEST_F(DeferredPanelTest, WhatIsAskedOfItReachesThePanel) {
    m_panel->show();
    m_panel->yieldFocus();
    m_panel->hide();
    EXPECT_THAT(m_calls, ElementsAre("make", "show", "yield", "hide"));
    EXPECT_FALSE(m_panel->isPanelVisible());
}

TEST_F(DeferredPanelTest, NothingIsMadeAfterItsEnd) {
    m_panel.reset();
    m_clock.advance(DeferredPanel::delay);
    EXPECT_THAT(m_calls, IsEmpty());
}

} // namespace
} // namespace vorq
