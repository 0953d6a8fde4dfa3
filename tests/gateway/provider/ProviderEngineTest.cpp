#include "doubles/gateway/ProviderChain.h"
#include "doubles/gateway/RawClient.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using std::chrono::milliseconds;
using ::testing::HasSubstr;
using ::testing::Not;

using Chain = ProviderChain;

void goodStream(ProviderPeer& peer) {
    peer.streamHead();
    peer.send(": a comment\n\n");
    peer.delta("Hello ");
    peer.delta("world.");
    peer.send("data: [DONE]\n\n");
}

void expectNoKey(const std::string& text) {
    EXPECT_THAT(text, Not(HasSubstr(kProviderKey)));
}

TEST(ProviderEngineTest, AStreamComesThroughAndCloses) {
    Chain chain(goodStream);
    const std::vector<json> events = chain.ask();
    ASSERT_GE(events.size(), 2U);
    EXPECT_EQ(events[events.size() - 2].at("text"), "Hello world.");
    EXPECT_EQ(events.back().at("done"), true);
    EXPECT_EQ(events.back().at("summary"), "Hello world.");
}

TEST(ProviderEngineTest, ARequestThatNamesNoModelUsesTheChosenOne) {
    Chain chain(goodStream);
    static_cast<void>(chain.gateway->post("/auth/profile", {{"preferredModel", "openai/o3-mini"}}));
    for (const char* path : {"/ai/flashcards", "/ai/quiz", "/ai/analyze"}) {
        static_cast<void>(chain.gateway->post(path, {{"text", "Some text."}}));
        EXPECT_EQ(chain.provider.lastBody().at("model"), "local-reasoner") << path;
    }
}

TEST(ProviderEngineTest, TheRequestCarriesKeyModelHistoryTextAndImage) {
    Chain chain(goodStream);
    const json body = {{"prompt", "What is this?"},
                       {"selectedText", "Some text."},
                       {"screenDataUrl", "data:image/png;base64,AAAA"},
                       {"preferredModel", "openai/o3-mini"},
                       {"recentMessages",
                        {{{"role", "user"}, {"content", "earlier"}},
                         {{"role", "assistant"}, {"content", "reply"}},
                         {{"role", "user"}, {"content", "What is this?"}}}}};
    static_cast<void>(chain.gateway->stream("/ai/prompt", body));
    const std::string request = chain.provider.lastRequest();
    EXPECT_THAT(request, HasSubstr("POST /v1/chat/completions "));
    EXPECT_THAT(request, HasSubstr(std::string("Authorization: Bearer ") + kProviderKey));
    const json sent = chain.provider.lastBody();
    EXPECT_EQ(sent.at("model"), "local-reasoner");
    EXPECT_EQ(sent.at("stream"), true);
    const json& messages = sent.at("messages");
    ASSERT_EQ(messages.size(), 4U);
    EXPECT_EQ(messages[0].at("role"), "system");
    EXPECT_EQ(messages[1], json({{"role", "user"}, {"content", "earlier"}}));
    EXPECT_EQ(messages[2], json({{"role", "assistant"}, {"content", "reply"}}));
    const json& content = messages[3].at("content");
    EXPECT_THAT(content[0].at("text").get<std::string>(), HasSubstr("What is this?"));
    EXPECT_THAT(content[0].at("text").get<std::string>(), HasSubstr("Some text."));
    EXPECT_EQ(content[1].at("type"), "image_url");
    EXPECT_EQ(content[1].at("image_url").at("url"), "data:image/png;base64,AAAA");
}

TEST(ProviderEngineTest, AnUnknownModelIdGetsTheStandardOne) {
    Chain chain(goodStream);
    static_cast<void>(
        chain.gateway->stream("/ai/prompt", {{"prompt", "x"}, {"preferredModel", "no/such"}}));
    EXPECT_EQ(chain.provider.lastBody().at("model"), "standard");
}

TEST(ProviderEngineTest, AnalysisPassesTheTextOn) {
    Chain chain(goodStream);
    EXPECT_EQ(chain.gateway->post("/ai/analyze", {{"text", "Bees dance."}}).body.at("summary"),
              "Hello world.");
    EXPECT_THAT(chain.provider.lastBody().at("messages").back().at("content").get<std::string>(),
                HasSubstr("Bees dance."));
}

