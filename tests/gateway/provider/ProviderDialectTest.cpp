#include "doubles/gateway/ProviderChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using std::chrono::milliseconds;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr auto kDone = "data: [DONE]\n\n";

ScriptedProvider::Script saying(std::vector<std::string> pieces) {
    return [pieces = std::move(pieces)](ProviderPeer& peer) {
        peer.streamHead();
        for (const std::string& piece : pieces)
            peer.send(piece);
    };
}

std::string event(const json& payload) {
    return "data: " + payload.dump() + "\n\n";
}

std::string delta(const json& fields) {
    return event({{"choices", {{{"index", 0}, {"delta", fields}}}}});
}

std::string text(const std::string& content) {
    return delta({{"content", content}});
}

std::string finish(const json& reason) {
    return event({{"choices", {{{"delta", json::object()}, {"finish_reason", reason}}}}});
}

std::string wordsAfter(std::vector<std::string> pieces) {
    return ProviderChain(saying(std::move(pieces))).finalWords();
}

// Failures in the midst of an answer, as the servers in use report them.

TEST(ProviderDialectTest, EveryFormOfAFailureMidwayReplacesTheHalfAnswer) {
    const json document = {{"code", 500}, {"message", "out of memory"}, {"type", "server_error"}};
    const std::vector<std::string> forms = {
        "error: " + document.dump() + "\n\n",
        event({{"object", "error"}, {"message", "out of memory"}, {"code", 400}}),
        "event: error\ndata: " + document.dump() + "\n\n",
        "event: error\ndata: out of memory\n\n",
        "event:error\r\ndata:\"out of memory\"\r\n\r\n",
        event({{"error", document}, {"choices", json::array()}}),
        event({{"error", "out of memory"}}),
        event({{"detail", "out of memory"}}),
        event({{"message", "out of memory"}, {"code", 500}}),
        event({{"type", "error"}, {"error", document}}),
        event(
            {{"choices",
              {{{"delta", {{"content", ""}}}, {"error", document}, {"finish_reason", "error"}}}}}),
        event({{"error", document},
               {"choices", {{{"delta", {{"content", ""}}}, {"finish_reason", "error"}}}}}),
        json({{"error", "out of memory"}}).dump() + "\n",
    };
    for (const std::string& form : forms) {
        EXPECT_EQ(wordsAfter({text("Half an ans"), form, kDone}),
                  "The AI provider gave up: out of memory")
            << form;
    }
}

TEST(ProviderDialectTest, AFailureWithoutWordsIsOneToo) {
    for (const std::string& form :
         {finish("error"), finish("abort"), std::string("event: error\ndata: {}\n\n")}) {
        EXPECT_EQ(wordsAfter({text("Half an ans"), form, kDone}),
                  "The AI provider gave up. Try again.")
            << form;
    }
}

TEST(ProviderDialectTest, AnEmptyErrorIsNone) {
    for (const json& nothing : {json(nullptr), json(""), json::object(), json(false)}) {
        EXPECT_EQ(wordsAfter({event({{"error", nothing},
                                     {"choices", {{{"delta", {{"content", "Fine."}}}}}}}),
                              kDone}),
                  "Fine.")
            << nothing;
    }
}

// Text.

TEST(ProviderDialectTest, AMessageThatRepeatsTheWholeBesideTheDeltaIsNotAddedToIt) {
    std::vector<std::string> pieces;
    std::string whole;
    for (const char* word : {"One ", "two ", "three."}) {
        whole += word;
        pieces.push_back(event({{"choices",
                                 {{{"delta", {{"role", "assistant"}, {"content", word}}},
                                   {"message", {{"role", "assistant"}, {"content", whole}}}}}}}));
    }
    pieces.push_back(event({{"choices",
                             {{{"delta", {{"content", ""}}},
                               {"message", {{"content", whole}}},
                               {"finish_reason", "stop"}}}}}));
    EXPECT_EQ(wordsAfter(pieces), "One two three.");
}

TEST(ProviderDialectTest, MessagesAloneMayGrowOrComeInPieces) {
    const auto message = [](const char* content) {
        return event({{"choices", {{{"message", {{"content", content}}}}}}});
    };
    EXPECT_EQ(wordsAfter({message("One "), message("One two."), kDone}), "One two.");
    EXPECT_EQ(wordsAfter({message("One "), message("two."), kDone}), "One two.");
}

