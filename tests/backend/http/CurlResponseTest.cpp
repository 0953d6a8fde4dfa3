#include "backend/http/CurlTransport.h"
#include "doubles/backend/Awaiting.h"
#include "doubles/backend/ScriptedHttpServer.h"
#include "platform/testing/ManualClock.h"

#include <QTcpSocket>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Server = ScriptedHttpServer;

const QByteArray chunkedHead = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";

// What the transport makes of the bytes of a response.
class CurlResponseTest : public testing::Test {
  protected:
    struct Got {
        std::optional<int> status;
        QByteArray body;
        QString failure;
    };

    HttpRequest request(const QByteArray& method = "GET") const {
        return {.url = server.url() + u"/a"_s,
                .method = method,
                .headers = {},
                .body = {},
                .timeout = 60s};
    }

    Outcome<std::unique_ptr<HttpResponse>> open(HttpRequest asked) {
        return Outcome(transport.open(std::move(asked), {}));
    }

    // What comes of a response after which the server hangs up, or not.
    Got get(const QByteArray& response, bool closes = true) {
        server.onRequest([&](std::size_t at) {
            server.send(at, response);
            if (closes) server.close(at);
        });
        const auto opening = open(request());
        Got got;
        if (!opening.wait()) return got;
        got.failure = opening.message();
        if (!opening.succeeded()) return got;
        got.status = opening.value()->status();
        while (true) {
            const Outcome read(opening.value()->read({}));
            if (!read.wait()) return got;
            got.failure = read.message();
            if (!read.succeeded() || read.value().isEmpty()) return got;
            got.body += read.value();
        }
    }

    Server server;
    ManualClock clock;
    CurlTransport transport{clock};
};

TEST_F(CurlResponseTest, ABodyEndsByItsLength) {
    const Got got = get("HTTP/1.1 200 OK\r\ncontent-length:  5 \r\n\r\nhelloBEHIND", false);
    EXPECT_EQ(got.status, 200);
    EXPECT_EQ(got.body, "hello");
    EXPECT_EQ(got.failure, u"");
}

TEST_F(CurlResponseTest, ABodyEndsByItsLastChunk) {
    const Got got = get(
        chunkedHead + "5\r\nhello\r\n1;name=value\r\n,\r\n6\r\n world\r\n0\r\nTrailer: x\r\n\r\n",
        false);
    EXPECT_EQ(got.body, "hello, world");
    EXPECT_EQ(got.failure, u"");
}

TEST_F(CurlResponseTest, InterimResponsesAreSkipped) {
    const Got got = get("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Early Hints\r\nLink: x\r\n\r\n" +
                        Server::response(404, "gone"));
    EXPECT_EQ(got.status, 404);
    EXPECT_EQ(got.body, "gone");
}

TEST_F(CurlResponseTest, SomeResponsesHaveNoBody) {
    EXPECT_EQ(get("HTTP/1.1 204 No Content\r\n\r\n", false).status, 204);
    EXPECT_EQ(get("HTTP/1.1 304 x\r\nContent-Length: 9\r\n\r\n", false).status, 304);
}

TEST_F(CurlResponseTest, WhatIsNoResponseFails) {
    for (const char* response : {
             "SSH-2.0-x\r\n",
             "\r\n",
             "no http at all",
             "HTTP/1.1 20 OK\r\n\r\n",
             "HTTP/1.1 abc\r\n\r\n",
             "HTTP/1.1 101 Switching\r\n\r\n",
             "HTTP/1.1 100 Continue\r\n\r\n",
             "HTTP/1.1 200 OK\r\nContent-Length: x\r\n\r\n",
             "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n",
             "HTTP/1.1 200",
             "",
         }) {
        const Got got = get(response);
        EXPECT_EQ(got.status, std::nullopt) << response;
        EXPECT_NE(got.failure, u"") << response;
    }
}

