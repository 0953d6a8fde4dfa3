#include "shell/status/StatusBounce.h"
#include "platform/testing/ManualClock.h"

#include <gmock/gmock.h>

#include <memory>
#include <vector>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::SizeIs;

constexpr StatusFrame glyph;
constexpr StatusFrame marked{.image = StatusImage::Attention};

class StatusBounceTest : public testing::Test {
  protected:
    ManualClock m_clock;
    std::vector<StatusFrame> m_frames;
    bool m_isThere = true;
    std::unique_ptr<StatusBounce> m_bounce = std::make_unique<StatusBounce>(
        m_clock, StatusBounce::Tray{[this](const StatusFrame& frame) { m_frames.push_back(frame); },
                                    [this] { return m_isThere; }});
};

TEST_F(StatusBounceTest, TheGlyphFallsComesBackAndRests) {
    EXPECT_EQ(StatusBounce::dropAt(0), 0);
    EXPECT_THAT(StatusBounce::dropAt(0.28), DoubleNear(1, 0.001));
    EXPECT_GT(StatusBounce::dropAt(0.14), 0.8) << "it falls quickly at first";
    EXPECT_THAT(StatusBounce::dropAt(0.58), DoubleNear(0, 0.001));
    EXPECT_GT(StatusBounce::dropAt(0.32), 0.8) << "it comes back slowly at first";
    EXPECT_EQ(StatusBounce::dropAt(0.8), 0);
}

TEST_F(StatusBounceTest, EachPeriodIsLikeTheFirstAndItGoesOn) {
    m_bounce->start(AttentionForm::Bounce);
    m_clock.advance(StatusBounce::period);
    const std::vector<StatusFrame> first = m_frames;
    EXPECT_GT(first.size(), 15U) << "it moves smoothly";
    m_frames.clear();
    m_clock.advance(StatusBounce::period);
    EXPECT_EQ(m_frames, first);
    m_clock.advance(10 * 60s);
    EXPECT_TRUE(m_bounce->isRunning());
}

TEST_F(StatusBounceTest, AtRestItDrawsNothing) {
    m_bounce->start(AttentionForm::Bounce);
    m_clock.advance(700ms);
    EXPECT_EQ(m_frames.back(), glyph);
    m_frames.clear();
    m_clock.advance(430ms);
    EXPECT_THAT(m_frames, SizeIs(0));
}

TEST_F(StatusBounceTest, StoppedInTheAirTheGlyphIsAtRest) {
    m_bounce->start(AttentionForm::Bounce);
    m_clock.advance(300ms);
    EXPECT_NE(m_frames.back(), glyph);
    m_bounce->stop();
    EXPECT_EQ(m_frames.back(), glyph);
    EXPECT_FALSE(m_bounce->isRunning());
    EXPECT_EQ(m_clock.pendingTimers(), 0U);
}

TEST_F(StatusBounceTest, AnotherStartMeanwhileDoesNotBeginAnew) {
    m_bounce->start(AttentionForm::Bounce);
    m_clock.advance(300ms);
    const std::size_t shown = m_frames.size();
    m_bounce->start(AttentionForm::Steady);
    EXPECT_THAT(m_frames, SizeIs(shown));
    EXPECT_EQ(m_clock.pendingTimers(), 1U);
}

TEST_F(StatusBounceTest, ItEndsWithTheItem) {
    m_bounce->start(AttentionForm::Bounce);
    m_clock.advance(300ms);
    m_isThere = false;
    m_clock.advance(250ms);
    EXPECT_FALSE(m_bounce->isRunning());
    EXPECT_EQ(m_frames.back(), glyph) << "as it is to look when it is back";
}

TEST_F(StatusBounceTest, OverTheBusOneImageComesAndGoes) {
    m_bounce->start(AttentionForm::Blink);
    m_clock.advance(StatusBounce::period + StatusBounce::period / 2);
    EXPECT_THAT(m_frames, ElementsAre(marked, glyph, marked, glyph));
}

TEST_F(StatusBounceTest, AFewPeriodsEndByThemselves) {
    m_bounce->start(AttentionForm::Blink, 2);
    m_clock.advance(2 * StatusBounce::period - 1ms);
    EXPECT_TRUE(m_bounce->isRunning());
    m_clock.advance(1ms);
    EXPECT_FALSE(m_bounce->isRunning());
    EXPECT_THAT(m_frames, ElementsAre(marked, glyph, marked, glyph));
}

TEST_F(StatusBounceTest, WhereNothingIsToMoveTheImageStays) {
    m_bounce->start(AttentionForm::Steady);
    m_clock.advance(10s);
    EXPECT_THAT(m_frames, ElementsAre(marked));
    m_bounce->stop();
    EXPECT_THAT(m_frames, ElementsAre(marked, glyph));
}

TEST_F(StatusBounceTest, GoneWhileItRunsItDrawsNothingMore) {
    m_bounce->start(AttentionForm::Bounce);
    m_bounce.reset();
    const std::size_t shown = m_frames.size();
    m_clock.advance(10s);
    EXPECT_THAT(m_frames, SizeIs(shown));
}

} // namespace
} // namespace vorq
