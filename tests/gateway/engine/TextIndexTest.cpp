#include "doubles/gateway/Samples.h"
#include "engine/embedded/search/KeyTerms.h"
#include "engine/embedded/search/SentenceSearch.h"

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

std::vector<std::string> keysOf(std::string_view text, Language language = Language::English) {
    std::vector<std::string> keys;
    for (const FoundWord& word : wordsOf(text, language))
        keys.push_back(word.key);
    return keys;
}

std::string best(const TextIndex& index, std::string_view query) {
    const std::vector<std::size_t> found = findSentences(index, query, 3);
    return found.empty() ? "" : std::string(index.text(found.front()));
}

std::vector<std::string> termsOf(const TextIndex& index, std::size_t count) {
    std::vector<std::string> terms;
    for (const KeyTerm& term : keyTerms(index, WordClasses(index), count))
        terms.push_back(term.text);
    return terms;
}

TEST(WordsTest, FormsOfAWordShareAKey) {
    EXPECT_EQ(keysOf("store stores stored storing"), std::vector<std::string>(4, "store"));
    EXPECT_EQ(keysOf("energy energies"), std::vector<std::string>(2, "energi"));
    EXPECT_EQ(keysOf("ÄPFEL Äpfel"), std::vector<std::string>(2, "äpfel"));
}

TEST(WordsTest, HyphensApostrophesAndDecimalsStayInside) {
    EXPECT_THAT(keysOf("by-product don't 3.14 a.b"),
                ElementsAre("by-product", "don't", "3.14", "a", "b"));
}

TEST(WordsTest, GrammarCarriesNoContent) {
    const std::pair<Language, const char*> samples[] = {{Language::English, "the and 1999 x"},
                                                        {Language::German, "ist nicht 1999"},
                                                        {Language::French, "pour avec l' d'"},
                                                        {Language::Japanese, "です 何"}};
    for (const auto& [language, text] : samples) {
        for (const FoundWord& word : wordsOf(text, language))
            EXPECT_FALSE(word.isContent) << word.key;
    }
    EXPECT_THAT(wordsOf("enzyme"), Contains(Field(&FoundWord::isContent, true)));
}

TEST(WordsTest, GrammarOfOneLanguageIsContentOfAnother) {
    for (const FoundWord& word : wordsOf("war son sea door hat van man die plus met"))
        EXPECT_TRUE(word.isContent) << word.key;
}

TEST(WordsTest, CutsJapaneseByDictionary) {
    EXPECT_THAT(keysOf("東京でコーヒーを飲む", Language::Japanese),
                ElementsAre("東京", "で", "コーヒー", "を", "飲む"));
}

TEST(WordsTest, ALongChineseTextIsCutLikeItsBeginning) {
    constexpr std::string_view sentence = "深度学习使用神经网络，机器学习是人工智能的核心方法。";
    std::string text;
    while (text.size() < 400'000)
        text += sentence;
    const std::vector<std::string> once = keysOf(sentence, Language::Chinese);
    const std::vector<std::string> often = keysOf(text, Language::Chinese);
    ASSERT_GT(once.size(), 4U);
    EXPECT_EQ(std::vector(often.end() - static_cast<std::ptrdiff_t>(once.size()), often.end()),
              once);
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
    EXPECT_THAT(findSentences(index, "medieval castles", 3), IsEmpty());
    EXPECT_THAT(findSentences(index, "", 3), IsEmpty());
    EXPECT_THAT(findSentences(index, "the of and", 3), IsEmpty());
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
    EXPECT_THAT(termsOf(none, 7), IsEmpty());
    EXPECT_THAT(findSentences(none, "anything", 7), IsEmpty());
}

TEST(TextIndexTest, KeyTermsAreWhatTheTextIsAbout) {
    const TextIndex index(readDocument(kPlantText));
    const std::vector<std::string> terms = termsOf(index, 8);
    EXPECT_THAT(terms, Contains("carbon dioxide"));
    EXPECT_THAT(terms, Contains("photosynthesis"));
    EXPECT_THAT(terms, Not(Contains("dioxide")));
    EXPECT_LE(terms.size(), 8U);
}

TEST(TextIndexTest, KeyTermsOfAGermanText) {
    const TextIndex index(readDocument(
        "Die Donau ist der zweitlängste Fluss in Europa. Die Donau fließt durch zehn Länder. "
        "Kein anderer Fluss der Erde durchquert mehr Länder."));
    const std::vector<std::string> terms = termsOf(index, 3);
    EXPECT_THAT(terms, Contains("Donau"));
    EXPECT_THAT(terms, Not(Contains("die")));
}

TEST(TextIndexTest, KeyTermsLeaveMonthsFragmentsAndArticlesOut) {
    const TextIndex french(readDocument("L'Assemblée vote en juillet. En juillet, l'Assemblée est "
                                        "d'accord. La Bastille tombe en juillet."));
    EXPECT_EQ(termsOf(french, 2).front(), "Assemblée");
    const TextIndex wind(readDocument("A strong east wind blew. The strong east wind dropped."));
    EXPECT_EQ(termsOf(wind, 1), std::vector<std::string>{"strong east wind"});
}

TEST(TextIndexTest, VerbsAndUnitsAreNoTerms) {
    const TextIndex index(readDocument(
        "Quill said inflation rose by two percent. Quill said the percent was no surprise. The "
        "bank said that inflation would fall, and Quill said so too."));
    const std::vector<std::string> terms = termsOf(index, 8);
    EXPECT_THAT(terms, Contains("Quill"));
    EXPECT_THAT(terms, Not(Contains("said")));
    EXPECT_THAT(terms, Not(Contains("percent")));
}

TEST(TextIndexTest, AddressesAreNoWords) {
    const TextIndex index(readDocument("See https://sparrow.dev/docs or www.sparrow.dev now."));
    EXPECT_THAT(termsOf(index, 5), Not(Contains("sparrow")));
    EXPECT_THAT(termsOf(index, 5), Not(Contains("https")));
}

TEST(TextIndexTest, ChineseIsCutAtItsGrammar) {
    const TextIndex index(readDocument("人工智能是计算机的一个分支。深度学习使用神经网络。"
                                       "机器学习是人工智能的核心方法。"));
    EXPECT_EQ(termsOf(index, 1), std::vector<std::string>{"人工智能"});
    EXPECT_EQ(findSentences(index, "什么是深度学习？", 1), std::vector<std::size_t>{1});
}

TEST(TextIndexTest, JapaneseCompoundsStayWhole) {
    const TextIndex index(readDocument("宝永大噴火は1707年です。宝永大噴火は有名です。"));
    EXPECT_EQ(termsOf(index, 1), std::vector<std::string>{"宝永大噴火"});
}

} // namespace
} // namespace vorq::gateway::testing
