#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/TestGateway.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <utility>

namespace vorq::gateway::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using ::testing::HasSubstr;

/// Replies that begin with so much text that their next steps are not taken on the server's thread.
class LargeReplyEngine final : public Engine {
  public:
    using Caller = std::function<void()>;
    /// `next` gives the steps of a reply after its first.
    using Next = std::function<ReplyStep(const Caller& call)>;

    explicit LargeReplyEngine(Next next) : m_next(std::move(next)) {}

    [[nodiscard]] bool computes() const override { return false; }
    std::unique_ptr<ReplyStream> prompt(const PromptRequest&) override {
        return std::make_unique<Reply>(m_next);
    }
    std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest&) override {
        return std::make_unique<Reply>(m_next);
    }
    std::unique_ptr<ReplyStream> flashcards(const FlashcardsRequest&) override {
        return std::make_unique<Reply>(m_next);
    }
    std::unique_ptr<ReplyStream> quiz(const QuizRequest&) override {
        return std::make_unique<Reply>(m_next);
    }

  private:
    class Reply final : public ReplyStream {
      public:
        explicit Reply(const Next& next) : m_next(next) {}
        void setCaller(const Caller& call) override { m_call = call; }
        ReplyStep step(SteadyTime) override {
            if (std::exchange(m_hasBegun, true)) return m_next(m_call);
            return {.kind = ReplyStep::Kind::Grew, .text = std::string(70'000, 'x') + "first"};
        }
        FinishedReply result() override { return Analysis(); }

      private:
        const Next& m_next;
        Caller m_call;
        bool m_hasBegun = false;
    };

    Next m_next;
};

std::unique_ptr<RawClient> askForStream(const TestGateway& gateway) {
    const std::string body = R"({"prompt":"x","stream":true})";
    auto client = std::make_unique<RawClient>(gateway.port);
    client->send("POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
                 "Authorization: Bearer " +
                 gateway.token + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
                 body);
    return client;
}

TEST(LargeReplyTest, ACallInTheMidstOfAStepIsHeard) {
    std::atomic<bool> hasCalled = false;
    TestGateway gateway(
        std::make_unique<LargeReplyEngine>([&](const LargeReplyEngine::Caller& call) -> ReplyStep {
            if (hasCalled.exchange(true)) return {};
            call(); // What it tells of came too late for this step.
            std::this_thread::sleep_for(milliseconds(200));
            return {.kind = ReplyStep::Kind::Waits};
        }));
    gateway.signIn();
    const auto client = askForStream(gateway);
    EXPECT_THAT(client->receiveUntil("first"), HasSubstr("first"));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(client->receiveAll(), HasSubstr("\"done\""));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, seconds(5));
}

TEST(LargeReplyTest, AStopEndsThoseWithASentenceWhoseNextStepHasToWait) {
    std::promise<void> release;
    const std::shared_future<void> isReleased = release.get_future().share();
    std::atomic<int> inside = 0;
    TestGateway gateway(
        std::make_unique<LargeReplyEngine>([&, isReleased](const auto&) -> ReplyStep {
            ++inside;
            isReleased.wait();
            return {.kind = ReplyStep::Kind::Waits};
        }));
    gateway.signIn();
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 8; ++i) {
        clients.push_back(askForStream(gateway));
        EXPECT_THAT(clients.back()->receiveUntil("first"), HasSubstr("first"));
    }
    // The steps of half of them find no thread.
    std::this_thread::sleep_for(milliseconds(500));
    EXPECT_EQ(inside, 4);
    gateway.server.stop();
    std::this_thread::sleep_for(milliseconds(200));
    release.set_value();
    for (const auto& client : clients) {
        const std::string rest = client->receiveAll();
        EXPECT_THAT(rest, HasSubstr("was stopped"));
        EXPECT_THAT(rest, HasSubstr("0\r\n\r\n")) << "ended, not cut";
    }
    gateway.stop();
}

} // namespace
} // namespace vorq::gateway::testing
