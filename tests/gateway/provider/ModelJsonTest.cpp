#include "provider/ModelJson.h"

#include "doubles/gateway/ProviderChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// A chain whose model writes `reply`.
ProviderChain writing(const std::string& reply, const char* finish = "stop") {
    return ProviderChain([reply, finish](ProviderPeer& peer) {
        peer.answer(200, json({{"choices",
                                {{{"message", {{"content", reply}}}, {"finish_reason", finish}}}}})
                             .dump());
    });
}

/// The options that a quiz of these questions, asked of the gateway, marks as right; those of
/// questions that it dropped are missing.
std::vector<std::string> rightOptions(const std::vector<std::string>& questions) {
    std::string list;
    for (const std::string& question : questions)
        list += (list.empty() ? "" : ", ") + question;
    ProviderChain chain = writing("{\"primer\": \"p\", \"questions\": [" + list + "]}");
    const json body = chain.gateway->post("/ai/quiz", {{"text", "t"}}).body;
    std::vector<std::string> right;
    for (const json& entry : body.value("questions", json::array())) {
        right.push_back(entry.at("options").at(entry.at("answerIndex").get<std::size_t>()));
    }
    return right;
}

std::optional<std::string> rightOption(const std::string& question) {
    const std::vector<std::string> right = rightOptions({question});
    return right.empty() ? std::nullopt : std::optional(right.front());
}

std::string questionWith(const std::string& options, const std::string& answer) {
    return R"({"prompt": "q", "options": )" + options + R"(, )" + answer + "}";
}

TEST(ModelJsonTest, ADroppedOptionDoesNotMoveTheAnswer) {
    EXPECT_EQ(rightOption(questionWith(R"(["", "wrong", "right"])", R"("answerIndex": 2)")),
              "right");
    EXPECT_EQ(rightOption(
                  questionWith(R"([null, "wrong", " ", "right", "other"])", R"("answerIndex": 3)")),
              "right");
    EXPECT_EQ(rightOption(questionWith(R"(["", "wrong", "right"])", R"("answer": "C")")), "right");
    EXPECT_EQ(rightOption(questionWith(R"(["", "wrong", "other"])", R"("answerIndex": 0)")),
              std::nullopt);
}

TEST(ModelJsonTest, OptionsMayBeOtherThanStrings) {
    EXPECT_EQ(rightOption(questionWith("[3, 4.5, true]", R"("answerIndex": 1)")), "4.5");
    EXPECT_EQ(rightOption(questionWith("[3, 4, 5]", R"("answer": 4)")), "4");
    EXPECT_EQ(rightOption(questionWith("[3, 4, 5]", R"("answer": "5")")), "5");
    EXPECT_EQ(
        rightOption(questionWith(R"([{"text": "x"}, {"option": "y"}, {"label": "C", "text": "z"}])",
                                 R"("answerIndex": 2)")),
        "z");
    EXPECT_EQ(rightOption(questionWith(R"({"A": "x", "B": "y", "C": "z"})", R"("answer": "B")")),
              "y");
}

TEST(ModelJsonTest, LabelsInFrontOfOptionsAreNoPartOfThem) {
    EXPECT_EQ(rightOption(questionWith(R"(["A) x", "B) y", "C) z"])", R"("answer": "B")")), "y");
    EXPECT_EQ(rightOption(questionWith(R"(["(a) x", "(b) y"])", R"("answer": "(b) y")")), "y");
    EXPECT_EQ(rightOption(questionWith(R"(["1. x", "2. y"])", R"("answerIndex": 1)")), "y");
    EXPECT_EQ(rightOption(questionWith(R"(["A. Lincoln", "B. Franklin", "T. Jefferson"])",
                                       R"("answerIndex": 0)")),
              "A. Lincoln");
}

