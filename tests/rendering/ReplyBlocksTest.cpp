// The line loop of AssistantReplyDocument::blocks().

#include "doubles/rendering/ShownBlocks.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

TEST(ReplyBlocks, EmptyOrBlankTextHasNone) {
    EXPECT_EQ(shownBlocks(u""), Shown{});
    EXPECT_EQ(shownBlocks(u" \n\t\u2028 "), Shown{});
}

TEST(ReplyBlocks, ABoldLineBeforeAListIsTheTitleWithItsMarkers) {
    EXPECT_EQ(shownBlocks(u"**Plan**\n- one\n- two"),
              (Shown{"title: **Plan**", "bullets: one|two"}));
}

TEST(ReplyBlocks, FirstHeadingIsTheTitleAndLaterOnesAreSections) {
    EXPECT_EQ(shownBlocks(u"# A\n# B"), (Shown{"title: A", "section: B"}));
    EXPECT_EQ(shownBlocks(u"text\n\n## A\n**B**\nCc\n- x"),
              (Shown{"body: text", "title: A", "section: **B**", "section: Cc", "bullets: x"}));
}

TEST(ReplyBlocks, SuccessiveLinesJoinIntoOneParagraph) {
    EXPECT_EQ(shownBlocks(u"one \n\ttwo\nthree\n\nfour"),
              (Shown{"body: one two three", "body: four"}));
}

TEST(ReplyBlocks, ABlankLineEndsAList) {
    EXPECT_EQ(shownBlocks(u"- one\n\n- two"), (Shown{"bullets: one", "bullets: two"}));
    EXPECT_EQ(shownBlocks(u"1. one\n \n2. two"), (Shown{"numbered: one", "numbered: two"}));
}

TEST(ReplyBlocks, ListsOfEitherKindEndEachOther) {
    EXPECT_EQ(shownBlocks(u"1. a\n- b\n2. c"), (Shown{"numbered: a", "bullets: b", "numbered: c"}));
}

TEST(ReplyBlocks, AListStartsAndEndsWithoutABlankLine) {
    EXPECT_EQ(shownBlocks(u"text\n- one\n* two\n• three\nmore"),
              (Shown{"body: text", "bullets: one|two|three", "body: more"}));
}

TEST(ReplyBlocks, ItemsKeepWhatFollowsTheTwoCharactersOfTheMarker) {
    EXPECT_EQ(shownBlocks(u"-  one\n- \ttwo"), (Shown{"bullets:  one|\ttwo"}));
    EXPECT_EQ(shownBlocks(u"1.  one"), Shown{"numbered:  one"});
}

TEST(ReplyBlocks, AMarkWithNoBlankIsNoBullet) {
    EXPECT_EQ(shownBlocks(u"-"), Shown{"body: -"});
    EXPECT_EQ(shownBlocks(u"-one\n*two\n•three"), Shown{"body: -one *two •three"});
    EXPECT_EQ(shownBlocks(u"-\tone"), Shown{"body: -\tone"});
}

TEST(ReplyBlocks, NumberedItemsNeedAPointAndABlank) {
    EXPECT_EQ(shownBlocks(u"1) a"), Shown{"body: 1) a"});
    EXPECT_EQ(shownBlocks(u"12\n12.\n12.a\n1.\ta"), Shown{"body: 12 12. 12.a 1.\ta"});
    EXPECT_EQ(shownBlocks(u"x\n07. a\n12. b"), (Shown{"body: x", "numbered: a|b"}));
}

TEST(ReplyBlocks, NumbersOfAllScriptsNumberAnItem) {
    EXPECT_EQ(shownBlocks(u"١. a\n一. b\nⅣ. c\n1️⃣. d"), Shown{"numbered: a|b|c|d"});
}

TEST(ReplyBlocks, AtxHeadingsNeedNoBlankAfterTheMarks) {
    EXPECT_EQ(shownBlocks(u"#plan"), Shown{"title: plan"});
    EXPECT_EQ(shownBlocks(u"###### \t plan #"), Shown{"title: plan #"});
}

TEST(ReplyBlocks, SevenMarksOrAnEmptyHeadingAreBody) {
    EXPECT_EQ(shownBlocks(u"####### x"), Shown{"body: ####### x"});
    EXPECT_EQ(shownBlocks(u"#"), Shown{"body: #"});
    EXPECT_EQ(shownBlocks(u"###"), Shown{"body: ###"});
}

