#include "backend/api/VorqAPIService.h"

#include "doubles/backend/Awaiting.h"
#include "doubles/backend/ScriptedTransport.h"
#include "platform/testing/ManualClock.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Kind = ServiceError::Kind;

const QString unreachableSentence =
    u"Could not reach Vorq at http://h:1. Check your connection, or set VORQ_API_BASE_URL."_s;

class VorqAPIServiceTest : public testing::Test {
  protected:
    Outcome<AIAnalysis> stream(const QString& path = "/ai/prompt", const QString& token = "t") {
        return Outcome(service.streamAnalysis(
            path, "{}", token, 60s, [this](const QString& text) { deltas << text; },
            stop.get_token()));
    }
    Outcome<Session> post(const QString& path = "/x") {
        return Outcome(service.request(path, "POST", QByteArray("{}"), u"t"_s, 30s, &decodeSession,
                                       stop.get_token()));
    }

    ManualClock clock;
    ScriptedTransport transport{clock};
    QString base = u"http://h:1"_s;
    VorqAPIService service{transport, [this] { return base; }};
    std::stop_source stop;
    QStringList deltas;
};

TEST_F(VorqAPIServiceTest, ARequestCarriesWhatItWasGiven) {
    const auto outcome = post("auth/x");
    const HttpRequest& request = transport.last().request();
    EXPECT_EQ(transport.last().url(), u"http://h:1/auth/x") << "the slash is put in front";
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.timeout, 30s);
    EXPECT_EQ(transport.last().header("Content-Type"), "application/json");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t");
    EXPECT_EQ(request.body, "{}");
}

TEST_F(VorqAPIServiceTest, TheBaseURLIsAskedForWithEachCall) {
    const auto first = post();
    base = u"http://other"_s;
    const auto second = post();
    EXPECT_EQ(transport.at(0).url(), u"http://h:1/x");
    EXPECT_EQ(transport.at(1).url(), u"http://other/x");
}

TEST_F(VorqAPIServiceTest, ARequestGivesTheDecodedRecord) {
    const auto outcome = post();
    transport.last().begin();
    transport.last().send(R"({"signedIn":true,"ema)");
    transport.last().send(R"(il":"e","token":"t"})");
    clock.settle();
    EXPECT_FALSE(outcome.ended());
    transport.last().end();
    clock.settle();
    ASSERT_TRUE(outcome.succeeded());
    EXPECT_EQ(outcome.value().email, u"e");
}

// A backend whose model thinks for long says so by blanks in front of the document.
TEST_F(VorqAPIServiceTest, BlanksBeforeADocumentStartTheTimeOutAnew) {
    for (const bool fails : {false, true}) {
        const auto outcome = post();
        transport.last().begin();
        for (int second = 0; second < 300; second += 20) {
            transport.last().send(" ");
            clock.advance(20s);
        }
        EXPECT_FALSE(outcome.ended());
        transport.last().send(fails ? R"({"error":"The model is gone."})"
                                    : R"({"signedIn":true,"email":"e","token":"t"})");
        transport.last().end();
        clock.settle();
        EXPECT_EQ(outcome.succeeded(), !fails);
        EXPECT_EQ(outcome.message(), fails ? u"The model is gone."_s : QString());
    }
}