TEST(ModelJsonTest, AnAnswerMayBeNamedInManyWays) {
    const std::vector<std::string> answers = {
        R"("answerIndex": 1)",     R"("answerIndex": 1.0)",   R"("answerIndex": "1")",
        R"("answer_index": 1)",    R"("correctIndex": 1)",    R"("correct_answer": "B")",
        R"("correctAnswer": "y")", R"("answerIndex": "b")",   R"("answer": "b")",
        R"~("answer": "B)")~",     R"("answer": "B.")",       R"~("answer": "(b)")~",
        R"("answer": "B) y")",     R"("answer": "Option B")", R"("answer": "Y")",
        R"("answer": " y ")",      R"("answer": 1)",          R"("correct": "B: y")",
        R"("answer": "Answer: B")"};
    std::vector<std::string> questions;
    for (const std::string& answer : answers)
        questions.push_back(questionWith(R"(["x", "y", "z"])", answer));
    EXPECT_EQ(rightOptions(questions), std::vector<std::string>(answers.size(), "y"));
}

TEST(ModelJsonTest, AnAnswerThatIsNoneDropsItsQuestion) {
    std::vector<std::string> questions = {questionWith(R"(["good", "y"])", R"("answer": 0)")};
    for (const char* answer :
         {R"("answerIndex": 3)", R"("answerIndex": -1)", R"("answerIndex": 1.5)",
          R"("answerIndex": 1e300)", R"("answer": "D")", R"("answer": "w")", R"("answer": "")",
          R"("answer": null)", R"("answer": {})", R"("answerIndex": "99999999999999999999")",
          R"("answer": "because")", R"("other": 1)"}) {
        questions.push_back(questionWith(R"(["x", "y", "z"])", answer));
    }
    EXPECT_EQ(rightOptions(questions), std::vector<std::string>({"good"}));
}

TEST(ModelJsonTest, ABrokenWholeReplyIsReadAllTheSame) {
    for (const char* reply :
         {"{\"summary\": \"One\ntwo.\", \"feedback\": \"\", \"corrections\": \"\"}",
          "```json\n{\"summary\": \"One\ntwo.\", \"feedback\": \"\",}\n```",
          "Here you go:\n{\"summary\": \"One\ntwo.\"}\nHope it helps!",
          "{summary: 'One\ntwo.', feedback: None}"}) {
        ProviderChain chain = writing(reply);
        const json body = chain.askWhole().body;
        EXPECT_EQ(body.value("summary", ""), "One\ntwo.") << reply;
        EXPECT_EQ(body.value("feedback", "?"), "") << reply;
    }
}

TEST(ModelJsonTest, AWholeReplyThatWasCutShowsItsTextAndSaysSo) {
    for (const char* reply : {"{\"summary\": \"One two thr", "```json\n{\"summary\": \"One two thr",
                              "{\"summary\": \"One two thr\", \"feedb"}) {
        for (const char* finish : {"length", "stop"}) {
            ProviderChain chain = writing(reply, finish);
            const json body = chain.askWhole().body;
            EXPECT_EQ(body.value("summary", ""), "One two thr") << reply;
            EXPECT_THAT(
                body.value("feedback", ""),
                AllOf(HasSubstr("ends here"),
                      HasSubstr(finish == std::string("length") ? "length limit" : "broke off")))
                << reply;
        }
    }
}

TEST(ModelJsonTest, AForgottenBracketIsNoReplyThatWasCut) {
    for (const char* reply : {"{\"summary\": \"Whole.\"", "```json\n{\"summary\": \"Whole.\"\n```",
                              "{\"summary\": \"Whole.\n```"}) {
        ProviderChain chain = writing(reply);
        const json body = chain.askWhole().body;
        EXPECT_EQ(body.value("summary", ""), "Whole.") << reply;
        EXPECT_EQ(body.value("feedback", "?"), "") << reply;
    }
}

