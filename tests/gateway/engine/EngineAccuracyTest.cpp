// The texts of benchmarks/engine-eval: what the engine makes of them must not become worse unseen.

#include "engine-eval/EngineAnswer.h"
#include "engine-eval/EvalText.h"
#include "engine/embedded/FlashcardMaker.h"
#include "engine/embedded/QuizMaker.h"
#include "engine/embedded/ReplyDraft.h"
#include "engine/embedded/words/Language.h"
#include "engine/embedded/words/LanguageData.h"
#include "support/Utf8.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <utility>

namespace vorq::gateway::testing {
namespace {

using evaluation::EvalText;
using ::testing::HasSubstr;
using ::testing::Not;

const std::vector<EvalText>& evalTexts() {
    static const std::vector<EvalText> texts = evaluation::readEvalTexts(VORQ_EVAL_TEXTS);
    return texts;
}

Language languageNamed(const std::string& letters) {
    static const std::map<std::string, Language> names{
        {"en", Language::English}, {"de", Language::German},     {"fr", Language::French},
        {"es", Language::Spanish}, {"pt", Language::Portuguese}, {"ar", Language::Arabic},
        {"zh", Language::Chinese}, {"ja", Language::Japanese}};
    return names.at(letters);
}

TEST(EngineAccuracyTest, TheRightSentenceMostlyComesFirst) {
    std::map<std::string, std::pair<int, int>> tally;
    for (const EvalText& text : evalTexts()) {
        for (const evaluation::EvalQuestion& question : text.questions) {
            auto& [right, all] = tally[text.language];
            if (isRight(question, evaluation::engineAnswer(text.text, question.question))) ++right;
            ++all;
        }
    }
    EXPECT_EQ(tally.size(), 8U);
    for (const auto& [language, counts] : tally) {
        const int least = language == "en" ? 85 : 80; // percent
        EXPECT_GE(counts.first * 100, counts.second * least) << language;
    }
}

TEST(EngineAccuracyTest, SoItDoesInTextsThatTheEngineWasNotSetBy) {
    std::map<std::string, std::pair<int, int>> tally;
    for (const EvalText& text : evalTexts()) {
        if (text.part == "tuned" || text.part == "fresh") continue;
        for (const evaluation::EvalQuestion& question : text.questions) {
            auto& [right, all] = tally[text.language];
            if (isRight(question, evaluation::engineAnswer(text.text, question.question))) ++right;
            ++all;
        }
    }
    EXPECT_EQ(tally.size(), 8U);
    for (const auto& [language, counts] : tally)
        EXPECT_GE(counts.first * 100, counts.second * 80) << language;
}

TEST(EngineAccuracyTest, TheLanguageOfATextIsTold) {
    for (const EvalText& text : evalTexts()) {
        EXPECT_EQ(languageOf(text.text), languageNamed(text.language)) << text.name;
    }
}

TEST(EngineAccuracyTest, AnAnalysisSpeaksTheLanguageOfItsText) {
    for (const EvalText& text : evalTexts()) {
        const Phrases& phrases = dataOf(languageNamed(text.language)).phrases;
        const ReplyDraft draft = draftAnalysis(text.text);
        EXPECT_THAT(draft.text(), HasSubstr(phrases.ownWordsNote)) << text.name;
        ASSERT_TRUE(draft.followUp.has_value());
        EXPECT_EQ(draft.followUp->question, phrases.lookUp) << text.name;
        EXPECT_EQ(draft.followUp->labels.back(), phrases.summarize) << text.name;
    }
}

/// A label is sent as a prompt when it is clicked.
TEST(EngineAccuracyTest, EachLabelGetsWhatItPromises) {
    for (const EvalText& text : evalTexts()) {
        const Phrases& phrases = dataOf(languageNamed(text.language)).phrases;
        for (const std::string& label : draftAnalysis(text.text).followUp->labels) {
            PromptRequest request;
            request.prompt = label;
            request.selectedText = text.text;
            const std::string reply = draftReply(request).text();
            if (label == phrases.summarize) {
                EXPECT_EQ(reply.find(phrases.keySentences), 0U) << text.name << ": " << reply;
                std::size_t bullets = 0;
                for (std::size_t at = reply.find("\n- "); at != std::string::npos;
                     at = reply.find("\n- ", at + 1)) {
                    ++bullets;
                }
                EXPECT_EQ(bullets, 3U) << text.name;
            } else {
                EXPECT_EQ(reply.find(phrases.textSays), 0U) << text.name << ": " << label;
            }
        }
    }
}

TEST(EngineAccuracyTest, TheHeadlineIsNotAKeySentenceToo) {
    for (const EvalText& text : evalTexts()) {
        const std::string reply = draftAnalysis(text.text).text();
        const std::string title = reply.substr(3, reply.find('\n') - 3);
        EXPECT_THAT(reply, Not(HasSubstr("\n- " + title + "\n"))) << text.name;
    }
}

TEST(EngineAccuracyTest, CardsComeNeitherFromSignaturesNorFromQuestions) {
    constexpr std::array signatures{"Fern House",  "Quay Street", "+44 20", "Jefa de ventas",
                                    "976 555 014", "Jonas",       "Sílvia", "総務　小川"};
    for (const EvalText& text : evalTexts()) {
        for (const Flashcard& card : makeFlashcards(text.text)) {
            for (const char* signature : signatures)
                EXPECT_THAT(card.front + card.back, Not(HasSubstr(signature))) << text.name;
            const bool asksWithGap = card.front.contains("_____") &&
                                     (card.front.ends_with('?') || card.front.ends_with("？"));
            EXPECT_FALSE(asksWithGap) << text.name << ": " << card.front;
        }
    }
}

TEST(EngineAccuracyTest, QuizOptionsAreOfOneSort) {
    const auto isNumber = [](const std::string& word) { return word[0] >= '0' && word[0] <= '9'; };
    for (const EvalText& text : evalTexts()) {
        for (const QuizQuestion& question : makeQuiz({.text = text.text, .focus = {}}).questions) {
            const bool right = isNumber(question.options[question.answerIndex]);
            for (const std::string& option : question.options) {
                EXPECT_EQ(isNumber(option), right) << text.name << ": " << question.prompt;
                EXPECT_THAT(option, Not(HasSubstr("'s"))) << text.name;
            }
        }
    }
}

} // namespace
} // namespace vorq::gateway::testing
