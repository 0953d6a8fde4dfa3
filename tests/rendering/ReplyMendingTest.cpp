// Bold labels, list bridges, open bold spans, invented breaks and dense paragraphs.

#include "doubles/rendering/ShownBlocks.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

QString sentence(int length) {
    return u"A"_qs + repeated(u"b", length - 2) + u'.';
}

TEST(ReplyLabel, IsALineOfBoldTextOnly) {
    EXPECT_EQ(shownBlocks(u"**a**\nx"), (Shown{"title: **a**", "body: x"}));
    EXPECT_EQ(shownBlocks(u"**a** b\nx"), Shown{"body: **a** b x"});
    EXPECT_EQ(shownBlocks(u"**a** **b**\nx"), Shown{"body: **a** **b** x"});
    EXPECT_EQ(shownBlocks(u"** **\nx"), (Shown{"title: ** **", "body: x"}));
    EXPECT_EQ(shownBlocks(u"**a*b**\nx"), (Shown{"title: **a*b**", "body: x"}));
}

TEST(ReplyLabel, TakesALineWhoseClosingMarkerIsMissing) {
    EXPECT_EQ(shownBlocks(u"**a\n**b"), (Shown{"title: **a**", "section: **b**"}));
    EXPECT_EQ(shownBlocks(u"**a*\n**b"), (Shown{"title: **a***", "section: **b**"}));
}

TEST(ReplyLabel, MayBeEmpty) {
    EXPECT_EQ(shownBlocks(u"**\n**"), (Shown{"title: ", "section: "}));
    EXPECT_EQ(shownBlocks(u"x\n\n**"), (Shown{"body: x", "title: "}));
}

TEST(ReplyLabel, HasAtMostSixtyCharacters) {
    const QString longest = u"**"_qs + repeated(u"a", 60) + u"**"_qs;
    EXPECT_EQ(shownBlocks(longest + u"\nx"_qs).front(), "title: " + longest.toStdString());
    const QString tooLong = u"**"_qs + repeated(u"a", 61) + u"**"_qs;
    EXPECT_EQ(shownBlocks(tooLong + u"\n\nx"_qs).front(), "body: " + tooLong.toStdString());
    const QString families = u"**"_qs + repeated(u"👩‍👩‍👧", 60) + u"**"_qs;
    EXPECT_EQ(shownBlocks(families + u"\nx"_qs).front(), "title: " + families.toStdString());
}

TEST(ReplyLabel, OfMoreThanFortyCharactersHoldsNoPoint) {
    const QString shorter = u"**"_qs + repeated(u"a", 39) + u".**"_qs;
    EXPECT_EQ(shownBlocks(shorter + u"\nx"_qs).front(), "title: " + shorter.toStdString());
    const QString longer = u"**"_qs + repeated(u"a", 40) + u".**"_qs;
    EXPECT_EQ(shownBlocks(longer + u"\n\nx"_qs).front(), "body: " + longer.toStdString());
}

TEST(ReplyBridge, LosesItsMarkerAndBecomesBody) {
    EXPECT_EQ(shownBlocks(u"- Steps such as:\n- one"),
              (Shown{"body: Steps such as:", "bullets: one"}));
    EXPECT_EQ(shownBlocks(u"1. one\n2. Then:\n3. two"),
              (Shown{"numbered: one", "body: Then:", "numbered: two"}));
    EXPECT_EQ(shownBlocks(u"text\n- More:\nend"), Shown{"body: text More: end"});
}

TEST(ReplyBridge, IsKnownByItsCueWhateverItsLengthAndPoints) {
    const QString lead = repeated(u"Long. ", 60);
    for (const QStringView cue :
         {u"such as:", u"Including:", u"for example:", u"e.g.:", u"EG:", u"namely:", u"like:",
          u"as follows:", u"the following:", u"examples:"})
        EXPECT_EQ(shownBlocks(u"x\n\n- a. "_qs + cue.toString()).back(),
                  "body: a. " + cue.toString().toStdString());
    EXPECT_EQ(shownBlocks(u"x\n\n- v1.2 dislike:").back(), "body: v1.2 dislike:");
    EXPECT_EQ(shownBlocks(u"x\n\n- v1.2, such as: ours and theirs:").back(),
              "body: v1.2, such as: ours and theirs:");
    EXPECT_EQ(shownBlocks(u"x\n\n- "_qs + lead + u"like:"_qs).size(), 31U);
}

