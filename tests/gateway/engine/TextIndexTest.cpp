#include "engine/embedded/TextIndex.h"
#include "gateway/support/Samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

std::vector<std::string> keysOf(std::string_view text) {
    std::vector<std::string> keys;
    for (const Word& word : wordsOf(text))
        keys.push_back(word.key);
    return keys;
}

std::string best(const TextIndex& index, std::string_view query) {
    const std::vector<std::size_t> found = index.matching(query, 3);
    return found.empty() ? "" : index.sentences()[found.front()].text;
}

TEST(WordsTest, FormsOfAWordShareAKey) {
    EXPECT_EQ(keysOf("store stores stored storing"), std::vector<std::string>(4, "stor"));
    EXPECT_EQ(keysOf("energy energies"), std::vector<std::string>(2, "energy"));
    EXPECT_EQ(keysOf("ÄPFEL Äpfel"), std::vector<std::string>(2, "äpfel"));
}

TEST(WordsTest, HyphensApostrophesAndDecimalsStayInside) {
    EXPECT_THAT(keysOf("by-product don't 3.14 a.b"),
                ElementsAre("by-product", "don't", "3.14", "a", "b"));
}

TEST(WordsTest, GrammarCarriesNoContent) {
    for (const Word& word : wordsOf("the and ist nicht pour avec 1999 ab")) {
        EXPECT_FALSE(word.isContent) << word.key;
    }
    EXPECT_THAT(wordsOf("enzyme"), Contains(Field(&Word::isContent, true)));
}

TEST(WordsTest, SplitsJapaneseByScript) {
    EXPECT_THAT(keysOf("東京でコーヒーを飲む"),
                ElementsAre("東京", "で", "コーヒー", "を", "飲", "む"));
}

TEST(TextIndexTest, FindsTheSentenceThatAnswers) {
    const TextIndex index(readDocument(kPlantText));
    EXPECT_THAT(best(index, "Who showed that light is essential?"), HasSubstr("Ingenhousz"));
    EXPECT_THAT(best(index, "What is rubisco?"), HasSubstr("Rubisco is"));
    EXPECT_THAT(best(index, "where are sugars stored"), HasSubstr("sugars"));
    EXPECT_THAT(best(index, "Why does the Calvin cycle take place in the stroma?"),
                HasSubstr("because"));
}

TEST(TextIndexTest, FindsNothingForWordsThatDoNotOccur) {
    const TextIndex index(readDocument(kPlantText));
    EXPECT_THAT(index.matching("medieval castles", 3), IsEmpty());
    EXPECT_THAT(index.matching("", 3), IsEmpty());
    EXPECT_THAT(index.matching("the of and", 3), IsEmpty());
}

TEST(TextIndexTest, KeySentencesAreInOrderAndNotTwiceTheSame) {
    const std::string repeated = "Volcanoes erupt molten rock from below. "
                                 "Volcanoes erupt molten rock from below. "
                                 "Glaciers carve deep valleys into mountains.";
    const TextIndex index(readDocument(repeated));
    EXPECT_THAT(index.keySentences(2), ElementsAre(0U, 2U));
}

TEST(TextIndexTest, AsksForNoMoreSentencesThanThereAre) {
    const TextIndex index(readDocument("Only one sentence here."));
    EXPECT_THAT(index.keySentences(7), ElementsAre(0U));
    const TextIndex none(readDocument(""));
    EXPECT_THAT(none.keySentences(7), IsEmpty());
    EXPECT_THAT(none.keyTerms(7), IsEmpty());
    EXPECT_THAT(none.matching("anything", 7), IsEmpty());
}

TEST(TextIndexTest, KeyTermsAreWhatTheTextIsAbout) {
    const TextIndex index(readDocument(kPlantText));
    const std::vector<std::string> terms = index.keyTerms(8);
    EXPECT_THAT(terms, Contains("carbon dioxide"));
    EXPECT_THAT(terms, Contains("photosynthesis"));
    EXPECT_THAT(terms, Not(Contains("dioxide")));
    EXPECT_LE(terms.size(), 8U);
}

TEST(TextIndexTest, KeyTermsOfAGermanText) {
    const TextIndex index(readDocument(
        "Die Donau ist der zweitlängste Fluss in Europa. Die Donau fließt durch zehn Länder. "
        "Kein anderer Fluss der Erde durchquert mehr Länder."));
    const std::vector<std::string> terms = index.keyTerms(3);
    EXPECT_THAT(terms, Contains("Donau"));
    EXPECT_THAT(terms, Not(Contains("die")));
}

TEST(TextIndexTest, KeyTermsLeaveMonthsFragmentsAndArticlesOut) {
    const TextIndex french(readDocument("L'Assemblée vote en juillet. En juillet, l'Assemblée est "
                                        "d'accord. La Bastille tombe en juillet."));
    EXPECT_EQ(french.keyTerms(2).front(), "Assemblée");
    const TextIndex wind(readDocument("A strong east wind blew. The strong east wind dropped."));
    EXPECT_EQ(wind.keyTerms(1), std::vector<std::string>{"strong east wind"});
}

TEST(TextIndexTest, AddressesAreNoWords) {
    const TextIndex index(readDocument("See https://sparrow.dev/docs or www.sparrow.dev now."));
    EXPECT_THAT(index.keyTerms(5), Not(Contains("sparrow")));
    EXPECT_THAT(index.keyTerms(5), Not(Contains("https")));
}

TEST(TextIndexTest, ChineseIsCutAtItsGrammar) {
    const TextIndex index(readDocument("人工智能是计算机的一个分支。深度学习使用神经网络。"
                                       "机器学习是人工智能的核心方法。"));
    EXPECT_EQ(index.keyTerms(1), std::vector<std::string>{"人工智能"});
    EXPECT_EQ(index.matching("什么是深度学习？", 1), std::vector<std::size_t>{1});
}

TEST(TextIndexTest, JapaneseCompoundsStayWhole) {
    const TextIndex index(readDocument("宝永大噴火は1707年です。宝永大噴火は有名です。"));
    EXPECT_EQ(index.keyTerms(1), std::vector<std::string>{"宝永大噴火"});
}

} // namespace
} // namespace vorq::gateway::testing
