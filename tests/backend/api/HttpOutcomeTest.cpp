#include "backend/api/HttpOutcome.h"
#include "backend/api/Session.h"
#include "backend/api/StudyRecords.h"
#include "support/json/JsonWriter.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using Kind = ServiceError::Kind;

struct Problem {
    Kind kind;
    QString message;

    bool operator==(const Problem&) const = default;
};

std::optional<Problem> problem(int status, const QByteArray& body) {
    try {
        recordFromResponse(status, body, u"http://h:1"_s, &decodeSession);
    } catch (const ServiceError& error) {
        return Problem{error.kind(), error.message()};
    }
    return std::nullopt;
}

Problem failed(const QString& message) {
    return {Kind::RequestFailed, message};
}

const QByteArray session = R"({"signedIn":true,"email":"e","token":"t"})";

TEST(HttpOutcome, EveryStatusFrom200To299IsSuccess) {
    EXPECT_EQ(problem(200, session), std::nullopt);
    EXPECT_EQ(problem(299, session), std::nullopt);
    EXPECT_EQ(problem(199, session), failed("Request failed with status 199."));
    EXPECT_EQ(problem(300, session), failed("Request failed with status 300."));
}

TEST(HttpOutcome, AWebPageInPlaceOfTheRecordIsNamed) {
    EXPECT_EQ(problem(200, " \n<!doctype html>"),
              failed("Vorq reached a web page instead of the API at http://h:1. Check "
                     "VORQ_API_BASE_URL."));
}

TEST(HttpOutcome, AWebPageWithAnErrorStatusGivesTheStatus) {
    EXPECT_EQ(problem(500, "<html>x</html>"), failed("Request failed with status 500."));
}

TEST(HttpOutcome, AnUnreadableBodyTravelsAsAFailedRequest) {
    for (const char* body : {"", "nonsense", "[]", "{}", "{\"error\":5}", "\xFF"})
        EXPECT_EQ(problem(200, body), failed("The server returned a response Vorq could not read."))
            << body;
}

TEST(HttpOutcome, ARecordWithoutARequiredKeyGivesItsErrorSentence) {
    EXPECT_EQ(problem(200, R"({"signedIn":true,"error":" Sorry. "})"), failed("Sorry."));
}

TEST(HttpOutcome, AnErrorStatusGivesItsErrorSentence) {
    EXPECT_EQ(problem(429, R"({"error":"Slow down.","code":"rate"})"), failed("Slow down."));
}

TEST(HttpOutcome, AnErrorOfBlanksOrOfAnotherShapeIsNone) {
    for (const char* body : {R"({"error":"  "})", R"({"error":5})", R"({"error":null})",
                             R"({"code":1,"error":"E"})", "{}", "", "E"})
        EXPECT_EQ(problem(503, body), failed("Request failed with status 503.")) << body;
}

TEST(HttpOutcome, ARefusalNamesTheFieldThatItIsAbout) {
    EXPECT_EQ(refusal(403, R"({"error":"No.","field":"email"})").field(), "email");
    for (const char* body : {R"({"error":"No."})", R"({"error":"No.","field":5})",
                             R"({"field":["email"],"error":"No."})"}) {
        EXPECT_EQ(refusal(403, body).field(), "") << body;
        EXPECT_EQ(refusal(403, body).message(), "No.") << body;
    }
}

TEST(HttpOutcome, ARefusedTokenIsNotSignedInWhateverTheBodySays) {
    EXPECT_EQ(problem(401, R"({"error":"Go away."})"),
              (Problem{Kind::NotSignedIn, "Your session expired. Sign in again."}));
}

TEST(SessionJson, WritesWhatItReads) {
    const QByteArray json =
        R"({"signedIn":false,"email":"e","token":"","refreshToken":"r","firstName":"f",)"
        R"("lastName":"l","username":"u","useCase":"student","preferredModel":"m",)"
        R"("needsEmailConfirmation":true,"message":"x"})";
    const std::optional<Session> read = decodeSession(json);
    ASSERT_TRUE(read);
    JsonWriter writer;
    encode(*read, writer);
    EXPECT_EQ(writer.take(), json);
}

TEST(SessionJson, IsLiveWhenSignedInWithAToken) {
    EXPECT_TRUE(decodeSession(session)->isLive());
    EXPECT_FALSE(decodeSession(R"({"signedIn":false,"email":"e","token":"t"})")->isLive());
    EXPECT_FALSE(decodeSession(R"({"signedIn":true,"email":"e","token":""})")->isLive());
}

TEST(SessionJson, RefusesKeysOfAnotherType) {
    EXPECT_FALSE(decodeSession(R"({"signedIn":1,"email":"e","token":"t"})"));
    EXPECT_FALSE(decodeSession(R"({"signedIn":true,"email":"e","token":"t","username":1})"));
}

TEST(FlashcardsJson, NeedsBothSides) {
    const auto result =
        decodeFlashcardsResult(R"({"flashcards":[{"front":"f","back":"b","x":1}]})");
    ASSERT_TRUE(result);
    EXPECT_EQ(result->flashcards, (std::vector<FlashcardDTO>{{.front = "f", .back = "b"}}));
    EXPECT_FALSE(decodeFlashcardsResult(R"({"flashcards":[{"front":"f"}]})"));
    EXPECT_FALSE(decodeFlashcardsResult("{}"));
}

TEST(QuizJson, FillsInWhatAQuestionLacks) {
    const auto result = decodeQuizResult(
        R"({"primer":"p","questions":[{"question":"q","options":["a"]},)"
        R"({"prompt":"p","question":"q","answerIndex":2.0,"explanation":"e"},{"prompt":null}]})");
    ASSERT_TRUE(result);
    const QuizQuestionDTO fromQuestion{
        .prompt = "q", .options = {"a"}, .answerIndex = 0, .explanation = ""};
    const QuizQuestionDTO fromPrompt{
        .prompt = "p", .options = {}, .answerIndex = 2, .explanation = "e"};
    EXPECT_EQ(result->questions,
              (std::vector<QuizQuestionDTO>{fromQuestion, fromPrompt, QuizQuestionDTO()}));
}

TEST(QuizJson, RefusesAnAnswerIndexThatIsNoWholeNumber) {
    for (const char* index : {"1.5", "\"1\"", "true", "1e300"})
        EXPECT_FALSE(decodeQuizResult(QByteArray(R"({"primer":"p","questions":[{"answerIndex":)") +
                                      index + "}]}"))
            << index;
}

TEST(QuizJson, NeedsPrimerAndQuestions) {
    EXPECT_FALSE(decodeQuizResult(R"({"questions":[]})"));
    EXPECT_FALSE(decodeQuizResult(R"({"primer":"p"})"));
}

} // namespace
} // namespace vorq
