#include "platform/linux/x11/PixelScreens.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

TEST(PixelScreens, APointIsAPixelWithoutAScreen) {
    EXPECT_EQ(pointsOf({10, 20, 30, 40}, {}), QRectF(10, 20, 30, 40));
}

TEST(PixelScreens, ScalesWithinTheScreenThatHoldsTheMiddle) {
    const std::vector<PixelScreen> screens{{.pixels = {0, 0, 1920, 1080}, .scale = 1},
                                           {.pixels = {1920, 0, 3840, 2160}, .scale = 2}};
    EXPECT_EQ(pointsOf({10, 20, 30, 40}, screens), QRectF(10, 20, 30, 40));
    EXPECT_EQ(pointsOf({2020, 100, 200, 40}, screens), QRectF(1970, 50, 100, 20));
}

TEST(ToolkitScale, IsThatOfTheWindow) {
    EXPECT_EQ(toolkitScale({500, 300}, {500, 300}), 1);
    EXPECT_EQ(toolkitScale({1000, 600}, {500, 300}), 2);
    EXPECT_EQ(toolkitScale({625, 375}, {500, 300}), 1.25);
}

TEST(ToolkitScale, BearsTheFrameThatTheToolkitCounts) {
    EXPECT_EQ(toolkitScale({1280, 960}, {642, 494}), 2);
    EXPECT_EQ(toolkitScale({640, 480}, {642, 507}), 1);
}

TEST(ToolkitScale, IsUnknownWhereTheWindowsDiffer) {
    EXPECT_EQ(toolkitScale({800, 600}, {400, 600}), std::nullopt);
    EXPECT_EQ(toolkitScale({300, 200}, {900, 600}), std::nullopt);
    EXPECT_EQ(toolkitScale({9000, 9000}, {900, 900}), std::nullopt);
    EXPECT_EQ(toolkitScale({500, 300}, {0, 0}), std::nullopt);
    EXPECT_EQ(toolkitScale({}, {500, 300}), std::nullopt);
}

TEST(ToolkitPlace, CountsFromTheWindowsCorner) {
    // On the right one of two monitors, whose corner is at 200, 0 in points as well.
    const ToolkitPlace place = toolkitPlace({500, 20, 750, 450}, {400, 13, 500, 300});
    EXPECT_EQ(place.pixelsOf({410, 33, 100, 20}), QRectF(515, 50, 150, 30));
    EXPECT_EQ(toolkitPlace({201, 15, 1575, 1571}, {133, 10, 1050, 1048}).points, QPointF(133, 10));
}

TEST(ToolkitPlace, CountsFromTheScreensCornerWhereTheFrameIsTold) {
    const ToolkitPlace place = toolkitPlace({201, 20, 1280, 960}, {100, 0, 641, 493});
    EXPECT_EQ(place.pixelsOf({148, 80, 45, 18}), QRectF(296, 160, 90, 36));
}

TEST(ToolkitPlace, IsThatOfPixelsWithoutAScale) {
    EXPECT_EQ(toolkitPlace({201, 20, 640, 480}, {200, 0, 642, 505}), ToolkitPlace());
    EXPECT_EQ(toolkitPlace({201, 20, 640, 480}, {190, 0, 640, 480}), ToolkitPlace());
    EXPECT_EQ(toolkitPlace({201, 20, 640, 480}, {0, 0, 9000, 20}), ToolkitPlace());
}

} // namespace
} // namespace vorq
