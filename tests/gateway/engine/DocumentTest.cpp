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

TEST(DocumentTest, LeavesPicturesBadgesAndTagsOut) {
    EXPECT_EQ(
        withoutInlineMarkup("Sparrow ![build](https://b.svg) [![Docs](https://d.svg)](https://d)"),
        "Sparrow  ");
    EXPECT_EQ(withoutInlineMarkup("<p align=\"center\">one<br/>two</p> a <x and y> d"),
              "one two a <x and y> d");
    EXPECT_EQ(withoutInlineMarkup("See <https://x.org/y> or <me@x.org>."),
              "See https://x.org/y or me@x.org.");
}

TEST(DocumentTest, KeepsTheWordsOfReferencesCodeAndEntities) {
    EXPECT_EQ(withoutInlineMarkup("See [the guide][guide] now[^1]. Use ~~v1~~ v2 &amp; later."),
              "See the guide now. Use v1 v2 & later.");
    EXPECT_EQ(withoutInlineMarkup("Call `__init__(*args)` or ``a`b``; 2*3*4 is \\*24\\*."),
              "Call __init__(*args) or a`b; 2*3*4 is *24*.");
    EXPECT_EQ(withoutInlineMarkup("[**bold** `x`](y) `never closed"), "bold x never closed");
}

TEST(DocumentTest, LeavesSettingsCommentsAndLinkDefinitionsOut) {
    const Document document = readDocument("---\ntitle: Sparrow\ntags: [a]\n---\n\nA bird.\n\n"
                                           "<!-- hidden.\nReally. -->\n[guide]: https://x.org\n");
    EXPECT_THAT(texts(document), ElementsAre("A bird."));
}

TEST(DocumentTest, UnderlinedAndBoldLinesAreHeadings) {
    const Document document =
        readDocument("Installation\n-----\nRun it.\n\nUse\n===\n**Limits:**\nNone.\n> **Note**\n"
                     "> Mind this.\n\nTwo lines\nof text\n---\nEnd.");
    EXPECT_THAT(document.headings, ElementsAre("Installation", "Use", "Limits"));
    EXPECT_THAT(texts(document),
                ElementsAre("Run it.", "None.", "Mind this.", "Two lines of text", "End."));
}

TEST(DocumentTest, LeavesTablesOfAnyKindOut) {
    EXPECT_THAT(texts(readDocument("Before.\n\nName | Default\n-----|------\n`a` | 5\n\nAfter.")),
                ElementsAre("Before.", "After."));
    EXPECT_THAT(texts(readDocument("date,region,units\n2024-01-03,North,120\n2024-01-04,South,75")),
                ElementsAre());
    EXPECT_THAT(texts(readDocument("a\tb\tc\n1\t2\t3\n\nIn 1,000,000 years, and no sooner.")),
                ElementsAre("In 1,000,000 years, and no sooner."));
}

TEST(DocumentTest, LeavesSetInCodeOutButNotListParagraphs) {
    EXPECT_THAT(texts(readDocument("Before.\n\n    def f():\n        return 1\n\nAfter.\n\n"
                                   "- item\n\n    more of the item\n")),
                ElementsAre("Before.", "After.", "item", "more of the item"));
    EXPECT_THAT(texts(readDocument("    Long ago\n  a king lived.\n\n    He slept.")),
                ElementsAre("Long ago a king lived.", "He slept."));
}

TEST(DocumentTest, AMailIsReadWithoutItsHeadAndSignature) {
    const Document document = readDocument(
        "From: A <a@x.org>\nTo: B\nSubject: Re: AW: Launch date\nDate: Tue\n\nWe wait. "
        "Note: it rains.\n\n--\nAnna\n+49 30\n\nOn Mon, Tom wrote:\n> Shall we go?\n");
    EXPECT_THAT(document.headings, ElementsAre("Launch date"));
    EXPECT_THAT(texts(document), ElementsAre("We wait.", "Note: it rains.", "Shall we go?"));
}

TEST(DocumentTest, OfAProgramOnlyTheCommentsAreRead) {
    const Document document = readDocument(
        "import os\nclass Cache:\n    \"\"\"Forgets the oldest.\"\"\"\n\n    def f(self):\n"
        "        # Counts entries.\n        self.n = 1\n        \"\"\"\n        Two\n        "
        "lines.\n"
        "        \"\"\"\n        return self.n\n    x = f()\n    y = f()\n    z = f()\n");
    EXPECT_THAT(texts(document),
                ElementsAre("Forgets the oldest.", "Counts entries.", "Two lines."));
    EXPECT_TRUE(document.headings.empty());
}

} // namespace
} // namespace vorq::gateway::testing
