#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/TestGateway.h"
#include "support/ProcessLimits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace vorq::gateway::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr std::size_t kBeyondTheLimit = 70'000;

/// The beginning of a head whose next line starts at `offset` of a piece of `piece` bytes.
std::string headUpTo(std::size_t offset, std::size_t piece) {
    std::string head = "POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\nX-Pad: ";
    head.append((offset + 2 * piece - head.size() - 2) % piece, 'x');
    return head + "\r\n";
}

std::string lineOf(std::size_t size) {
    return "X-Many: " + std::string(size - 10, 'x') + "\r\n";
}

TEST(RequestHeadTest, LongHeadsOfShortLinesAre431WhereverTheLinesBegin) {
    TestGateway gateway;
    for (const std::size_t size : {16U, 512U, 1024U}) {
        // The last byte of each piece that is read is the first one of a line.
        std::string head = headUpTo(size - 1, size);
        while (head.size() < kBeyondTheLimit)
            head += lineOf(size);
        RawClient client(gateway.port);
        client.send(head);
        EXPECT_THAT(client.receiveAll(), StartsWith("HTTP/1.1 431")) << size;
    }
}

TEST(RequestHeadTest, AHundredLinesPassAndManyMoreAre431) {
    TestGateway gateway;
    const auto answerTo = [&](int lines) {
        std::string request = "POST /nowhere HTTP/1.1\r\nHost: localhost\r\n";
        for (int i = 0; i < lines; ++i)
            request += "A:\r\n";
        return rawExchange(gateway.port, request + "\r\n");
    };
    EXPECT_THAT(answerTo(95), StartsWith("HTTP/1.1 404"));
    const std::string refusal = answerTo(10'000);
    EXPECT_THAT(refusal, StartsWith("HTTP/1.1 431"));
    EXPECT_THAT(refusal, HasSubstr("100 headers"));
}

TEST(RequestHeadTest, AHeadThatComesByteByByteIsRead) {
    TestGateway gateway;
    RawClient client(gateway.port);
    for (const char byte : std::string("POST /nowhere HTTP/1.1\r\nHost: localhost\r\n\r\n")) {
        client.send(std::string(1, byte));
        std::this_thread::sleep_for(milliseconds(2));
    }
    EXPECT_THAT(client.receiveAll(), StartsWith("HTTP/1.1 404"));
}

TEST(RequestHeadTest, OneThatTricklesForLongerThanASilentOneMayIsRead) {
    TestGateway gateway;
    RawClient client(gateway.port);
    client.send("POST /nowhere HTTP/1.1\r\n");
    std::this_thread::sleep_for(milliseconds(10'500));
    client.send("Host: localhost\r\n\r\n");
    EXPECT_THAT(client.receiveAll(), StartsWith("HTTP/1.1 404"));
}

TEST(RequestHeadTest, HalfHeadsBeyondTheRoomForThemDismissTheOldest) {
    ASSERT_GT(raiseFileLimit(), 4000U) << "this test needs 2400 open files: ulimit -Hn";
    TestGateway gateway;
    const std::string half =
        "POST /nowhere HTTP/1.1\r\nHost: localhost\r\nX-Long: " + std::string(60'000, 'x');
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 1200; ++i) { // 72 MB
        clients.push_back(std::make_unique<RawClient>(gateway.port));
        clients.back()->send(half);
    }
    // Long before its time is over, after which it would be closed anyway.
    EXPECT_TRUE(clients.front()->isClosedWithin(seconds(30)));
    clients.back()->send("\r\n\r\n");
    EXPECT_THAT(clients.back()->receiveAll(), StartsWith("HTTP/1.1 404"));
}

TEST(RequestHeadTest, TrailersWithoutEndAreRefused) {
    TestGateway gateway;
    std::string request = "POST /auth/refresh HTTP/1.1\r\nHost: localhost\r\n"
                          "Content-Type: application/json\r\nTransfer-Encoding: chunked\r\n\r\n"
                          "2\r\n{}\r\n0\r\n";
    while (request.size() < kBeyondTheLimit)
        request += lineOf(16);
    RawClient client(gateway.port);
    client.send(request);
    const std::string answer = client.receiveAll();
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 400"));
    EXPECT_THAT(answer, HasSubstr("trailers"));
}

TEST(RequestHeadTest, AChunkWhoseFirstLineIsTooLongIsNoMatterOfHeaders) {
    TestGateway gateway;
    RawClient client(gateway.port);
    client.send("POST /auth/refresh HTTP/1.1\r\nHost: localhost\r\n"
                "Content-Type: application/json\r\nTransfer-Encoding: chunked\r\n\r\n2;" +
                std::string(200'000, 'x'));
    const std::string answer = client.receiveAll();
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 400"));
    EXPECT_THAT(answer, HasSubstr("chunk line"));
}

} // namespace
} // namespace vorq::gateway::testing
