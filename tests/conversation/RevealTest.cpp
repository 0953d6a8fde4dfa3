#include "conversation/BlockReveal.h"
#include "conversation/GraphemeTypewriter.h"
#include "support/text/Graphemes.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;

std::vector<BlockReveal::Step> stepsOf(const QString& reply, const QString& existing) {
    BlockReveal reveal(reply, existing);
    std::vector<BlockReveal::Step> steps;
    while (const auto step = reveal.next())
        steps.push_back(*step);
    return steps;
}

TEST(InstantReply, IsShortAndOfOneBlock) {
    EXPECT_TRUE(isInstantAssistantReply(u""));
    EXPECT_TRUE(isInstantAssistantReply(u" \n "));
    EXPECT_TRUE(isInstantAssistantReply(QString(140, u'a')));
    EXPECT_FALSE(isInstantAssistantReply(QString(141, u'a')));
    EXPECT_FALSE(isInstantAssistantReply(u"one\n\ntwo"));
}

TEST(InstantReply, CountsCharactersNotCodeUnits) {
    EXPECT_TRUE(isInstantAssistantReply(u"👩‍👩‍👧"_s.repeated(140)));
    EXPECT_FALSE(isInstantAssistantReply(u"👩‍👩‍👧"_s.repeated(141)));
}

TEST(BlockReveal, AddsABlockAStepAndEndsWithTheWholeText) {
    EXPECT_THAT(stepsOf("a\n\nb\n\nc", ""),
                ElementsAre(BlockReveal::Step{"a", true}, BlockReveal::Step{"a\n\nb", true},
                            BlockReveal::Step{"a\n\nb\n\nc", false},
                            BlockReveal::Step{"a\n\nb\n\nc", false}));
}

TEST(BlockReveal, GoesOnFromWhatIsShown) {
    EXPECT_THAT(stepsOf("a\n\nb\n\nc", "a"), ElementsAre(BlockReveal::Step{"a\n\nb", true},
                                                         BlockReveal::Step{"a\n\nb\n\nc", false},
                                                         BlockReveal::Step{"a\n\nb\n\nc", false}));
}

TEST(BlockReveal, OnlyEndsWhenAllIsShownOrMore) {
    EXPECT_THAT(stepsOf("a\n\nb", "a\n\nb"), ElementsAre(BlockReveal::Step{"a\n\nb", false}));
    EXPECT_THAT(stepsOf("short", "a\n\nb"), ElementsAre(BlockReveal::Step{"short", false}));
}

TEST(GraphemePace, FollowsTheLength) {
    const GraphemePace greeting = GraphemePace::forLength(19);
    EXPECT_EQ(greeting.duration, 0.9);
    EXPECT_EQ(greeting.rate, 40);
    EXPECT_EQ(GraphemePace::forLength(60).rate, 48);
    EXPECT_EQ(GraphemePace::forLength(61).base, 54);
    EXPECT_EQ(GraphemePace::forLength(160).base, 54);
    EXPECT_EQ(GraphemePace::forLength(161).base, 66);
    EXPECT_EQ(GraphemePace::forLength(401).base, 78);
    EXPECT_EQ(GraphemePace::forLength(2000).duration, 7.5);
    EXPECT_THAT(GraphemePace::forLength(2000).rate, DoubleNear(266.667, 0.001));
}

qsizetype boundary(const QString& text, qsizetype from, qsizetype toward) {
    return preferTypingBoundary(splitGraphemes(text), from, toward);
}

TEST(TypingBoundary, RestsAfterAWordOrAMark) {
    EXPECT_EQ(boundary("one two three", 0, 6), 4);
    EXPECT_EQ(boundary("one. two", 0, 4), 4);
    EXPECT_EQ(boundary("a)bcd", 0, 4), 2);
    EXPECT_EQ(boundary("a\nbcd", 0, 4), 2);
}

TEST(TypingBoundary, NeverFallsMoreThanEightBehind) {
    EXPECT_EQ(boundary("a bcdefghijkl", 0, 11), 11);
    EXPECT_EQ(boundary("a bcdefghijkl", 0, 10), 2);
}

TEST(TypingBoundary, NeverGoesBackBehindItsStart) {
    EXPECT_EQ(boundary("a bcd", 3, 5), 5);
    EXPECT_EQ(boundary("a bcd", 5, 3), 3);
    EXPECT_EQ(boundary("abc", 0, 0), 0);
}

TEST(GraphemeTypewriter, RevealsByElapsedTimeAndEndsWhole) {
    GraphemeTypewriter typewriter(u"👋🏽 hello"_s);
    EXPECT_FALSE(typewriter.at(0));
    const auto first = typewriter.at(0.05);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->text, u"👋🏽 "_s);
    EXPECT_TRUE(first->isTyping);
    const auto last = typewriter.at(10);
    ASSERT_TRUE(last);
    EXPECT_EQ(last->text, u"👋🏽 hello"_s);
    EXPECT_FALSE(last->isTyping);
    EXPECT_TRUE(typewriter.isFinished());
}

TEST(GraphemeTypewriter, ALateTickRevealsMoreAtOnce) {
    const QString text = QString(100, u'x');
    GraphemeTypewriter typewriter(text);
    const auto step = typewriter.at(1.0);
    ASSERT_TRUE(step);
    EXPECT_EQ(step->text.size(), 54);
}

} // namespace
} // namespace vorq
