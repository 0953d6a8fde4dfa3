#include "engine/embedded/rewriting/ListForms.h"
#include "engine/embedded/rewriting/Shelter.h"
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
        std::string indented = "x\n";
        indented.append(blanks).append(times(20'000, "really x ")).append("y");
        EXPECT_EQ(shortened(indented, Language::English).substr(0, 2), "x\n");
        std::string repeated = "x";
        repeated.append(blanks).append(times(20'000, "really ")).append("y");
        EXPECT_FALSE(shortened(repeated, Language::English).contains("really really"));
    }
}

TEST(HostileRewritingTest, ShorterPassesManyParenthesesInLinearTime) {
    std::string text = times(200'000, ")");
    text.append(" ").append(times(20'000, "really ")).append("y");
    EXPECT_TRUE(shortened(text, Language::English).ends_with(") y"));
}

TEST(HostileRewritingTest, ShelterPassesManyBackticksInLinearTime) {
    std::string falling;
    for (std::size_t ticks = 2000; ticks > 0; --ticks)
        falling.append(ticks, '`').append(" ");
    EXPECT_TRUE(Shelter(falling).text() == falling);
    std::string unclosed;
    for (std::size_t ticks = 1; ticks < 500; ++ticks)
        unclosed.append(ticks, '`').append(" ");
    EXPECT_TRUE(Shelter(unclosed).text() == unclosed);
    const std::string lines = times(250'000, "`\n");
    EXPECT_TRUE(Shelter(lines).text() == lines);
    const std::string words = "``" + times(100'000, " `x` y");
    EXPECT_TRUE(Shelter(words).restored(Shelter(words).text()) == words);
}

TEST(ShelterTest, CodeEndsAtARunOfAsManyBackticks) {
    const auto parts = [](std::string_view text) {
        const Shelter shelter(text);
        std::string shown;
        for (const char c : shelter.text())
            if ((c & '\x80') == 0) shown += c;
        return shown;
    };
    EXPECT_EQ(parts("a `b` c"), "a  c");
    EXPECT_EQ(parts("a `b``c` d"), "a  d");
    EXPECT_EQ(parts("a ``b```c`` d"), "a  d");
    EXPECT_EQ(parts("a ``b` c"), "a ``b` c");
    EXPECT_EQ(parts("a `b`` c"), "a `b`` c");
    EXPECT_EQ(parts("a ``b `c` d"), "a ``b  d");
    EXPECT_EQ(parts("a `b\nc` d"), "a `b\nc` d");
    EXPECT_EQ(parts("a `b\n`c` d"), "a `b\n d");
}

} // namespace
} // namespace vorq::gateway::testing
