#include "ui/reply/ReplyBlocksModel.h"
#include "ui/Samples.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class ReplyBlocksModelTest : public testing::Test {
  protected:
    ReplyBlocksModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy changed{&model, &QAbstractItemModel::dataChanged};
    QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removed{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy reset{&model, &QAbstractItemModel::modelReset};
};

TEST_F(ReplyBlocksModelTest, AGrowingReplyChangesOnlyItsLastBlock) {
    model.setRaw("# Title\n\nOne.\n\nTw");
    EXPECT_EQ(model.rowCount(), 3);
    changed.clear();
    inserted.clear();
    model.setRaw("# Title\n\nOne.\n\nTwo.\n\nThree.");
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 2);
    EXPECT_EQ(changed[0][1].toModelIndex().row(), 2);
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 3);
    EXPECT_EQ(removed.count(), 0);
}

TEST_F(ReplyBlocksModelTest, ABlockAddedChangesNoOther) {
    model.setRaw("One.\n\nTwo.");
    changed.clear();
    model.setRaw("One.\n\nTwo.\n\nThree.");
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(ReplyBlocksModelTest, ABlockInTheMiddleLeavesTheEndsAlone) {
    model.setRaw("One.\n\nTwo.\n\nThree.");
    changed.clear();
    inserted.clear();
    model.setRaw("One.\n\nThree.");
    EXPECT_EQ(changed.count(), 0);
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed[0][1].toInt(), 1);
    model.setRaw("One.\n\nNew.\n\nThree.");
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 1);
}

TEST_F(ReplyBlocksModelTest, TheSameTextTellsNothing) {
    model.setRaw(samples::leaves);
    const qsizetype told = inserted.count();
    model.setRaw(samples::leaves);
    EXPECT_EQ(inserted.count() + changed.count() + removed.count(), told);
}

TEST_F(ReplyBlocksModelTest, EveryPrefixOfAReplyIsConsistent) {
    for (qsizetype length = 0; length <= samples::leaves.size(); length += 7)
        model.setRaw(samples::leaves.left(length));
    model.setRaw(samples::leaves);
    EXPECT_EQ(model.blocks(), AssistantReplyDocument::blocks(samples::leaves));
    EXPECT_EQ(reset.count(), 0);
    model.setRaw("");
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(ReplyBlocksModelTest, RolesTellKindAndText) {
    model.setRaw("# Title\n\n```\ncode\n```");
    EXPECT_EQ(model.data(model.index(0), ReplyBlocksModel::KindRole), "title");
    EXPECT_EQ(model.data(model.index(1), ReplyBlocksModel::KindRole), "code");
    EXPECT_EQ(model.data(model.index(1), ReplyBlocksModel::TextRole), "code");
}

} // namespace
} // namespace vorq
