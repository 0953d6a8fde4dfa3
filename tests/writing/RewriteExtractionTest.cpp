#include "writing/RewriteExtraction.h"
#include "backend/api/AIAnalysis.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

AIAnalysis reply(const QString& summary) {
    AIAnalysis analysis;
    analysis.summary = summary;
    return analysis;
}

QString rewrite(const QString& summary, const QString& original, QStringView ask = u"shorter") {
    return rewriteOf(reply(summary), original, ask);
}

TEST(RewriteExtractionTest, TakesTheFirstLineWithoutWhatStandsRoundIt) {
    EXPECT_EQ(extractRewrite("1. New sentence — a shorter take", "z"), "New sentence");
    EXPECT_EQ(extractRewrite("  \n• \"New sentence\" - warmer\nNext", "z"), "New sentence");
    EXPECT_EQ(extractRewrite("", "z"), "");
    EXPECT_EQ(extractRewrite(" \n ", "z"), "");
}

TEST(RewriteExtractionTest, OfTheSelectionInSeveralParagraphsTakesTheFirst) {
    EXPECT_EQ(extractRewrite("Same.\n\nMore", "Same."), "Same.");
    EXPECT_EQ(extractRewrite("Same.", "Same."), "Same.");
}

TEST(RewriteExtractionTest, OfListMarkersAloneTakesTheFirstParagraph) {
    EXPECT_EQ(extractRewrite("1.\n2.\n\n3.", "z"), "1.\n2.");
    EXPECT_EQ(extractRewrite("-", "z"), "-");
}

TEST(RewriteExtractionTest, DigitsOfAnyScriptMakeAListMarker) {
    EXPECT_EQ(extractRewrite(u"٣) New"_s, "z"), "New");
    EXPECT_EQ(extractRewrite(u"² New"_s, "z"), u"² New"_s);
}

TEST(RewriteExtractionTest, KeepsTheLinesOfASelectionThatHasSome) {
    EXPECT_EQ(rewrite("One.\n\nTwo.", "First.\n\nSecond."), "One.\n\nTwo.");
    EXPECT_EQ(rewrite("- one\n- two", "- first\n- second"), "- one\n- two");
}

TEST(RewriteExtractionTest, KeepsTheLinesThatTheWriterAskedFor) {
    EXPECT_EQ(rewrite("- One.\n- Two.", "One. Two.", u"make a Bullet list"), "- One.\n- Two.");
    EXPECT_EQ(rewrite("- Eins.\n- Zwei.", "Eins. Zwei.", u"als Stichpunkte"), "- Eins.\n- Zwei.");
    EXPECT_EQ(rewrite("- One.\n- Two.", "One. Two."), "One.");
}

TEST(RewriteExtractionTest, LinesAreAskedForByWholeWords) {
    for (const QStringView ask :
         {u"make it more realistic", u"pointed, please", u"so that they listen", u"no guidelines",
          u"less stable", u"like a poet"})
        EXPECT_EQ(rewrite("New.\nMore.", "Old.", ask), "New.") << ask.toUtf8().constData();
    for (const QStringView ask :
         {u"BULLETS", u"bulleted", u"as a list, please", u"to-do list", u"checklist", u"als Liste",
          u"Stichpunktliste", u"two lines", u"in steps.", u"as paragraphs", u"bullet points",
          u"(table)", u"Tabelle", u"a poem"})
        EXPECT_EQ(rewrite("New.\nMore.", "Old.", ask), "New.\nMore.") << ask.toUtf8().constData();
}

TEST(RewriteExtractionTest, KeepsDashesMarkersAndQuotesThatTheSelectionHas) {
    EXPECT_EQ(rewrite("He came - late - home.", "He came home - very late."),
              "He came - late - home.");
    EXPECT_EQ(rewrite("3. New point", "3. Old point"), "3. New point");
    EXPECT_EQ(rewrite("\"Hi,\" she said.", "\"Hello,\" she said."), "\"Hi,\" she said.");
    EXPECT_EQ(rewrite("\"Hi\"", "Hello"), "Hi");
}

TEST(RewriteExtractionTest, TakesWhatStandsBetweenFences) {
    EXPECT_EQ(rewrite("```\nNew sentence.\n```", "Old."), "New sentence.");
    EXPECT_EQ(rewrite("```text\nOne.\nTwo.\n```\n", "First.\nSecond."), "One.\nTwo.");
    EXPECT_EQ(rewrite("```\n```", "Old."), "");
    // What is no fence round the whole is the writer's.
    EXPECT_EQ(rewrite("```\na\n```\nb\n```\nc\n```", "x\ny"), "```\na\n```\nb\n```\nc\n```");
    EXPECT_EQ(rewrite("```", "x\ny"), "```");
}

TEST(RewriteExtractionTest, AReplyThatSaysNothingIsNoRewrite) {
    EXPECT_EQ(rewrite("", "Old."), "");
    EXPECT_EQ(rewrite(" \n", "Old.\nLines."), "");
    EXPECT_EQ(rewrite("Offline fallback: add ai provider api keys", "Old."), "");
}

TEST(RewriteExtractionTest, RemarksAndSourcesAreNoneOfTheText) {
    AIAnalysis analysis = reply("One.\nTwo.");
    analysis.feedback = "I shortened it.";
    analysis.corrections = "Fixed a comma.";
    analysis.sources = {{.title = "T", .url = "https://example.org"}};
    EXPECT_EQ(rewriteOf(analysis, "First.\nSecond.", u"shorter"), "One.\nTwo.");
    analysis.summary.clear();
    EXPECT_EQ(rewriteOf(analysis, "First.", u"shorter"), "I shortened it.");
}

TEST(RewriteExtractionTest, AMegabyteIsNoTrouble) {
    const QString long1 = u"word "_s.repeated(200'000);
    EXPECT_EQ(rewrite(long1, "Old.").size(), 999'999);
    EXPECT_EQ(rewrite(u"\n"_s.repeated(1'000'000) + u"New."_s, "Old."), "New.");
    EXPECT_EQ(rewrite(u"1. "_s.repeated(300'000), "Old.").size(), 899'996);
    EXPECT_EQ(rewrite(u"```\n"_s.repeated(250'000), "a\nb").size(), 999'999);
}

} // namespace
} // namespace vorq
