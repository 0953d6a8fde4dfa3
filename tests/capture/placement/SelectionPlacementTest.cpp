#include "capture/placement/SelectionPlacement.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

const QRectF primary(0, 0, 1920, 1080);
const ScreenLayout oneScreen{.frames = {primary}, .main = primary};

TEST(CocoaRect, TurnsTheVerticalAxisOver) {
    EXPECT_EQ(cocoaRect(QRectF(10, 100, 30, 20), oneScreen), QRectF(10, 960, 30, 20));
}

TEST(CocoaRect, TakesTheScreenAtTheOriginWhateverIsInUse) {
    const QRectF left(-1280, 0, 1280, 800);
    const ScreenLayout screens{.frames = {left, primary}, .main = left};
    EXPECT_EQ(cocoaRect(QRectF(10, 100, 30, 20), screens), QRectF(10, 960, 30, 20));
}

TEST(CocoaRect, TakesTheScreenInUseIfNoneIsAtTheOrigin) {
    const QRectF near(10, 0, 1000, 800);
    const QRectF far(1010, 50, 800, 600);
    const ScreenLayout screens{.frames = {near, far}, .main = far};
    EXPECT_EQ(cocoaRect(QRectF(10, 100, 30, 20), screens), QRectF(10, 530, 30, 20));
}

TEST(CocoaRect, TakesTheFirstScreenAtLast) {
    const ScreenLayout screens{.frames = {QRectF(10, 0, 1000, 800), QRectF(1010, 0, 800, 600)},
                               .main = {}};
    EXPECT_EQ(cocoaRect(QRectF(10, 100, 30, 20), screens), QRectF(10, 680, 30, 20));
}

TEST(CocoaRect, LeavesTheRectangleWithoutAScreen) {
    EXPECT_EQ(cocoaRect(QRectF(10, 100, 30, 20), {}), QRectF(10, 100, 30, 20));
}

TEST(CocoaRect, PlacesWhatIsAboveThePrimaryScreen) {
    EXPECT_EQ(cocoaRect(QRectF(10, -50, 30, 20), oneScreen), QRectF(10, 1110, 30, 20));
}

TEST(PointAX, TurnsTheVerticalAxisOver) {
    EXPECT_EQ(pointAX({10, 100}, oneScreen), QPointF(10, 980));
    EXPECT_EQ(pointAX({10, 100}, {}), QPointF(10, 0));
}

TEST(HighlightPlacementFrame, LiesOnTheLowerEdgeWithABoundedHeight) {
    EXPECT_EQ(highlightPlacementFrame(QRectF(100, 100, 50, 30), oneScreen),
              QRectF(100, 950, 50, 24));
    EXPECT_EQ(highlightPlacementFrame(QRectF(100, 100, 50, 5), oneScreen),
              QRectF(100, 975, 50, 12));
    EXPECT_EQ(highlightPlacementFrame(QRectF(100, 100, 50, 18), oneScreen),
              QRectF(100, 962, 50, 18));
}

TEST(HighlightPlacementFrame, IsNeverNarrow) {
    EXPECT_EQ(highlightPlacementFrame(QRectF(100, 100, 5, 18), oneScreen),
              QRectF(100, 962, 12, 18));
}

TEST(HighlightPlacementFrame, NeedsBoundsOfAPoint) {
    EXPECT_EQ(highlightPlacementFrame(std::nullopt, oneScreen), std::nullopt);
    EXPECT_EQ(highlightPlacementFrame(QRectF(1, 1, 0.9, 9), oneScreen), std::nullopt);
    EXPECT_EQ(highlightPlacementFrame(QRectF(1, 1, 9, 0.9), oneScreen), std::nullopt);
    EXPECT_EQ(highlightPlacementFrame(QRectF(0, 0, 1, 1), oneScreen), QRectF(0, 1079, 12, 12));
}

TEST(CompactElementPlacementFrame, NeedsALowElement) {
    EXPECT_EQ(compactElementPlacementFrame(std::nullopt, oneScreen), std::nullopt);
    EXPECT_EQ(compactElementPlacementFrame(QRectF(0, 0, 50, 80.5), oneScreen), std::nullopt);
    EXPECT_EQ(compactElementPlacementFrame(QRectF(0, 0, 50, 80), oneScreen),
              QRectF(0, 1000, 50, 24));
}

TEST(CompactElementPlacementFrame, NeedsAFrameOfAPoint) {
    EXPECT_EQ(compactElementPlacementFrame(QRectF(0, 0, 50, 0.5), oneScreen), std::nullopt);
}

} // namespace
} // namespace vorq