TEST_F(VorqAPIServiceTest, AnInvalidPathIsNamed) {
    EXPECT_EQ(post("//[bad").message(), u"Invalid API URL for //[bad.");
    EXPECT_EQ(stream("//[bad").message(), u"Invalid API URL for //[bad.");
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(VorqAPIServiceTest, ATransferThatFailsIsUnreachable) {
    const auto before = post();
    const auto between = post();
    transport.at(0).fail("refused");
    transport.at(1).begin();
    transport.at(1).send("{");
    transport.at(1).fail("reset");
    clock.settle();
    for (const auto* outcome : {&before, &between}) {
        EXPECT_EQ(outcome->serviceError(), Kind::RequestFailed);
        EXPECT_EQ(outcome->message(), unreachableSentence);
    }
}

TEST_F(VorqAPIServiceTest, ASilentBackendIsUnreachableAfterTheTimeout) {
    const auto outcome = post();
    clock.advance(29s);
    EXPECT_FALSE(outcome.ended());
    clock.advance(1s);
    EXPECT_EQ(outcome.message(), unreachableSentence);
}

TEST_F(VorqAPIServiceTest, AResponseThatIsNotHttpIsInvalid) {
    const auto request = post();
    const auto streamed = stream();
    transport.at(0).respondWithoutHttp();
    transport.at(1).respondWithoutHttp();
    clock.settle();
    for (const QString& message : {request.message(), streamed.message()})
        EXPECT_EQ(message, u"The server returned a response Vorq could not read.");
    EXPECT_EQ(request.serviceError(), Kind::InvalidResponse);
    EXPECT_EQ(streamed.serviceError(), Kind::InvalidResponse);
}

TEST_F(VorqAPIServiceTest, ABodyBeyondAllMeasureIsInvalid) {
    const auto outcome = post();
    transport.last().begin();
    const QByteArray part(16 << 20, ' ');
    for (int round = 0; round < 5; ++round)
        transport.last().send(part);
    clock.settle();
    EXPECT_EQ(outcome.serviceError(), Kind::InvalidResponse);
    EXPECT_TRUE(transport.last().isAbandoned());
}

TEST_F(VorqAPIServiceTest, StoppingARequestStopsItsTransfer) {
    const auto outcome = post();
    stop.request_stop();
    EXPECT_TRUE(transport.last().isAbandoned());
    clock.settle();
    EXPECT_EQ(outcome.message(), unreachableSentence);
}

TEST_F(VorqAPIServiceTest, ARequestOutlivesTheService) {
    auto passing = std::make_unique<VorqAPIService>(transport, [] { return u"http://p"_s; });
    const Outcome outcome(passing->refreshSession("r", {}));
    const Outcome streamed(passing->streamAnalysis("/x", "{}", "t", 60s, {}, {}));
    passing.reset();
    transport.at(0).respond(200, R"({"signedIn":true,"email":"e","token":"t"})");
    transport.at(1).fail("refused");
    clock.settle();
    EXPECT_TRUE(outcome.succeeded());
    EXPECT_TRUE(streamed.message().startsWith(u"Could not reach Vorq at http://p."));
}

TEST_F(VorqAPIServiceTest, AStreamAsksForEvents) {
    const auto outcome = stream();
    EXPECT_EQ(transport.last().request().method, "POST");
    EXPECT_EQ(transport.last().request().timeout, 60s);
    EXPECT_EQ(transport.last().header("Accept"), "text/event-stream");
    EXPECT_EQ(transport.last().header("Content-Type"), "application/json");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t");
}

TEST_F(VorqAPIServiceTest, AnEmptyTokenSendsNoHeader) {
    const auto outcome = stream("/x", "");
    EXPECT_TRUE(transport.last().header("Authorization").isNull());
}

TEST_F(VorqAPIServiceTest, DeltasComeAsTheEventsArrive) {
    const auto outcome = stream();
    transport.last().begin();
    transport.last().send("data: {\"text\":\"a\"}\n\nda");
    clock.settle();
    EXPECT_EQ(deltas, QStringList("a"));
    transport.last().send("ta: {\"text\":\"ab\"}\n\n");
    clock.settle();
    EXPECT_EQ(deltas, QStringList({"a", "ab"}));
    EXPECT_FALSE(outcome.ended());
    transport.last().end();
    clock.settle();
    EXPECT_EQ(outcome.value().summary, u"ab");
}

TEST_F(VorqAPIServiceTest, ADoneEventEndsTheReadingWhateverMayFollow) {
    const auto outcome = stream();
    transport.last().begin();
    transport.last().send("data: {\"done\":true,\"summary\":\"s\"}\n");
    clock.settle();
    EXPECT_EQ(outcome.value().summary, u"s");
    EXPECT_TRUE(transport.last().isAbandoned());
}

TEST_F(VorqAPIServiceTest, AStreamWithoutTextIsAFailedRequest) {
    const auto outcome = stream();
    transport.last().respond(200, "data: [DONE]\n");
    clock.settle();
    EXPECT_EQ(outcome.serviceError(), Kind::RequestFailed);
    EXPECT_EQ(outcome.message(), u"The stream ended before Vorq sent a reply.");
}

TEST_F(VorqAPIServiceTest, AnErrorEventIsAFailedRequest) {
    const auto outcome = stream();
    transport.last().begin();
    transport.last().send("data: {\"text\":\"a\"}\ndata: {\"error\":\"Busy.\"}\n");
    clock.settle();
    EXPECT_EQ(outcome.serviceError(), Kind::RequestFailed);
    EXPECT_EQ(outcome.message(), u"Busy.");
}

TEST_F(VorqAPIServiceTest, AStreamThatCannotBeOpenedIsUnreachable) {
    const auto outcome = stream();
    transport.last().fail("refused");
    clock.settle();
    EXPECT_EQ(outcome.serviceError(), Kind::RequestFailed);
    EXPECT_EQ(outcome.message(), unreachableSentence);
}

TEST_F(VorqAPIServiceTest, AConnectionThatDropsIsToldInThePlatformsWords) {
    const auto outcome = stream();
    transport.last().begin();
    transport.last().send("data: {\"text\":\"a\"}\n");
    transport.last().fail("Connection reset by peer");
    clock.settle();
    EXPECT_TRUE(outcome.holds<TransferError>());
    EXPECT_EQ(outcome.message(), u"Connection reset by peer");
    EXPECT_EQ(deltas, QStringList("a"));
}

TEST_F(VorqAPIServiceTest, AStreamThatFallsSilentTimesOut) {
    const auto outcome = stream();
    transport.last().begin();
    for (int second = 0; second < 300; second += 50) {
        transport.last().send(": ping\n");
        clock.advance(50s);
    }
    EXPECT_FALSE(outcome.ended()) << "every byte starts the time-out anew";
    clock.advance(10s);
    EXPECT_TRUE(outcome.holds<TransferError>());
    EXPECT_EQ(outcome.message(), u"The request timed out.");
}

TEST_F(VorqAPIServiceTest, AStreamWithARefusedTokenIsNotSignedIn) {
    const auto outcome = stream();
    transport.last().respond(401, R"({"error":"Expired."})");
    clock.settle();
    EXPECT_EQ(outcome.serviceError(), Kind::NotSignedIn);
    EXPECT_EQ(outcome.message(), u"Your session expired. Sign in again.");
}

TEST_F(VorqAPIServiceTest, AStreamsErrorStatusGivesItsSentence) {
    const auto told = stream();
    const auto untold = stream();
    transport.at(0).respond(500, R"({"error":"Down."})");
    transport.at(1).respond(503, "<html>");
    clock.settle();
    EXPECT_EQ(told.message(), u"Down.");
    EXPECT_EQ(untold.message(), u"Request failed with status 503.");
}

TEST_F(VorqAPIServiceTest, AWholeErrorDocumentCountsThoughItsBodyEndsEarly) {
    const auto streamed = stream();
    const auto posted = post();
    for (const std::size_t call : {0U, 1U}) {
        transport.at(call).begin(500);
        transport.at(call).send(R"({"error":"Out of paper."})");
        transport.at(call).fail("Connection reset by peer");
    }
    clock.settle();
    EXPECT_EQ(streamed.message(), u"Out of paper.");
    EXPECT_EQ(posted.message(), u"Out of paper.");
}

TEST_F(VorqAPIServiceTest, HalfAnErrorDocumentSaysNothing) {
    const auto streamed = stream();
    const auto posted = post();
    for (const std::size_t call : {0U, 1U}) {
        transport.at(call).begin(500);
        transport.at(call).send(R"({"error":"Out of)");
        transport.at(call).fail("Connection reset by peer");
    }
    clock.settle();
    EXPECT_EQ(streamed.message(), u"Connection reset by peer");
    EXPECT_EQ(posted.message(), unreachableSentence);
}

TEST_F(VorqAPIServiceTest, ARefusedTokenIsOneThoughTheBodyEndsEarly) {
    const auto posted = post();
    transport.last().begin(401);
    transport.last().fail("Connection reset by peer");
    clock.settle();
    EXPECT_EQ(posted.serviceError(), Kind::NotSignedIn);
}

TEST_F(VorqAPIServiceTest, AStreamsErrorBodyIsReadNoFurtherThanEightKilobytes) {
    const auto documentOf = [](qsizetype size) {
        const QByteArray start = R"({"error":"Long.","code":")";
        return start + QByteArray(size - start.size() - 2, 'x') + "\"}";
    };
    const auto fits = stream();
    const auto exceeds = stream();
    const auto endless = stream();
    transport.at(0).respond(500, documentOf(8193));
    transport.at(1).respond(500, documentOf(8194));
    transport.at(2).begin(500);
    transport.at(2).send(QByteArray(9000, 'x'));
    clock.settle();
    EXPECT_EQ(fits.message(), u"Long.");
    EXPECT_EQ(exceeds.message(), u"Request failed with status 500.");
    EXPECT_EQ(endless.message(), u"Request failed with status 500.");
    EXPECT_TRUE(transport.at(2).isAbandoned());
}

