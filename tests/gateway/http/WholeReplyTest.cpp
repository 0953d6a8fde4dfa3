#include "http/WholeReply.h"
#include "doubles/gateway/ListReply.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using std::chrono::seconds;
using End = ListReply::End;

constexpr SteadyTime kWholeBegin = SteadyTime() + seconds(1000);

struct WholeCase {
    ListReply* reply = new ListReply({"a", "ab"}, End::Never);
    WholeReply whole{std::unique_ptr<ReplyStream>(reply)};
};

TEST(WholeReplyTest, AReplyThatIsThereIsOneDocument) {
    WholeReply whole(std::make_unique<ListReply>(std::vector<std::string>{"a", "ab"}, End::Done));
    const FeedStep step = whole.next(kWholeBegin);
    EXPECT_TRUE(step.isLast);
    EXPECT_EQ(json::parse(step.bytes).at("summary"), "ab");
}

TEST(WholeReplyTest, BlanksFillTheTimeAndTheDocumentStillReads) {
    WholeCase one;
    std::string sent = one.whole.next(kWholeBegin).bytes;
    EXPECT_EQ(sent, "");
    EXPECT_EQ(one.whole.next(kWholeBegin + seconds(9)).bytes, "");
    for (int i = 1; i <= 12; ++i)
        sent += one.whole.next(kWholeBegin + seconds(10 * i)).bytes;
    EXPECT_EQ(sent, std::string(12, ' '));
    one.reply->endAs(End::Done);
    const FeedStep last = one.whole.next(kWholeBegin + seconds(121));
    EXPECT_TRUE(last.isLast);
    EXPECT_EQ(json::parse(sent + last.bytes).at("summary"), "ab");
}

TEST(WholeReplyTest, AFailureHasItsStatusUntilABlankWentOut) {
    WholeCase early;
    EXPECT_EQ(early.whole.next(kWholeBegin).bytes, "");
    early.reply->endAs(End::Engine);
    EXPECT_THROW(static_cast<void>(early.whole.next(kWholeBegin + seconds(9))), EngineError);

    WholeCase late;
    EXPECT_EQ(late.whole.next(kWholeBegin).bytes, "");
    EXPECT_EQ(late.whole.next(kWholeBegin + seconds(10)).bytes, " ");
    late.reply->endAs(End::Engine);
    const FeedStep last = late.whole.next(kWholeBegin + seconds(11));
    EXPECT_TRUE(last.isLast);
    EXPECT_EQ(json::parse(last.bytes), json({{"error", "The provider broke off."}}));
}

TEST(WholeReplyTest, AServerThatStopsSaysSoOnceSomethingWentOut) {
    WholeCase one;
    EXPECT_EQ(one.whole.next(kWholeBegin).bytes, "");
    EXPECT_EQ(one.whole.stopped(), "");
    EXPECT_EQ(one.whole.next(kWholeBegin + seconds(10)).bytes, " ");
    EXPECT_TRUE(json::parse(one.whole.stopped()).contains("error"));
}

} // namespace
} // namespace vorq::gateway::testing
