#include "capture/attachments/AttachedText.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

TEST(SlideText, EachTagIsABlankAndBlanksAreOne) {
    EXPECT_EQ(slideText("<a>one</a><b\nc=\"d\">two \t three</b>", false), "one two three");
}

TEST(SlideText, WhatIsNoTagStays) {
    EXPECT_EQ(slideText("a <> b", false), "a <> b");
    EXPECT_EQ(slideText("a <<b> c > d <e", false), "a c > d <e");
}

TEST(SlideText, IsNothingWithoutTextOrOfOtherBytes) {
    EXPECT_EQ(slideText("", false), std::nullopt);
    EXPECT_EQ(slideText("<a> \n</a>", false), std::nullopt);
    EXPECT_EQ(slideText("<a>\xFF</a>", false), std::nullopt);
}

TEST(SlideText, MayBeCutWithinACharacter) {
    EXPECT_EQ(slideText("<a>caf\xC3", true), "caf");
}

TEST(SlideText, IsLinearInTheTagsThatNeverEnd) {
    const QByteArray open = QByteArrayLiteral("<").repeated(1 << 20);
    EXPECT_EQ(slideText(open, false)->size(), 1 << 20);
}

} // namespace
} // namespace vorq
