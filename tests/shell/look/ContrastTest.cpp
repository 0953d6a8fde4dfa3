#include "shell/look/Contrast.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

const QColor black(0, 0, 0);
const QColor white(255, 255, 255);
const QColor grey(128, 128, 128);

TEST(Contrast, RatiosAreThoseOfTheStandard) {
    EXPECT_NEAR(Contrast::ratio(black, white), 21, 0.001);
    EXPECT_NEAR(Contrast::ratio(white, black), 21, 0.001);
    EXPECT_NEAR(Contrast::ratio(grey, grey), 1, 0.001);
    EXPECT_NEAR(Contrast::ratio(grey, white), 3.95, 0.01);
}

TEST(Contrast, WhatIsTransparentShowsItsGround) {
    EXPECT_EQ(Contrast::over(QColor(255, 255, 255, 0), black), black);
    EXPECT_EQ(Contrast::over(white, black), white);
    EXPECT_NEAR(Contrast::over(QColor(255, 255, 255, 128), black).red(), 128, 1);
}

TEST(Contrast, AColourChangesNoMoreThanItMust) {
    const QColor blue("#2E48CC");
    EXPECT_EQ(Contrast::readable(blue, white, black).rgb(), blue.rgb());
    const QColor onGrey = Contrast::readable(blue, QColor("#A0A0A0"), black);
    EXPECT_GE(Contrast::ratio(onGrey, QColor("#A0A0A0")), Contrast::readableText);
    EXPECT_GT(onGrey.blue(), onGrey.red()) << "it is still blue";
    EXPECT_EQ(Contrast::readable(blue, QColor("#505050"), QColor("#808080")), QColor("#808080"));
}

} // namespace
} // namespace vorq
