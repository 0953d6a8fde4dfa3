#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/TestGateway.h"
#include "engine/ReadyReply.h"
#include "support/ProcessLimits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using std::chrono::milliseconds;
using std::chrono::seconds;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Clients = std::vector<std::unique_ptr<RawClient>>;

constexpr auto kBeginOfRequest = "POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\n";

Clients connected(int port, int count, const std::string& firstBytes) {
    Clients clients;
    for (int i = 0; i < count; ++i) {
        clients.push_back(std::make_unique<RawClient>(port));
        clients.back()->send(firstBytes);
    }
    return clients;
}

void expectAnswerWithin(TestGateway& gateway, milliseconds limit) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(gateway.post("/ai/prompt", {{"prompt", "hello"}}).status, 200);
    EXPECT_EQ(gateway.post("/auth/refresh", {{"refreshToken", "junk"}}).status, 401);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, limit);
}

TEST(CrowdTest, TricklingConnectionsKeepNobodyWaiting) {
    TestGateway gateway;
    gateway.signIn();
    const Clients trickling = connected(gateway.port, 300, kBeginOfRequest);
    std::atomic<bool> ending = false;
    std::thread drip([&] {
        while (!ending) {
            for (const auto& client : trickling)
                client->send("X");
            std::this_thread::sleep_for(milliseconds(50));
        }
    });
    for (int i = 0; i < 5; ++i)
        expectAnswerWithin(gateway, seconds(2));
    ending = true;
    drip.join();
}

TEST(CrowdTest, IdleConnectionsKeepNobodyWaiting) {
    ASSERT_GT(raiseFileLimit(), 4000U) << "this test needs 3000 open files: ulimit -Hn";
    TestGateway gateway;
    gateway.signIn();
    const Clients idle = connected(gateway.port, 1500, "");
    expectAnswerWithin(gateway, seconds(2));
}

TEST(CrowdTest, HalfBodiesKeepNobodyWaiting) {
    TestGateway gateway;
    gateway.signIn();
    const Clients half =
        connected(gateway.port, 300,
                  std::string(kBeginOfRequest) + "Content-Type: application/json\r\n" +
                      "Authorization: Bearer " + gateway.token +
                      "\r\nContent-Length: 1000\r\n\r\n{\"prompt\"");
    expectAnswerWithin(gateway, seconds(2));
}

TEST(CrowdTest, OfTooManyConnectionsThoseGoThatKeptTheirRequestBackForLongest) {
    TestGateway gateway;
    gateway.signIn();
    GatewayServer small(gateway.router, 20);
    const int port = small.bind("127.0.0.1", 0);
    std::thread thread([&] { small.run(); });
    const Clients idle = connected(port, 40, kBeginOfRequest);
    RawClient late(port);
    late.send("POST /nowhere HTTP/1.1\r\nHost: localhost\r\nContent-Length: 0\r\n\r\n");
    EXPECT_THAT(late.receiveAll(), StartsWith("HTTP/1.1 404"));
    EXPECT_TRUE(idle.front()->isClosedWithin(seconds(3)));
    small.stop();
    thread.join();
}

