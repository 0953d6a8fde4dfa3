#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/Samples.h"
#include "doubles/gateway/TestGateway.h"
#include "engine/ReadyReply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

/// Remembers the last request, and its replies do not end where `endless` is set.
class ProbeEngine final : public Engine {
  public:
    std::unique_ptr<ReplyStream> prompt(const PromptRequest& request) override {
        lastPrompt = request;
        return std::make_unique<Stream>(*this);
    }
    std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest& request) override {
        lastAnalysis = request;
        return std::make_unique<Stream>(*this);
    }
    std::unique_ptr<ReplyStream> flashcards(const FlashcardsRequest&) override {
        return std::make_unique<ReadyReply>(std::vector<Flashcard>());
    }
    std::unique_ptr<ReplyStream> quiz(const QuizRequest& request) override {
        lastQuiz = request;
        return std::make_unique<ReadyReply>(Quiz());
    }
    void awaitCancellation() {
        std::unique_lock lock(m_mutex);
        wasCancelled =
            // Sooner than the next heartbeat, which would find out too.
            m_changed.wait_for(lock, std::chrono::seconds(5), [this] { return m_cancelSeen; });
    }

    bool endless = false;
    std::atomic<bool> wasCancelled = false;
    PromptRequest lastPrompt;
    AnalyzeRequest lastAnalysis;
    QuizRequest lastQuiz;

  private:
    class Stream final : public ReplyStream {
      public:
        explicit Stream(ProbeEngine& engine) : m_engine(engine) {}
        Stream(const Stream&) = delete;
        Stream& operator=(const Stream&) = delete;
        ~Stream() override {
            const std::scoped_lock lock(m_engine.m_mutex);
            m_engine.m_cancelSeen = true;
            m_engine.m_changed.notify_all();
        }
        ReplyStep step(SteadyTime) override {
            if (!m_engine.endless) return {};
            if (m_steps++ == 0) return {.kind = ReplyStep::Kind::Grew, .text = "first"};
            return {.kind = ReplyStep::Kind::Waits};
        }
        FinishedReply result() override {
            return Analysis{"done", "f", "c", {{"t", "u"}}, {{"q", {"l"}}}};
        }

      private:
        ProbeEngine& m_engine;
        int m_steps = 0;
    };
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_cancelSeen = false;
};

struct Probe {
    Probe() { gateway.signIn(); }
    std::unique_ptr<ProbeEngine> owned = std::make_unique<ProbeEngine>();
    ProbeEngine& engine = *owned;
    TestGateway gateway{std::move(owned)};
};

TEST(AiEndpointsTest, AStreamGrowsAndClosesWithTheWholeAnalysis) {
    TestGateway gateway;
    gateway.signIn();
    const std::vector<json> events = gateway.stream("/ai/analyze", {{"text", kPlantText}});
    ASSERT_GE(events.size(), 4U);
    for (std::size_t i = 1; i + 1 < events.size(); ++i) {
        const auto before = events[i - 1].at("text").get<std::string>();
        const auto now = events[i].at("text").get<std::string>();
        EXPECT_TRUE(now.starts_with(before));
        EXPECT_GT(now.size(), before.size());
        EXPECT_FALSE(events[i].contains("done"));
    }
    const json& last = events.back();
    EXPECT_EQ(last.at("done"), true);
    EXPECT_EQ(last.at("summary"), events[events.size() - 2].at("text"));
    EXPECT_TRUE(last.at("feedback").is_string());
    EXPECT_TRUE(last.at("corrections").is_string());
    EXPECT_TRUE(last.at("sources").is_array());
    EXPECT_FALSE(last.at("followUp").at("question").get<std::string>().empty());
    EXPECT_FALSE(last.at("followUp").at("labels").empty());
}

TEST(AiEndpointsTest, AStreamIsAnEventStreamAndNeverCompressed) {
    TestGateway gateway;
    gateway.signIn();
    const Answer answer =
        gateway.postRaw("/ai/analyze", json({{"text", kPlantText}, {"stream", true}}).dump(),
                        {{"Accept-Encoding", "gzip, deflate, br"}});
    EXPECT_EQ(answer.headers.find("Content-Type")->second, "text/event-stream");
    EXPECT_EQ(answer.headers.find("Content-Encoding"), answer.headers.end());
    EXPECT_TRUE(answer.text.starts_with("data: {"));
}

