#include "engine/embedded/rewriting/ListForms.h"
#include "engine/embedded/rewriting/Shortening.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace vorq::gateway::testing {
namespace {

/// So much text that quadratic work would not end within the time limit of the whole program.
std::string times(std::size_t count, std::string_view piece) {
    std::string text;
    text.reserve(count * piece.size());
    for (std::size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

TEST(HostileRewritingTest, LinesOfParenthesesBecomeBulletsInLinearTime) {
    const std::string closed = toBullets("字\n" + times(200'000, ")\n"), Language::Chinese);
    EXPECT_EQ(closed.size(), std::string("- 字").size() + 200'000);
    EXPECT_FALSE(toBullets("x\n" + times(100'000, ")\n"), Language::English).empty());
}

// What finds sentences takes its time to be made.
TEST(HostileRewritingTest, LinesOfOneSentenceEachBecomeBulletsInTime) {
    EXPECT_EQ(toBullets(times(50'000, "1.\n"), Language::English).size(), 50'000 * 5 - 1);
    EXPECT_EQ(toBullets(times(50'000, "字。\n"), Language::Chinese).size(), 50'000 * 9 - 1);
}

TEST(HostileRewritingTest, ShorterPassesManyBlanksInLinearTime) {
    for (const std::string& blanks : {times(200'000, " "), times(70'000, "\u00a0\t")}) {
        const std::string filler = times(20'000, "really x ");
        EXPECT_EQ(shortened("x\n" + blanks + filler + "y", Language::English).substr(0, 2), "x\n");
        EXPECT_FALSE(shortened("x" + blanks + times(20'000, "really ") + "y", Language::English)
                         .contains("really really"));
    }
}

TEST(HostileRewritingTest, ShorterPassesManyParenthesesInLinearTime) {
    const std::string text = "x" + times(200'000, ")").append(" ") + times(20'000, "really ") + "y";
    EXPECT_TRUE(shortened(text, Language::English).ends_with(") y"));
}

} // namespace
} // namespace vorq::gateway::testing