TEST(ProviderDialectTest, ALoneEndOfThoughtsHidesWhatStandsBeforeIt) {
    EXPECT_EQ(wordsAfter({text("Let me see. The user wants"), text(" a city.\n</th"),
                          text("ink>\n\nParis."), kDone}),
              "Paris.");
    EXPECT_EQ(wordsAfter({text("<thinking>\nhm\n</thinking>\nParis."), kDone}), "Paris.");
    EXPECT_EQ(wordsAfter({text("[THINK]hm[/THINK]Paris."), kDone}), "Paris.");
    const std::string about = "Write `</think>` where the thoughts end.";
    EXPECT_EQ(wordsAfter({text(about), kDone}), about);
}

TEST(ProviderDialectTest, ContentInPartsLeavesThoughtsOut) {
    EXPECT_EQ(wordsAfter({delta({{"content",
                                  {{{"type", "thinking"},
                                    {"thinking", {{{"type", "text"}, {"text", "hm"}}}}}}}}),
                          delta({{"content", {{{"type", "text"}, {"text", "Paris."}}}}}), kDone}),
              "Paris.");
}

TEST(ProviderDialectTest, SearchResultsBecomeSources) {
    ProviderChain chain(saying({event({{"citations", {"http://a/", "http://b/"}},
                                       {"search_results", {{{"title", "A"}, {"url", "http://a/"}}}},
                                       {"choices", {{{"delta", {{"content", "x"}}}}}}}),
                                kDone}));
    EXPECT_EQ(chain.ask().back().at("sources"),
              json::array({{{"title", "A"}, {"url", "http://a/"}}, {{"url", "http://b/"}}}));
}

// How an answer ends.

