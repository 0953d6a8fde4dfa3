#include "app/CommandRepeats.h"

#include "platform/testing/ManualClock.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

class CommandRepeatsTest : public testing::Test {
  protected:
    ManualClock m_clock;
    CommandRepeats m_repeats{m_clock};
};

TEST_F(CommandRepeatsTest, TheFirstIsNone) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle));
}

TEST_F(CommandRepeatsTest, WhatFollowsWithoutAPauseIs) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle));
    m_clock.advance(CommandRepeats::pause - 1ms);
    EXPECT_TRUE(m_repeats.isRepetition(Verb::Toggle));
}

TEST_F(CommandRepeatsTest, AfterAPauseTheUserGivesItAgain) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle));
    m_clock.advance(CommandRepeats::pause);
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle));
}

TEST_F(CommandRepeatsTest, AnotherCommandIsNone) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Summon));
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Note));
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Summon));
}

TEST_F(CommandRepeatsTest, ThePauseBeginsAfterTheLastRepetition) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle));
    m_clock.advance(600ms);
    for (int repetition = 0; repetition < 30; ++repetition) {
        EXPECT_TRUE(m_repeats.isRepetition(Verb::Toggle));
        m_clock.advance(40ms);
    }
    m_clock.advance(CommandRepeats::pause);
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle));
}

} // namespace
} // namespace vorq
