#include "engine/embedded/Document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> texts(const Document& document) {
    std::vector<std::string> list;
    for (const Sentence& sentence : document.sentences)
        list.push_back(sentence.text);
    return list;
}

TEST(SentenceSplitterTest, SplitsAtFullStopsQuestionsAndExclamations) {
    EXPECT_THAT(splitSentences("One. Two? Three! Four"),
                ElementsAre("One.", "Two?", "Three!", "Four"));
}

TEST(SentenceSplitterTest, KeepsAbbreviationsInitialsAndNumbersTogether) {
    EXPECT_THAT(splitSentences("Dr. A. Smith et al. paid 3.5 dollars, e.g. for tea. He left."),
                ElementsAre("Dr. A. Smith et al. paid 3.5 dollars, e.g. for tea.", "He left."));
    EXPECT_THAT(splitSentences("Das gilt z.B. hier bzw. dort. Ende."),
                ElementsAre("Das gilt z.B. hier bzw. dort.", "Ende."));
    EXPECT_THAT(splitSentences("See example.org/a.b for more. Then go."),
                ElementsAre("See example.org/a.b for more.", "Then go."));
}

TEST(SentenceSplitterTest, AYearEndsASentence) {
    EXPECT_THAT(splitSentences("It was 1999. The war ended."),
                ElementsAre("It was 1999.", "The war ended."));
}

TEST(SentenceSplitterTest, ClosingMarksBelongToTheSentence) {
    EXPECT_THAT(splitSentences("\"Go!\" (He went.) “Now?” Yes."),
                ElementsAre("\"Go!\"", "(He went.)", "“Now?”", "Yes."));
}

TEST(SentenceSplitterTest, SplitsChineseAndJapaneseWithoutBlanks) {
    EXPECT_THAT(splitSentences("今日は晴れです。明日は雨ですか？「はい。」終わり"),
                ElementsAre("今日は晴れです。", "明日は雨ですか？", "「はい。」", "終わり"));
}

TEST(SentenceSplitterTest, SplitsOtherScripts) {
    EXPECT_THAT(splitSentences("Это первое. Это второе?"),
                ElementsAre("Это первое.", "Это второе?"));
    EXPECT_THAT(splitSentences("यह पहला है। यह दूसरा है।"), ElementsAre("यह पहला है।", "यह दूसरा है।"));
}

TEST(SentenceSplitterTest, AnEllipsisBeforeSmallLettersDoesNotEnd) {
    EXPECT_THAT(splitSentences("Wait... for it. Now."), ElementsAre("Wait... for it.", "Now."));
}

TEST(SentenceSplitterTest, CutsEndlessSentencesAtBlanks) {
    std::string words;
    for (int i = 0; i < 1000; ++i)
        words += "word ";
    for (const std::string& piece : splitSentences(words)) {
        EXPECT_LE(piece.size(), 1000U);
        EXPECT_TRUE(piece.starts_with("word") && piece.ends_with("word"));
    }
}

TEST(DocumentTest, JoinsWrappedLinesAndSeparatesParagraphs) {
    const Document document = readDocument("A line that\ngoes on. Next.\n\nOther paragraph");
    EXPECT_THAT(texts(document), ElementsAre("A line that goes on.", "Next.", "Other paragraph"));
    EXPECT_TRUE(document.sentences[0].startsBlock);
    EXPECT_FALSE(document.sentences[1].startsBlock);
    EXPECT_TRUE(document.sentences[2].startsBlock);
}

TEST(DocumentTest, ReadsMarkdownStructure) {
    const Document document = readDocument("# Title\nText here.\n* one item\n2. second item\n"
                                           "> quoted words\n\n---\n| a | table |\n");
    EXPECT_THAT(document.headings, ElementsAre("Title"));
    EXPECT_THAT(texts(document), ElementsAre("Text here.", "one item", "second item quoted words"));
}

TEST(DocumentTest, LeavesCodeOut) {
    EXPECT_THAT(texts(readDocument("Before.\n```cpp\nint main() {}\n```\nAfter.")),
                ElementsAre("Before.", "After."));
    EXPECT_THAT(texts(readDocument("Before.\n~~~\nnever closed")), ElementsAre("Before."));
}

TEST(DocumentTest, LeavesAttachmentMarkersAndWordlessLinesOut) {
    EXPECT_THAT(texts(readDocument("--- Attached file: a.txt ---\nContent.\n\n!!! ??? ...")),
                ElementsAre("Content."));
}

TEST(DocumentTest, TakesInlineMarkupOff) {
    EXPECT_EQ(withoutInlineMarkup("**bold** and _soft_ `code` [label](http://x/y) snake_case"),
              "bold and soft code label snake_case");
    EXPECT_EQ(withoutInlineMarkup("2 * 3 [not a link] a[0]"), "2 * 3 [not a link] a[0]");
}

} // namespace
} // namespace vorq::gateway::testing
