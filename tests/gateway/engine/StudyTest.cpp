#include "doubles/gateway/Samples.h"
#include "engine/embedded/FlashcardMaker.h"
#include "engine/embedded/QuizMaker.h"
#include "support/Utf8.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace vorq::gateway::testing {
namespace {

using ::testing::Contains;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

void expectWellFormed(const Quiz& quiz) {
    EXPECT_GE(quiz.questions.size(), 4U);
    EXPECT_FALSE(quiz.primer.empty());
    std::set<std::string> prompts;
    for (const QuizQuestion& question : quiz.questions) {
        EXPECT_TRUE(prompts.insert(question.prompt).second) << question.prompt;
        EXPECT_THAT(question.prompt, HasSubstr("_____"));
        EXPECT_FALSE(question.explanation.empty());
        ASSERT_EQ(question.options.size(), 4U);
        EXPECT_EQ(std::set(question.options.begin(), question.options.end()).size(), 4U);
        EXPECT_THAT(question.options, Not(Contains("")));
        ASSERT_LT(question.answerIndex, 4U);
    }
}

TEST(QuizTest, HasWellFormedQuestionsOnTheText) {
    const Quiz quiz = makeQuiz({kPlantText, ""});
    expectWellFormed(quiz);
    std::set<std::size_t> places;
    for (const QuizQuestion& question : quiz.questions) {
        places.insert(question.answerIndex);
        std::string filled = question.prompt;
        // The explanation quotes the sentence, in which the right word closes the gap.
        EXPECT_THAT(question.explanation, HasSubstr("The text says"));
    }
    EXPECT_GE(places.size(), 3U);
}

TEST(QuizTest, TheFocusComesFirst) {
    const Quiz quiz = makeQuiz({kPlantText, "the Calvin cycle"});
    EXPECT_THAT(quiz.questions.front().explanation, HasSubstr("Calvin cycle"));
}

TEST(QuizTest, ThePrimerGivesNothingAway) {
    const Quiz quiz = makeQuiz({kPlantText, ""});
    for (const QuizQuestion& question : quiz.questions) {
        EXPECT_THAT(quiz.primer, Not(HasSubstr(question.explanation.substr(
                                     std::string("The text says: “").size(), 30))));
    }
}

TEST(QuizTest, AThinTextStillGivesFourQuestions) {
    expectWellFormed(makeQuiz({"Cats chase small grey mice.", ""}));
    expectWellFormed(makeQuiz({"One two three four.", ""}));
    expectWellFormed(makeQuiz({"In 1914 war came. In 1918 peace came.", ""}));
}

TEST(QuizTest, TextsOfOtherScriptsGiveQuestions) {
    expectWellFormed(makeQuiz({"Москва является столицей России. Волга впадает в Каспийское море. "
                               "Байкал считается самым глубоким озером.",
                               ""}));
    expectWellFormed(makeQuiz({"東京は日本の首都です。富士山は日本で一番高い山です。"
                               "コーヒーはブラジルで生産されます。",
                               ""}));
}

TEST(QuizTest, ATextWithTooFewWordsIsAnHonestError) {
    for (const char* text : {"Hello world.", "...", "a a a a a", "```\ncode\n```"}) {
        try {
            static_cast<void>(makeQuiz({text, ""}));
            FAIL() << text;
        } catch (const EngineError& error) {
            EXPECT_EQ(error.status, 422);
            EXPECT_THAT(error.what(), HasSubstr("too short"));
        }
    }
}

TEST(QuizTest, TheSameTextGivesTheSameQuiz) {
    EXPECT_EQ(makeQuiz({kPlantText, "light"}), makeQuiz({kPlantText, "light"}));
}

TEST(FlashcardTest, DefinitionsBecomeQuestions) {
    const std::vector<Flashcard> cards = makeFlashcards(kPlantText);
    EXPECT_THAT(cards, Contains(Field(&Flashcard::front, "What is Photosynthesis?")));
    EXPECT_THAT(cards, Contains(Field(&Flashcard::front, "What is Rubisco?")));
    EXPECT_LE(cards.size(), 12U);
}

TEST(FlashcardTest, TermsWithAColonBecomeCards) {
    EXPECT_THAT(makeFlashcards("- Osmosis: the movement of water through a membrane"),
                Contains(Flashcard{"Osmosis", "the movement of water through a membrane"}));
}

TEST(FlashcardTest, OtherSentencesBecomeGaps) {
    const std::vector<Flashcard> cards = makeFlashcards("Glaciers carve valleys.");
    ASSERT_EQ(cards.size(), 1U);
    EXPECT_THAT(cards[0].front, HasSubstr("_____"));
    EXPECT_THAT(cards[0].front, Not(HasSubstr(cards[0].back)));
}

TEST(FlashcardTest, EachGapAsksForAnotherWordAsItStandsThere) {
    const std::vector<Flashcard> cards = makeFlashcards(
        "The fire began in a bakery. The fire crossed the river. Strong winds fed the fires.");
    std::set<std::string> backs;
    for (const Flashcard& card : cards) {
        EXPECT_TRUE(backs.insert(card.back).second) << card.back;
    }
    EXPECT_EQ(cards.size(), 3U);
    EXPECT_EQ(backs.count("fire"), 1U);
}

TEST(FlashcardTest, ASubjectBeginsSmallInsideAQuestion) {
    EXPECT_THAT(makeFlashcards("Die Osmose ist ein Vorgang in Zellen."),
                Contains(Field(&Flashcard::front, "Was ist die Osmose?")));
}

TEST(FlashcardTest, ABareListItemIsNoGap) {
    EXPECT_THAT(makeFlashcards("- eggs\n- brown bread\n"), IsEmpty());
}

TEST(QuizTest, TheRightOptionClosesTheGapAsTheTextHasIt) {
    const Quiz quiz = makeQuiz({"Sparrow is a small task queue. Many queues wait. The old queues "
                                "were slow. Workers run jobs from disk.",
                                ""});
    for (const QuizQuestion& question : quiz.questions) {
        const std::string gap = question.prompt.substr(question.prompt.find("\n\n") + 2);
        std::string closed = gap;
        closed.replace(closed.find("_____"), 5, question.options[question.answerIndex]);
        EXPECT_THAT(lowered(question.explanation), HasSubstr(lowered(closed)));
    }
}

TEST(FlashcardTest, ASignatureIsNoCard) {
    for (const Flashcard& card :
         makeFlashcards("Dear all,\n\nThe boiler will be cleaned on Thursday.\n\nKind regards,\n"
                        "Dana Whitlock\nFern House Management\n+44 20 7946 0000\n")) {
        EXPECT_THAT(card.front + card.back, Not(HasSubstr("Fern House")));
        EXPECT_THAT(card.front + card.back, Not(HasSubstr("7946")));
    }
}

TEST(FlashcardTest, AGapAsksForANounBeforeAVerb) {
    const std::vector<Flashcard> cards =
        makeFlashcards("The captain said that the captain of the ferry went home.");
    ASSERT_EQ(cards.size(), 1U);
    EXPECT_EQ(cards[0].back, "captain");
}

TEST(FlashcardTest, AGapDoesNotTearANumeralFromItsWord) {
    const std::vector<Flashcard> cards =
        makeFlashcards("四月末の残高は二十四万五千円であった。街灯の修理に六万円を支出した。");
    ASSERT_FALSE(cards.empty());
    for (const Flashcard& card : cards)
        EXPECT_THAT(card.front, Not(HasSubstr("四_____")));
}

TEST(FlashcardTest, ATitleOfCourtesyIsNoAnswer) {
    const std::vector<Flashcard> cards =
        makeFlashcards("Adressez-vous à Mme Ferrand, la responsable de l'accueil. Demandez aussi "
                       "à Mme Ferrand les horaires de la piscine.");
    ASSERT_FALSE(cards.empty());
    for (const Flashcard& card : cards)
        EXPECT_NE(card.back, "Mme");
}

TEST(FlashcardTest, PronounsAreNotDefined) {
    for (const Flashcard& card : makeFlashcards("It is a long way. This is the end of roads.")) {
        EXPECT_THAT(card.front, HasSubstr("_____"));
    }
}

TEST(FlashcardTest, NothingToAskGivesNoCards) {
    EXPECT_THAT(makeFlashcards("... !!!"), IsEmpty());
}

} // namespace
} // namespace vorq::gateway::testing