TEST(ProviderEngineTest, BytesMayBeCutAnywhere) {
    Chain chain([](ProviderPeer& peer) {
        peer.streamHead();
        const std::string events =
            "data: {\"choices\":[{\"delta\":{\"content\":\"Gr\u00FC\u00DFe \U0001F600\"}}]}\r\n\r\n"
            "data: [DONE]\r\n\r\n";
        for (const char byte : events)
            peer.send(std::string(1, byte));
    });
    EXPECT_EQ(chain.ask().back().at("summary"), "Gr\u00FC\u00DFe \U0001F600");
}

TEST(ProviderEngineTest, AProviderThatDoesNotStreamIsUnderstood) {
    Chain chain([](ProviderPeer& peer) {
        peer.answer(200, "{\n \"choices\": [\n{\"message\": {\"content\": \"All at once.\"}}]\n}");
    });
    EXPECT_EQ(chain.ask().back().at("summary"), "All at once.");
}

TEST(ProviderEngineTest, AStreamWithAFinishReasonNeedsNoDoneMark) {
    Chain chain([](ProviderPeer& peer) {
        peer.streamHead();
        peer.delta("Enough.");
        peer.send("data: {\"choices\":[{\"delta\":{},\"finish_reason\":\"stop\"}]}");
    });
    EXPECT_EQ(chain.ask().back().at("summary"), "Enough.");
}

TEST(ProviderEngineTest, ThinkingAloudIsNotShown) {
    Chain chain([](ProviderPeer& peer) {
        peer.streamHead();
        for (const char* piece : {"<thi", "nk>hmm", "</think>", "\n\nAnswer."})
            peer.delta(piece);
        peer.send("data: [DONE]\n\n");
    });
    for (const json& event : chain.ask())
        EXPECT_EQ(event.value("text", "Answer."), "Answer.");
}

TEST(ProviderEngineTest, CitationsBecomeSources) {
    Chain chain([](ProviderPeer& peer) {
        peer.streamHead();
        peer.send("data: {\"citations\":[\"http://a/\"],\"choices\":[{\"delta\":{\"content\":"
                  "\"x\"}}]}\n\ndata: [DONE]\n\n");
    });
    EXPECT_EQ(chain.ask().back().at("sources"), json::array({{{"url", "http://a/"}}}));
}

TEST(ProviderEngineTest, ARefusedConnectionIsAnErrorDocument) {
    ProviderConfig config = configFor("http://127.0.0.1:" + std::to_string(closedPort()));
    TestGateway gateway(std::make_unique<ProviderEngine>(config));
    gateway.signIn();
    const Answer whole = gateway.post("/ai/prompt", {{"prompt", "x"}});
    EXPECT_EQ(whole.status, 502);
    EXPECT_THAT(whole.body.value("error", ""), HasSubstr("Could not reach"));
    expectNoKey(whole.text);
    // A stream has begun before the provider is asked.
    const Answer stream = gateway.post("/ai/prompt", {{"prompt", "x"}, {"stream", true}});
    EXPECT_EQ(stream.status, 200);
    ASSERT_EQ(payloadsOf(stream.text).size(), 1U);
    EXPECT_THAT(payloadsOf(stream.text)[0].value("error", ""), HasSubstr("Could not reach"));
    expectNoKey(stream.text);
}

TEST(ProviderEngineTest, ErrorStatusesBecomeErrorDocumentsAndNever401) {
    for (const auto& [status, expected] :
         {std::pair(400, 502), {401, 502}, {403, 502}, {404, 502}, {429, 503}, {500, 502}}) {
        Chain chain([code = status](ProviderPeer& peer) {
            peer.answer(
                code, json({{"error", {{"message", std::string("No: ") + kProviderKey}}}}).dump());
        });
        const Answer answer = chain.askWhole();
        EXPECT_EQ(answer.status, expected) << status;
        EXPECT_THAT(answer.body.at("error").get<std::string>(), HasSubstr("No: "));
        expectNoKey(answer.text);
    }
}

TEST(ProviderEngineTest, AnErrorStatusWithoutADocumentIsSaid) {
    Chain chain([](ProviderPeer& peer) { peer.answer(503, "<html>busy</html>", "text/html"); });
    EXPECT_EQ(chain.askWhole().body.at("error"), "The AI provider answered with status 503.");
}

