#include "backend/http/CurlTransport.h"

#include "backend/api/VorqAPIService.h"
#include "doubles/backend/Awaiting.h"
#include "doubles/backend/ScriptedHttpServer.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/testing/ManualClock.h"

#include <QStringList>
#include <QTimer>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Kind = ServiceError::Kind;
using Server = ScriptedHttpServer;

const QByteArray eventStream =
    Server::head(200, "Content-Type: text/event-stream\r\nTransfer-Encoding: chunked\r\n");
const QByteArray sessionBody = R"({"signedIn":true,"email":"e","token":"t"})";

class CurlTransportTest : public testing::Test {
  protected:
    Outcome<AIAnalysis> stream(Clock::Duration timeout = 60s) {
        return Outcome(service.streamAnalysis(
            u"/ai/prompt"_s, "{\"stream\":true}", u"secret"_s, timeout,
            [this](const QString& text) { deltas << text; }, stop.get_token()));
    }
    Outcome<Session> post(Clock::Duration timeout = 30s) {
        return Outcome(service.request(u"/auth/x"_s, "POST", QByteArray("{}"), u"secret"_s, timeout,
                                       &decodeSession, stop.get_token()));
    }
    // Until the server has the request on the connection.
    bool arrives(std::size_t connection = 0) {
        return turnUntil([&] { return server.hasRequest(connection); });
    }
    bool closes(std::size_t connection = 0) {
        return turnUntil([&] { return server.isClosed(connection); });
    }
    QString unreachableSentence() const {
        return u"Could not reach Vorq at "_s + server.url() +
               u". Check your connection, or set VORQ_API_BASE_URL. To start it here: "
               "vorq-gateway serve"_s;
    }

    Server server;
    ManualClock clock;
    std::unique_ptr<CurlTransport> transport = std::make_unique<CurlTransport>(clock);
    VorqAPIService service{*transport, [this] { return server.url(); }};
    std::stop_source stop;
    QStringList deltas;
};

TEST_F(CurlTransportTest, SendsTheRequestAndGivesTheResponse) {
    const auto outcome = post();
    ASSERT_TRUE(arrives());
    const QByteArray request = server.received(0);
    EXPECT_TRUE(request.startsWith("POST /auth/x HTTP/1.1\r\n"));
    EXPECT_TRUE(request.contains("\r\nContent-Type: application/json\r\n"));
    EXPECT_TRUE(request.contains("\r\nAuthorization: Bearer secret\r\n"));
    EXPECT_TRUE(request.contains("\r\nAccept-Encoding: identity\r\n"));
    EXPECT_TRUE(request.endsWith("\r\n\r\n{}"));
    server.send(0, Server::response(200, sessionBody));
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.value().token, u"t");
}

TEST_F(CurlTransportTest, SendsNoHeaderOnItsOwnAuthority) {
    const auto outcome = stream();
    ASSERT_TRUE(arrives());
    const QByteArray head = server.received(0).first(server.received(0).indexOf("\r\n\r\n"));
    QStringList names;
    for (const QByteArray& line : head.split('\n').sliced(1))
        names << QString::fromLatin1(line.first(line.indexOf(':')));
    names.sort();
    EXPECT_EQ(names, QStringList({"Accept", "Accept-Encoding", "Authorization", "Connection",
                                  "Content-Length", "Content-Type", "Host", "User-Agent"}));
    EXPECT_TRUE(head.contains("\r\nUser-Agent: Vorq\r\n"));
}

TEST_F(CurlTransportTest, SendsARequestWithoutBody) {
    server.onRequest([this](std::size_t at) { server.send(at, Server::response(204, "")); });
    const Outcome outcome(service.signOut("t", {}));
    ASSERT_TRUE(outcome.wait());
    EXPECT_TRUE(server.received(0).contains("\r\nContent-Length: 0\r\n"));
}

