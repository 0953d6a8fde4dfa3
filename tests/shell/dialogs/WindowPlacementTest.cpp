#include "shell/dialogs/WindowPlacement.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

const QRect left(0, 0, 1280, 800);
const QRect right(1280, 0, 1920, 1080);

TEST(WindowPlacement, AStoredPlaceComesBack) {
    const WindowPlace place{QRect(-20, 40, 900, 700), false};
    EXPECT_EQ(decodePlace(encodePlace(place)), place);
    const WindowPlace maximised{QRect(10, 20, 300, 400), true};
    EXPECT_EQ(decodePlace(encodePlace(maximised)), maximised);
}

TEST(WindowPlacement, WhatIsNoPlaceIsNone) {
    for (const QString text :
         {"", "1 2 3", "1 2 3 x", "1 2 0 4", "1 2 3 -4", "1 2 3 4 5", "1 2 3 4 max max",
          "1 2 3 4 min", "999999999 0 10 10", "nan nan nan nan"})
        EXPECT_EQ(decodePlace(text), std::nullopt) << qPrintable(text);
}

TEST(WindowPlacement, AFrameOnAScreenStays) {
    const QRect frame(100, 100, 800, 600);
    EXPECT_EQ(reachableFrame(frame, {left, right}), frame);
    const QRect other(1400, 50, 1000, 900);
    EXPECT_EQ(reachableFrame(other, {left, right}), other);
}

TEST(WindowPlacement, AFrameOfAScreenThatIsGoneComesToTheMainOne) {
    EXPECT_EQ(reachableFrame(QRect(1400, 50, 1000, 600), {left}), QRect(280, 50, 1000, 600));
    EXPECT_EQ(reachableFrame(QRect(-4000, -3000, 500, 400), {left, right}), QRect(0, 0, 500, 400));
}

TEST(WindowPlacement, AFrameThatIsTooLargeIsCut) {
    EXPECT_EQ(reachableFrame(QRect(10, 10, 5000, 4000), {left}), left);
}

TEST(WindowPlacement, WithoutAScreenNothingIsKnown) {
    const QRect frame(10, 10, 50, 40);
    EXPECT_EQ(reachableFrame(frame, {}), frame);
}

TEST(WindowPlacement, AFrameThatIsClearStays) {
    const QRect frame(100, 100, 200, 200);
    EXPECT_EQ(clearOf(frame, {0, 0, 1000, 800}, {{400, 100, 200, 200}}), frame);
    EXPECT_EQ(clearOf(frame, {0, 0, 1000, 800}, {}), frame);
}

TEST(WindowPlacement, AFrameKeepsClearOfOthersByTheShortestWay) {
    const QRect wide(0, 0, 1000, 800);
    const QRect moved = clearOf({400, 300, 200, 200}, wide, {{550, 0, 400, 800}});
    EXPECT_EQ(moved.size(), QSize(200, 200));
    EXPECT_EQ(moved.y(), 300);
    EXPECT_LT(moved.x() + moved.width(), 550);
    EXPECT_GT(moved.x(), 300);
}

TEST(WindowPlacement, AFrameIsNotSentOffTheScreenToBeClear) {
    const QRect wide(0, 0, 1000, 800);
    const QRect beside = clearOf({0, 300, 200, 200}, wide, {{100, 0, 400, 800}});
    EXPECT_TRUE(wide.contains(beside));
    EXPECT_GT(beside.x(), 499);
    const QRect none(0, 0, 600, 600);
    EXPECT_EQ(clearOf(none, wide, {{200, 200, 600, 400}}), none);
}

TEST(WindowPlacement, ANewWindowStandsInTheMiddle) {
    EXPECT_EQ(centredFrame({1120, 600}, right).center(), right.center());
    EXPECT_EQ(centredFrame({3000, 600}, left).size(), QSize(1280, 600));
}

} // namespace
} // namespace vorq
