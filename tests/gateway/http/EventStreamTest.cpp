#include "http/EventStream.h"
#include "gateway/support/TestGateway.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;

/// Gives its steps and then ends as told.
class ListStream final : public ReplyStream {
  public:
    enum class End { Done, Engine, Other };
    ListStream(std::vector<std::string> steps, End end) : steps_(std::move(steps)), end_(end) {}
    std::optional<std::string> next(const Cancelled& cancelled) override {
        if (cancelled()) throw CancelledError();
        if (at_ < steps_.size()) return steps_[at_++];
        if (end_ == End::Engine) throw EngineError(502, "The provider broke off.");
        if (end_ == End::Other) throw std::runtime_error("inner detail");
        return std::nullopt;
    }
    Analysis result() override { return {steps_.back(), "", "", {}, std::nullopt}; }

  private:
    std::vector<std::string> steps_;
    End end_;
    std::size_t at_ = 0;
};

struct Sent {
    std::string bytes;
    explicit Sent(ListStream stream, bool cancelled = false, bool stopping = false,
                  std::size_t most = 100) {
        std::size_t count = 0;
        sendEvents(
            stream,
            [&](const std::string& event) {
                if (count++ >= most) return false;
                bytes += event;
                return true;
            },
            [=] { return cancelled; }, [=] { return stopping; });
    }
};

TEST(EventStreamTest, EachEventIsOneLineAndABlankLine) {
    const Sent sent(ListStream({"a\nb", "a\nb\nc"}, ListStream::End::Done));
    EXPECT_TRUE(sent.bytes.starts_with("data: {\"text\":\"a\\nb\"}\n\ndata: "));
    const std::vector<json> payloads = payloadsOf(sent.bytes);
    ASSERT_EQ(payloads.size(), 3U);
    EXPECT_EQ(payloads[1].at("text"), "a\nb\nc");
    EXPECT_EQ(payloads[2].at("done"), true);
}

TEST(EventStreamTest, AFailureOfTheEngineIsTheLastEvent) {
    const Sent sent(ListStream({"part"}, ListStream::End::Engine));
    const std::vector<json> payloads = payloadsOf(sent.bytes);
    ASSERT_EQ(payloads.size(), 2U);
    EXPECT_EQ(payloads[1], json({{"error", "The provider broke off."}}));
}

TEST(EventStreamTest, AnyOtherFailureKeepsItsDetailToItself) {
    const Sent sent(ListStream({"part"}, ListStream::End::Other));
    EXPECT_EQ(sent.bytes.find("inner detail"), std::string::npos);
    EXPECT_TRUE(payloadsOf(sent.bytes).back().contains("error"));
}

TEST(EventStreamTest, NothingIsSentToAClientThatLeft) {
    EXPECT_EQ(Sent(ListStream({"a"}, ListStream::End::Done), true).bytes, "");
    const Sent sent(ListStream({"a", "ab"}, ListStream::End::Done), false, false, 1);
    EXPECT_EQ(payloadsOf(sent.bytes).size(), 1U);
}

TEST(EventStreamTest, AServerThatStopsSaysSo) {
    const Sent sent(ListStream({"a"}, ListStream::End::Done), true, true);
    EXPECT_TRUE(payloadsOf(sent.bytes).back().contains("error"));
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
