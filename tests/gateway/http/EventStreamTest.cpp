#include "http/EventStream.h"
#include "doubles/gateway/ListReply.h"
#include "doubles/gateway/TestGateway.h"
#include "http/JsonText.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using std::chrono::seconds;
using End = ListReply::End;

/// All that a stream sends until it ends or waits.
std::string sentBy(std::vector<std::string> texts, End end) {
    EventStream stream(std::make_unique<ListReply>(std::move(texts), end));
    std::string bytes;
    while (true) {
        const FeedStep step = stream.next(SteadyTime());
        bytes += step.bytes;
        if (step.isLast || step.bytes.empty()) return bytes;
    }
}

TEST(EventStreamTest, EachEventIsOneLineAndABlankLine) {
    const std::string sent = sentBy({"a\nb", "a\nb\nc"}, End::Done);
    EXPECT_TRUE(sent.starts_with("data: {\"text\":\"a\\nb\"}\n\ndata: "));
    const std::vector<json> payloads = payloadsOf(sent);
    ASSERT_EQ(payloads.size(), 3U);
    EXPECT_EQ(payloads[1].at("text"), "a\nb\nc");
    EXPECT_EQ(payloads[2].at("done"), true);
}

TEST(EventStreamTest, AFailureOfTheEngineIsTheLastEvent) {
    const std::vector<json> payloads = payloadsOf(sentBy({"part"}, End::Engine));
    ASSERT_EQ(payloads.size(), 2U);
    EXPECT_EQ(payloads[1], json({{"error", "The provider broke off."}}));
}

TEST(EventStreamTest, AnyOtherFailureKeepsItsDetailToItself) {
    const std::string sent = sentBy({"part"}, End::Other);
    EXPECT_EQ(sent.find("inner detail"), std::string::npos);
    EXPECT_TRUE(payloadsOf(sent).back().contains("error"));
}

TEST(EventStreamTest, AServerThatStopsSaysSo) {
    const EventStream stream(std::make_unique<ListReply>(std::vector<std::string>(), End::Never));
    EXPECT_TRUE(payloadsOf(stream.stopped()).back().contains("error"));
}

TEST(EventStreamTest, ACommentGoesOutEachTenSecondsOfSilence) {
    EventStream stream(std::make_unique<ListReply>(std::vector<std::string>(), End::Never));
    SteadyTime now{};
    now += seconds(1000);
    for (int round = 0; round < 20; ++round) {
        const FeedStep early = stream.next(now);
        EXPECT_EQ(early.bytes, "");
        EXPECT_EQ(early.again, now + seconds(10));
        EXPECT_EQ(stream.next(now + seconds(9)).bytes, "");
        now += seconds(10);
        const FeedStep comment = stream.next(now);
        EXPECT_TRUE(comment.bytes.starts_with(":")) << comment.bytes;
        EXPECT_TRUE(comment.bytes.ends_with("\n\n"));
        EXPECT_TRUE(payloadsOf(comment.bytes).empty());
        EXPECT_FALSE(comment.isLast);
    }
}

TEST(EventStreamTest, AnEventPutsTheCommentOff) {
    EventStream stream(
        std::make_unique<ListReply>(std::vector<std::string>{"a", "ab"}, End::Never));
    const SteadyTime begin = SteadyTime() + seconds(1000);
    EXPECT_EQ(payloadsOf(stream.next(begin).bytes).size(), 1U);
    EXPECT_EQ(payloadsOf(stream.next(begin + seconds(8)).bytes).size(), 1U);
    EXPECT_EQ(stream.next(begin + seconds(12)).bytes, "");
    EXPECT_NE(stream.next(begin + seconds(18)).bytes, "");
}

TEST(EventStreamTest, NoCharacterThatSomeReaderTakesForALineEndIsSentAsItIs) {
    const std::string text = "a\xE2\x80\xA8"
                             "b\xE2\x80\xA9"
                             "c\xC2\x85"
                             "d\r\ne\u00E9\u201C";
    const std::string line = oneLineJson({{"text", text}});
    EXPECT_EQ(line.find("\xE2\x80\xA8"), std::string::npos);
    EXPECT_EQ(line.find("\xE2\x80\xA9"), std::string::npos);
    EXPECT_EQ(line.find("\xC2\x85"), std::string::npos);
    EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos);
    EXPECT_EQ(json::parse(line).at("text"), text);
}

TEST(EventStreamTest, InvalidUtf8IsReplaced) {
    EXPECT_EQ(json::parse(oneLineJson({{"text", "a\xFFz"}})).at("text"), "a\uFFFDz");
}

} // namespace
} // namespace vorq::gateway::testing