TEST(ReplyBridge, EndsInAColon) {
    EXPECT_EQ(shownBlocks(u"x\n\n- such as: this").back(), "bullets: such as: this");
    EXPECT_EQ(shownBlocks(u"x\n\n- such as:\u0301").back(), "bullets: such as:\u0301");
}

TEST(ReplyBridge, WithoutACueIsShortAndHoldsNoPoint) {
    EXPECT_EQ(shownBlocks(u"x\n\n- v1.2:").back(), "bullets: v1.2:");
    const std::string longest(79, 'a');
    EXPECT_EQ(shownBlocks(u"x\n\n- "_qs + repeated(u"a", 79) + u':').back(),
              "body: " + longest + ":");
    EXPECT_EQ(shownBlocks(u"x\n\n- "_qs + repeated(u"a", 80) + u':').back(),
              "bullets: " + longest + "a:");
}

TEST(ReplyOpenBold, IsClosedAtTheEnd) {
    EXPECT_EQ(shownBlocks(u"x\n\nSome **bold"), (Shown{"body: x", "body: Some **bold**"}));
    EXPECT_EQ(shownBlocks(u"Some **bold"), shownBlocks(u"Some **bold**"));
    EXPECT_EQ(shownBlocks(u"Some **bold\n\nx"), (Shown{"body: Some **bold", "body: x**"}));
}

TEST(ReplyOpenBold, ThatHasNoTextYetStays) {
    EXPECT_EQ(shownBlocks(u"Some **"), Shown{"body: Some **"});
    EXPECT_EQ(shownBlocks(u"Some **a** and **"),
              (Shown{"body: Some", "title: **a**", "body: and **"}));
}

TEST(ReplyOpenBold, IsCountedOverTheWholeText) {
    EXPECT_EQ(shownBlocks(u"**\nx"), (Shown{"title: ", "body: x**"}));
    EXPECT_EQ(shownBlocks(u"a **b** c\n\nd"), (Shown{"body: a **b** c", "body: d"}));
    EXPECT_EQ(shownBlocks(u"x\n\na ***b"), (Shown{"body: x", "body: a ***b**"}));
}

TEST(ReplyOpenBold, BeforeATrailingBlankIsClosedAllTheSame) {
    EXPECT_EQ(shownBlocks(u"x\n\nSome ** "), (Shown{"body: x", "body: Some ** **"}));
}

TEST(ReplyOpenBold, InsideAnOpenFenceStays) {
    EXPECT_EQ(shownBlocks(u"```\na ** b\n"), Shown{"code: a ** b"});
    EXPECT_EQ(shownBlocks(u"```\na\n```\n**b"), (Shown{"code: a", "title: **b**"}));
    EXPECT_EQ(shownBlocks(u"```\na\n```\nx **b"), (Shown{"code: a", "body: x **b**"}));
}

TEST(ReplyOpenBold, CountsWholeCharactersOnly) {
    EXPECT_EQ(shownBlocks(u"x\n\na **\u0301b"), (Shown{"body: x", "body: a **\u0301b"}));
}

TEST(ReplyBreaks, AreInventedForAReplyOfOneLine) {
    EXPECT_EQ(shownBlocks(u"Intro --- Next part **Label** more text - item"),
              (Shown{"body: Intro", "divider", "body: Next part", "title: **Label**",
                     "body: more text", "bullets: item"}));
}

TEST(ReplyBreaks, AreNotInventedWhereThereIsOne) {
    EXPECT_EQ(shownBlocks(u"Intro --- Next part **Label** more text\n- item"),
              (Shown{"body: Intro --- Next part **Label** more text", "bullets: item"}));
    EXPECT_EQ(shownBlocks(u"Intro - item\\nmore"), Shown{"body: Intro - item more"});
}

TEST(ReplyBreaks, DoNotCountLineFeedsAtTheEnds) {
    EXPECT_EQ(shownBlocks(u"\nintro - item\n"), (Shown{"body: intro", "bullets: item"}));
}

