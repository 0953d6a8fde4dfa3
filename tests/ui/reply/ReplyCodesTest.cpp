#include "ui/reply/ReplyCodes.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>

#include <gmock/gmock.h>

namespace vorq {
namespace {

QList<ReplyCodes::Code> codes(int first, int count, double top = 0) {
    QList<ReplyCodes::Code> list;
    for (int number = first; number < first + count; ++number)
        list += {number, QRectF(0, top + 50 * number, 380, 40)};
    return list;
}

class ReplyCodesTest : public testing::Test {
  protected:
    ReplyCodes model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ReplyCodesTest, AnyStretchOfTheReplyMayFollowAnother) {
    for (const auto& [first, count] :
         std::vector<std::pair<int, int>>{{0, 3}, {1, 3}, {0, 5}, {7, 2}, {2, 2}, {0, 0}, {4, 1}}) {
        model.setCodes(codes(first, count));
        EXPECT_EQ(model.codes(), codes(first, count)) << first << ", " << count;
    }
}

TEST_F(ReplyCodesTest, ARowStaysTheSameCodeWhileItIsThere) {
    model.setCodes(codes(2, 3));
    const QPersistentModelIndex third(model.index(1));
    model.setCodes(codes(0, 4));
    EXPECT_EQ(third.data(ReplyCodes::NumberRole), 3);
    model.setCodes(codes(3, 4, 20));
    EXPECT_EQ(third.data(ReplyCodes::NumberRole), 3);
    EXPECT_EQ(third.data(ReplyCodes::PlateRole), QRectF(0, 170, 380, 40));
    model.setCodes(codes(4, 3));
    EXPECT_FALSE(third.isValid());
}

} // namespace
} // namespace vorq
