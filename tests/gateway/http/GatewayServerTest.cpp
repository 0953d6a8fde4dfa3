#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/TestGateway.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;

/// Throws whatever it is asked.
class FailingEngine final : public Engine {
  public:
    std::unique_ptr<ReplyStream> prompt(const PromptRequest&) override {
        throw std::runtime_error("secret detail");
    }
    std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest&) override { throw std::bad_alloc(); }
    std::unique_ptr<ReplyStream> flashcards(const FlashcardsRequest&) override {
        throw EngineError(422, "No cards today.");
    }
    std::unique_ptr<ReplyStream> quiz(const QuizRequest&) override { throw std::logic_error("x"); }
};

void expectError(const Answer& answer, int status) {
    EXPECT_EQ(answer.status, status) << answer.text;
    ASSERT_TRUE(answer.body.is_object()) << answer.text;
    EXPECT_FALSE(answer.body.value("error", "").empty());
    const auto type = answer.headers.find("Content-Type");
    ASSERT_NE(type, answer.headers.end());
    EXPECT_EQ(type->second, "application/json");
}

TEST(GatewayServerTest, AnUnknownPathIs404) {
    TestGateway gateway;
    expectError(gateway.post("/ai/nothing", json::object()), 404);
    expectError(gateway.post("/account", json::object()), 404);
}

TEST(GatewayServerTest, AnotherMethodIs405WithAllow) {
    TestGateway gateway;
    httplib::Client http = gateway.client();
    const std::vector<httplib::Result> results = [&] {
        std::vector<httplib::Result> list;
        list.push_back(http.Get("/ai/prompt"));
        list.push_back(http.Put("/ai/prompt", "{}", "application/json"));
        list.push_back(http.Delete("/ai/prompt"));
        list.push_back(http.Patch("/ai/prompt", "{}", "application/json"));
        list.push_back(http.Options("/ai/prompt"));
        return list;
    }();
    for (const httplib::Result& result : results) {
        ASSERT_TRUE(result);
        EXPECT_EQ(result->status, 405);
        EXPECT_EQ(result->get_header_value("Allow"), "POST");
        EXPECT_TRUE(json::parse(result->body).contains("error"));
    }
    EXPECT_EQ(http.Get("/nowhere")->status, 404);
}

TEST(GatewayServerTest, BadJsonIs400) {
    TestGateway gateway;
    gateway.signIn();
    for (const std::string body :
         {"{", "{\"prompt\":", "[]", "\"text\"", "7", "{\"prompt\": \"\xFF\"}"}) {
        expectError(gateway.postRaw("/ai/prompt", body), 400);
    }
}

TEST(GatewayServerTest, DeepNestingIs400) {
    TestGateway gateway;
    gateway.signIn();
    expectError(gateway.postRaw("/ai/prompt", std::string(2'000'000, '[')), 400);
    expectError(gateway.postRaw("/ai/prompt",
                                "{\"a\":" + std::string(40, '[') + std::string(40, ']') + "}"),
                400);
}

TEST(GatewayServerTest, AnotherContentTypeIs415) {
    TestGateway gateway;
    gateway.signIn();
    expectError(gateway.postRaw("/ai/prompt", "{\"prompt\":\"x\"}", {}, "text/plain"), 415);
    expectError(gateway.postRaw("/ai/prompt", "prompt=x", {}, "application/x-www-form-urlencoded"),
                415);
    expectError(
        gateway.postRaw("/ai/prompt", "--b\r\n\r\n--b--", {}, "multipart/form-data; boundary=b"),
        415);
    const Answer plain =
        gateway.postRaw("/ai/prompt", "{\"prompt\":\"x\"}", {}, "Application/JSON; charset=utf-8");
    EXPECT_EQ(plain.status, 200);
}

TEST(GatewayServerTest, SixteenMegabytesPassAndOneMoreByteIs413) {
    TestGateway gateway;
    gateway.signIn();
    constexpr std::size_t limit = std::size_t{16} * 1024 * 1024;
    const std::string head = "{\"other\":\"";
    const std::string tail = "\"}";
    const auto body = [&](std::size_t size) {
        return head + std::string(size - head.size() - tail.size(), 'x') + tail;
    };
    expectError(gateway.postRaw("/ai/prompt", body(limit)), 400); // no prompt, but read to its end
    expectError(gateway.postRaw("/ai/prompt", body(limit + 1)), 413);
    expectError(gateway.postRaw("/ai/prompt", body(limit * 2)), 413);
}

TEST(GatewayServerTest, ALargeChunkedBodyIs413) {
    TestGateway gateway;
    gateway.signIn();
    httplib::Client http = gateway.client();
    const std::string piece(1'000'000, 'x');
    int sent = 0;
    const httplib::Result result = http.Post(
        "/ai/prompt", {{"Authorization", "Bearer " + gateway.token}},
        [&](std::size_t, httplib::DataSink& sink) {
            if (sent++ == 20) {
                sink.done();
                return true;
            }
            return sink.write(piece.data(), piece.size());
        },
        "application/json");
    ASSERT_TRUE(result);
    EXPECT_EQ(result->status, 413);
}

