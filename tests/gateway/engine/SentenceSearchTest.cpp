// Which sentence of a text is quoted first, rule by rule. The texts are too small for luck.

#include "engine/embedded/search/SentenceSearch.h"
#include "engine/embedded/words/WordKin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using ::testing::Contains;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string firstFor(std::string_view text, std::string_view question) {
    const TextIndex index(readDocument(text));
    const std::vector<std::size_t> found = findSentences(index, question, 1);
    return found.empty() ? "" : std::string(index.text(found.front()));
}

TEST(SentenceSearchTest, APronounStandsForWhoWasNamedSentencesBefore) {
    EXPECT_EQ(firstFor("Ottilie Brandt painted sea birds for sixty years. She rarely saw another "
                       "human being. She came into the world at Harwick. The gulls of the whole "
                       "bay knew Ottilie and her yellow coat.",
                       "Where was Ottilie born?"),
              "She came into the world at Harwick.");
}

TEST(SentenceSearchTest, AnotherFormOfAVerbIsTheSameVerb) {
    EXPECT_EQ(firstFor("The brothers argued about the mill until May. They bought it in 1870. A "
                       "miller named Buy ran the mill.",
                       "When did the brothers buy it?"),
              "They bought it in 1870.");
}

TEST(SentenceSearchTest, ASynonymCountsForTheWord) {
    EXPECT_EQ(firstFor("The course ends in June. It begins on 3 March. The course room is on the "
                       "first floor.",
                       "When does the course start?"),
              "It begins on 3 March.");
}

TEST(SentenceSearchTest, AGermanVerbIsFoundWithoutItsPrefix) {
    EXPECT_EQ(firstFor("Im Mai strich Jette die Küche. Im November zog sie dort ein. Am Montag "
                       "darauf bellte der Hund.",
                       "Wann ist Jette eingezogen?"),
              "Im November zog sie dort ein.");
}

TEST(SentenceSearchTest, AGermanVerbIsFoundInAnotherFormWithoutItsPrefix) {
    EXPECT_EQ(firstFor("Am Nachmittag wird getanzt. Bringt bitte Kuchen mit, denn die Kasse ist "
                       "leer. Am Abend gibt es Suppe, denn die Köchin kommt.",
                       "Warum sollen wir etwas mitbringen?"),
              "Bringt bitte Kuchen mit, denn die Kasse ist leer.");
}

TEST(SentenceSearchTest, ANameOfTwoCharactersDoesNotCountThreeTimes) {
    EXPECT_EQ(firstFor("美和は駅前の店で熱いお茶を飲んだ。彼女は傘を借りて帰った。"
                       "美和が初めて店に入ったのは六月の夕方だった。"
                       "戻ってきたのは三週間後だった。店は閉まっていた。",
                       "美和はいつ戻りましたか？"),
              "戻ってきたのは三週間後だった。");
}

TEST(SentenceSearchTest, ANameOfTheQuestionDoesNotSayWho) {
    EXPECT_EQ(firstFor("Nadia Petrova was taught at home until she was ten. Nadia Petrova was "
                       "taught to paint by old Iwan Bunin. Later she left for the coast. Her "
                       "paintings hang in the town hall.",
                       "Who taught Nadia Petrova?"),
              "Nadia Petrova was taught to paint by old Iwan Bunin.");
}

TEST(SentenceSearchTest, WhatSomebodyDoesForALivingIsWhatSheIs) {
    EXPECT_THAT(firstFor("Bronwen walked along the cliffs with a heavy rucksack. Her name was "
                         "Bronwen Hale, and she was a vet in the hills above the town.",
                         "What does Bronwen do for a living?"),
                HasSubstr("vet"));
}

TEST(SentenceSearchTest, HowOftenIsAnsweredByTimesAndNotByAnyNumber) {
    EXPECT_EQ(firstFor("Die Frist beträgt 4 Wochen. Verlängern kann man sie zweimal.",
                       "Wie oft kann ich die Frist verlängern?"),
              "Verlängern kann man sie zweimal.");
}

TEST(SentenceSearchTest, WhatItCostsAsksForAnAmount) {
    EXPECT_EQ(expectationOf("What does it cost?", Language::English).kind, QuestionKind::Quantity);
    EXPECT_EQ(expectationOf("What does it say?", Language::English).kind, QuestionKind::Other);
}

TEST(WordKinTest, KnowsFormsAndSynonyms) {
    const auto& kin = kinOf(Language::English).of("buy");
    EXPECT_THAT(kin, Contains(Field(&WordKin::Relative::key, "bought")));
    EXPECT_THAT(kin, Contains(Field(&WordKin::Relative::key, "purchas")));
    EXPECT_THAT(kinOf(Language::English).of("gull"), IsEmpty());
}

TEST(WordKinTest, OnlyVerbsThatPartLoseTheirPrefix) {
    const WordKin& german = kinOf(Language::German);
    EXPECT_EQ(german.withoutPrefix("eingezog"), "zog");
    EXPECT_EQ(german.withoutPrefix("anruf"), "ruf");
    EXPECT_EQ(german.withoutPrefix("eis"), "eis");
    EXPECT_EQ(kinOf(Language::English).withoutPrefix("anruf"), "anruf");
}

} // namespace
} // namespace vorq::gateway::testing