TEST_F(CurlTransportTest, SendsALargeBodyWhole) {
    const PromptRequest request{.prompt = "p",
                                .selectedText = {},
                                .screenDataUrl = QString(12 << 20, u'x'),
                                .recentMessages = {},
                                .preferredModel = {}};
    const Outcome outcome(service.prompt("t", request, {}));
    ASSERT_TRUE(arrives());
    EXPECT_TRUE(server.received(0).endsWith(encode(request)));
    server.send(0, Server::response(500, R"({"error":"E"})"));
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.message(), u"E");
}

TEST_F(CurlTransportTest, EventsComeThroughAsTheyAreSentHoweverTheyAreCut) {
    const auto outcome = stream();
    ASSERT_TRUE(arrives());
    EXPECT_TRUE(server.received(0).contains("\r\nAccept: text/event-stream\r\n"));
    const QByteArray body =
        "data: {\"text\":\"caf\xC3\xA9\"}\r\n\r\ndata: {\"text\":\"\xF0\x9F\x91\x8B\"}\n";
    server.send(0, eventStream);
    for (const char byte : body.first(26)) // ends behind the first carriage return
        server.sendChunk(0, QByteArray(1, byte));
    ASSERT_TRUE(turnUntil([this] { return deltas.size() == 1; }));
    EXPECT_EQ(deltas, QStringList(u"café"_s));
    for (const char byte : body.sliced(26))
        server.sendChunk(0, QByteArray(1, byte));
    ASSERT_TRUE(turnUntil([this] { return deltas.size() == 2; }));
    EXPECT_FALSE(outcome.ended());
    server.sendChunk(0, "");
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.value().summary, u"👋");
}

TEST_F(CurlTransportTest, ABodyEndsWithItsConnection) {
    const auto outcome = stream();
    ASSERT_TRUE(arrives());
    server.send(0, Server::head(200, "Connection: close\r\n") + "data: {\"text\":\"a\"}");
    server.close(0);
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.value().summary, u"a");
}

TEST_F(CurlTransportTest, TwoStreamsRunSideBySide) {
    const auto first = stream();
    ASSERT_TRUE(arrives(0));
    const auto second = stream();
    ASSERT_TRUE(arrives(1));
    for (const std::size_t at : {1u, 0u})
        server.send(at, Server::head(200, "Connection: close\r\n"));
    server.send(1, "data: {\"text\":\"second\"}\n");
    server.send(0, "data: {\"text\":\"first\"}\n");
    server.close(1);
    server.close(0);
    ASSERT_TRUE(first.wait() && second.wait());
    EXPECT_EQ(first.value().summary, u"first");
    EXPECT_EQ(second.value().summary, u"second");
}

TEST_F(CurlTransportTest, EveryStatusComesWithItsBody) {
    for (const int status :
         {400, 402, 403, 404, 405, 408, 409, 410, 418, 422, 429, 500, 501, 502, 503, 504, 599}) {
        server.onRequest([this, status](std::size_t at) {
            server.send(at, Server::response(status, R"({"error":"Told."})"));
            server.close(at);
        });
        const auto whole = post();
        ASSERT_TRUE(whole.wait());
        EXPECT_EQ(whole.message(), u"Told.") << status;
        const auto streamed = stream();
        ASSERT_TRUE(streamed.wait());
        EXPECT_EQ(streamed.message(), u"Told.") << status;
    }
}

TEST_F(CurlTransportTest, ARefusedTokenIsNotSignedInEvenIfItIsAChallenge) {
    server.onRequest([this](std::size_t at) {
        server.send(at, Server::response(401, "{}", "WWW-Authenticate: Basic realm=\"x\"\r\n"));
    });
    const auto outcome = post();
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.serviceError(), Kind::NotSignedIn);
}