TEST(CrowdTest, StreamsBesideWhichNothingElseWaits) {
    /// Its replies never end.
    class EndlessEngine final : public Engine {
      public:
        class Reply final : public ReplyStream {
          public:
            ReplyStep step(SteadyTime) override {
                if (std::exchange(m_hasBegun, true)) return {.kind = ReplyStep::Kind::Waits};
                return {.kind = ReplyStep::Kind::Grew, .text = "first"};
            }
            FinishedReply result() override { return Analysis(); }

          private:
            bool m_hasBegun = false;
        };
        std::unique_ptr<ReplyStream> prompt(const PromptRequest&) override {
            return std::make_unique<Reply>();
        }
        std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest&) override {
            return std::make_unique<Reply>();
        }
        std::unique_ptr<ReplyStream> flashcards(const FlashcardsRequest&) override {
            return std::make_unique<Reply>();
        }
        std::unique_ptr<ReplyStream> quiz(const QuizRequest&) override {
            throw EngineError(422, "No quiz today.");
        }
    };
    ASSERT_GT(raiseFileLimit(), 4000U) << "this test needs 2000 open files: ulimit -Hn";
    TestGateway gateway(std::make_unique<EndlessEngine>());
    gateway.signIn();
    const std::string body = json({{"prompt", "x"}, {"stream", true}}).dump();
    const Clients streams =
        connected(gateway.port, 1000,
                  std::string(kBeginOfRequest) +
                      "Content-Type: application/json\r\nAuthorization: Bearer " + gateway.token +
                      "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    for (const auto& stream : streams)
        EXPECT_THAT(stream->receiveUntil("first"), HasSubstr("data: {\"text\":\"first\"}"));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(gateway.post("/auth/refresh", {{"refreshToken", gateway.refreshToken}}).status, 200);
    EXPECT_EQ(gateway.post("/ai/quiz", {{"text", "x"}}).status, 422);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, seconds(1));
    gateway.stop();
    for (const auto& stream : streams)
        EXPECT_THAT(stream->receiveAll(), HasSubstr("was stopped"));
}

/// Begins no reply until it is released.
class HeldEngine final : public Engine {
  public:
    explicit HeldEngine(std::shared_future<void> release) : m_release(std::move(release)) {}

    std::unique_ptr<ReplyStream> prompt(const PromptRequest&) override {
        m_release.wait();
        Analysis analysis;
        analysis.summary = "released";
        return std::make_unique<ReadyReply>(std::move(analysis));
    }
    std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest&) override {
        throw EngineError(422, "No analysis today.");
    }
    std::unique_ptr<ReplyStream> flashcards(const FlashcardsRequest&) override {
        throw EngineError(422, "No flashcards today.");
    }
    std::unique_ptr<ReplyStream> quiz(const QuizRequest&) override {
        throw EngineError(422, "No quiz today.");
    }

  private:
    std::shared_future<void> m_release;
};

/// A gateway with a crowd that waits for its replies to begin: more than may begin at a time.
class LineTest : public ::testing::Test {
  protected:
    LineTest() {
        gateway.signIn();
        const std::string body = R"({"prompt":"x"})";
        crowd = connected(gateway.port, 80,
                          std::string(kBeginOfRequest) +
                              "Content-Type: application/json\r\nAuthorization: Bearer " +
                              gateway.token + "\r\nContent-Length: " + std::to_string(body.size()) +
                              "\r\n\r\n" + body);
    }
    ~LineTest() override { letGo(); }
    void letGo() {
        if (!std::exchange(isReleased, true)) release.set_value();
    }
    int refresh() {
        return gateway.post("/auth/refresh", {{"refreshToken", gateway.refreshToken}}).status;
    }

    std::promise<void> release;
    bool isReleased = false;
    TestGateway gateway{std::make_unique<HeldEngine>(release.get_future().share())};
    Clients crowd;
};

TEST_F(LineTest, LetsOthersPassAndIsAnsweredInFull) {
    EXPECT_EQ(refresh(), 200);
    letGo();
    for (const auto& client : crowd)
        EXPECT_THAT(client->receiveAll(), HasSubstr("released"));
}

TEST_F(LineTest, ThoseWhoLeaveItHoldNobodyUp) {
    crowd.resize(10);
    EXPECT_EQ(refresh(), 200);
    letGo();
    for (const auto& client : crowd)
        EXPECT_THAT(client->receiveAll(), HasSubstr("released"));
    EXPECT_EQ(gateway.post("/ai/prompt", {{"prompt", "x"}}).body.value("summary", ""), "released");
}

TEST_F(LineTest, IsToldThatTheServerStops) {
    EXPECT_EQ(refresh(), 200);
    std::thread stopping([this] { gateway.stop(); });
    EXPECT_THAT(crowd.back()->receiveAll(),
                AllOf(StartsWith("HTTP/1.1 503"), HasSubstr("was stopped")));
    letGo();
    stopping.join();
}

} // namespace
} // namespace vorq::gateway::testing
