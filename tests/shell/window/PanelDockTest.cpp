#include "shell/window/PanelDock.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using enum PanelDockTarget;

const QRectF screen(0, 25, 1920, 1055);

TEST(DockFrame, StandsAtTheSidesWithAMargin) {
    EXPECT_EQ(dockFrame(Left, screen), QRectF(18, 178, 440, 750));
    EXPECT_EQ(dockFrame(Right, screen), QRectF(1462, 178, 440, 750));
}

TEST(DockFrame, StandsOnWholePoints) {
    EXPECT_EQ(dockFrame(Left, QRectF(0.5, 0, 1000, 751)), QRectF(19, 1, 440, 750));
    EXPECT_EQ(dockFrame(Center, QRectF(0, 0, 1001, 601)), QRectF(50, 30, 900.9, 540.9));
}

TEST(DockFrame, FillsNineTenthsOfASmallScreenInTheCentre) {
    EXPECT_EQ(dockFrame(Center, QRectF(0, 0, 1000, 600)), QRectF(50, 30, 900, 540));
}

TEST(DockFrame, IsBoundedInTheCentreOfALargeScreen) {
    EXPECT_EQ(dockFrame(Center, QRectF(0, 25, 3440, 1400)), QRectF(1170, 275, 1100, 900));
}

TEST(DockFrame, HasASizeWithoutAScreen) {
    EXPECT_EQ(dockFrame(Center, QRectF()), QRectF(-550, -450, 1100, 900));
    EXPECT_EQ(dockFrame(Left, QRectF()), QRectF(18, -375, 440, 750));
}

TEST(DockFrame, FollowsAScreenLeftOfThePrimaryOne) {
    EXPECT_EQ(dockFrame(Right, QRectF(-1440, 100, 1440, 875)), QRectF(-458, 163, 440, 750));
}

TEST(DockFrom, KnowsEveryTargetByItsFrame) {
    for (const PanelDockTarget target : {Left, Center, Right})
        EXPECT_EQ(dockFrom(dockFrame(target, screen), screen), target);
}

TEST(DockFrom, TakesAPanelOfTheCentreSizeForCentreWhereverItStands) {
    EXPECT_EQ(dockFrom(QRectF(0, 0, 481, 750), screen), Center);
    EXPECT_EQ(dockFrom(QRectF(1500, 0, 440, 791), screen), Center);
    EXPECT_EQ(dockFrom(QRectF(0, 0, 480, 790), screen), Left);
}

TEST(DockFrom, SplitsTheScreenAtFourAndSixTenths) {
    const QRectF thousand(0, 0, 1000, 800);
    EXPECT_EQ(dockFrom(QRectF(179, 0, 440, 750), thousand), Left);
    EXPECT_EQ(dockFrom(QRectF(180, 0, 440, 750), thousand), Center);
    EXPECT_EQ(dockFrom(QRectF(380, 0, 440, 750), thousand), Center);
    EXPECT_EQ(dockFrom(QRectF(381, 0, 440, 750), thousand), Right);
}

TEST(DockFrom, IsLeftWithoutAScreen) {
    EXPECT_EQ(dockFrom(QRectF(900, 0, 1100, 900), QRectF()), Left);
}

} // namespace
} // namespace vorq