TEST(ReplyBreaks, AreInventedAtDividersWithoutABlankAfter) {
    EXPECT_EQ(shownBlocks(u"a ---b"), (Shown{"body: a", "divider", "body: b"}));
    EXPECT_EQ(shownBlocks(u"a ---"), (Shown{"body: a", "divider"}));
    EXPECT_EQ(shownBlocks(u"a ---- b"), (Shown{"body: a", "divider", "bullets: b"}));
    EXPECT_EQ(shownBlocks(u"a --- --- b"), (Shown{"body: a", "divider", "body: --- b"}));
}

TEST(ReplyBreaks, AreInventedAroundLabels) {
    EXPECT_EQ(shownBlocks(u"a **b** c **d** e"),
              (Shown{"body: a", "title: **b**", "body: c", "section: **d**", "body: e"}));
    EXPECT_EQ(shownBlocks(u"**a** b"), Shown{"body: **a** b"});
    EXPECT_EQ(shownBlocks(u"a(**b**) c"), Shown{"body: a(**b**) c"});
    EXPECT_EQ(shownBlocks(u"a **b*c** d"), Shown{"body: a **b*c** d"});
}

TEST(ReplyBreaks, AreInventedAroundLabelsOfUpToSixtyCodePoints) {
    const QString longest = repeated(u"a", 60);
    EXPECT_EQ(shownBlocks(u"x **"_qs + longest + u"** y"_qs).size(), 3U);
    EXPECT_EQ(shownBlocks(u"x **"_qs + longest + u"a** y"_qs).size(), 1U);
    EXPECT_EQ(shownBlocks(u"x **"_qs + repeated(u"😀", 60) + u"** y"_qs).size(), 3U);
    EXPECT_EQ(shownBlocks(u"x **"_qs + repeated(u"e\u0301", 31) + u"** y"_qs).size(), 1U);
}

TEST(ReplyBreaks, AreInventedBeforeALabelTheTextEndsIn) {
    EXPECT_EQ(shownBlocks(u"```x **y"), Shown{"code: **y"});
    EXPECT_EQ(shownBlocks(u"a ``` **y"), (Shown{"body: a ```", "title: **y**"}));
}

TEST(ReplyBreaks, AreInventedAroundABareHeadingBeforeAListOfLabels) {
    EXPECT_EQ(shownBlocks(u"Read on. Key Points - **One *x* y** z"),
              (Shown{"body: Read on.", "title: Key Points", "bullets: **One *x* y** z"}));
    EXPECT_EQ(shownBlocks(u"Read on. What’s A/B-testing - **One *x*** z - two"),
              (Shown{"body: Read on.", "title: What’s A/B-testing", "bullets: **One *x*** z|two"}));
    EXPECT_EQ(shownBlocks(u"Read on. Key (Points) - **One *x* y** z"),
              (Shown{"body: Read on. Key (Points)", "bullets: **One *x* y** z"}));
}

TEST(ReplyBreaks, TakeTheLongestBareHeading) {
    EXPECT_EQ(shownBlocks(u"read on Aa then Bb - Cc Dd - **one *x* y** z"),
              (Shown{"body: read on", "title: Aa then Bb", "bullets: Cc Dd|**one *x* y** z"}));
}

TEST(ReplyBreaks, TakeABareHeadingOfTwoToFiftyLetters) {
    EXPECT_EQ(shownBlocks(u"x. A - **b *c* d**").front(), "body: x. A");
    EXPECT_EQ(shownBlocks(u"x. Aa - **b *c* d**").front(), "body: x.");
    const QString longest = u"x. A"_qs + repeated(u"a", 49);
    EXPECT_EQ(shownBlocks(longest + u" - **b *c* d**"_qs).front(), "body: x.");
    EXPECT_EQ(shownBlocks(longest + u"a - **b *c* d**"_qs).front(),
              "body: " + longest.toStdString() + "a");
}

TEST(ReplyBreaks, AreInventedAroundEachBareHeading) {
    EXPECT_EQ(shownBlocks(u"x. Aa - **b *c* d** Bb - **e *f* g**"),
              (Shown{"body: x.", "title: Aa", "bullets: **b *c* d**", "section: Bb",
                     "bullets: **e *f* g**"}));
}