TEST_F(VorqAPIServiceTest, StoppingAStreamIsACancellation) {
    const auto opening = stream();
    const auto reading = stream();
    transport.at(1).begin();
    transport.at(1).send("data: {\"text\":\"a\"}\n");
    clock.settle();
    stop.request_stop();
    EXPECT_TRUE(transport.at(0).isAbandoned());
    EXPECT_TRUE(transport.at(1).isAbandoned());
    clock.settle();
    EXPECT_TRUE(opening.cancelled());
    EXPECT_TRUE(reading.cancelled());
    EXPECT_EQ(stream().cancelled(), true) << "a stopped call sends nothing";
    EXPECT_EQ(transport.count(), 2u);
}

TEST_F(VorqAPIServiceTest, AStopWithinADeltaIsSeenBeforeTheNextLine) {
    const Outcome outcome(service.streamAnalysis(
        "/x", "{}", "t", 60s,
        [this](const QString& text) {
            deltas << text;
            stop.request_stop();
        },
        stop.get_token()));
    transport.last().begin();
    transport.last().send("data: {\"text\":\"a\"}\ndata: {\"text\":\"ab\"}\n");
    clock.settle();
    EXPECT_TRUE(outcome.cancelled());
    EXPECT_EQ(deltas, QStringList("a"));
}