TEST_F(CurlResponseTest, AProtocolThatNobodyAskedForFailsAtOnce) {
    EXPECT_NE(get("HTTP/1.1 101 Switching\r\n\r\n", false).failure, u"");
}

TEST_F(CurlResponseTest, ABodyThatIsCutShortOrGarbledFails) {
    for (const QByteArray& response : {
             QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\nhello"),
             chunkedHead + "50\r\nhello",
             chunkedHead + "5\r\nhello\r\n",
             chunkedHead + "5\r\nhello\r\nx\r\n",
             chunkedHead + "5\r\nhello\r\n-1\r\n",
         }) {
        const Got got = get(response);
        EXPECT_EQ(got.status, 200) << response.constData();
        EXPECT_TRUE(QByteArray("hello").startsWith(got.body)) << response.constData();
        EXPECT_EQ(got.failure, u"The connection to Vorq broke off before the reply was complete.")
            << response.constData();
    }
}

TEST_F(CurlResponseTest, AHeadWithoutEndFails) {
    const QByteArray header = "X-Long: " + QByteArray(1000, 'x') + "\r\n";
    const Got got = get("HTTP/1.1 200 OK\r\n" + header.repeated(1000), false);
    EXPECT_NE(got.failure, u"");
}

TEST_F(CurlResponseTest, DroppingTheResponseClosesTheConnection) {
    server.onRequest([this](std::size_t at) { server.send(at, chunkedHead); });
    std::unique_ptr<HttpResponse> response;
    auto holder = [](HttpTransport& by, HttpRequest asked,
                     std::unique_ptr<HttpResponse>& into) -> QCoro::Task<> {
        into = co_await by.open(std::move(asked), {});
    };
    const Outcome opening(holder(transport, request(), response));
    ASSERT_TRUE(opening.wait());
    const Outcome read(response->read({}));
    ASSERT_TRUE(turnUntil([this] { return clock.pendingTimers() == 1; }));
    response.reset();
    ASSERT_TRUE(read.wait());
    EXPECT_TRUE(read.holds<TransferError>());
    EXPECT_EQ(clock.pendingTimers(), 0u);
    EXPECT_TRUE(turnUntil([this] { return server.isClosed(0); }));
}

TEST_F(CurlResponseTest, TheEndIsToldAgainToWhoeverReadsOn) {
    server.onRequest([this](std::size_t at) { server.send(at, Server::response(200, "x")); });
    const auto opening = open(request());
    ASSERT_TRUE(opening.wait());
    for (const char* expected : {"x", "", ""}) {
        const Outcome read(opening.value()->read({}));
        ASSERT_TRUE(read.wait());
        EXPECT_EQ(read.value(), expected);
    }
}

TEST_F(CurlResponseTest, TheRequestIsSentAsItIsGiven) {
    HttpRequest asked = request("PUT");
    asked.url = QUrl(server.url().replace(u"//"_s, u"//user:word@"_s) + u"/a/%2e%2e/b%20c?d=e#f"_s);
    asked.headers = {{"X-Empty", ""}, {"X-Given", "a: b"}};
    asked.body = QByteArray("a\0b", 3);
    const auto opening = open(asked);
    ASSERT_TRUE(turnUntil([this] { return server.hasRequest(0); }));
    const QByteArray received = server.received(0);
    const QByteArray target =
        asked.url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment);
    EXPECT_TRUE(received.startsWith("PUT " + target + " HTTP/1.1\r\n"));
    EXPECT_TRUE(received.contains("\r\nX-Empty:\r\n"));
    EXPECT_TRUE(received.contains("\r\nX-Given: a: b\r\n"));
    EXPECT_FALSE(received.contains("Authorization"));
    EXPECT_FALSE(received.contains("Content-Type"));
    EXPECT_TRUE(received.endsWith(QByteArray("\r\n\r\na\0b", 7)));
}

} // namespace
} // namespace vorq
