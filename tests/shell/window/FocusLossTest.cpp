#include "shell/window/FocusLoss.h"

#include "platform/testing/ManualClock.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

class FocusLossTest : public testing::Test {
  protected:
    ManualClock m_clock;
    int m_losses = 0;
    FocusLoss m_focus{m_clock, [this] { ++m_losses; }};
};

TEST_F(FocusLossTest, IsToldAMomentAfterIt) {
    m_focus.setActive(true);
    m_focus.setActive(false);
    m_clock.advance(FocusLoss::moment - 1ms);
    EXPECT_EQ(m_losses, 0);
    m_clock.advance(1ms);
    EXPECT_EQ(m_losses, 1);
    m_clock.advance(1s);
    EXPECT_EQ(m_losses, 1);
}

TEST_F(FocusLossTest, IsNoneWhereAnotherWindowOfOursGetsTheKeyboard) {
    m_focus.setActive(true);
    m_focus.setActive(false);
    m_clock.advance(50ms);
    m_focus.setActive(true);
    m_clock.advance(1s);
    EXPECT_EQ(m_losses, 0);
}

TEST_F(FocusLossTest, IsNoneWhereThereWasNoKeyboard) {
    m_focus.setActive(false);
    m_clock.advance(1s);
    EXPECT_EQ(m_losses, 0);
}

} // namespace
} // namespace vorq