TEST_F(VorqAPIServiceTest, AStoppedStreamCanBeStartedAgain) {
    const auto first = stream();
    stop.request_stop();
    stop = std::stop_source();
    const auto second = stream();
    transport.at(0).respond(200, "data: {\"text\":\"old\"}\n");
    transport.at(1).respond(200, "data: {\"text\":\"new\"}\n");
    clock.settle();
    EXPECT_TRUE(first.cancelled());
    EXPECT_EQ(second.value().summary, u"new");
    EXPECT_EQ(deltas, QStringList("new"));
}

// The rows of the endpoint table.

TEST_F(VorqAPIServiceTest, AStreamedPromptSendsItsKeys) {
    PromptRequest request{.prompt = "p",
                          .selectedText = "s",
                          .screenDataUrl = "u",
                          .deepResearch = true,
                          .skipUserPreferences = false,
                          .forceLearn = true,
                          .stream = true,
                          .recentMessages = {{.role = "user", .content = "c"}},
                          .preferredModel = " m "};
    const Outcome outcome(service.streamAnalysis(request, " t ", {}, {}));
    EXPECT_EQ(transport.last().path(), u"/ai/prompt");
    EXPECT_EQ(transport.last().request().timeout, 90s);
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t");
    EXPECT_EQ(transport.last().request().body,
              R"({"prompt":"p","selectedText":"s","screenDataUrl":"u","deepResearch":true,)"
              R"("skipUserPreferences":false,"forceLearn":true,"stream":true,)"
              R"("recentMessages":[{"role":"user","content":"c"}],"preferredModel":"m"})");
}

