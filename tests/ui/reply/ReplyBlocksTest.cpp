#include "ui/reply/ReplyBlocks.h"
#include "doubles/ui/Samples.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using Change = ReplyBlocks::Change;

TEST(ReplyBlocks, AGrowingReplyChangesOnlyItsLastBlock) {
    ReplyBlocks blocks;
    EXPECT_EQ(blocks.setRaw("# Title\n\nOne.\n\nTw"), (Change{0, 0, 3}));
    EXPECT_EQ(blocks.setRaw("# Title\n\nOne.\n\nTwo.\n\nThree."), (Change{2, 1, 2}));
}

TEST(ReplyBlocks, ABlockAddedChangesNoOther) {
    ReplyBlocks blocks;
    blocks.setRaw("One.\n\nTwo.");
    EXPECT_EQ(blocks.setRaw("One.\n\nTwo.\n\nThree."), (Change{2, 0, 1}));
}

TEST(ReplyBlocks, ABlockInTheMiddleLeavesTheEndsAlone) {
    ReplyBlocks blocks;
    blocks.setRaw("One.\n\nTwo.\n\nThree.");
    EXPECT_EQ(blocks.setRaw("One.\n\nThree."), (Change{1, 1, 0}));
    EXPECT_EQ(blocks.setRaw("One.\n\nNew.\n\nThree."), (Change{1, 0, 1}));
}

TEST(ReplyBlocks, TheSameTextChangesNothing) {
    ReplyBlocks blocks;
    blocks.setRaw(samples::leaves);
    EXPECT_EQ(blocks.setRaw(samples::leaves), Change());
}

// Whoever makes the same changes to a list of their own ends up with the same blocks.
TEST(ReplyBlocks, TheChangesOfEveryPrefixOfAReplyAddUp) {
    ReplyBlocks blocks;
    QList<ReplyBlocks::Block> mirrored;
    const auto grow = [&](const QString& raw) {
        const Change change = blocks.setRaw(raw);
        mirrored.remove(change.row, change.removed);
        for (int i = 0; i < change.added; ++i)
            mirrored.insert(change.row + i, blocks.blocks()[change.row + i]);
    };
    for (qsizetype length = 0; length <= samples::leaves.size(); length += 7)
        grow(samples::leaves.left(length));
    grow(samples::leaves);
    EXPECT_EQ(mirrored, AssistantReplyDocument::blocks(samples::leaves));
    grow("");
    EXPECT_TRUE(mirrored.isEmpty());
}

} // namespace
} // namespace vorq