TEST(AiEndpointsTest, TheStatusTellsStrangersWhereRepliesComeFrom) {
    TestGateway gateway;
    const auto answer = gateway.client().Get("/status");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(json::parse(answer->body),
              json({{"service", "vorq-gateway"}, {"replies", "embedded"}}));
}

TEST(AiEndpointsTest, WithoutStreamTheAnalysisComesWholeAndWithoutPauses) {
    TestGateway gateway;
    gateway.signIn();
    const Answer answer = gateway.post("/ai/analyze", {{"text", kPlantText}});
    EXPECT_EQ(answer.status, 200);
    for (const char* key : {"summary", "feedback", "corrections"}) {
        EXPECT_TRUE(answer.body.at(key).is_string()) << key;
    }
    EXPECT_TRUE(answer.body.at("sources").is_array());
    EXPECT_EQ(answer.body.at("summary"),
              gateway.stream("/ai/analyze", {{"text", kPlantText}}).back().at("summary"));
}

TEST(AiEndpointsTest, TheWholeRequestReachesTheEngine) {
    Probe probe;
    const json body = {
        {"prompt", "p"},
        {"selectedText", "s"},
        {"screenDataUrl", "data:image/png;base64,AAAA"},
        {"deepResearch", true},
        {"skipUserPreferences", false},
        {"forceLearn", true},
        {"stream", true},
        {"recentMessages",
         {{{"role", "assistant"}, {"content", "a"}}, {{"role", "user"}, {"content", "u"}}}},
        {"preferredModel", "m"}};
    ASSERT_EQ(probe.gateway.post("/auth/profile", {{"useCase", "student"}}).status, 200);
    ASSERT_EQ(probe.gateway.post("/ai/prompt", body).status, 200);
    const PromptRequest& request = probe.engine.lastPrompt;
    EXPECT_EQ(request.prompt, "p");
    EXPECT_EQ(request.selectedText, "s");
    EXPECT_EQ(request.image, "data:image/png;base64,AAAA");
    EXPECT_TRUE(request.deepResearch);
    EXPECT_TRUE(request.forceLearn);
    EXPECT_FALSE(request.whole);
    EXPECT_EQ(request.model, "m");
    EXPECT_EQ(request.preferences.useCase, "student");
    ASSERT_EQ(request.history.size(), 2U);
    EXPECT_FALSE(request.history[0].fromUser);
    EXPECT_EQ(request.history[1].content, "u");
}

TEST(AiEndpointsTest, PreferencesCanBeSkipped) {
    Probe probe;
    ASSERT_EQ(probe.gateway.post("/auth/profile", {{"firstName", "Ada"}}).status, 200);
    ASSERT_EQ(probe.gateway.post("/ai/prompt", {{"prompt", "p"}}).status, 200);
    EXPECT_EQ(probe.engine.lastPrompt.preferences.firstName, "Ada");
    EXPECT_TRUE(probe.engine.lastPrompt.whole);
    const json body = {{"prompt", "p"}, {"skipUserPreferences", true}};
    ASSERT_EQ(probe.gateway.post("/ai/prompt", body).status, 200);
    EXPECT_EQ(probe.engine.lastPrompt.preferences.firstName, "");
}

TEST(AiEndpointsTest, EveryFieldOfTheAnalysisIsSent) {
    Probe probe;
    const json expected = {{"summary", "done"},
                           {"feedback", "f"},
                           {"corrections", "c"},
                           {"sources", {{{"title", "t"}, {"url", "u"}}}},
                           {"followUp", {{"question", "q"}, {"labels", {"l"}}}}};
    EXPECT_EQ(probe.gateway.post("/ai/prompt", {{"prompt", "p"}}).body, expected);
    json closing = probe.gateway.stream("/ai/prompt", {{"prompt", "p"}}).back();
    EXPECT_EQ(closing.at("done"), true);
    closing.erase("done");
    closing.erase("text");
    EXPECT_EQ(closing, expected);
}