TEST_F(CurlTransportTest, ARedirectIsNotFollowed) {
    Server elsewhere;
    for (const int status : {301, 302, 303, 307, 308}) {
        server.onRequest([&, status](std::size_t at) {
            server.send(at, Server::response(status, "<html>",
                                             "Location: " + elsewhere.url().toUtf8() + "/x\r\n"));
            server.close(at);
        });
        const auto whole = post();
        const auto streamed = stream();
        ASSERT_TRUE(whole.wait() && streamed.wait());
        const QString sentence = u"Request failed with status %1."_s.arg(status);
        EXPECT_EQ(whole.message(), sentence);
        EXPECT_EQ(streamed.message(), sentence);
    }
    EXPECT_EQ(elsewhere.connections(), 0u);
}

TEST_F(CurlTransportTest, CookiesAreNotKept) {
    server.onRequest([this](std::size_t at) {
        server.send(at, Server::response(200, sessionBody, "Set-Cookie: a=b; Path=/\r\n"));
        server.close(at);
    });
    ASSERT_TRUE(post().wait());
    ASSERT_TRUE(post().wait());
    EXPECT_FALSE(server.received(1).contains("Cookie"));
}

TEST_F(CurlTransportTest, ARefusedConnectionIsUnreachable) {
    QString closedPort;
    {
        const Server gone;
        closedPort = gone.url();
    }
    VorqAPIService nowhere(*transport, [closedPort] { return closedPort; });
    const Outcome whole(nowhere.refreshSession("r", {}));
    const Outcome streamed(nowhere.streamAnalysis(u"/x"_s, "{}", {}, 60s, {}, {}));
    ASSERT_TRUE(whole.wait() && streamed.wait());
    const QString sentence =
        u"Could not reach Vorq at "_s + closedPort +
        u". Check your connection, or set VORQ_API_BASE_URL. To start it here: "
        "vorq-gateway serve"_s;
    EXPECT_EQ(whole.message(), sentence);
    EXPECT_EQ(streamed.message(), sentence);
}

TEST_F(CurlTransportTest, AnAddressThatIsNotHttpIsUnreachable) {
    for (const char* base : {"file:///etc", "example.org", "localhost:8787", "http:", "http:x"}) {
        VorqAPIService nowhere(*transport, [base] { return QString::fromLatin1(base); });
        const Outcome outcome(nowhere.refreshSession("r", {}));
        ASSERT_TRUE(outcome.wait());
        EXPECT_TRUE(outcome.message().startsWith(u"Could not reach Vorq at ")) << base;
    }
}

TEST_F(CurlTransportTest, AServerThatSpeaksNoHttpIsUnreachable) {
    server.onRequest([this](std::size_t at) {
        server.send(at, "SSH-2.0-OpenSSH_9.2\r\n\r\n");
        server.close(at);
    });
    const auto outcome = stream();
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.message(), unreachableSentence());
}

TEST_F(CurlTransportTest, AServerThatHangsUpIsUnreachable) {
    server.onRequest([this](std::size_t at) { server.close(at); });
    const auto outcome = post();
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.message(), unreachableSentence());
}

TEST_F(CurlTransportTest, ABodyThatIsCutShortIsUnreachable) {
    const auto outcome = post();
    ASSERT_TRUE(arrives());
    server.send(0, Server::head(200, "Content-Length: 500\r\n") + sessionBody);
    server.close(0);
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.message(), unreachableSentence());
}

TEST_F(CurlTransportTest, AConnectionLostWithinTheStreamIsToldInThePlatformsWords) {
    for (const bool hard : {true, false}) {
        deltas.clear();
        const std::size_t at = server.connections();
        const auto outcome = stream();
        ASSERT_TRUE(arrives(at));
        server.send(at, eventStream);
        server.sendChunk(at, "data: {\"text\":\"a\"}\n");
        server.sendChunk(at, "data: {\"text\":");
        ASSERT_TRUE(turnUntil([this] { return deltas.size() == 1; }));
        if (hard)
            server.reset(at);
        else
            server.close(at);
        ASSERT_TRUE(outcome.wait());
        EXPECT_TRUE(outcome.holds<TransferError>()) << hard;
        EXPECT_FALSE(outcome.message().isEmpty());
        EXPECT_EQ(deltas, QStringList("a"));
    }
}

