#include "shell/overlay/CalloutPlacement.h"
#include "shell/overlay/CalloutArrow.h"
#include "shell/overlay/CalloutRows.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::ElementsAre;

constexpr QRectF desktop{0, 0, 1920, 1040};
constexpr QSizeF callout{372, 200};

CalloutTarget lineAt(double x, double y, double width = 300) {
    return {.strip = {x, y, width, 16}, .centre = QPointF(x + width / 2, y + 8)};
}

TEST(CalloutPlacement, StandsBelowWithItsArrowUp) {
    const CalloutPlace at = placeCallout(lineAt(400, 600), callout, desktop);
    EXPECT_TRUE(at.pointsUp);
    EXPECT_EQ(at.frame, QRectF(388, 398, 372, 200));
    EXPECT_EQ(at.tipPoint(), QPointF(538, 598));
}

TEST(CalloutPlacement, StandsAboveWithoutRoomBelow) {
    const CalloutPlace at = placeCallout(lineAt(400, 150), callout, desktop);
    EXPECT_FALSE(at.pointsUp);
    EXPECT_EQ(at.frame.top(), 168);
    EXPECT_EQ(at.tipPoint().y(), 168);
}

TEST(CalloutPlacement, StandsAboveAllOfASelectionOfManyLines) {
    const CalloutTarget lines{.strip = {400, 100, 300, 24}, .centre = QPointF(550, 200)};
    EXPECT_EQ(lines.bounds(), QRectF(400, 100, 300, 200));
    const CalloutPlace at = placeCallout(lines, callout, desktop);
    EXPECT_FALSE(at.pointsUp);
    EXPECT_EQ(at.frame.top(), 302);
}

TEST(CalloutPlacement, StaysOnTheScreenWhereThereIsRoomOnNeitherSide) {
    const CalloutTarget page{.strip = {100, 20, 800, 24}, .centre = QPointF(500, 520)};
    const CalloutPlace at = placeCallout(page, callout, desktop);
    EXPECT_TRUE(desktop.contains(at.frame));
}

TEST(CalloutPlacement, IsClampedAtTheSidesAndItsTipStaysOnTheSelection) {
    for (const double x : {0.0, 3.0, 1600.0, 1890.0}) {
        const CalloutTarget word = lineAt(x, 600, 30);
        const CalloutPlace at = placeCallout(word, callout, desktop);
        EXPECT_TRUE(desktop.contains(at.frame)) << x;
        EXPECT_GE(at.tipX, calloutTipInset);
        EXPECT_LE(at.tipX, callout.width() - calloutTipInset);
    }
    const CalloutPlace inTheMiddle = placeCallout(lineAt(900, 600, 30), callout, desktop);
    EXPECT_EQ(inTheMiddle.tipPoint().x(), 915);
}

TEST(CalloutPlacement, KeepsItsSideAsLongAsItHasRoomThere) {
    const CalloutTarget line = lineAt(400, 240);
    EXPECT_TRUE(placeCallout(line, callout, desktop).pointsUp);
    EXPECT_FALSE(placeCallout(line, callout, desktop, false).pointsUp);
    EXPECT_FALSE(placeCallout(line, {372, 300}, desktop, true).pointsUp);
}

TEST(CalloutPlacement, ACalloutLargerThanTheScreenBeginsAtItsCorner) {
    const CalloutPlace at = placeCallout(lineAt(50, 50), {900, 900}, {0, 0, 640, 480});
    EXPECT_EQ(at.frame.topLeft(), QPointF(calloutScreenEdge, calloutScreenEdge));
    EXPECT_EQ(at.frame.size(), QSizeF(900, 900));
}

TEST(CalloutPlacement, AnotherScreenHasItsOwnRoom) {
    const QRectF left{-1280, 100, 1280, 900};
    const CalloutPlace at = placeCallout(lineAt(-1270, 110), callout, left);
    EXPECT_TRUE(left.contains(at.frame));
    EXPECT_FALSE(at.pointsUp);
}

TEST(CalloutPlacement, ATargetWithoutASizeIsOne) {
    const CalloutPlace at =
        placeCallout({.strip = {500, 500, 0, 0}, .centre = {}}, callout, desktop);
    EXPECT_TRUE(desktop.contains(at.frame));
    EXPECT_EQ(at.tipPoint().x(), 500);
}

TEST(CalloutRows, GoFromTheTipDownOverTheCardWithoutOverlap) {
    const CalloutForm form{
        .card = {10, 20, 100, 60}, .radius = 12, .arrow = {40, 13}, .pointsUp = true, .tipX = 60};
    const std::vector<QRect> rows = calloutRows(form);
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows.front().top(), 9) << "the tip is round";
    EXPECT_EQ(rows.back().bottom(), 79);
    for (std::size_t i = 1; i < rows.size(); ++i)
        EXPECT_GT(rows[i].top(), rows[i - 1].bottom());
    EXPECT_NEAR(rows.front().center().x(), 60, 1);
}

TEST(CalloutRows, TheArrowBelowEndsWithItsTip) {
    const std::vector<QRect> rows = calloutRows(
        {.card = {0, 0, 100, 60}, .radius = 12, .arrow = {40, 10}, .pointsUp = false, .tipX = 50});
    EXPECT_EQ(rows.front().top(), 0);
    EXPECT_EQ(rows.back().bottom(), 67);
    EXPECT_LT(rows.back().width(), 10);
    for (std::size_t i = 1; i < rows.size(); ++i)
        EXPECT_GT(rows[i].top(), rows[i - 1].bottom());
}

TEST(CalloutRows, HoldOfTheArrowWhatIsDrawnOfIt) {
    const QPainterPath edge = calloutArrowEdge();
    const std::vector<QRect> rows = calloutRows(
        {.card = {0, 13, 100, 60}, .radius = 0, .arrow = {40, 13}, .pointsUp = true, .tipX = 50});
    for (const QRect& row : rows) {
        if (row.top() >= 13) break;
        EXPECT_TRUE(edge.contains({row.left() - 30 + 1.5, row.top() + 0.5})) << row.top();
        EXPECT_FALSE(edge.contains({row.left() - 30 - 1.5, row.top() + 0.5})) << row.top();
    }
}

TEST(CalloutRows, WithoutAnArrowThereIsTheCardAlone) {
    CalloutForm form;
    form.card = {5, 6, 7, 8};
    EXPECT_THAT(calloutRows(form), ElementsAre(QRect(5, 6, 7, 8)));
}

} // namespace
} // namespace vorq