TEST(ReplyBlocks, DividersAreThreeOrMoreOfOneMark) {
    EXPECT_EQ(shownBlocks(u"a\n---\nb\n*****\n___"),
              (Shown{"body: a", "divider", "body: b", "divider", "divider"}));
    EXPECT_EQ(shownBlocks(u"--\n-*-\n- - -\n__\n+++"),
              (Shown{"body: -- -*-", "bullets: - -", "body: __ +++"}));
    EXPECT_EQ(shownBlocks(u"====\nx"), Shown{"body: ==== x"});
}

TEST(ReplyBlocks, QuoteLinesFormOneQuote) {
    EXPECT_EQ(shownBlocks(u"> one\n> two\n>\n> three\nbody"),
              (Shown{"quote: one two  three", "body: body"}));
    EXPECT_EQ(shownBlocks(u"text\n> one\n\n> two"),
              (Shown{"body: text", "quote: one", "quote: two"}));
}

TEST(ReplyBlocks, AQuoteMarkWithNoBlankIsBody) {
    EXPECT_EQ(shownBlocks(u">one"), Shown{"body: >one"});
}

TEST(ReplyBlocks, AnEmptyQuoteGivesNothing) {
    EXPECT_EQ(shownBlocks(u">"), Shown{});
    EXPECT_EQ(shownBlocks(u"a\n> \n>"), Shown{"body: a"});
}

TEST(ReplyBlocks, QuotesEndLists) {
    EXPECT_EQ(shownBlocks(u"- a\n> q\n1. b\n> r\n- c"),
              (Shown{"bullets: a", "quote: q", "numbered: b", "quote: r", "bullets: c"}));
}

TEST(ReplyBlocks, FencedCodeIsTakenAsItStands) {
    EXPECT_EQ(shownBlocks(u"text\n```cpp x\n  a\n# no head\n\n- no list\n  ```ignored\nafter"),
              (Shown{"body: text", "code: a\n# no head\n\n- no list", "body: after"}));
}

TEST(ReplyBlocks, AnUnclosedFenceRunsToTheEnd) {
    EXPECT_EQ(shownBlocks(u"```\ncode"), Shown{"code: code"});
    EXPECT_EQ(shownBlocks(u"```\n**a\n\n# b\n"), Shown{"code: **a\n\n# b"});
}

TEST(ReplyBlocks, AnEmptyFenceGivesNothing) {
    EXPECT_EQ(shownBlocks(u"```\n```"), Shown{});
    EXPECT_EQ(shownBlocks(u"```"), Shown{});
    EXPECT_EQ(shownBlocks(u"a\n```\n \n\t\n```\nb"), (Shown{"body: a", "body: b"}));
}

TEST(ReplyBlocks, TwoBackticksAreNoFence) {
    EXPECT_EQ(shownBlocks(u"``\nx"), Shown{"body: `` x"});
}

TEST(ReplyBlocks, TablesTakeTheRowsBelowTheSeparator) {
    EXPECT_EQ(shownBlocks(u"text\n| a | b |\n|---|:-:|\n | 1 | 2 |\n|3|\n| 4\nafter"),
              (Shown{"body: text", "table: a|b / 1|2 / 3", "body: | 4 after"}));
}

TEST(ReplyBlocks, ATableMayHaveNoRows) {
    EXPECT_EQ(shownBlocks(u"| a | b |\n|---|---|"), Shown{"table: a|b"});
}

TEST(ReplyBlocks, CellCountsAreNotEvenedOut) {
    EXPECT_EQ(shownBlocks(u"|x|\n|-|\n|1||\n||\n| 2 | y | z"), Shown{"table: x / 1| /  / 2|y|z"});
}

TEST(ReplyBlocks, ATableNeedsASeparatorOfItsMarksOnly) {
    EXPECT_EQ(shownBlocks(u"| a |"), Shown{"body: | a |"});
    EXPECT_EQ(shownBlocks(u"| a |\n| b |"), Shown{"body: | a | | b |"});
    EXPECT_EQ(shownBlocks(u"| a |\n|:::|"), Shown{"body: | a | |:::|"});
    EXPECT_EQ(shownBlocks(u"| a |\n|-\t|"), Shown{"body: | a | |-\t|"});
    EXPECT_EQ(shownBlocks(u"a | b\n---|---"), Shown{"body: a | b ---|---"});
    EXPECT_EQ(shownBlocks(u"| a |\n|---"), Shown{"body: | a | |---"});
}

