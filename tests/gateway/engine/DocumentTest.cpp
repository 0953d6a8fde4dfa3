#include "engine/embedded/document/Document.h"
#include "engine/embedded/document/SentenceSplitter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> texts(const Document& document) {
    std::vector<std::string> list;
    list.reserve(document.sentences.size());
    for (const Sentence& sentence : document.sentences)
        list.emplace_back(document.textOf(sentence));
    return list;
}

TEST(SentenceSplitterTest, SplitsAtFullStopsQuestionsAndExclamations) {
    EXPECT_THAT(splitSentences("One. Two? Three! Four"),
                ElementsAre("One.", "Two?", "Three!", "Four"));
}

TEST(SentenceSplitterTest, KeepsAbbreviationsInitialsAndNumbersTogether) {
    EXPECT_THAT(splitSentences("Dr. A. Smith et al. paid 3.5 dollars, e.g. for tea. He left."),
                ElementsAre("Dr. A. Smith et al. paid 3.5 dollars, e.g. for tea.", "He left."));
    EXPECT_THAT(splitSentences("Das gilt z.B. hier bzw. dort. Ende.", Language::German),
                ElementsAre("Das gilt z.B. hier bzw. dort.", "Ende."));
    EXPECT_THAT(splitSentences("See example.org/a.b for more. Then go."),
                ElementsAre("See example.org/a.b for more.", "Then go."));
}

TEST(SentenceSplitterTest, AYearEndsASentence) {
    EXPECT_THAT(splitSentences("It was 1999. The war ended."),
                ElementsAre("It was 1999.", "The war ended."));
}

TEST(SentenceSplitterTest, GermanOrdinalsAndDatesDoNotEnd) {
    EXPECT_THAT(splitSentences("Der Bau beginnt am 1. September in Au. Im 2. Quartal ruht er. Es "
                               "war 1999. Dann kam der 3. Bauabschnitt.",
                               Language::German),
                ElementsAre("Der Bau beginnt am 1. September in Au.", "Im 2. Quartal ruht er.",
                            "Es war 1999.", "Dann kam der 3. Bauabschnitt."));
}

TEST(SentenceSplitterTest, ADecimalEndsASentence) {
    EXPECT_THAT(
        splitSentences("The grade was 7.5. The team cheered. It cost £3.2m. Buses ran."),
        ElementsAre("The grade was 7.5.", "The team cheered.", "It cost £3.2m.", "Buses ran."));
}

TEST(SentenceSplitterTest, WhoSpeaksBelongsToTheSpeech) {
    EXPECT_THAT(splitSentences("\"Do you play?\" she asked. \"I do not!\" Then he left."),
                ElementsAre("\"Do you play?\" she asked.", "\"I do not!\"", "Then he left."));
}

TEST(SentenceSplitterTest, AWholeWordThatEndsLikeAnAbbreviationEndsASentence) {
    EXPECT_THAT(splitSentences("Geöffnet ist bis 19 Uhr. Montags bleibt das Haus geschlossen.",
                               Language::German),
                ElementsAre("Geöffnet ist bis 19 Uhr.", "Montags bleibt das Haus geschlossen."));
}

TEST(SentenceSplitterTest, AnAbbreviationEndsASentenceBeforeAWordThatOpensOne) {
    EXPECT_THAT(
        splitSentences("It ends at 9 p.m. Then we go. She lives in the U.S. She likes it."),
        ElementsAre("It ends at 9 p.m.", "Then we go.", "She lives in the U.S.", "She likes it."));
    EXPECT_THAT(
        splitSentences("The U.S. Senate met at 9 p.m. Eastern. Is it open? No. Go home."),
        ElementsAre("The U.S. Senate met at 9 p.m. Eastern.", "Is it open?", "No.", "Go home."));
}

TEST(SentenceSplitterTest, AWordThatEndsLikeAnAbbreviationEndsASentence) {
    EXPECT_THAT(splitSentences("Ne salez pas avant la fin de la cuisson. Laissez reposer.",
                               Language::French),
                ElementsAre("Ne salez pas avant la fin de la cuisson.", "Laissez reposer."));
}

TEST(SentenceSplitterTest, ClosingMarksBelongToTheSentence) {
    EXPECT_THAT(splitSentences("\"Go!\" (He went.) “Now?” Yes."),
                ElementsAre("\"Go!\"", "(He went.)", "“Now?”", "Yes."));
}