TEST(ModelJsonTest, QuestionsForAProgramStayAListWhenTheyWereCut) {
    ProviderChain chain = writing(R"({"summary": "s", "feedback": [{"prompt": "q", "options": ["x",
        "y"], "answerIndex": 0}, {"prompt": "cut off)",
                                  "length");
    const json body = chain.askWhole().body;
    EXPECT_EQ(json::parse(body.value("feedback", ""), nullptr, false),
              json::array({{{"prompt", "q"}, {"options", {"x", "y"}}, {"answerIndex", 0}}}));
}

TEST(ModelJsonTest, AListOfTextsReadsAsText) {
    EXPECT_EQ(readWholeReply(R"({"summary": ["One.", "Two."]})").analysis.summary, "One.\nTwo.");
}

TEST(ModelJsonTest, ProseWithBracesStaysAsItIs) {
    for (const char* reply : {"Use {braces} and [brackets].", "{\"other\": 1}", "{note: prose}",
                              "In C: `int a[] = {1, 2};`", "{", "[]"}) {
        EXPECT_EQ(readWholeReply(reply).analysis.summary, reply);
    }
}

TEST(ModelJsonTest, WhatIsWholeOfCutStudyMaterialIsUsed) {
    const std::vector<Flashcard> cards =
        readFlashcards("{\"flashcards\": [{\"front\": \"a\", \"back\": \"b\"}, {\"front\": \"c\", "
                       "\"back\": \"half a");
    EXPECT_EQ(cards, std::vector<Flashcard>({{"a", "b"}}));
    const Quiz quiz = readQuiz(R"({"primer": "p", "questions": [{"question": "q", "options": ["x",
        "y"], "answer": "x", "explanation": "e"}, {"question": "r", "options": ["x", "y"],
        "answerIndex": 1, "explanation": "half a)");
    EXPECT_EQ(quiz.primer, "p");
    ASSERT_EQ(quiz.questions.size(), 1U);
    EXPECT_EQ(quiz.questions[0].prompt, "q");
}

TEST(ModelJsonTest, CardsOneByOneAreAList) {
    EXPECT_EQ(readFlashcards("{\"front\": \"a\", \"back\": \"b\"}\n{\"front\": \"c\", \"back\": "
                             "\"d\"}"),
              std::vector<Flashcard>({{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(readFlashcards("{\"cards\": [{\"front\": \"a\", \"back\": 7}]}"),
              std::vector<Flashcard>({{"a", "7"}}));
}

TEST(ModelJsonTest, StudyMaterialThatWasCutToNothingSaysWhy) {
    ProviderChain chain =
        writing(R"({"primer": "p", "questions": [{"question": "q", "opt)", "length");
    for (const char* path : {"/ai/quiz", "/ai/flashcards"}) {
        EXPECT_THAT(chain.gateway->post(path, {{"text", "t"}}).body.value("error", ""),
                    AllOf(HasSubstr("length limit"), HasSubstr("less text")))
            << path;
    }
}

TEST(ModelJsonTest, UnusableQuestionsAreDropped) {
    const Quiz quiz = readQuiz(R"([{"prompt":"a","options":["x","y"],"answerIndex":1},
        {"prompt":"b","options":["x"],"answerIndex":0},
        {"prompt":"c","options":["x","y"],"answerIndex":2},
        {"prompt":"d","options":["x","y"],"answerIndex":-1},
        {"prompt":"","options":["x","y"],"answerIndex":0},
        {"prompt":"e","options":["x","y"],"answer":"y"}, 7])");
    ASSERT_EQ(quiz.questions.size(), 2U);
    EXPECT_EQ(quiz.questions[0].prompt, "a");
    EXPECT_EQ(quiz.questions[1].answerIndex, 1U);
}

TEST(ModelJsonTest, UnusableCardsAreDropped) {
    EXPECT_EQ(readFlashcards(R"({"flashcards":[{"front":"f"},{"term":"t","definition":"d"},1]})"),
              std::vector<Flashcard>({{"t", "d"}}));
    EXPECT_TRUE(readFlashcards("no JSON at all").empty());
    EXPECT_TRUE(readFlashcards("} {").empty());
}

} // namespace
} // namespace vorq::gateway::testing