TEST(ReplyBreaks, AreInventedBeforeListItems) {
    EXPECT_EQ(shownBlocks(u"some: - one - two"), (Shown{"body: some:", "bullets: one|two"}));
    EXPECT_EQ(shownBlocks(u"Plan - one"), (Shown{"title: Plan", "bullets: one"}));
    EXPECT_EQ(shownBlocks(u"well-known - \u0301x"), Shown{"body: well-known - \u0301x"});
}

TEST(ReplyDenseBody, UnderTwoHundredAndEightyCharactersIsNeverSplit) {
    const QString text = sentence(90) + u' ' + sentence(90) + u' ' + sentence(97);
    ASSERT_EQ(text.size(), 279);
    EXPECT_EQ(shownBlocks(text), Shown{"body: " + text.toStdString()});
}

TEST(ReplyDenseBody, SplitsAfterTwoSentences) {
    const QString first = sentence(90) + u' ' + sentence(90);
    const QString second = sentence(98);
    ASSERT_EQ(first.size() + 1 + second.size(), 280);
    EXPECT_EQ(shownBlocks(first + u' ' + second),
              (Shown{"body: " + first.toStdString(), "body: " + second.toStdString()}));
}

TEST(ReplyDenseBody, CountsCharactersNotCodeUnits) {
    const QString families = repeated(u"👩‍👩‍👧", 90);
    const QString text = families + u". A. B."_qs;
    EXPECT_EQ(shownBlocks(text), Shown{"body: " + text.toStdString()});
}

TEST(ReplyDenseBody, OfTwoSentencesIsNeverSplit) {
    const QString text = sentence(400) + u' ' + sentence(400);
    EXPECT_EQ(shownBlocks(text), Shown{"body: " + text.toStdString()});
}

TEST(ReplyDenseBody, ALongSentenceStandsAlone) {
    const QString longer = sentence(180) + u' ' + sentence(60) + u' ' + sentence(60);
    EXPECT_EQ(shownBlocks(longer),
              (Shown{"body: " + sentence(180).toStdString(),
                     "body: " + (sentence(60) + u' ' + sentence(60)).toStdString()}));
    const QString shorter = sentence(179) + u' ' + sentence(60) + u' ' + sentence(60);
    EXPECT_EQ(shownBlocks(shorter),
              (Shown{"body: " + (sentence(179) + u' ' + sentence(60)).toStdString(),
                     "body: " + sentence(60).toStdString()}));
}

TEST(ReplyDenseBody, EndsASentenceOnlyBeforeABlankAndAnUpperCaseLetter) {
    const QString end = u' ' + sentence(100) + u' ' + sentence(200);
    EXPECT_EQ(shownBlocks(u"It is 3.5 e.g. this, Dr. smith?!No"_qs + end),
              (Shown{"body: It is 3.5 e.g. this, Dr. smith?!No " + sentence(100).toStdString() +
                     " " + sentence(200).toStdString()}));
    EXPECT_EQ(shownBlocks(u"Ask Dr. Smith"_qs + end),
              (Shown{"body: Ask Dr. Smith " + sentence(100).toStdString(),
                     "body: " + sentence(200).toStdString()}));
    EXPECT_EQ(shownBlocks(u"Ask! Éa? Σa."_qs + end).size(), 3U);
    EXPECT_EQ(shownBlocks(u"Ask!  Ea. 東.\tAb. 9."_qs + u' ' + sentence(300)).size(), 1U);
}

TEST(ReplyDenseBody, SplitsParagraphsOfJoinedLinesToo) {
    EXPECT_EQ(shownBlocks(sentence(100) + u'\n' + sentence(100) + u'\n' + sentence(100)).size(),
              2U);
}

TEST(ReplyDenseBody, LeavesOtherBlocksWhole) {
    const QString text = sentence(100) + u' ' + sentence(100) + u' ' + sentence(100);
    EXPECT_EQ(shownBlocks(u"> "_qs + text).size(), 1U);
    EXPECT_EQ(shownBlocks(u"- "_qs + text + u"\n- x"_qs).size(), 1U);
}

} // namespace
} // namespace vorq