TEST_F(VorqAPIServiceTest, AStreamedPromptWithoutResearchHasAShorterTimeout) {
    const PromptRequest request{.prompt = "p",
                                .selectedText = {},
                                .screenDataUrl = {},
                                .stream = true,
                                .recentMessages = {},
                                .preferredModel = " "};
    const Outcome outcome(service.streamAnalysis(request, "t", {}, {}));
    EXPECT_EQ(transport.last().request().timeout, 60s);
    EXPECT_EQ(transport.last().request().body,
              R"({"prompt":"p","selectedText":"","screenDataUrl":"","deepResearch":false,)"
              R"("skipUserPreferences":false,"forceLearn":false,"stream":true})");
}

TEST_F(VorqAPIServiceTest, APromptWithoutStreamSaysNothingOfStreams) {
    const PromptRequest request{.prompt = "p",
                                .selectedText = {},
                                .screenDataUrl = {},
                                .deepResearch = true,
                                .recentMessages = {},
                                .preferredModel = {}};
    const Outcome outcome(service.prompt("t", request, {}));
    EXPECT_EQ(transport.last().path(), u"/ai/prompt");
    EXPECT_EQ(transport.last().request().timeout, 60s);
    EXPECT_FALSE(transport.last().json().contains("stream"));
    transport.last().respond(200, R"({"summary":"s","feedback":"","corrections":"","sources":[]})");
    clock.settle();
    EXPECT_EQ(outcome.value().summary, u"s");
}

TEST_F(VorqAPIServiceTest, AnAnalysisSendsItsText) {
    const AnalyzeRequest request{.text = "x", .preferredModel = "m"};
    const Outcome outcome(service.streamAnalysis(request, "t", {}, {}));
    EXPECT_EQ(transport.last().path(), u"/ai/analyze");
    EXPECT_EQ(transport.last().request().timeout, 60s);
    EXPECT_EQ(transport.last().request().body,
              R"({"text":"x","screenDataUrl":"","stream":true,"preferredModel":"m"})");
}

TEST_F(VorqAPIServiceTest, FlashcardsSendTheirText) {
    const Outcome outcome(service.flashcards("t", "x", {}));
    EXPECT_EQ(transport.last().path(), u"/ai/flashcards");
    EXPECT_EQ(transport.last().request().timeout, 90s);
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t");
    EXPECT_EQ(transport.last().request().body, R"({"text":"x"})");
    transport.last().respond(200, R"({"flashcards":[{"front":"f","back":"b"}]})");
    clock.settle();
    EXPECT_EQ(outcome.value().flashcards.size(), 1u);
}

TEST_F(VorqAPIServiceTest, AQuizSendsItsFocusUnlessItIsBlank) {
    const Outcome focused(service.quiz("t", "x", "f", {}));
    const Outcome plain(service.quiz("t", "x", " ", {}));
    EXPECT_EQ(transport.at(0).path(), u"/ai/quiz");
    EXPECT_EQ(transport.at(0).request().timeout, 90s);
    EXPECT_EQ(transport.at(0).request().body, R"({"text":"x","focus":"f"})");
    EXPECT_EQ(transport.at(1).request().body, R"({"text":"x"})");
}

