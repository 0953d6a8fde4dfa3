// The listener on real sockets, in virtual time.

#include "backend/account/TcpLoopbackServer.h"

#include "backend/account/SignedInPage.h"
#include "doubles/async/TurnUntil.h"
#include "platform/testing/ManualClock.h"

#include <QNetworkInterface>
#include <QTcpSocket>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

const QByteArray redirected = "GET /callback?handoff=abc HTTP/1.1\r\nHost: 127.0.0.1:18742\r\n"
                              "Sec-Fetch-Site: same-site\r\nSec-Fetch-Mode: navigate\r\n"
                              "Sec-Fetch-Dest: document\r\n\r\n";

/// A connection to the listener, as a browser or whoever else makes it.
class Caller {
  public:
    explicit Caller(quint16 port, const QByteArray& request = {}) {
        socket.connectToHost(QHostAddress::LocalHost, port);
        EXPECT_TRUE(
            turnUntil([this] { return socket.state() == QAbstractSocket::ConnectedState; }, 10s));
        say(request);
    }
    void say(const QByteArray& bytes) {
        socket.write(bytes);
        socket.flush();
    }
    [[nodiscard]] bool isHungUpOn() {
        answer += socket.readAll();
        return socket.state() == QAbstractSocket::UnconnectedState;
    }
    [[nodiscard]] std::string wholeAnswer() {
        EXPECT_TRUE(turnUntil([this] { return isHungUpOn(); }, 10s));
        return answer.toStdString();
    }

    QTcpSocket socket;
    QByteArray answer;
};

class TcpLoopbackServerTest : public testing::Test {
  protected:
    // As the flow does, which lets go of the listener at the end.
    void start() {
        const auto started = server->start([this](const LoopbackServer::Result& result) {
            results.push_back(result);
            server.reset();
        });
        ASSERT_TRUE(started);
        port = server->port();
    }
    [[nodiscard]] bool waitForResult() {
        return turnUntil([this] { return !results.empty(); }, 10s);
    }
    [[nodiscard]] QString address() {
        if (!waitForResult() || !results.front()) return u"(none)"_s;
        return results.front()->toString();
    }
    // Long enough for all that is on its way over loopback to be read.
    void settle() const {
        for (int turn = 0; turn < 20; ++turn) {
            Caller other(port);
            other.socket.abort();
            QCoreApplication::processEvents();
        }
    }
    void expectStillWaiting() {
        EXPECT_TRUE(results.empty());
        const Caller browser(port, redirected);
        EXPECT_EQ(address(), "http://127.0.0.1:18742/callback?handoff=abc");
    }

    ManualClock clock;
    quint16 port = 0;
    std::vector<LoopbackServer::Result> results;
    std::unique_ptr<TcpLoopbackServer> server = std::make_unique<TcpLoopbackServer>(clock, 0);
};

TEST(SignedInPage, IsTheDocumentOfThisKind) {
    const QString page = QString::fromUtf8(signedInPage);
    EXPECT_EQ(signedInPage.size(), 1447);
    for (const char* part :
         {"<html lang=\"en\">", "<title>Signed in</title>", "background: #f6f7f8", "color: #0f1115",
          "max-width: 360px", "width: 72px", "border: 2px solid #9ca3af",
          "<path d=", "font-size: 20px", "font-weight: 600", "<h1>Complete</h1>"})
        EXPECT_TRUE(page.contains(part)) << part;
    EXPECT_FALSE(page.contains("http")) << "it needs nothing from elsewhere";
}

