// What models a provider offers, asked for by the client of the gateway.

#include "provider/ModelOffer.h"
#include "doubles/gateway/ProviderChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <semaphore>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

std::vector<std::string> idsIn(const std::string& document) {
    const auto models = readModelList(document);
    return models ? models->ids : std::vector<std::string>{"no list"};
}

std::string listOf(const std::vector<std::string>& ids) {
    json data = json::array();
    for (const std::string& id : ids)
        data.push_back({{"id", id}, {"object", "model"}});
    return json({{"object", "list"}, {"data", data}}).dump();
}

TEST(ModelListTest, HasTheModelsInTheOrderOfTheProviderEachOnce) {
    EXPECT_THAT(idsIn(listOf({"qwen3:14b", "llama3.1", "qwen3:14b"})),
                ElementsAre("qwen3:14b", "llama3.1"));
    EXPECT_THAT(idsIn(R"({"data": []})"), IsEmpty());
}

TEST(ModelListTest, LeavesOutWhatNobodyCanTalkTo) {
    EXPECT_THAT(idsIn(listOf({"nomic-embed-text", "gpt-4o", "Whisper-1", "gpt-4o-mini-tts"})),
                ElementsAre("gpt-4o"));
}

TEST(ModelListTest, TakesNothingThatIsNoName) {
    EXPECT_THAT(idsIn(R"({"data": [1, null, {}, {"id": 7}, {"id": ""}, {"id": "a\nb"}, "c",
                          {"id": "d"}]})"),
                ElementsAre("d"));
    EXPECT_THAT(idsIn(listOf({std::string(201, 'x'), std::string(200, 'x')})), SizeIs(1));
    for (const char* document : {"", "[]", "null", "{}", R"({"data": {}})", R"({"data": [)"})
        EXPECT_THAT(idsIn(document), ElementsAre("no list")) << document;
}

TEST(ModelListTest, EndsAfterAsManyAsAMenuHolds) {
    std::vector<std::string> many;
    many.reserve(500);
    for (int number = 0; number < 500; ++number)
        many.push_back("model-" + std::to_string(number));
    EXPECT_THAT(idsIn(listOf(many)), SizeIs(ModelOffer::mostModels));
}

TEST(ModelEndpointTest, StandsBesideTheOneForChats) {
    EXPECT_EQ(modelsEndpoint(chatEndpoint("http://localhost:11434")),
              "http://localhost:11434/v1/models");
    EXPECT_EQ(modelsEndpoint(chatEndpoint("https://host/api?version=2")),
              "https://host/api/models?version=2");
}

/// What comes of a question for the list, in the end.
std::vector<std::string> idsOf(ReplyStream& reply) {
    const auto called = std::make_shared<std::counting_semaphore<>>(0);
    reply.setCaller([called] { called->release(); });
    while (reply.step(std::chrono::steady_clock::now()).kind != ReplyStep::Kind::Ended)
        static_cast<void>(called->try_acquire_for(std::chrono::milliseconds(100)));
    return std::get<ModelList>(reply.result()).ids;
}

// A provider that lists two models and answers any question with the model that it was asked of.
class ModelOfferTest : public ::testing::Test {
  protected:
    void offer(bool offers = true) {
        m_chain = std::make_unique<ProviderChain>(
            [this](ProviderPeer& peer) { serve(peer); },
            [offers](ProviderConfig& config) { config.offersModels = offers; });
    }
    void serve(ProviderPeer& peer) {
        const std::string request = m_chain->provider.lastRequest();
        if (!request.starts_with("GET")) {
            peer.streamHead();
            peer.delta(m_chain->provider.lastBody().value("model", "none"));
            peer.send("data: [DONE]\n\n");
            return;
        }
        m_listRequest = request;
        ++m_lists;
        if (m_fails)
            peer.answer(500, "{}");
        else
            peer.answer(200, m_document);
    }
    Answer models() { return m_chain->gateway->get("/ai/models"); }
    std::string modelOf(const std::string& wanted) {
        const auto events = m_chain->gateway->stream(
            "/ai/prompt", {{"prompt", "hello"}, {"preferredModel", wanted}});
        return events.back().value("summary", "");
    }

    // The chain goes before what its thread reads.
    std::string m_document = listOf({"llama3.1", "qwen3:14b"});
    std::string m_listRequest;
    std::atomic<int> m_lists = 0;
    std::atomic<bool> m_fails = false;
    std::unique_ptr<ProviderChain> m_chain;
};

TEST_F(ModelOfferTest, IsWhatTheProviderLists) {
    offer();
    const Answer answer = models();
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, json::parse(R"({"models": [{"id": "llama3.1"}, {"id": "qwen3:14b"}]})"));
    EXPECT_THAT(m_listRequest, HasSubstr("GET /v1/models HTTP/1.1"));
    EXPECT_THAT(m_listRequest, HasSubstr(std::string("Authorization: Bearer ") + kProviderKey));
}

