#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/TestGateway.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <future>
#include <thread>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr std::size_t kMegabyte = std::size_t{1024} * 1024;
#if __has_feature(address_sanitizer)
// The sanitizer keeps what was freed, up to 256 MB, and marks around it.
constexpr std::size_t kKeptFreed = 384 * kMegabyte;
#else
constexpr std::size_t kKeptFreed = 0;
#endif

/// What this process holds in memory, in bytes.
std::size_t residentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    file >> all >> resident;
    return resident * 4096;
}

TEST(RequestLimitTest, HeadersBeyondSixtyFourKilobytesAre431) {
    TestGateway gateway;
    const std::string begin = "POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\n";
    for (const std::string& headers :
         {"X-Long: " + std::string(70'000, 'x') + "\r\n", std::string(70'000, 'x')}) {
        RawClient client(gateway.port);
        client.send(begin + headers);
        const std::string answer = client.receiveAll();
        EXPECT_THAT(answer, StartsWith("HTTP/1.1 431"));
        EXPECT_THAT(answer, HasSubstr("64 KB"));
    }
    std::string many = begin;
    while (many.size() < 70'000)
        many += "X-Many: x\r\n";
    RawClient client(gateway.port);
    client.send(many);
    EXPECT_THAT(client.receiveAll(), StartsWith("HTTP/1.1 431"));
}

TEST(RequestLimitTest, HeadersOfManyConnectionsTakeLittleMemory) {
    TestGateway gateway;
    const std::size_t before = residentBytes();
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 24; ++i) {
        clients.push_back(std::make_unique<RawClient>(gateway.port));
        clients.back()->send("POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\n");
        for (int line = 0; line < 200; ++line)
            clients.back()->send("X-Endless: " + std::string(10'000, 'x') + "\r\n");
    }
    for (const auto& client : clients)
        static_cast<void>(client->receiveAll());
    EXPECT_LT(residentBytes(), before + kKeptFreed + 40 * kMegabyte);
}

TEST(RequestLimitTest, AStrangersBodyBeyondSixtyFourKilobytesIs413) {
    TestGateway gateway;
    const std::string large(std::size_t{65} * 1024, ' ');
    for (const char* path : {"/auth/refresh", "/auth/mac-handoff/exchange"}) {
        const Answer answer = gateway.postRaw(path, "{}" + large);
        EXPECT_EQ(answer.status, 413) << path;
        EXPECT_THAT(answer.body.value("error", ""), HasSubstr("64 KB"));
        EXPECT_EQ(gateway.postRaw(path, "{}" + std::string(1000, ' ')).status, 400) << path;
    }
    // Whoever may send more has to be known first.
    gateway.token = "made-up";
    EXPECT_EQ(gateway.postRaw("/ai/prompt", "{}" + large).status, 401);
}

TEST(RequestLimitTest, AStrangersChunkedBodyBeyondSixtyFourKilobytesIs413) {
    TestGateway gateway;
    RawClient client(gateway.port);
    client.send("POST /auth/refresh HTTP/1.1\r\nHost: localhost\r\nContent-Type: "
                "application/json\r\nTransfer-Encoding: chunked\r\n\r\n");
    for (int i = 0; i < 9; ++i)
        client.send("2000\r\n" + std::string(0x2000, ' ') + "\r\n");
    EXPECT_THAT(client.receiveAll(), StartsWith("HTTP/1.1 413"));
}

TEST(RequestLimitTest, JsonOfVeryManyValuesIsRefusedBeforeItIsBuilt) {
    TestGateway gateway;
    gateway.signIn();
    std::string body = "{\"prompt\":[{}";
    while (body.size() < 15 * kMegabyte)
        body += ",{}";
    body += "]}";
    const std::size_t before = residentBytes();
    for (int i = 0; i < 3; ++i) {
        const Answer answer = gateway.postRaw("/ai/prompt", body);
        EXPECT_EQ(answer.status, 400);
        EXPECT_THAT(answer.body.value("error", ""), HasSubstr("too many values"));
    }
    EXPECT_LT(residentBytes(), before + kKeptFreed + 100 * kMegabyte);
}

/// Keeps its threads until it is released.
class HeldEngine final : public Engine {
  public:
    explicit HeldEngine(std::shared_future<void> isReleased)
        : m_isReleased(std::move(isReleased)) {}

    std::atomic<int> inside = 0;

    std::unique_ptr<ReplyStream> prompt(const PromptRequest&) override {
        ++inside;
        m_isReleased.wait();
        PromptRequest hello;
        hello.prompt = "hello";
        return m_engine.prompt(hello);
    }
    std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest& request) override {
        return m_engine.analyze(request);
    }
    std::unique_ptr<ReplyStream> flashcards(const FlashcardsRequest& request) override {
        return m_engine.flashcards(request);
    }
    std::unique_ptr<ReplyStream> quiz(const QuizRequest& request) override {
        return m_engine.quiz(request);
    }

  private:
    std::shared_future<void> m_isReleased;
    EmbeddedEngine m_engine{std::chrono::milliseconds(0)};
};

TEST(RequestLimitTest, LargeRequestsMakeRoomForOthersOnceTheyAreRead) {
    std::promise<void> release;
    auto engine = std::make_unique<HeldEngine>(release.get_future().share());
    const HeldEngine& held = *engine;
    TestGateway gateway(std::move(engine));
    gateway.signIn();
    const std::string body =
        json({{"prompt", "x"}, {"unknown", std::string(15 * kMegabyte, 'x')}}).dump();
    const std::string head =
        "POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
        "Authorization: Bearer " +
        gateway.token + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n";
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int count = 1; count <= 4; ++count) {
        clients.push_back(std::make_unique<RawClient>(gateway.port));
        clients.back()->send(head + "\r\n");
        clients.back()->send(body);
        while (held.inside < count)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    RawClient last(gateway.port);
    last.send(head + "Expect: 100-continue\r\n\r\n");
    EXPECT_THAT(last.receiveUntil("\r\n\r\n"), StartsWith("HTTP/1.1 100 Continue"));
    release.set_value();
    for (const auto& client : clients)
        EXPECT_THAT(client->receiveAll(), StartsWith("HTTP/1.1 200 OK"));
}

TEST(RequestLimitTest, TextWithManyMarksIsNoMatter) {
    TestGateway gateway;
    gateway.signIn();
    const json body = {{"prompt", "hello"}, {"selectedText", std::string(200'000, ',')}};
    EXPECT_EQ(gateway.post("/ai/prompt", body).status, 200);
}

TEST(RequestLimitTest, AClientThatAsksFirstIsToldToGoOn) {
    TestGateway gateway;
    gateway.signIn();
    const std::string body = json({{"prompt", "hello"}}).dump();
    RawClient client(gateway.port);
    client.send("POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
                "Expect: 100-continue\r\nAuthorization: Bearer " +
                gateway.token + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n");
    EXPECT_THAT(client.receiveUntil("\r\n\r\n"), StartsWith("HTTP/1.1 100 Continue"));
    client.send(body);
    EXPECT_THAT(client.receiveAll(), StartsWith("HTTP/1.1 200 OK"));
}

TEST(RequestLimitTest, AnOldClientGetsItsStreamWithoutChunks) {
    TestGateway gateway;
    gateway.signIn();
    const std::string body = json({{"prompt", "hello"}, {"stream", true}}).dump();
    RawClient client(gateway.port);
    client.send("POST /ai/prompt HTTP/1.0\r\nHost: localhost\r\nContent-Type: application/json\r\n"
                "Authorization: Bearer " +
                gateway.token + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
                body);
    const std::string answer = client.receiveAll();
    EXPECT_EQ(answer.find("chunked"), std::string::npos);
    EXPECT_THAT(answer, HasSubstr("\r\n\r\ndata: {"));
    EXPECT_TRUE(answer.ends_with("\n\n"));
}

} // namespace
} // namespace vorq::gateway::testing