TEST_F(CurlTransportTest, AServerThatNeverAnswersTimesOut) {
    const auto outcome = stream();
    ASSERT_TRUE(arrives());
    clock.advance(59s);
    EXPECT_FALSE(outcome.ended());
    clock.advance(1s);
    EXPECT_EQ(outcome.message(), unreachableSentence());
    EXPECT_TRUE(closes());
}

TEST_F(CurlTransportTest, AServerThatFallsSilentTimesOut) {
    const auto outcome = stream();
    ASSERT_TRUE(arrives());
    server.send(0, eventStream);
    server.sendChunk(0, "data: {\"text\":\"a\"}\n");
    ASSERT_TRUE(turnUntil([this] { return deltas.size() == 1; }));
    clock.advance(60s);
    EXPECT_TRUE(outcome.holds<TransferError>());
    EXPECT_EQ(outcome.message(), u"The request timed out.");
    EXPECT_TRUE(closes());
}

TEST_F(CurlTransportTest, AServerThatSendsAByteAtATimeNeverTimesOut) {
    const auto outcome = stream(60s);
    ASSERT_TRUE(arrives());
    server.send(0, eventStream);
    const QByteArray body = "data: {\"text\":\"slow\"}\ndata: {\"done\":true}\n";
    for (const char byte : body) {
        server.sendChunk(0, QByteArray(1, byte));
        // The byte has come when a wait with a fresh time-out has begun.
        const auto turns = std::chrono::steady_clock::now() + 20ms;
        turnUntil([&] { return std::chrono::steady_clock::now() > turns; });
        clock.advance(40s);
    }
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.value().summary, u"slow");
    EXPECT_GT(clock.now(), 10min);
}

TEST_F(CurlTransportTest, AHeadThatComesAByteAtATimeNeverTimesOut) {
    const auto outcome = post(30s);
    ASSERT_TRUE(arrives());
    for (const char byte : Server::response(200, sessionBody)) {
        server.send(0, QByteArray(1, byte));
        const auto turns = std::chrono::steady_clock::now() + 5ms;
        turnUntil([&] { return std::chrono::steady_clock::now() > turns; });
        clock.advance(20s);
    }
    ASSERT_TRUE(outcome.wait());
    EXPECT_TRUE(outcome.succeeded());
}

TEST_F(CurlTransportTest, ABodyLargerThanAllBuffersArrivesWholeAfterItsServerIsGone) {
    const auto outcome = stream();
    ASSERT_TRUE(arrives());
    const QByteArray event = "data: {\"text\":\"" + QByteArray(1000, 'x') + "\"}\n";
    server.send(0, Server::head(200, "Connection: close\r\n") + event.repeated(8000));
    server.close(0);
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(deltas.size(), 8000);
    EXPECT_TRUE(outcome.succeeded());
}

TEST_F(CurlTransportTest, ATokenThatHoldsALineBreakSendsNothing) {
    const Outcome outcome(service.signOut("t\r\nX-Injected: 1", {}));
    const Outcome streamed(service.streamAnalysis("/x", "{}", "t\nX: 1", 60s, {}, {}));
    ASSERT_TRUE(outcome.wait() && streamed.wait());
    EXPECT_EQ(streamed.message(), unreachableSentence());
    EXPECT_EQ(server.connections(), 0u);
}

TEST_F(CurlTransportTest, ARequestIsNeverRepeatedByItself) {
    server.onRequest([this](std::size_t at) { server.reset(at); });
    ASSERT_TRUE(post().wait());
    ASSERT_TRUE(post().wait());
    EXPECT_EQ(server.connections(), 2u);
}

TEST_F(CurlTransportTest, EveryRequestHasAConnectionOfItsOwn) {
    server.onRequest(
        [this](std::size_t at) { server.send(at, Server::response(200, sessionBody)); });
    for (const std::size_t at : {0u, 1u}) {
        ASSERT_TRUE(post().wait());
        EXPECT_EQ(server.connections(), at + 1);
        EXPECT_TRUE(closes(at));
    }
}