TEST(ReplyBlocks, ABareHeadingStandsBeforeAList) {
    EXPECT_EQ(shownBlocks(u"Plan\n- one"), (Shown{"title: Plan", "bullets: one"}));
    EXPECT_EQ(shownBlocks(u"Plan\n\n \n1. one"), (Shown{"title: Plan", "numbered: one"}));
    EXPECT_EQ(shownBlocks(u"2024 in Review\n• one"),
              (Shown{"title: 2024 in Review", "bullets: one"}));
    EXPECT_EQ(shownBlocks(u"Élan É\n- x"), (Shown{"title: Élan É", "bullets: x"}));
}

TEST(ReplyBlocks, ABareHeadingBeginsUpperCase) {
    EXPECT_EQ(shownBlocks(u"plan\n- one"), (Shown{"body: plan", "bullets: one"}));
    EXPECT_EQ(shownBlocks(u"東京\n- one"), (Shown{"body: 東京", "bullets: one"}));
}

TEST(ReplyBlocks, ABareHeadingNeedsAListAfterIt) {
    EXPECT_EQ(shownBlocks(u"Plan\ntext\n- one"), (Shown{"body: Plan text", "bullets: one"}));
    EXPECT_EQ(shownBlocks(u"Plan"), Shown{"body: Plan"});
    EXPECT_EQ(shownBlocks(u"Plan\n-"), Shown{"body: Plan -"});
    EXPECT_EQ(shownBlocks(u"Plan\n> q"), (Shown{"body: Plan", "quote: q"}));
}

TEST(ReplyBlocks, ABareHeadingHasTwoToFortyEightCharacters) {
    EXPECT_EQ(shownBlocks(u"P\n- x"), (Shown{"body: P", "bullets: x"}));
    EXPECT_EQ(shownBlocks(u"É\n- x"), (Shown{"body: É", "bullets: x"}));
    const QString longest = u"A"_qs + repeated(u"b", 47);
    EXPECT_EQ(shownBlocks(longest + u"\n- x"_qs).front(), "title: " + longest.toStdString());
    EXPECT_EQ(shownBlocks(longest + u"b\n- x"_qs).front(), "body: " + longest.toStdString() + "b");
    const QString families = u"A"_qs + repeated(u"👩‍👩‍👧", 47);
    EXPECT_EQ(shownBlocks(families + u"\n- x"_qs).front(), "title: " + families.toStdString());
}

TEST(ReplyBlocks, ABareHeadingHoldsNoSentence) {
    for (const QStringView text : {u"Plan.", u"Plan?", u"Plan!", u"One. Two", u"One? Two",
                                   u"One! Two", u"One **two** Three"})
        EXPECT_EQ(shownBlocks(text.toString() + u"\n- x"_qs).front(),
                  "body: " + text.toString().toStdString());
    EXPECT_EQ(shownBlocks(u"Plan 3.5:\n- x").front(), "title: Plan 3.5:");
}

TEST(ReplyBlocks, HalfTheWordsOfABareHeadingBeginUpperCaseOrWithANumber) {
    EXPECT_EQ(shownBlocks(u"Plan of the Day\n- x").front(), "title: Plan of the Day");
    EXPECT_EQ(shownBlocks(u"Plan of a Day here\n- x").front(), "body: Plan of a Day here");
    EXPECT_EQ(shownBlocks(u"Plan of 3 Day here\n- x").front(), "title: Plan of 3 Day here");
    EXPECT_EQ(shownBlocks(u"A B C D E F G H\n- x").front(), "title: A B C D E F G H");
    EXPECT_EQ(shownBlocks(u"A B C D E F G H I\n- x").front(), "body: A B C D E F G H I");
}

TEST(ReplyBlocks, EscapedAndPairedLineBreaksAreLineFeeds) {
    EXPECT_EQ(shownBlocks(u"line one\\nline two\r\n\r\n- x"),
              (Shown{"body: line one line two", "bullets: x"}));
    EXPECT_EQ(shownBlocks(u"a\\n\\n```\\nb\\n```"), (Shown{"body: a", "code: b"}));
}