TEST(ProviderEngineTest, ARedirectIsNotFollowed) {
    Chain chain([](ProviderPeer& peer) {
        peer.send(
            "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n");
    });
    EXPECT_THAT(chain.askWhole().body.at("error").get<std::string>(), HasSubstr("302"));
}

TEST(ProviderEngineTest, AProviderThatNeverAnswersRunsOutOfTime) {
    Chain chain([](ProviderPeer& peer) { peer.awaitClose(); }, milliseconds(150));
    const Answer answer = chain.askWhole();
    EXPECT_EQ(answer.status, 504);
    EXPECT_THAT(answer.body.at("error").get<std::string>(), HasSubstr("too long"));
}

TEST(ProviderEngineTest, TheHeadOfAStreamDoesNotWaitForTheProvider) {
    std::promise<void> mayAnswer;
    std::shared_future<void> answers = mayAnswer.get_future().share();
    Chain chain([answers](ProviderPeer& peer) {
        answers.wait();
        goodStream(peer);
    });
    const std::string body = R"({"prompt":"x","stream":true})";
    RawClient client(chain.gateway->port);
    client.send("POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
                "Authorization: Bearer " +
                chain.gateway->token + "\r\nContent-Length: " + std::to_string(body.size()) +
                "\r\n\r\n" + body);
    const std::string head = client.receiveUntil("\r\n\r\n");
    mayAnswer.set_value();
    EXPECT_THAT(head, ::testing::StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(head, HasSubstr("text/event-stream"));
    EXPECT_THAT(head, Not(HasSubstr("data:")));
    EXPECT_THAT(client.receiveAll(), HasSubstr("Hello world."));
}

TEST(ProviderEngineTest, AStreamThatFallsSilentEndsInAnErrorEvent) {
    Chain chain(
        [](ProviderPeer& peer) {
            peer.streamHead();
            peer.delta("Half a");
            peer.awaitClose();
        },
        milliseconds(200));
    const std::vector<json> events = chain.ask();
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].at("text"), "Half a");
    EXPECT_THAT(events[1].at("error").get<std::string>(), HasSubstr("too long"));
}

TEST(ProviderEngineTest, ASlowStreamThatKeepsGoingIsNotCutOff) {
    Chain chain(
        [](ProviderPeer& peer) {
            peer.streamHead();
            for (int i = 0; i < 8; ++i) {
                peer.delta("x");
                std::this_thread::sleep_for(milliseconds(100));
            }
            peer.send("data: [DONE]\n\n");
        },
        milliseconds(600));
    EXPECT_EQ(chain.ask().back().at("summary"), "xxxxxxxx");
}

TEST(ProviderEngineTest, ABrokenStreamEndsInAnErrorEvent) {
    for (const bool hard : {false, true}) {
        Chain chain([hard](ProviderPeer& peer) {
            peer.send("HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nTransfer-Encoding: "
                      "chunked\r\n\r\n");
            const std::string event = "data: {\"choices\":[{\"delta\":{\"content\":\"Hal\"}}]}\n\n";
            peer.send("39\r\n" + event + "\r\n");
            if (hard) peer.reset();
        });
        const Answer answer = chain.askRaw();
        EXPECT_THAT(payloadsOf(answer.text).back().value("error", ""), HasSubstr("broke off"))
            << answer.text;
    }
}

TEST(ProviderEngineTest, AStreamThatJustStopsIsNoCompleteReply) {
    Chain chain([](ProviderPeer& peer) {
        peer.streamHead();
        peer.delta("Half a sen");
    });
    EXPECT_THAT(chain.ask().back().value("error", ""), HasSubstr("broke off"));
}

TEST(ProviderEngineTest, AnErrorInsideTheStreamIsPassedOnWithoutTheKey) {
    Chain chain([](ProviderPeer& peer) {
        peer.streamHead();
        peer.delta("Half");
        peer.send(
            "data: " +
            json({{"error", {{"message", std::string("overloaded ") + kProviderKey}}}}).dump() +
            "\n\n");
    });
    const Answer answer = chain.askRaw();
    EXPECT_THAT(payloadsOf(answer.text).back().value("error", ""), HasSubstr("overloaded"));
    expectNoKey(answer.text);
}

TEST(ProviderEngineTest, InvalidJsonInTheStreamIsAnError) {
    for (const std::string payload : {"{broken", "[1,2]", "Internal Server Error"}) {
        Chain chain([payload](ProviderPeer& peer) {
            peer.streamHead();
            peer.send("data: " + payload + "\n\ndata: [DONE]\n\n");
        });
        EXPECT_THAT(chain.ask().back().value("error", ""), HasSubstr("could not read")) << payload;
    }
}