TEST(GatewayServerTest, AnAiCallWithoutAValidTokenIs401) {
    TestGateway gateway;
    for (const char* path : {"/ai/prompt", "/ai/analyze", "/ai/flashcards", "/ai/quiz"}) {
        expectError(gateway.post(path, {{"prompt", "x"}, {"text", "x"}}), 401);
    }
    gateway.token = "made-up";
    expectError(gateway.post("/ai/prompt", {{"prompt", "x"}}), 401);
}

TEST(GatewayServerTest, AForeignHostOrOriginIs403) {
    TestGateway gateway;
    gateway.signIn();
    const auto status = [&](const httplib::Headers& headers) {
        return gateway.postRaw("/ai/prompt", "{\"prompt\":\"x\"}", headers).status;
    };
    const std::string own = "127.0.0.1:" + std::to_string(gateway.port);
    EXPECT_EQ(status({{"Host", "evil.example"}}), 403);
    EXPECT_EQ(status({{"Host", "127.0.0.1.evil.example"}}), 403);
    EXPECT_EQ(status({{"Host", "localhost:" + std::to_string(gateway.port)}}), 200);
    EXPECT_EQ(status({{"Host", own}, {"Origin", "https://evil.example"}}), 403);
    EXPECT_EQ(status({{"Host", own}, {"Origin", "null"}}), 403);
    EXPECT_EQ(status({{"Host", own}, {"Origin", "http://localhost:3000"}}), 403);
    EXPECT_EQ(status({{"Host", own}, {"Origin", "http://" + own}}), 200);
}

TEST(GatewayServerTest, ARequestWithoutAHostIs403) {
    TestGateway gateway;
    const std::string answer = rawExchange(gateway.port, "POST /ai/prompt HTTP/1.1\r\n\r\n");
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 403")) << answer;
}

TEST(GatewayServerTest, WhatIsNoHttpIs400WithJson) {
    TestGateway gateway;
    const std::string answer = rawExchange(gateway.port, "nonsense\r\n\r\n");
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 400")) << answer;
    EXPECT_NE(answer.find("{\"error\":"), std::string::npos);
}

TEST(GatewayServerTest, ABodyThatEndsEarlyIs400) {
    TestGateway gateway;
    gateway.signIn();
    const std::string answer =
        rawExchange(gateway.port, "POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\nContent-Type: "
                                  "application/json\r\nAuthorization: Bearer " +
                                      gateway.token + "\r\nContent-Length: 100\r\n\r\n{\"prompt\"");
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 400")) << answer;
}

TEST(GatewayServerTest, AnExceptionInAHandlerIs500WithoutItsDetail) {
    TestGateway gateway(std::make_unique<FailingEngine>());
    gateway.signIn();
    const Answer failed = gateway.post("/ai/prompt", {{"prompt", "x"}});
    expectError(failed, 500);
    EXPECT_EQ(failed.text.find("secret detail"), std::string::npos);
    expectError(gateway.post("/ai/quiz", {{"text", "x"}}), 500);
    const Answer refused = gateway.post("/ai/flashcards", {{"text", "x"}});
    expectError(refused, 422);
    EXPECT_EQ(refused.body.at("error"), "No cards today.");
}

TEST(GatewayServerTest, ARequestThatIsShortOfMemoryIs503) {
    TestGateway gateway(std::make_unique<FailingEngine>());
    gateway.signIn();
    expectError(gateway.post("/ai/analyze", {{"text", "x"}}), 503);
}

TEST(GatewayServerTest, APortInUseIsSaid) {
    TestGateway gateway;
    GatewayServer second(gateway.router);
    try {
        second.bind("127.0.0.1", gateway.port);
        FAIL() << "took a port that is in use";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find(std::to_string(gateway.port)), std::string::npos);
    }
}

TEST(GatewayServerTest, StoppingTwiceOrBeforeRunningIsHarmless) {
    TestGateway gateway;
    GatewayServer second(gateway.router);
    second.bind("127.0.0.1", 0);
    second.stop();
    second.run();
    second.stop();
    gateway.stop();
    gateway.stop();
    EXPECT_EQ(gateway.post("/ai/prompt", json::object()).status, 0);
}

TEST(GatewayServerTest, SilentAndDribblingConnectionsDoNotKeepOthersWaiting) {
    TestGateway gateway;
    gateway.signIn();
    std::vector<std::unique_ptr<RawClient>> idle;
    for (int i = 0; i < 60; ++i) {
        idle.push_back(std::make_unique<RawClient>(gateway.port));
        if (i % 2 == 0) idle.back()->send("POST /ai/prompt HTTP/1.1\r\nHost:");
    }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(gateway.post("/ai/prompt", {{"prompt", "hello"}}).status, 200);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(9));
}

TEST(GatewayServerTest, ManyRequestsAtOnceAreAllAnswered) {
    TestGateway gateway;
    gateway.signIn();
    std::atomic<int> answered = 0;
    std::vector<std::thread> threads;
    threads.reserve(40);
    for (int i = 0; i < 40; ++i) {
        threads.emplace_back([&] {
            const Answer answer = gateway.post("/ai/prompt", {{"prompt", "hello"}});
            EXPECT_EQ(answer.status, 200) << answer.text;
            ++answered;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(answered, 40);
}

} // namespace
} // namespace vorq::gateway::testing
