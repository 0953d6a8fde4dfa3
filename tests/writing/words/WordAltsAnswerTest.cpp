#include "writing/words/WordAltsAnswer.h"

#include <QStringList>

#include <gmock/gmock.h>

#include <random>

using namespace Qt::StringLiterals;

namespace vorq {

void PrintTo(const OfferedWordAlt& alt, std::ostream* out) {
    *out << alt.word.toStdString() << ">" << alt.alternative.toStdString() << "#" << alt.occurrence
         << " " << alt.context.toStdString();
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

OfferedWordAlt offeredAs(const QString& word, const QString& alternative, int occurrence = 0) {
    return {.word = word, .alternative = alternative, .occurrence = occurrence, .context = {}};
}

TEST(WordAltsAnswerTest, AListOfObjectsIsRead) {
    EXPECT_THAT(readWordAlts(uR"([{"word": "big", "occurrence": 2, "alternative": "large"},
                                  {"word": "old", "alternative": "aged"}])"),
                ElementsAre(offeredAs("big", "large", 2), offeredAs("old", "aged")));
}

TEST(WordAltsAnswerTest, FencesAndTalkAreNotRead) {
    EXPECT_THAT(readWordAlts(u"Sure! Here's what I'd change, \"gently\":\n```json\n"
                             "[{\"word\":\"big\",\"alternative\":\"large\"}]\n```\nIt's all."),
                ElementsAre(offeredAs("big", "large")));
}

TEST(WordAltsAnswerTest, StrayAndMissingCommasDoNotMatter) {
    EXPECT_THAT(readWordAlts(uR"([,{"word":"big",,"alternative":"large",} {"word" "old":
                                  "word":"old" "alternative":"aged"},])"),
                testing::Contains(offeredAs("big", "large")));
    EXPECT_THAT(readWordAlts(uR"([{"word":"big","alternative":"large"}
                                  {"word":"old","alternative":"aged"}])"),
                SizeIs(2));
}

TEST(WordAltsAnswerTest, WhatBreaksOffIsReadAsFarAsItGoes) {
    EXPECT_THAT(readWordAlts(uR"([{"word":"big","alternative":"large"},{"word":"old","alt)"),
                ElementsAre(offeredAs("big", "large")));
}

TEST(WordAltsAnswerTest, OtherKeysAndListsOfAlternativesAreRead) {
    EXPECT_THAT(
        readWordAlts(uR"({"alternatives":[{"Original":"big","suggestions":["large","huge"]}]})"),
        ElementsAre(offeredAs("big", "large")));
    EXPECT_THAT(readWordAlts(uR"({from: 'big', to: 'large', nth: 3})"),
                ElementsAre(offeredAs("big", "large", 3)));
    EXPECT_THAT(readWordAlts(uR"({"big": "large", "old": "aged"})"),
                ElementsAre(offeredAs("big", "large"), offeredAs("old", "aged")));
}

TEST(WordAltsAnswerTest, TheTextAroundAWordIsRead) {
    const auto read =
        readWordAlts(uR"([{"word":"big","context":"a \"big\" dog","alternative":"l\u0061rge"}])");
    ASSERT_THAT(read, SizeIs(1));
    EXPECT_EQ(read[0].context, u"a \"big\" dog");
    EXPECT_EQ(read[0].alternative, u"large");
}

TEST(WordAltsAnswerTest, AnAnswerEscapedTwiceIsRead) {
    EXPECT_THAT(readWordAlts(uR"([{\"word\": \"big\", \"alternative\": \"large\"}])"),
                ElementsAre(offeredAs("big", "large")));
}

TEST(WordAltsAnswerTest, NothingIsReadOfWhatIsNoList) {
    for (const QString& answer :
         {u""_s, u"[]"_s, u"{}"_s, u"None of the words."_s, u"[\"big\", \"large\"]"_s, u"\"\"\""_s,
          u"[{\"word\":\"big\"}]"_s, u"[{\"alternative\":\"large\"}]"_s, u"]]}}"_s, u"{{{{[[[["_s,
          u"[{\"word\":null}"_s, u"\\"_s, u"[\"\\"_s, u"[\"\\u12"_s})
        EXPECT_THAT(readWordAlts(answer), IsEmpty()) << answer.toStdString();
}

TEST(WordAltsAnswerTest, AnAnswerOfAMegabyteIsNone) {
    const QString one = uR"({"word":"big","alternative":"large"},)"_s;
    EXPECT_THAT(readWordAlts(u'[' + one.repeated(1'000'000 / one.size())), IsEmpty());
    EXPECT_THAT(readWordAlts(u'[' + one.repeated(4000)), SizeIs(mostOfferedWordAlts));
    EXPECT_THAT(readWordAlts(QString(150'000, u'[')), IsEmpty());
}

TEST(WordAltsAnswerTest, AnyPiecesInAnyOrderAreSurvived) {
    const QStringList pieces{"{",
                             "}",
                             "[",
                             "]",
                             ":",
                             ",",
                             "\"",
                             "\\",
                             "\"word\":",
                             "\"big\"",
                             "\"alternative\":",
                             "\"large\"",
                             "'",
                             "“",
                             "null",
                             "1",
                             "\\u",
                             "\n"};
    std::minstd_rand random(7);
    for (int round = 0; round < 3000; ++round) {
        QString answer;
        for (auto left = random() % 40; left > 0; --left)
            answer += pieces[static_cast<qsizetype>(random() % 18)];
        for (const OfferedWordAlt& alt : readWordAlts(answer))
            EXPECT_FALSE(alt.word.isEmpty() && alt.alternative.isEmpty()) << answer.toStdString();
    }
}

} // namespace
} // namespace vorq
