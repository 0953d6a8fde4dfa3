#include "writing/words/WordAltsChoice.h"

#include "writing/words/SelectionWords.h"

#include <QStringList>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Twelve words, so two alternatives.
const QString twelve = u"The big dog saw the big cat and ran through some gardens."_s;

OfferedWordAlt offer(const QString& word, const QString& alternative, int occurrence = 0,
                     const QString& context = {}) {
    return {.word = word, .alternative = alternative, .occurrence = occurrence, .context = context};
}

// "big@4>large"
QStringList told(const QList<WritingWordAlt>& alts, const QString& selection) {
    QStringList words;
    for (const WritingWordAlt& alt : alts) {
        EXPECT_EQ(sliceOf(selection, *alt.utf16Range), alt.original);
        words +=
            alt.original + '@' + QString::number(alt.utf16Range->location) + '>' + alt.alternative;
    }
    return words;
}

QStringList choose(const std::vector<OfferedWordAlt>& offered, const QString& selection = twelve) {
    return told(chosenWordAlts(offered, selection), selection);
}

TEST(WordAltsChoiceTest, OneIsOfferedForEachSixWords) {
    EXPECT_EQ(wordAltsFor("Five words are too few."), 0);
    EXPECT_EQ(wordAltsFor("These six words are just enough."), 1);
    EXPECT_EQ(wordAltsFor(twelve), 2);
    EXPECT_EQ(wordAltsFor(u"word "_s.repeated(17)), 2);
    EXPECT_EQ(wordAltsFor(u"word "_s.repeated(5000)), mostWordAlts);
    EXPECT_EQ(wordAltsFor(u"- — … ! 🙂 ,"_s.repeated(20)), 0);
    EXPECT_THAT(choose({offer("few", "scarce")}, "Five words are too few."), IsEmpty());
}

TEST(WordAltsChoiceTest, WordsThatCarryTheMeaningComeFirst) {
    EXPECT_THAT(choose({offer("the", "that"), offer("some", "several"), offer("gardens", "parks"),
                        offer("through", "across")}),
                ElementsAre("through@36>across", "gardens@49>parks"));
}

TEST(WordAltsChoiceTest, TheOrderOfTheAnswerCountsAndThatOfTheTextIsShown) {
    const QString text =
        u"Rivers carry heavy silt toward distant oceans while farmers watch their fields slowly "
        "vanish under muddy water today."_s; // eighteen words
    EXPECT_THAT(choose({offer("vanish", "disappear"), offer("distant", "remote"),
                        offer("Rivers", "streams"), offer("muddy", "murky")},
                       text),
                ElementsAre("Rivers@0>Streams", "distant@31>remote", "vanish@86>disappear"));
}

TEST(WordAltsChoiceTest, TheyStandApartWhereThereAreEnough) {
    EXPECT_THAT(
        choose({offer("dog", "hound"), offer("big", "large", 1), offer("gardens", "parks")}),
        ElementsAre("dog@8>hound", "gardens@49>parks"));
    EXPECT_THAT(choose({offer("dog", "hound"), offer("saw", "spotted")}),
                ElementsAre("dog@8>hound", "saw@12>spotted"));
}

TEST(WordAltsChoiceTest, OneOfSeveralIsTheOneThatIsNamed) {
    EXPECT_THAT(choose({offer("big", "large", 2)}), ElementsAre("big@20>large"));
    EXPECT_THAT(choose({offer("big", "large", 0, "saw the big cat")}), ElementsAre("big@20>large"));
    EXPECT_THAT(choose({offer("big", "large", 7)}), ElementsAre("big@4>large"));
    EXPECT_THAT(choose({offer("big", "large", -1, "a horse")}), ElementsAre("big@4>large"));
    EXPECT_THAT(choose({offer("big", "large"), offer("big", "huge"), offer("big", "vast")}),
                ElementsAre("big@4>large", "big@20>huge"));
    EXPECT_THAT(choose({offer("big", "large", 2), offer("big", "huge", 2)}),
                ElementsAre("big@20>large"));
}

TEST(WordAltsChoiceTest, WhatIsNoWordOfTheSelectionIsPassedOver) {
    EXPECT_THAT(choose({offer("horse", "mare"), offer("do", "make"), offer("ardens", "x"),
                        offer("", "x"), offer("…", "x"), offer(" ", "x")}),
                IsEmpty());
    EXPECT_THAT(choose({offer("\"Dog\",", "hound")}), ElementsAre("dog@8>hound"));
}

TEST(WordAltsChoiceTest, AWordIsOnlyTakenAsAWhole) {
    EXPECT_THAT(choose({offer("old", "aged")}, u"They told us of cold gold in old boxes."_s),
                ElementsAre("old@29>aged"));
}

TEST(WordAltsChoiceTest, AnAlternativeIsAnotherSingleWord) {
    for (const char* alternative :
         {"big", "BIG", " Big. ", "very large", "large\nhuge", "", "…", "large/huge",
          "<b>large</b>", "12", "abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz", "la\tge",
          "la\u00a0rge"})
        EXPECT_EQ(fittedAlternative(QString::fromUtf8(alternative), u"big"), QString())
            << alternative;
    EXPECT_EQ(fittedAlternative(u"\"large\".", u"big"), "large");
    EXPECT_EQ(fittedAlternative(u"well-fed", u"big"), "well-fed");
}

TEST(WordAltsChoiceTest, CapitalsAndPossessivesAreKept) {
    EXPECT_EQ(fittedAlternative(u"large", u"Big"), "Large");
    EXPECT_EQ(fittedAlternative(u"large", u"BIG"), "LARGE");
    EXPECT_EQ(fittedAlternative(u"Large", u"big"), "large");
    EXPECT_EQ(fittedAlternative(u"iPhone", u"phone"), "iPhone");
    EXPECT_EQ(fittedAlternative(u"one", u"I"), "One");
    EXPECT_EQ(fittedAlternative(u"hound", u"dog’s"), "hound’s");
    EXPECT_EQ(fittedAlternative(u"hound's", u"dog's"), "hound's");
    EXPECT_EQ(fittedAlternative(u"élan", u"Verve"), "Élan");
    EXPECT_EQ(fittedAlternative(u"größe", u"WEITE"), "GRÖSSE");
}

TEST(WordAltsChoiceTest, TheArticleBeforeItStillFits) {
    const QString text = u"It was a big and an old house near the sea."_s;
    EXPECT_THAT(choose({offer("big", "enormous")}, text), IsEmpty());
    EXPECT_THAT(choose({offer("old", "weathered")}, text), IsEmpty());
    EXPECT_THAT(choose({offer("big", "large")}, text), ElementsAre("big@9>large"));
    EXPECT_THAT(choose({offer("old", "ancient")}, text), ElementsAre("old@20>ancient"));
}

TEST(WordAltsChoiceTest, RangesCountUtf16Units) {
    const QString text = u"🙂🙂 Zażółć gęślą jaźń, said the tall man twice."_s;
    EXPECT_THAT(choose({offer("tall", "lanky")}, text), ElementsAre("tall@33>lanky"));
}

TEST(WordAltsChoiceTest, APathOfAHundredThousandWordsIsNoTrouble) {
    const QString text = u"the big dog saw it and "_s.repeated(20'000);
    std::vector<OfferedWordAlt> offered(mostOfferedWordAlts, offer("big", "large"));
    EXPECT_THAT(choose(offered, text), SizeIs(mostWordAlts));
}

} // namespace
} // namespace vorq
