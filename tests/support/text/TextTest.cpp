#include "support/text/Text.h"

#include <unicode/uchar.h>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using Pieces = std::vector<QStringView>;

TEST(Text, BlanksAreTheSpaceSeparatorsAndTheTab) {
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        const bool separator = u_charType(static_cast<UChar32>(point)) == U_SPACE_SEPARATOR;
        ASSERT_EQ(isBlank(point), separator || point == U'\t') << std::hex << std::uint32_t{point};
    }
}

TEST(Text, NewlinesAreTheSevenLineBreaks) {
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        const bool expected =
            (point >= 0x0A && point <= 0x0D) || point == 0x85 || point == 0x2028 || point == 0x2029;
        ASSERT_EQ(isNewline(point), expected) << std::hex << std::uint32_t{point};
    }
}

TEST(Text, WhiteSpaceIsEverySeparatorTheTabAndTheLineBreaks) {
    constexpr std::uint32_t separators = U_GC_Z_MASK;
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        const bool separator = (U_GET_GC_MASK(static_cast<UChar32>(point)) & separators) != 0;
        const bool control = point == 0x09 || (point >= 0x0A && point <= 0x0D) || point == 0x85;
        ASSERT_EQ(isWhitespaceOrNewline(point), separator || control)
            << std::hex << std::uint32_t{point};
    }
}

TEST(Text, TrimsWhiteSpaceAndNewlinesAtBothEndsOnly) {
    EXPECT_EQ(trimmed(u" \r\n\t\u2028a b\u3000\u0085\n"), u"a b");
    EXPECT_EQ(trimmed(u""), u"");
    EXPECT_EQ(trimmed(u" \n\u00A0 "), u"");
    EXPECT_EQ(trimmed(u"x"), u"x");
}

TEST(Text, KeepsZeroWidthCharactersWhenTrimming) {
    EXPECT_EQ(trimmed(u"\u200Ba\uFEFF"), u"\u200Ba\uFEFF");
    EXPECT_EQ(trimmed(u"\u180Ea"), u"\u180Ea");
}

TEST(Text, TrimsABlankThatCarriesACombiningMark) {
    EXPECT_EQ(trimmed(u" \u0301a"), u"\u0301a");
}

TEST(Text, KeepsLineBreaksWhenOnlyBlanksAreTrimmed) {
    EXPECT_EQ(trimmedBlanks(u" \t\u00A0\na\r \u2003"), u"\na\r");
    EXPECT_EQ(trimmedBlanks(u"\t \t"), u"");
}

TEST(Text, TrimmingKeepsLoneSurrogates) {
    const char16_t text[] = {u' ', 0xDC00, u'a', 0xD800, u' '};
    EXPECT_EQ(trimmed(QStringView(text)), QStringView(text).sliced(1, 3));
    EXPECT_EQ(trimmedBlanks(QStringView(text)), QStringView(text).sliced(1, 3));
}

TEST(Text, SplitsAtEachLineBreakKeepingEmptyPieces) {
    EXPECT_EQ(splitAtNewlines(u"a\r\nb\u2028c\n"), (Pieces{u"a", u"", u"b", u"c", u""}));
    EXPECT_EQ(splitAtNewlines(u""), Pieces{u""});
}

TEST(Text, FirstLineSkipsEmptyPieces) {
    EXPECT_EQ(firstLine(u"\n\r\n one\u0085two"), u" one");
    EXPECT_EQ(firstLine(u"one"), u"one");
    EXPECT_EQ(firstLine(u"\n\n"), u"");
    EXPECT_EQ(firstLine(u""), u"");
}

TEST(Text, MakesEachRunOfWhiteSpaceOneBlank) {
    EXPECT_EQ(withSingleBlanks(u" a \t\r\n b\u00A0\u2028c\n"), " a b c ");
    EXPECT_EQ(withSingleBlanks(u""), "");
}

TEST(Text, HealsCarriageReturnsAndEscapedLineFeeds) {
    EXPECT_EQ(withHealedLineBreaks(u"a\r\nb\\nc"), u"a\nb\nc");
    EXPECT_EQ(withHealedLineBreaks(u"plain"), u"plain");
    EXPECT_EQ(withHealedLineBreaks(u"\r\n"), u"\n");
    EXPECT_EQ(withHealedLineBreaks(u""), u"");
}

TEST(Text, HealsEachPairOnce) {
    EXPECT_EQ(withHealedLineBreaks(u"\r\r\n\r"), u"\r\n\r");
    EXPECT_EQ(withHealedLineBreaks(u"\\\\n \\t \\"), u"\\\n \\t \\");
    EXPECT_EQ(withHealedLineBreaks(u"\\\r\nn"), u"\\\nn");
}

TEST(Text, LeavesABackslashBeforeAnAccentedLetter) {
    EXPECT_EQ(withHealedLineBreaks(u"\\n\u0303o"), u"\\n\u0303o");
}

} // namespace
} // namespace vorq