TEST(ReplyBlocks, OtherLineBreaksEndNoLine) {
    EXPECT_EQ(shownBlocks(u"- a\u2028- b\v- c\nx"), (Shown{"bullets: a\u2028- b\v- c", "body: x"}));
    EXPECT_EQ(shownBlocks(u"a\r- b\nx"), Shown{"body: a\r- b x"});
}

// What is left of "\r\r\n" is a pair again, which is one character and no line feed.
TEST(ReplyBlocks, ACarriageReturnPairThatIsLeftEndsNoLine) {
    EXPECT_EQ(shownBlocks(u"a\r\r\n- b\nx"), Shown{"body: a\r\n- b x"});
}

TEST(ReplyBlocks, LoneSurrogatesAreText) {
    const char16_t text[] = {0xDC00, u'\n', u'-', u' ', 0xD800};
    const auto blocks = AssistantReplyDocument::blocks(QStringView(text));
    ASSERT_EQ(blocks.size(), 2);
    EXPECT_EQ(blocks[0].text, QString(QChar(0xDC00)));
    EXPECT_EQ(blocks[1].items, QStringList(QString(QChar(0xD800))));
}

// Marks that carry a combining mark, or stand in one character with what is before them, are other
// characters than the bare mark.
TEST(ReplyBlocks, AMarkThatCarriesACombiningMarkMarksNothing) {
    EXPECT_EQ(shownBlocks(u"- \u0301x\n\nb"), (Shown{"body: - \u0301x", "body: b"}));
    EXPECT_EQ(shownBlocks(u"-\u0301 x\n\nb"), (Shown{"body: -\u0301 x", "body: b"}));
    EXPECT_EQ(shownBlocks(u"#\uFE0F x\n\nb"), (Shown{"body: #\uFE0F x", "body: b"}));
    EXPECT_EQ(shownBlocks(u"##\uFE0F x\n\nb"), (Shown{"title: #\uFE0F x", "body: b"}));
    EXPECT_EQ(shownBlocks(u"> \u0301x\n\nb"), (Shown{"body: > \u0301x", "body: b"}));
    EXPECT_EQ(shownBlocks(u"1.\u0301 x\n\nb"), (Shown{"body: 1.\u0301 x", "body: b"}));
    EXPECT_EQ(shownBlocks(u"```\u0301\nb"), Shown{"body: ```\u0301 b"});
    EXPECT_EQ(shownBlocks(u"---\u0301\nb"), Shown{"body: ---\u0301 b"});
    EXPECT_EQ(shownBlocks(u"**\u0301a**\nb"), Shown{"body: **\u0301a** b**"});
}

TEST(ReplyBlocks, ABarThatCarriesACombiningMarkIsACellsText) {
    EXPECT_EQ(shownBlocks(u"|a|\u0301b|\n|-|\n|1|\u0301\n|2|\n"),
              (Shown{"table: a|\u0301b", "body: |1|\u0301 |2|"}));
}

TEST(ReplyBlocks, AnEscapedBreakWhoseLetterCarriesAMarkStays) {
    EXPECT_EQ(shownBlocks(u"a\\n\u0303o"), Shown{"body: a\\n\u0303o"});
}

TEST(ReplyBlocks, BlankTrimmingSeesCodePoints) {
    EXPECT_EQ(shownBlocks(u"x\n\n \u0301- y"), (Shown{"body: x", "body: \u0301- y"}));
}

TEST(ReplyBlocks, CountIsTheSizeOfTheList) {
    for (const QStringView text :
         {u"", u"a", u"# a\n- b\n1. c\n> d\n```\ne\n```\n|f|\n|-|\n---\ng"})
        EXPECT_EQ(AssistantReplyDocument::blockCount(text),
                  AssistantReplyDocument::blocks(text).size());
}

TEST(ReplyBlocks, EqualityComparesKindAndContent) {
    const auto blocks = AssistantReplyDocument::blocks(u"# a\n# a\n\n- x");
    EXPECT_EQ(blocks, AssistantReplyDocument::blocks(u"# a\n# a\n- x"));
    EXPECT_NE(blocks[0], blocks[1]);
    EXPECT_NE(blocks, AssistantReplyDocument::blocks(u"# a\n# a\n- y"));
}

} // namespace
} // namespace vorq