TEST(AiEndpointsTest, MissingAndIllTypedKeysAre400AndNamed) {
    TestGateway gateway;
    gateway.signIn();
    const std::vector<std::tuple<const char*, json, const char*>> cases = {
        {"/ai/prompt", json::object(), "prompt"},
        {"/ai/prompt", {{"prompt", nullptr}}, "prompt"},
        {"/ai/prompt", {{"prompt", 3}}, "prompt"},
        {"/ai/prompt", {{"prompt", " \n"}}, "prompt"},
        {"/ai/prompt", {{"prompt", "x"}, {"selectedText", json::array()}}, "selectedText"},
        {"/ai/prompt", {{"prompt", "x"}, {"stream", "yes"}}, "stream"},
        {"/ai/prompt", {{"prompt", "x"}, {"deepResearch", 1}}, "deepResearch"},
        {"/ai/prompt", {{"prompt", "x"}, {"screenDataUrl", "http://a/b.png"}}, "screenDataUrl"},
        {"/ai/prompt", {{"prompt", "x"}, {"recentMessages", "x"}}, "recentMessages"},
        {"/ai/prompt", {{"prompt", "x"}, {"recentMessages", {"x"}}}, "recentMessages"},
        {"/ai/prompt", {{"prompt", "x"}, {"recentMessages", {{{"role", "user"}}}}}, "content"},
        {"/ai/prompt",
         {{"prompt", "x"}, {"recentMessages", {{{"role", "god"}, {"content", ""}}}}},
         "role"},
        {"/ai/analyze", json::object(), "text"},
        {"/ai/analyze", {{"text", " "}}, "text"},
        {"/ai/flashcards", {{"text", 1}}, "text"},
        {"/ai/quiz", {{"text", "x"}, {"focus", 1}}, "focus"},
    };
    for (const auto& [path, body, key] : cases) {
        const Answer answer = gateway.post(path, body);
        EXPECT_EQ(answer.status, 400) << path << body;
        EXPECT_THAT(answer.body.value("error", ""), HasSubstr(key)) << body;
    }
}

TEST(AiEndpointsTest, FlashcardsAndQuizHaveTheShapesOfTheClient) {
    TestGateway gateway;
    gateway.signIn();
    const json cards = gateway.post("/ai/flashcards", {{"text", kPlantText}}).body;
    ASSERT_FALSE(cards.at("flashcards").empty());
    for (const json& card : cards.at("flashcards")) {
        EXPECT_TRUE(card.at("front").is_string());
        EXPECT_TRUE(card.at("back").is_string());
    }
    const json quiz = gateway.post("/ai/quiz", {{"text", kPlantText}, {"focus", "oxygen"}}).body;
    EXPECT_TRUE(quiz.at("primer").is_string());
    ASSERT_GE(quiz.at("questions").size(), 4U);
    for (const json& question : quiz.at("questions")) {
        EXPECT_TRUE(question.at("prompt").is_string());
        EXPECT_LT(question.at("answerIndex").get<std::size_t>(), question.at("options").size());
        EXPECT_TRUE(question.at("explanation").is_string());
    }
}

TEST(AiEndpointsTest, AClientThatLeavesCancelsItsReply) {
    Probe probe;
    probe.engine.endless = true;
    {
        const std::string body = R"({"prompt":"x","stream":true})";
        RawClient client(probe.gateway.port);
        client.send("POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\nContent-Type: "
                    "application/json\r\nAuthorization: Bearer " +
                    probe.gateway.token + "\r\nContent-Length: " + std::to_string(body.size()) +
                    "\r\n\r\n" + body);
        EXPECT_THAT(client.receiveUntil("first"), HasSubstr("data: {\"text\":\"first\"}"));
    }
    probe.engine.awaitCancellation();
    EXPECT_TRUE(probe.engine.wasCancelled);
}

TEST(AiEndpointsTest, StoppingTheServerEndsAStreamWithASentence) {
    Probe probe;
    probe.engine.endless = true;
    const std::string body = R"({"prompt":"x","stream":true})";
    RawClient client(probe.gateway.port);
    client.send("POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\nContent-Type: "
                "application/json\r\nAuthorization: Bearer " +
                probe.gateway.token + "\r\nContent-Length: " + std::to_string(body.size()) +
                "\r\n\r\n" + body);
    ASSERT_THAT(client.receiveUntil("first"), HasSubstr("first"));
    probe.gateway.stop();
    const std::string rest = client.receiveAll();
    EXPECT_THAT(rest, HasSubstr("\"error\""));
    EXPECT_THAT(rest, HasSubstr("0\r\n\r\n")); // the stream was ended, not cut
}

TEST(AiEndpointsTest, StoppingDoesNotWaitForARequestThatNeverEnds) {
    TestGateway gateway;
    RawClient client(gateway.port);
    client.send("POST /ai/prompt HTTP/1.1\r\nHost: loc");
    gateway.stop();
    EXPECT_EQ(client.receiveAll().find("200 OK"), std::string::npos);
}

} // namespace
} // namespace vorq::gateway::testing