TEST_F(CurlTransportTest, TimeoutsRunInRealTimeToo) {
    SystemClock real;
    CurlTransport realTransport(real);
    VorqAPIService realService(realTransport, [this] { return server.url(); });
    const Outcome outcome(realService.streamAnalysis(u"/x"_s, "{}", {}, 100ms, {}, {}));
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.message(), unreachableSentence());
}

TEST_F(CurlTransportTest, TheTimeThatTheReaderTakesIsNoSilence) {
    const auto outcome = stream(60s);
    ASSERT_TRUE(arrives());
    server.send(0, eventStream);
    ASSERT_TRUE(turnUntil([this] { return clock.pendingTimers() == 1; }));
    server.sendChunk(0, "data: {\"text\":\"a\"}\ndata: {\"done\":true}\n");
    ASSERT_TRUE(outcome.wait());
    clock.advance(10min);
    EXPECT_TRUE(outcome.succeeded());
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(CurlTransportTest, AStopClosesTheConnectionWhateverItWaitsFor) {
    for (const bool reading : {false, true}) {
        deltas.clear();
        stop = std::stop_source();
        const std::size_t at = server.connections();
        const auto outcome = stream();
        ASSERT_TRUE(arrives(at));
        if (reading) {
            server.send(at, eventStream);
            server.sendChunk(at, "data: {\"text\":\"a\"}\n");
            ASSERT_TRUE(turnUntil([this] { return deltas.size() == 1; }));
        }
        stop.request_stop();
        ASSERT_TRUE(outcome.wait());
        EXPECT_TRUE(outcome.cancelled()) << reading;
        EXPECT_TRUE(closes(at)) << reading;
        EXPECT_EQ(clock.pendingTimers(), 0u);
    }
}

TEST_F(CurlTransportTest, AStopBeforeTheConnectionStandsEndsTheCall) {
    const auto outcome = stream();
    stop.request_stop();
    ASSERT_TRUE(outcome.wait());
    EXPECT_TRUE(outcome.cancelled());
}

TEST_F(CurlTransportTest, ADoneEventClosesTheConnection) {
    const auto outcome = stream();
    ASSERT_TRUE(arrives());
    server.send(0, eventStream);
    server.sendChunk(0, "data: {\"done\":true,\"summary\":\"s\"}\n");
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.value().summary, u"s");
    EXPECT_TRUE(closes());
}

TEST_F(CurlTransportTest, AStoppedCallCanBeMadeAgain) {
    const auto first = stream();
    ASSERT_TRUE(arrives());
    stop.request_stop();
    stop = std::stop_source();
    const auto second = stream();
    ASSERT_TRUE(arrives(1));
    server.send(1, Server::response(200, "data: {\"text\":\"again\"}\n"));
    ASSERT_TRUE(first.wait() && second.wait());
    EXPECT_TRUE(first.cancelled());
    EXPECT_EQ(second.value().summary, u"again");
}

