#include "ui/reply/ColumnWidths.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;

auto around(double expected) {
    return DoubleNear(expected, 0.01);
}

TEST(ColumnWidths, WithRoomForAllTheRestIsSharedEvenly) {
    EXPECT_THAT(columnWidths({{50, 20}, {100, 40}}, 200), ElementsAre(75, 125));
    EXPECT_THAT(columnWidths({}, 200), testing::IsEmpty());
}

TEST(ColumnWidths, NarrowOnesKeepWhatTheyNeedAndWideOnesShareTheRestByTheirNeed) {
    EXPECT_THAT(columnWidths({{50, 20}, {300, 40}, {600, 40}}, 350),
                ElementsAre(around(50), around(100), around(200)));
}

TEST(ColumnWidths, NoWordIsBrokenWhileOthersCanGiveWay) {
    EXPECT_THAT(columnWidths({{120, 110}, {1000, 60}}, 200), ElementsAre(around(110), around(90)));
    EXPECT_THAT(columnWidths({{90, 30}, {150, 130}}, 200), ElementsAre(around(70), around(130)))
        << "nor for a narrow column";
}

TEST(ColumnWidths, OfWordsThatAreTooLongTheLongestIsBroken) {
    EXPECT_THAT(columnWidths({{80, 70}, {90, 40}, {800, 700}}, 300),
                ElementsAre(around(70), around(40), around(190)));
    EXPECT_THAT(columnWidths({{500, 500}, {900, 900}}, 300), ElementsAre(around(150), around(150)));
}

} // namespace
} // namespace vorq
