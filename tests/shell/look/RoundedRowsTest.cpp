#include "shell/look/RoundedRows.h"

#include <gmock/gmock.h>

#include <numbers>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

int area(const std::vector<QRect>& rows) {
    int pixels = 0;
    for (const QRect& row : rows)
        pixels += row.width() * row.height();
    return pixels;
}

TEST(RoundedRows, WithoutARadiusIsTheWholeRectangle) {
    EXPECT_THAT(roundedRows({440, 750}, 0), ElementsAre(QRect(0, 0, 440, 750)));
}

TEST(RoundedRows, OfNothingIsNothing) {
    EXPECT_THAT(roundedRows({0, 750}, 34), IsEmpty());
}

TEST(RoundedRows, LeavesOutTheCornersOnly) {
    const std::vector<QRect> rows = roundedRows({440, 750}, 34);
    const double corners = (4 - std::numbers::pi) * 34 * 34;
    EXPECT_NEAR(area(rows), 440 * 750 - corners, 20);
    EXPECT_EQ(rows.front().y(), 0);
    EXPECT_EQ(rows.back().bottom(), 749);
}

TEST(RoundedRows, IsTheSameUpsideDown) {
    const std::vector<QRect> rows = roundedRows({101, 77}, 20.5);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const QRect& mirror = rows[rows.size() - 1 - i];
        EXPECT_EQ(rows[i].x(), mirror.x());
        EXPECT_EQ(rows[i].top(), 76 - mirror.bottom());
    }
}

TEST(RoundedRows, HasFinerStepsAtAHigherScale) {
    EXPECT_GT(roundedRows({880, 1500}, 68).size(), roundedRows({440, 750}, 34).size());
}

TEST(RoundedRows, BecomesADiscAtMost) {
    EXPECT_NEAR(area(roundedRows({40, 40}, 500)), std::numbers::pi * 400, 12);
}

} // namespace
} // namespace vorq