TEST_F(CurlTransportTest, DestroyingTheTransportEndsItsCalls) {
    const auto opening = stream();
    ASSERT_TRUE(arrives(0));
    const auto reading = stream();
    ASSERT_TRUE(arrives(1));
    server.send(1, eventStream);
    server.sendChunk(1, "data: {\"text\":\"a\"}\n");
    ASSERT_TRUE(turnUntil([this] { return deltas.size() == 1; }));
    transport.reset();
    ASSERT_TRUE(opening.wait() && reading.wait());
    EXPECT_EQ(opening.message(), unreachableSentence());
    EXPECT_TRUE(reading.holds<TransferError>());
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(CurlTransportTest, TheClockMayGoWithTheTransport) {
    auto own = std::make_unique<ManualClock>();
    auto going = std::make_unique<CurlTransport>(*own);
    VorqAPIService brief(*going, [this] { return server.url(); });
    const Outcome opening(brief.refreshSession("r", {}));
    const Outcome streamed(brief.streamAnalysis("/x", "{}", {}, 60s, {}, {}));
    ASSERT_TRUE(arrives(0) && arrives(1));
    server.send(1, eventStream);
    going.reset();
    own.reset();
    ASSERT_TRUE(opening.wait() && streamed.wait());
    EXPECT_EQ(opening.message(), unreachableSentence());
}

TEST_F(CurlTransportTest, ALoopbackHostIsReachedWithoutProxy) {
    const Server proxy;
    qputenv("http_proxy", proxy.url().toUtf8());
    server.onRequest(
        [this](std::size_t at) { server.send(at, Server::response(200, sessionBody)); });
    for (const QString& host :
         {u"127.0.0.1"_s, u"127.9.9.9"_s, u"localhost"_s, u"vorq.localhost"_s}) {
        VorqAPIService near(*transport, [&] { return server.url().replace(u"127.0.0.1"_s, host); });
        const Outcome outcome(near.refreshSession("r", {}));
        ASSERT_TRUE(outcome.wait());
        // The server listens on 127.0.0.1 only.
        EXPECT_EQ(outcome.succeeded(), host != u"127.9.9.9") << host.toStdString();
    }
    qunsetenv("http_proxy");
    EXPECT_EQ(proxy.connections(), 0u);
}

TEST_F(CurlTransportTest, AnyOtherHostIsReachedByTheProxyOfTheEnvironment) {
    qputenv("http_proxy", server.url().toUtf8());
    VorqAPIService far(*transport, [] { return u"http://vorq.invalid"_s; });
    const Outcome outcome(far.refreshSession("r", {}));
    const bool reached = arrives();
    qunsetenv("http_proxy");
    ASSERT_TRUE(reached);
    EXPECT_TRUE(
        server.received(0).startsWith("POST http://vorq.invalid/auth/refresh HTTP/1.1\r\n"));
    server.send(0, Server::response(200, sessionBody));
    ASSERT_TRUE(outcome.wait());
    EXPECT_TRUE(outcome.succeeded());
}

TEST_F(CurlTransportTest, BrokenEventsAreSkippedOnTheWay) {
    const auto outcome = stream();
    ASSERT_TRUE(arrives());
    server.send(0, Server::response(200, "data: {\ndata: \xFF\xFE\ndata: {\"text\":7}\n\x01\n"
                                         "data: {\"text\":\"fine\"}\n"));
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.value().summary, u"fine");
}

TEST_F(CurlTransportTest, ARefusedTokenIsNotSignedInWhateverBecomesOfItsBody) {
    const auto cut = stream();
    ASSERT_TRUE(arrives(0));
    const auto endless = stream();
    ASSERT_TRUE(arrives(1));
    server.send(0, Server::head(401, "Content-Length: 50\r\n") + "{");
    server.close(0);
    server.send(1, Server::head(401, "Transfer-Encoding: chunked\r\n"));
    ASSERT_TRUE(cut.wait() && endless.wait());
    EXPECT_EQ(cut.serviceError(), Kind::NotSignedIn);
    EXPECT_EQ(endless.serviceError(), Kind::NotSignedIn);
}

TEST_F(CurlTransportTest, AProxyThatRefusesATunnelIsUnreachableAndSeesNoToken) {
    qputenv("https_proxy", server.url().toUtf8());
    VorqAPIService far(*transport, [] { return u"https://vorq.invalid"_s; });
    const Outcome outcome(
        far.streamAnalysis(u"/x"_s, "{}", u"secret"_s, std::chrono::seconds(60), {}, {}));
    const bool reached = arrives();
    qunsetenv("https_proxy");
    ASSERT_TRUE(reached);
    EXPECT_TRUE(server.received(0).startsWith("CONNECT vorq.invalid:443 HTTP/1.1\r\n"));
    EXPECT_FALSE(server.received(0).contains("secret"));
    server.send(0, "HTTP/1.1 401 Unauthorized\r\nContent-Length: 0\r\n\r\n");
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.serviceError(), Kind::RequestFailed);
}

} // namespace
} // namespace vorq