TEST(ProviderDialectTest, AFinishedAnswerDoesNotWaitForAConnectionThatStaysOpen) {
    ProviderChain chain(
        [](ProviderPeer& peer) {
            peer.streamHead();
            peer.send(text("Enough.") + finish("stop"));
            peer.awaitClose();
        },
        milliseconds(60'000));
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(chain.finalWords(), "Enough.");
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(8));
}

TEST(ProviderDialectTest, WhatFollowsAFinishReasonStillCounts) {
    ProviderChain chain([](ProviderPeer& peer) {
        peer.streamHead();
        // Some send a reason with each piece.
        for (const char* word : {"One ", "two ", "three."}) {
            peer.send(event(
                {{"choices", {{{"delta", {{"content", word}}}, {"finish_reason", "stop"}}}}}));
            std::this_thread::sleep_for(milliseconds(300));
        }
        peer.send(event({{"choices", json::array()}, {"citations", {"http://a/"}}}));
        peer.send(kDone);
    });
    const json last = chain.ask().back();
    EXPECT_EQ(last.at("summary"), "One two three.");
    EXPECT_EQ(last.at("sources").size(), 1U);
}

TEST(ProviderDialectTest, AConnectionThatBreaksBehindTheFinishReasonHarmsNothing) {
    ProviderChain chain([](ProviderPeer& peer) {
        peer.streamHead();
        peer.send(text("Enough.") + finish("stop"));
        std::this_thread::sleep_for(milliseconds(200));
        peer.reset();
    });
    EXPECT_EQ(chain.finalWords(), "Enough.");
}

TEST(ProviderDialectTest, AnEmptyFinishReasonIsNone) {
    for (const json& reason : {json(""), json(nullptr), json("null")}) {
        EXPECT_THAT(wordsAfter({text("Half"), finish(reason)}), HasSubstr("broke off")) << reason;
    }
}

TEST(ProviderDialectTest, ARefusalIsTold) {
    EXPECT_EQ(wordsAfter({delta({{"refusal", "I cannot "}}), delta({{"refusal", "help."}}),
                          finish("stop"), kDone}),
              "The AI model declined to answer: I cannot help.");
    ProviderChain whole([](ProviderPeer& peer) {
        peer.answer(200, json({{"choices",
                                {{{"message", {{"content", nullptr}, {"refusal", "I cannot."}}},
                                  {"finish_reason", "stop"}}}}})
                             .dump());
    });
    EXPECT_EQ(whole.finalWords(), "The AI model declined to answer: I cannot.");
}

TEST(ProviderDialectTest, AnAnswerThatAFilterStoppedIsTold) {
    for (const std::string& start : {std::string(), text("Half an ans")}) {
        EXPECT_THAT(wordsAfter({start, finish("content_filter"), kDone}),
                    AllOf(HasSubstr("content filter"), HasSubstr("other words")));
    }
}

TEST(ProviderDialectTest, AnAnswerAtTheLimitOfItsLengthStaysAndSaysSo) {
    ProviderChain chain(saying({text("Half an ans"), finish("length"), kDone}));
    const json last = chain.ask().back();
    EXPECT_EQ(last.at("summary"), "Half an ans");
    EXPECT_THAT(last.at("feedback").get<std::string>(),
                AllOf(HasSubstr("ends here"), HasSubstr("length")));
    EXPECT_THAT(wordsAfter({text("<think>hm"), finish("length"), kDone}),
                HasSubstr("while it was thinking"));
    EXPECT_THAT(wordsAfter({delta({{"reasoning", "hm"}}), finish("length"), kDone}),
                HasSubstr("while it was thinking"));
}

// The stream itself.

TEST(ProviderDialectTest, LinesMayEndInEveryWay) {
    for (const std::string end : {"\n", "\r", "\r\n"}) {
        std::string stream = "\xEF\xBB\xBFid: 1" + end + "event: message" + end;
        stream += R"(data: {"choices": [{"delta":)" + end;
        stream += R"(data: {"content": "One "}}]})" + end + end;
        stream += R"(data:{"choices":[{"delta":{"content":"two."}}]})" + end + end;
        stream += "retry: 5" + end + "data: [DONE]" + end + end;
        std::vector<std::string> bytes;
        for (const char byte : stream)
            bytes.emplace_back(1, byte);
        EXPECT_EQ(wordsAfter({stream}), "One two.");
        EXPECT_EQ(wordsAfter(bytes), "One two.");
    }
}

TEST(ProviderDialectTest, EventsWithoutBlankLinesBetweenThemAreToldApart) {
    EXPECT_EQ(wordsAfter({"data: {\"choices\":[{\"delta\":{\"content\":\"One \"}}]}\n"
                          "data: {\"choices\":[{\"delta\":{\"content\":\"two.\"}}]}\n"
                          "data: [DONE]\n"}),
              "One two.");
}

TEST(ProviderDialectTest, KeepAlivesAreNoText) {
    for (const char* alive :
         {"data: 1\n\n", "data:\n\n", "data: null\n\n", "data: \"ping\"\n\n", "data: ping\n\n",
          "event: ping\ndata: {\"type\":\"ping\"}\n\n", ": ping\n\n", ":\n", "data: [] \n\n"}) {
        EXPECT_EQ(wordsAfter({alive, text("One "), alive, text("two."), alive, kDone}), "One two.")
            << alive;
    }
}

TEST(ProviderDialectTest, OneBadByteIsReplaced) {
    EXPECT_EQ(
        wordsAfter({text("One "), "data: {\"choices\":[{\"delta\":{\"content\":\"t\xFFo \"}}]}\n\n",
                    "data: {\"choices\":[{\"delta\":{\"content\":\"\\ud83d three.\"}}]}\n\n",
                    kDone}),
        "One t\uFFFDo \uFFFD three.");
}

TEST(ProviderDialectTest, AWebPageInPlaceOfAnAnswerIsSaid) {
    ProviderChain chain(
        [](ProviderPeer& peer) { peer.answer(200, "<!doctype html><p>Hi", "text/html"); });
    EXPECT_THAT(chain.finalWords(), AllOf(HasSubstr("web page"), HasSubstr("\"url\"")));
}

TEST(ProviderDialectTest, AnAddressWithNothingBehindItIsSaid) {
    ProviderChain chain([](ProviderPeer& peer) { peer.answer(404, "Not Found", "text/plain"); });
    EXPECT_THAT(
        chain.finalWords(),
        AllOf(HasSubstr(chain.provider.address() + "/v1/chat/completions"), HasSubstr("\"url\"")));
    ProviderChain unknown([](ProviderPeer& peer) {
        peer.answer(404, R"({"error":{"message":"model \"x\" not found"}})");
    });
    EXPECT_THAT(unknown.finalWords(),
                AllOf(HasSubstr("model \"x\" not found"), Not(HasSubstr("\"url\""))));
}

} // namespace
} // namespace vorq::gateway::testing