TEST_F(ModelOfferTest, IsAskedForOnceInAWhile) {
    offer();
    for (int time = 0; time < 3; ++time)
        EXPECT_THAT(models().body.at("models"), SizeIs(2));
    EXPECT_EQ(m_lists, 1);
}

TEST_F(ModelOfferTest, IsForThoseWhoAreSignedIn) {
    offer();
    m_chain->gateway->token = "wrong";
    EXPECT_EQ(models().status, 401);
    EXPECT_EQ(m_lists, 0);
}

TEST_F(ModelOfferTest, IsEmptyUnlessTheAdministratorOffersSome) {
    offer(false);
    EXPECT_EQ(models().body, json::parse(R"({"models": []})"));
    EXPECT_EQ(m_lists, 0);
    EXPECT_EQ(modelOf("llama3.1"), "standard");
}

TEST(ModelOfferWithoutProviderTest, IsEmptyAndTakesNoPost) {
    TestGateway gateway;
    gateway.signIn();
    EXPECT_EQ(gateway.get("/ai/models").body, json::parse(R"({"models": []})"));
    EXPECT_EQ(gateway.post("/ai/models", json::object()).status, 405);
}

TEST_F(ModelOfferTest, AFailureOfTheProviderIsToldWithoutItsKey) {
    offer();
    m_fails = true;
    const Answer answer = models();
    EXPECT_EQ(answer.status, 502);
    EXPECT_THAT(answer.text, Not(HasSubstr(kProviderKey)));
}

TEST_F(ModelOfferTest, IsAskedForAgainAfterAFailure) {
    offer();
    m_fails = true;
    EXPECT_EQ(models().status, 502);
    EXPECT_EQ(models().status, 502) << "an empty list would be an answer";
    m_fails = false;
    EXPECT_THAT(models().body.at("models"), SizeIs(2));
    EXPECT_EQ(m_lists, 3);
}

TEST_F(ModelOfferTest, AFailureLeavesTheListThatIsKnown) {
    offer();
    m_fails = true;
    const ProviderConfig config = configFor(m_chain->provider.address());
    TransferLoop loop;
    ModelOffer known(loop, config);
    const SteadyTime now = std::chrono::steady_clock::now();
    known.take(ModelList{{"llama3.1"}}, now - ModelOffer::lifetime);
    for (int time = 1; time <= 2; ++time) {
        EXPECT_THAT(idsOf(*known.list(now)), ElementsAre("llama3.1"));
        EXPECT_EQ(m_lists, time);
    }
    m_fails = false;
    EXPECT_THAT(idsOf(*known.list(now)), ElementsAre("llama3.1", "qwen3:14b"));
    EXPECT_THAT(idsOf(*known.list(now)), ElementsAre("llama3.1", "qwen3:14b"));
    EXPECT_EQ(m_lists, 3);
}

TEST_F(ModelOfferTest, WhatIsNoListIsToldToBeNone) {
    offer();
    m_document = "a page";
    const Answer answer = models();
    EXPECT_EQ(answer.status, 502);
    EXPECT_EQ(answer.body.at("error"), "The provider's list of models could not be read.");
}

TEST_F(ModelOfferTest, AListWithoutAnEndIsGivenUp) {
    offer();
    m_document = std::string(ModelOffer::longestList + 1, ' ');
    EXPECT_EQ(models().status, 502);
}

// Also right after the start of the gateway, when it has not been asked for the list.
TEST_F(ModelOfferTest, AModelThatIsOfferedIsUsed) {
    offer();
    EXPECT_EQ(modelOf("qwen3:14b"), "qwen3:14b");
    EXPECT_EQ(modelOf("llama3.1"), "llama3.1");
    EXPECT_EQ(m_lists, 1);
}

TEST_F(ModelOfferTest, AModelThatTheProviderDoesNotHaveGetsTheUsualOne) {
    offer();
    EXPECT_EQ(modelOf("google/gemini-flash-latest"), "standard");
    EXPECT_EQ(modelOf("openai/o3-mini"), "local-reasoner");
    EXPECT_EQ(m_lists, 1);
}

TEST_F(ModelOfferTest, WithoutTheListAQuestionIsAnsweredAllTheSame) {
    offer();
    m_fails = true;
    EXPECT_EQ(modelOf("llama3.1"), "standard");
    EXPECT_EQ(modelOf("llama3.1"), "standard");
    EXPECT_EQ(m_lists, 1) << "it is not asked for with each question";
}

} // namespace
} // namespace vorq::gateway::testing