TEST(ProviderEngineTest, AnEmptyReplyIsAnError) {
    for (const std::string body : {"", "data: [DONE]\n\n", "\n\n",
                                   "data: {\"choices\":[{\"delta\":{\"content\":\" \"}}]}\n\ndata: "
                                   "[DONE]\n\n"}) {
        Chain chain([body](ProviderPeer& peer) {
            peer.streamHead();
            peer.send(body);
        });
        EXPECT_THAT(chain.ask().back().value("error", ""), HasSubstr("empty answer")) << body;
    }
}

TEST(ProviderEngineTest, AnEndlessAnswerIsCutOff) {
    Chain chain([](ProviderPeer& peer) {
        peer.streamHead();
        const std::string block(1'000'000, 'x');
        for (int i = 0; i < 12; ++i)
            peer.send(block); // one line without an end
    });
    EXPECT_THAT(chain.ask().back().value("error", ""), HasSubstr("too long"));
}

TEST(ProviderEngineTest, AWholeReplyIsSplitIntoItsFields) {
    Chain chain([](ProviderPeer& peer) {
        peer.streamHead();
        peer.delta("```json\n{\"summary\": \"S\", \"feedback\": [{\"a\": 1}], \"corrections\": "
                   "null}\n```");
        peer.send("data: [DONE]\n\n");
    });
    const json body = chain.askWhole().body;
    EXPECT_EQ(body.at("summary"), "S");
    EXPECT_EQ(body.at("feedback"), "[{\"a\":1}]");
    EXPECT_EQ(body.at("corrections"), "");
}

TEST(ProviderEngineTest, AWholeReplyThatFailsHalfWayIsAnErrorDocument) {
    Chain chain([](ProviderPeer& peer) {
        peer.streamHead();
        peer.delta("Half");
    });
    const Answer answer = chain.askWhole();
    EXPECT_EQ(answer.status, 502);
    EXPECT_THAT(answer.body.at("error").get<std::string>(), HasSubstr("broke off"));
}

TEST(ProviderEngineTest, FlashcardsAndQuizAreReadOutOfTalk) {
    Chain chain([](ProviderPeer& peer) {
        peer.streamHead();
        peer.delta(
            "Sure! ```json\n{\"primer\":\"P\",\"questions\":[{\"question\":\"Q\",\"options\":["
            "\"a\",\"b\"],\"answer\":\"B\"}],\"flashcards\":[{\"front\":\"F\",\"back\":\"B\"}]}"
            "\n``` Enjoy!");
        peer.send("data: [DONE]\n\n");
    });
    EXPECT_EQ(chain.gateway->post("/ai/flashcards", {{"text", "t"}}).body.at("flashcards"),
              json::array({{{"front", "F"}, {"back", "B"}}}));
    const json quiz = chain.gateway->post("/ai/quiz", {{"text", "t"}, {"focus", "f"}}).body;
    EXPECT_EQ(quiz.at("primer"), "P");
    EXPECT_EQ(quiz.at("questions")[0].at("answerIndex"), 1);
}

TEST(ProviderEngineTest, StudyMaterialWithoutJsonIsAnHonestError) {
    Chain chain(goodStream);
    for (const char* path : {"/ai/flashcards", "/ai/quiz"}) {
        const Answer answer = chain.gateway->post(path, {{"text", "t"}});
        EXPECT_EQ(answer.status, 502);
        EXPECT_THAT(answer.body.at("error").get<std::string>(), HasSubstr("could not be read"));
    }
}

TEST(ProviderEngineTest, StoppingTheGatewayLeavesTheProvider) {
    std::atomic<bool> left = false;
    Chain chain([&](ProviderPeer& peer) {
        peer.streamHead();
        peer.delta("Half");
        left = peer.awaitClose();
    });
    std::thread asking([&] { static_cast<void>(chain.askRaw()); });
    while (chain.provider.lastRequest().empty())
        std::this_thread::yield();
    chain.gateway->stop();
    asking.join();
    chain.gateway.reset();
    // The script ends when the connection does.
    while (!left)
        std::this_thread::yield();
    EXPECT_TRUE(left);
}

} // namespace
} // namespace vorq::gateway::testing
