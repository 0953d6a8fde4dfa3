#include "engine/embedded/DraftStream.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using std::chrono::milliseconds;

TEST(DraftStreamTest, TheFirstPieceComesAtOnceAndTheOthersAfterThePause) {
    ReplyDraft draft;
    draft.pieces = {"one ", "two ", "three"};
    DraftStream stream(draft, milliseconds(30));
    const SteadyTime begin = SteadyTime() + std::chrono::seconds(1);
    EXPECT_EQ(stream.step(begin).text, "one ");
    const ReplyStep early = stream.step(begin + milliseconds(29));
    EXPECT_EQ(early.kind, ReplyStep::Kind::Waits);
    EXPECT_EQ(early.again, begin + milliseconds(30));
    EXPECT_EQ(stream.step(begin + milliseconds(30)).text, "one two ");
    EXPECT_EQ(stream.step(begin + milliseconds(60)).text, "one two three");
    EXPECT_EQ(stream.step(begin + milliseconds(60)).kind, ReplyStep::Kind::Ended);
    EXPECT_EQ(std::get<Analysis>(stream.result()).summary, "one two three");
}

} // namespace
} // namespace vorq::gateway::testing