TEST_F(VorqAPIServiceTest, ABlankTokenIsNotSignedInBeforeAnyCall) {
    EXPECT_THROW(static_cast<void>(resolvedAIToken(" \n")), ServiceError);
    EXPECT_THROW(service.prompt(" ", {}, {}), ServiceError);
    EXPECT_THROW(service.flashcards("", "x", {}), ServiceError);
    EXPECT_THROW(service.quiz("", "x", "", {}), ServiceError);
    EXPECT_THROW(service.updatePreferredModel(" ", "m", {}), ServiceError);
    EXPECT_THROW(service.refreshSession(" ", {}), ServiceError);
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(VorqAPIServiceTest, ARefreshSendsTheTrimmedTokenWithoutBearer) {
    const Outcome outcome(service.refreshSession(" r\n", {}));
    EXPECT_EQ(transport.last().path(), u"/auth/refresh");
    EXPECT_EQ(transport.last().request().timeout, 30s);
    EXPECT_TRUE(transport.last().header("Authorization").isNull());
    EXPECT_EQ(transport.last().request().body, R"({"refreshToken":"r"})");
}

TEST_F(VorqAPIServiceTest, AHandoffSendsTheTrimmedCodeWithoutBearer) {
    const Outcome outcome(service.exchangeMacHandoff(" c ", {}));
    EXPECT_EQ(transport.last().path(), u"/auth/mac-handoff/exchange");
    EXPECT_EQ(transport.last().request().timeout, 30s);
    EXPECT_TRUE(transport.last().header("Authorization").isNull());
    EXPECT_EQ(transport.last().request().body, R"({"code":"c"})");
}

TEST_F(VorqAPIServiceTest, ABlankHandoffCodeGivesNoSession) {
    try {
        service.exchangeMacHandoff(" ", {});
        ADD_FAILURE();
    } catch (const ServiceError& error) {
        EXPECT_EQ(error.kind(), Kind::RequestFailed);
        EXPECT_EQ(error.message(), u"Sign-in did not return a session.");
    }
}

TEST_F(VorqAPIServiceTest, TheAccountCallsSendTheirKeys) {
    const Outcome profile(service.updateProfile("t", "f", "l", "u", {}));
    const Outcome model(service.updatePreferredModel("t", "m", {}));
    const Outcome privacy(service.updatePrivacy("t", "e", "c", "n", {}));
    EXPECT_EQ(transport.at(0).path(), u"/auth/profile");
    EXPECT_EQ(transport.at(0).request().body, R"({"firstName":"f","lastName":"l","username":"u"})");
    EXPECT_EQ(transport.at(1).path(), u"/auth/profile");
    EXPECT_EQ(transport.at(1).request().body, R"({"preferredModel":"m"})");
    EXPECT_EQ(transport.at(2).path(), u"/auth/privacy");
    EXPECT_EQ(transport.at(2).request().body,
              R"({"email":"e","currentPassword":"c","newPassword":"n"})");
    for (std::size_t index = 0; index < 3; ++index) {
        EXPECT_EQ(transport.at(index).header("Authorization"), "Bearer t");
        EXPECT_EQ(transport.at(index).request().timeout, 30s);
    }
}

TEST_F(VorqAPIServiceTest, SigningOutSendsNoBodyAndIgnoresWhatComesBack) {
    const Outcome refused(service.signOut("t", {}));
    const Outcome failed(service.signOut("t", {}));
    EXPECT_EQ(transport.at(0).path(), u"/auth/sign-out");
    EXPECT_EQ(transport.at(0).request().timeout, 15s);
    EXPECT_EQ(transport.at(0).header("Authorization"), "Bearer t");
    EXPECT_EQ(transport.at(0).request().body, std::nullopt);
    transport.at(0).respond(500, "no");
    transport.at(1).fail("refused");
    clock.settle();
    EXPECT_TRUE(refused.succeeded());
    EXPECT_TRUE(failed.succeeded());
}

TEST_F(VorqAPIServiceTest, SigningOutWithoutATokenCallsNothing) {
    EXPECT_TRUE(Outcome(service.signOut(" ", {})).succeeded());
    EXPECT_EQ(transport.count(), 0u);
}

} // namespace
} // namespace vorq
