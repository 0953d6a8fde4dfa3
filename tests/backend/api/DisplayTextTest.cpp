#include "backend/api/AIAnalysis.h"
#include "support/json/JsonWriter.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

AIAnalysis analysis(const QString& summary, const QString& feedback = {},
                    const QString& corrections = {}, std::vector<AISource> sources = {}) {
    return {.summary = summary,
            .feedback = feedback,
            .corrections = corrections,
            .sources = std::move(sources),
            .followUp = {}};
}

TEST(DisplayText, JoinsThePartsWithBlankLines) {
    EXPECT_EQ(displayText(analysis(" a\n", "b ", "c")), u"a\n\nb\n\nc");
}

TEST(DisplayText, ShowsAFeedbackThatEqualsTheSummaryOnce) {
    EXPECT_EQ(displayText(analysis("a", " a ")), u"a");
    EXPECT_EQ(displayText(analysis("a\r\nb", "a\nb")), u"a\nb");
}

TEST(DisplayText, ShowsEscapedLineBreaksAsLineBreaks) {
    EXPECT_EQ(displayText(analysis("a\\nb", "c\\nd", "e\\nf")), u"a\nb\n\nc\nd\n\ne\\nf");
}

TEST(DisplayText, LeavesOutCorrectionsThatSayNone) {
    for (const char* none : {"None.", "N/A!", "no  changes", " none needed ", "No\tCorrections!!",
                             "no correction", "NA", "nil", "NULL", "-", "!none!"})
        EXPECT_EQ(displayText(analysis("a", "", none)), u"a") << none;
}

TEST(DisplayText, KeepsCorrectionsThatSaySomething) {
    EXPECT_EQ(displayText(analysis("a", "", " None of these ")), u"a\n\nNone of these");
    EXPECT_EQ(displayText(analysis("a", "", "none .")), u"a\n\nnone .");
}

TEST(DisplayText, LeavesOutDiagnosticsOfTheBackend) {
    for (const char* diagnostic :
         {"Backend fallback: x", "Add AI provider API keys", "add OPENROUTER_API_KEY",
          "Vorq is signed in", "No highlighted text was available.",
          "Once the backend key is configured", "(offline fallback)", "Enable real AI"}) {
        EXPECT_EQ(displayText(analysis(diagnostic, "", diagnostic)), u"Vorq had nothing to say.")
            << diagnostic;
        EXPECT_EQ(displayText(analysis(diagnostic, "b")), u"b") << diagnostic;
    }
}

TEST(DisplayText, ListsSources) {
    EXPECT_EQ(displayText(analysis("a", "", "",
                                   {{.title = " T ", .url = " u "},
                                    {.title = {}, .url = "u2"},
                                    {.title = "t3", .url = " "},
                                    {.title = {}, .url = {}}})),
              u"a\n\n**Sources**\n• T — u\n• u2\n• t3");
}

TEST(DisplayText, SourcesWithoutTitleAndUrlAddNothing) {
    EXPECT_EQ(displayText(analysis("a", "", "", {{.title = {}, .url = {}}})), u"a");
    EXPECT_EQ(displayText(analysis("", "", "", {{.title = " ", .url = ""}})),
              u"Vorq had nothing to say.");
}

TEST(ScrubDiagnostic, GivesOtherTextTrimmed) {
    EXPECT_EQ(scrubDiagnostic(u"\n a b "), u"a b");
    EXPECT_EQ(scrubDiagnostic(u" \n"), u"");
}

TEST(VisibleCorrections, GivesTheTextAsItWasWritten) {
    EXPECT_EQ(visibleCorrections(u" Write  NONE. "), u"Write  NONE.");
}

TEST(AIAnalysisJson, NeedsAllButTheFollowUp) {
    EXPECT_TRUE(decodeAIAnalysis(
        R"({"summary":"s","feedback":"","corrections":"","sources":[{"title":null}],"followUp":null})"));
    for (
        const char* json : {
            R"({"feedback":"","corrections":"","sources":[]})",
            R"({"summary":"","corrections":"","sources":[]})",
            R"({"summary":"","feedback":"","sources":[]})",
            R"({"summary":"","feedback":"","corrections":""})",
            R"({"summary":null,"feedback":"","corrections":"","sources":[]})",
            R"({"summary":"","feedback":"","corrections":"","sources":[1]})",
            R"({"summary":"","feedback":"","corrections":"","sources":[],"followUp":{"labels":[]}})",
            "[]",
            "",
        })
        EXPECT_FALSE(decodeAIAnalysis(json)) << json;
}

TEST(AIAnalysisJson, WritesWhatItReads) {
    const QByteArray json =
        R"({"summary":"s","feedback":"f","corrections":"c","sources":[{"title":"t"},{"url":"u"}],)"
        R"("followUp":{"question":"q","labels":["a","b"]}})";
    const auto analysis = decodeAIAnalysis(json);
    ASSERT_TRUE(analysis);
    JsonWriter writer;
    encode(*analysis, writer);
    EXPECT_EQ(writer.take(), json);
}

} // namespace
} // namespace vorq
