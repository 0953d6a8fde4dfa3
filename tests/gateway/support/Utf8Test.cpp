#include "support/Utf8.h"

#include "support/Filled.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

TEST(Utf8Test, SanitizingKeepsTextAndUnifiesLineEnds) {
    EXPECT_EQ(sanitized("a\r\nb\rc\td é 漢 😀"), "a\nb\nc\td é 漢 😀");
    EXPECT_EQ(sanitized(std::string("a\0b\x7F", 4)), "a b ");
    EXPECT_EQ(sanitized("\xC3"), "\uFFFD");
}

TEST(Utf8Test, LowersTrimsAndClips) {
    EXPECT_EQ(lowered("ÀÉΩЖŁ Straße"), "àéωжł straße");
    EXPECT_EQ(trimmed(" \u3000\u00A0a b\n"), "a b");
    EXPECT_EQ(trimmed(" \n"), "");
    EXPECT_EQ(clipped("one two three", 9), "one two…");
    EXPECT_EQ(clipped("ééé", 3), "é…");
    EXPECT_EQ(clipped("short", 9), "short");
}

TEST(FilledTest, GapsTakeTheValuesInOrder) {
    EXPECT_EQ(filled("{} of {}", 3, "four"), "3 of four");
    EXPECT_EQ(filled("{} {}", "{}", "x"), "{} x");
    EXPECT_EQ(filled("no gap", 1), "no gap");
}

} // namespace
} // namespace vorq::gateway::testing
