#include "ui/reply/ReplySelection.h"

#include <QKeyEvent>

#include <gtest/gtest.h>

namespace vorq {
namespace {

class ReplySelectionTest : public testing::Test {
  protected:
    // The blocks of the reply are these from now on, and what is selected follows.
    bool grow(const QString& raw) {
        const ReplyBlocks::Change change = m_blocks.setRaw(raw);
        layout.replace(change.row, change.removed, m_blocks.blocks().mid(change.row, change.added));
        layout.layOut(300, QDeadlineTimer(QDeadlineTimer::Forever));
        return selection.followChange(change);
    }
    [[nodiscard]] std::optional<ReplyPosition>
    after(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        return selection.positionAfter(QKeyEvent(QEvent::KeyPress, key, modifiers));
    }

    ReplyLayout layout;
    ReplySelection selection{layout};

  private:
    ReplyBlocks m_blocks;
};

TEST_F(ReplySelectionTest, WhatIsSelectedMovesWithItsBlock) {
    grow("One.\n\nTwo.");
    EXPECT_TRUE(selection.select({1, 3}, {1, 0}));
    EXPECT_FALSE(selection.select({1, 3}, {1, 0}));
    EXPECT_FALSE(grow("One.\n\nTwo.\n\nThree."));
    EXPECT_TRUE(grow("One.\n\n---\n\n- a list\n\nTwo.\n\nThree."));
    EXPECT_EQ(selection.text(), "Two");
    EXPECT_EQ(selection.cursor(), (ReplyPosition{3, 0})) << "its ends are not exchanged";
    EXPECT_EQ(selection.range(), (ReplyRange{{3, 0}, {3, 3}}));
}

TEST_F(ReplySelectionTest, WhatIsSelectedGoesWithItsBlock) {
    grow("One.\n\nTwo.\n\nThree.");
    selection.select({1, 0}, {1, 3});
    EXPECT_TRUE(grow("One.\n\nThree."));
    EXPECT_TRUE(selection.isEmpty());
    EXPECT_EQ(selection.text(), std::nullopt);
}

TEST_F(ReplySelectionTest, ABlockThatGetsShorterKeepsTheCaretAtItsEnd) {
    grow("One two three.\n\nFour.");
    selection.select({0, 14}, {0, 14});
    EXPECT_TRUE(grow("One two.\n\nFour."));
    EXPECT_EQ(selection.cursor(), (ReplyPosition{0, 8}));
}

TEST_F(ReplySelectionTest, KeysLeadOnByLettersWordsAndBlocks) {
    grow("One two.\n\nThree.");
    EXPECT_EQ(after(Qt::Key_Right), (ReplyPosition{0, 1}));
    EXPECT_EQ(after(Qt::Key_Right, Qt::ControlModifier), (ReplyPosition{0, 3}));
    EXPECT_EQ(after(Qt::Key_Down), std::nullopt) << "it scrolls";
    EXPECT_TRUE(selection.setCaretShown(true));
    EXPECT_FALSE(selection.setCaretShown(true));
    EXPECT_EQ(after(Qt::Key_End), (ReplyPosition{0, 8}));
    EXPECT_EQ(after(Qt::Key_Down)->block, 1);
    selection.select({0, 8}, {0, 8});
    EXPECT_EQ(after(Qt::Key_Right), (ReplyPosition{1, 0}));
    EXPECT_EQ(after(Qt::Key_A), std::nullopt);
}

TEST_F(ReplySelectionTest, InAReplyWithoutTextNothingIsThere) {
    EXPECT_EQ(selection.wordAt({5, 5}), ReplyRange());
    EXPECT_EQ(selection.blockAt({5, 5}), ReplyRange());
    EXPECT_EQ(selection.linkAtCaret(), "");
    EXPECT_EQ(after(Qt::Key_Right), std::nullopt);
}

} // namespace
} // namespace vorq