TEST(SentenceSplitterTest, SplitsChineseAndJapaneseWithoutBlanks) {
    EXPECT_THAT(
        splitSentences("今日は晴れです。明日は雨ですか？「はい。」終わり", Language::Japanese),
        ElementsAre("今日は晴れです。", "明日は雨ですか？", "「はい。」", "終わり"));
}

TEST(SentenceSplitterTest, SplitsOtherScripts) {
    EXPECT_THAT(splitSentences("Это первое. Это второе?", Language::Russian),
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

TEST(DocumentTest, MinutesAreReadLineByLine) {
    const Document document = readDocument("Garden club, October\nPresent: Joan, Arun\n\n"
                                           "1. Water\nThe tap leaks\nArun calls the plumber\n\n"
                                           "2. Money\nBalance: 12 pounds\nThe rent goes up");
    EXPECT_THAT(document.headings, ElementsAre("Garden club, October", "Water", "Money"));
    EXPECT_THAT(texts(document),
                ElementsAre("Present: Joan, Arun", "The tap leaks", "Arun calls the plumber",
                            "Balance: 12 pounds", "The rent goes up"));
}

TEST(DocumentTest, ARecipeIsReadLineByLine) {
    const Document document =
        readDocument("Pumpkin soup\n\nFor four people\nTime: 40 minutes\n\nIngredients\n"
                     "1.2 kg of pumpkin\n2 onions\nSalt and pepper\n");
    EXPECT_THAT(document.headings, ElementsAre("Pumpkin soup", "Ingredients"));
    EXPECT_THAT(texts(document), ElementsAre("For four people", "Time: 40 minutes",
                                             "1.2 kg of pumpkin", "2 onions", "Salt and pepper"));
}

TEST(DocumentTest, EachRemarkOfAChatStandsForItself) {
    const Document document = readDocument("[09:02] Priya: the server is down\n"
                                           "[09:04] Ben: that was me, i restarted it\n"
                                           "[09:05] Priya: ok. Back soon?\n");
    EXPECT_THAT(texts(document), ElementsAre("[09:02] Priya: the server is down",
                                             "[09:04] Ben: that was me, i restarted it",
                                             "[09:05] Priya: ok.", "Back soon?"));
    EXPECT_EQ(document.sentences[0].label, std::string("[09:02] Priya: ").size());
    EXPECT_TRUE(document.sentences[3].isQuestion);
}

TEST(DocumentTest, ShortNotesWithBlankLinesBetweenAreNoHeadings) {
    EXPECT_THAT(texts(readDocument("To do\n\nBuy milk\n\nCall Bob\n\nPay the rent\n")),
                ElementsAre("Buy milk", "Call Bob", "Pay the rent"));
    const Document document =
        readDocument("To do\n\nFor the house\n\nThe roof leaks and has to be mended.\n");
    EXPECT_THAT(document.headings, ElementsAre("To do", "For the house"));
}

TEST(DocumentTest, ProseBrokenAtAMarginStaysWhole) {
    EXPECT_THAT(
        texts(readDocument("The town council met on Monday evening in the old hall of the\n"
                           "Guild to speak about the new road. It will lead from the gate to\n"
                           "Market Square and cost two million.\n")),
        ElementsAre("The town council met on Monday evening in the old hall of the Guild to "
                    "speak about the new road.",
                    "It will lead from the gate to Market Square and cost two million."));
}

TEST(DocumentTest, GreetingsAndSignaturesAreNoSentences) {
    EXPECT_THAT(texts(readDocument("Dear tenants,\n\nThe lift stands still.\n\nKind regards,\n"
                                   "Dana Whitlock\nFern House\n+44 20 7946 0000\n")),
                ElementsAre("The lift stands still."));
    EXPECT_THAT(
        texts(readDocument("Liebe alle,\n\nwir treffen uns im Kloster am See. Bringt "
                           "die Noten bitte alle mit.\n\nViele Grüße\nJonas\n")),
        ElementsAre("wir treffen uns im Kloster am See.", "Bringt die Noten bitte alle mit."));
}

TEST(DocumentTest, AQuestionIsNoHeading) {
    const Document document = readDocument("# Bikes\n\n**How old must I be?**\nAt least ten.\n");
    EXPECT_THAT(document.headings, ElementsAre("Bikes"));
    EXPECT_THAT(texts(document), ElementsAre("How old must I be?", "At least ten."));
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
