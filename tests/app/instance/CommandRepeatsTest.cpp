#include "app/instance/CommandRepeats.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

class CommandRepeatsTest : public testing::Test {
  protected:
    static constexpr Clock::Duration m_first = 1h;
    CommandRepeats m_repeats;
};

TEST_F(CommandRepeatsTest, TheFirstIsNone) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle, 1ms));
}

TEST_F(CommandRepeatsTest, WhatFollowsWithoutAPauseIs) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle, m_first));
    EXPECT_TRUE(m_repeats.isRepetition(Verb::Toggle, m_first + CommandRepeats::pause - 1ms));
}

TEST_F(CommandRepeatsTest, AfterAPauseTheUserGivesItAgain) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle, m_first));
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle, m_first + CommandRepeats::pause));
}

TEST_F(CommandRepeatsTest, AnotherCommandIsNone) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Summon, m_first));
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Note, m_first));
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Summon, m_first));
}

TEST_F(CommandRepeatsTest, ThePauseBeginsAfterTheLastRepetition) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle, m_first));
    Clock::Duration given = m_first + 600ms;
    for (int repetition = 0; repetition < 30; ++repetition, given += 40ms)
        EXPECT_TRUE(m_repeats.isRepetition(Verb::Toggle, given));
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle, given - 40ms + CommandRepeats::pause));
}

TEST_F(CommandRepeatsTest, OneThatOvertookTheOthersKeepsThemRepetitions) {
    EXPECT_FALSE(m_repeats.isRepetition(Verb::Toggle, m_first + 600ms));
    EXPECT_TRUE(m_repeats.isRepetition(Verb::Toggle, m_first));
    EXPECT_TRUE(m_repeats.isRepetition(Verb::Toggle, m_first + 1200ms));
}

} // namespace
} // namespace vorq