TEST_F(TcpLoopbackServerTest, ABrowserThatComesBackGetsThePageAndEndsIt) {
    start();
    Caller browser(port, redirected);
    EXPECT_EQ(browser.wholeAnswer(),
              "HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: "
              "1447\r\nConnection: close\r\n\r\n" +
                  QString::fromUtf8(signedInPage).toStdString());
    EXPECT_EQ(address(), "http://127.0.0.1:18742/callback?handoff=abc");
    EXPECT_EQ(results.size(), 1u);
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(TcpLoopbackServerTest, AfterItsEndThePortIsFree) {
    start();
    const Caller browser(port, redirected);
    ASSERT_TRUE(waitForResult());
    server = std::make_unique<TcpLoopbackServer>(clock, port);
    results.clear();
    start();
    expectStillWaiting();
}

TEST_F(TcpLoopbackServerTest, WhoeverLetsGoOfItEndsIt) {
    start();
    Caller waiting(port, "GET /call");
    settle();
    server.reset();
    EXPECT_EQ(waiting.wholeAnswer(), "");
    QTcpSocket late;
    late.connectToHost(QHostAddress::LocalHost, port);
    EXPECT_TRUE(
        turnUntil([&] { return late.error() == QAbstractSocket::ConnectionRefusedError; }, 10s));
    EXPECT_TRUE(results.empty());
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(TcpLoopbackServerTest, OnlyThisComputerReachesIt) {
    start();
    QTcpSocket overSix;
    overSix.connectToHost(QHostAddress::LocalHostIPv6, port);
    EXPECT_TRUE(
        turnUntil([&] { return overSix.state() == QAbstractSocket::UnconnectedState; }, 10s));
    for (const QHostAddress& address : QNetworkInterface::allAddresses()) {
        if (address.isLoopback() || address.protocol() != QAbstractSocket::IPv4Protocol) continue;
        QTcpSocket fromOutside;
        fromOutside.connectToHost(address, port);
        EXPECT_TRUE(turnUntil(
            [&] { return fromOutside.state() == QAbstractSocket::UnconnectedState; }, 10s))
            << address.toString().toStdString();
    }
    expectStillWaiting();
}

TEST_F(TcpLoopbackServerTest, APortThatIsTakenIsTold) {
    start();
    TcpLoopbackServer second(clock, port);
    const auto started = second.start([](const LoopbackServer::Result&) { FAIL(); });
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error().message(),
              u"Another program uses port %1, which sign-in needs."_s.arg(port));
    EXPECT_EQ(started.error().kind(), SignInError::Kind::Failed);
    expectStillWaiting();
}

TEST_F(TcpLoopbackServerTest, ARequestMayComeInPieces) {
    start();
    Caller browser(port);
    for (const char byte : redirected) {
        EXPECT_TRUE(results.empty());
        browser.say(QByteArray(1, byte));
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(address(), "http://127.0.0.1:18742/callback?handoff=abc");
}

TEST_F(TcpLoopbackServerTest, TheFirstRequestWinsWhateverItsPath) {
    start();
    Caller browser(port, "GET /favicon.ico HTTP/1.1\r\n\r\n");
    EXPECT_EQ(address(), "http://127.0.0.1:18742/favicon.ico");
    EXPECT_THAT(browser.wholeAnswer(), StartsWith("HTTP/1.1 200 OK\r\n"));
}

TEST_F(TcpLoopbackServerTest, ARequestWithoutAPathIsTheCallback) {
    start();
    const Caller browser(port, "GET\r\n\r\n");
    EXPECT_EQ(address(), "http://127.0.0.1:18742/callback");
}

TEST_F(TcpLoopbackServerTest, ARequestThatBreaksOffCountsAsFarAsItCame) {
    start();
    Caller browser(port, "GET");
    settle();
    EXPECT_TRUE(results.empty());
    browser.socket.disconnectFromHost();
    EXPECT_EQ(address(), "http://127.0.0.1:18742/callback");
}

TEST_F(TcpLoopbackServerTest, BinaryEndsItWithoutACode) {
    start();
    QByteArray bytes = "GET /callback?handoff=abc HTTP/1.1\r\n";
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    const Caller other(port, bytes + "\r\n\r\n");
    EXPECT_EQ(address(), "http://127.0.0.1:18742/callback");
}

TEST_F(TcpLoopbackServerTest, OfTwoAtOnceOneCounts) {
    start();
    Caller first(port);
    Caller second(port);
    first.say(redirected);
    second.say("GET /callback?handoff=other HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(waitForResult());
    EXPECT_TRUE(turnUntil([&] { return first.isHungUpOn() && second.isHungUpOn(); }, 10s));
    EXPECT_EQ(results.size(), 1u);
}

TEST_F(TcpLoopbackServerTest, WhoSaysNothingIsHungUpOnAndChangesNothing) {
    start();
    Caller silent(port);
    const Caller scanner(port);
    settle();
    EXPECT_GT(clock.pendingTimers(), 0u);
    clock.advance(TcpLoopbackServer::patience);
    EXPECT_EQ(silent.wholeAnswer(), "");
    expectStillWaiting();
}

TEST_F(TcpLoopbackServerTest, WhoHangsUpAtOnceChangesNothing) {
    start();
    {
        Caller preconnect(port);
        preconnect.socket.disconnectFromHost();
        Caller reset(port);
        reset.socket.abort();
    }
    settle();
    expectStillWaiting();
}

TEST_F(TcpLoopbackServerTest, WhoTricklesKeepsNobodyWaiting) {
    start();
    Caller slow(port, "GET /callback?handoff=slow HTTP/1.1\r\nX: ");
    for (auto passed = 0s; passed < TcpLoopbackServer::patience; passed += 1s) {
        slow.say("a");
        settle();
        EXPECT_FALSE(slow.isHungUpOn());
        clock.advance(1s);
    }
    EXPECT_EQ(slow.wholeAnswer(), "");
    expectStillWaiting();
}

TEST_F(TcpLoopbackServerTest, WhoTricklesDoesNotHoldUpTheBrowser) {
    start();
    const Caller slow(port, "GET /call");
    settle();
    expectStillWaiting();
}

TEST_F(TcpLoopbackServerTest, OfManyConnectionsTheOldestGoes) {
    start();
    std::vector<std::unique_ptr<Caller>> crowd;
    for (std::size_t made = 0; made <= TcpLoopbackServer::mostConnections; ++made)
        crowd.push_back(std::make_unique<Caller>(port));
    EXPECT_EQ(crowd.front()->wholeAnswer(), "");
    EXPECT_FALSE(crowd.back()->isHungUpOn());
    expectStillWaiting();
}

TEST_F(TcpLoopbackServerTest, ALineWithoutAnEndIsRefused) {
    start();
    Caller flood(port);
    flood.say("GET /callback?handoff=");
    flood.say(QByteArray(1 << 20, 'a'));
    EXPECT_TRUE(turnUntil([&] { return flood.isHungUpOn(); }, 10s));
    expectStillWaiting();
}

TEST_F(TcpLoopbackServerTest, ALongRequestThatEndsInTimeIsWelcome) {
    start();
    const QByteArray head = "GET /callback?handoff=abc HTTP/1.1\r\nX: ";
    const QByteArray filling(LoopbackRequest::longest - head.size() - 4, 'a');
    const Caller browser(port, head + filling + "\r\n\r\n");
    EXPECT_EQ(address(), "http://127.0.0.1:18742/callback?handoff=abc");
}

struct HostilePage {
    const char* name;
    QByteArray request;
};

void PrintTo(const HostilePage& page, std::ostream* out) {
    *out << page.name;
}

class HostilePageTest : public TcpLoopbackServerTest,
                        public testing::WithParamInterface<HostilePage> {};

TEST_P(HostilePageTest, HandsNoSessionInAndEndsNothing) {
    start();
    Caller page(port, GetParam().request);
    const std::string answer = page.wholeAnswer();
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 403 Forbidden\r\n"));
    EXPECT_THAT(answer, testing::Not(HasSubstr("Access-Control")));
    EXPECT_THAT(answer, testing::Not(HasSubstr("Complete")));
    expectStillWaiting();
}

INSTANTIATE_TEST_SUITE_P(
    Loopback, HostilePageTest,
    testing::Values(
        HostilePage{"fetch", "GET /callback?handoff=evil HTTP/1.1\r\nHost: 127.0.0.1:18742\r\n"
                             "Origin: https://evil.example\r\nSec-Fetch-Mode: cors\r\n"
                             "Sec-Fetch-Dest: empty\r\n\r\n"},
        HostilePage{"fetch_without_cors",
                    "GET /callback?handoff=evil HTTP/1.1\r\nHost: 127.0.0.1:18742\r\n"
                    "Sec-Fetch-Mode: no-cors\r\nSec-Fetch-Dest: empty\r\n\r\n"},
        HostilePage{"preflight", "OPTIONS /callback?handoff=evil HTTP/1.1\r\n"
                                 "Host: 127.0.0.1:18742\r\nOrigin: https://evil.example\r\n"
                                 "Access-Control-Request-Private-Network: true\r\n\r\n"},
        HostilePage{"form", "POST /callback?handoff=evil HTTP/1.1\r\nHost: 127.0.0.1:18742\r\n"
                            "Origin: https://evil.example\r\nSec-Fetch-Mode: navigate\r\n"
                            "Sec-Fetch-Dest: document\r\nContent-Length: 3\r\n\r\na=b"},
        HostilePage{"frame", "GET /callback?handoff=evil HTTP/1.1\r\nHost: 127.0.0.1:18742\r\n"
                             "Sec-Fetch-Mode: navigate\r\nSec-Fetch-Dest: iframe\r\n\r\n"},
        HostilePage{"picture", "GET /favicon.ico HTTP/1.1\r\nHost: 127.0.0.1:18742\r\n"
                               "Sec-Fetch-Mode: no-cors\r\nSec-Fetch-Dest: image\r\n\r\n"},
        HostilePage{"rebound_name",
                    "GET /callback?handoff=evil HTTP/1.1\r\nHost: evil.example:18742\r\n"
                    "Sec-Fetch-Mode: navigate\r\nSec-Fetch-Dest: document\r\n\r\n"}),
    testing::PrintToStringParamName());

} // namespace
} // namespace vorq
