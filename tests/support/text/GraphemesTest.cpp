#include "support/text/Graphemes.h"

#include <QString>

#include <unicode/ubrk.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <random>

namespace vorq {
namespace {

using Pieces = std::vector<QStringView>;

struct CloseBreaks {
    void operator()(UBreakIterator* breaks) const { ubrk_close(breaks); }
};

std::vector<qsizetype> endsByIcu(QStringView text) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UBreakIterator, CloseBreaks> breaks(ubrk_open(
        UBRK_CHARACTER, "", text.utf16(), static_cast<std::int32_t>(text.size()), &status));
    std::vector<qsizetype> ends;
    ubrk_first(breaks.get());
    for (std::int32_t end = ubrk_next(breaks.get()); end != UBRK_DONE;
         end = ubrk_next(breaks.get()))
        ends.push_back(end);
    return ends;
}

std::vector<qsizetype> endsByVorq(QStringView text) {
    std::vector<qsizetype> ends;
    for (qsizetype at = 0; at < text.size();)
        ends.push_back(at = graphemeEnd(text, at));
    return ends;
}

void append(QString& text, char32_t codePoint) {
    if (codePoint > 0xFFFF) {
        text += QChar(QChar::highSurrogate(codePoint));
        text += QChar(QChar::lowSurrogate(codePoint));
    } else {
        text += QChar(static_cast<char16_t>(codePoint));
    }
}

std::string shown(QStringView text) {
    std::string units;
    for (const QChar unit : text)
        units += QString::number(unit.unicode(), 16).toStdString() + ' ';
    return units;
}

TEST(Graphemes, CountsAsciiLettersOneByOne) {
    EXPECT_EQ(graphemeCount(u""), 0);
    EXPECT_EQ(graphemeCount(u"Hello there!"), 12);
}

TEST(Graphemes, TakesACarriageReturnAndLineFeedAsOne) {
    EXPECT_EQ(splitGraphemes(u"a\r\n\n\r\rb"), (Pieces{u"a", u"\r\n", u"\n", u"\r", u"\r", u"b"}));
}

TEST(Graphemes, KeepsCombiningMarksWithTheirLetter) {
    EXPECT_EQ(splitGraphemes(u"e\u0301\u0302x- \u0301"),
              (Pieces{u"e\u0301\u0302", u"x", u"-", u" \u0301"}));
}

TEST(Graphemes, LeavesAMarkAfterALineBreakAlone) {
    EXPECT_EQ(splitGraphemes(u"\n\u0301a"), (Pieces{u"\n", u"\u0301", u"a"}));
}

TEST(Graphemes, KeepsEmojiSequencesWhole) {
    EXPECT_EQ(graphemeCount(u"👩‍👩‍👧👍🏽❤️1️⃣"), 4);
}

TEST(Graphemes, JoinsEmojiOnlyThroughAPictograph) {
    EXPECT_EQ(graphemeCount(u"a\u200D👩"), 2);
    EXPECT_EQ(graphemeCount(u"👩\u200D\u200D👩"), 2);
}

TEST(Graphemes, PairsRegionalIndicators) {
    EXPECT_EQ(graphemeCount(u"🇩🇪🇫🇷"), 2);
    EXPECT_EQ(graphemeCount(u"🇩🇪🇫"), 2);
}

TEST(Graphemes, ComposesHangulSyllables) {
    EXPECT_EQ(graphemeCount(u"\u1112\u1161\u11ABx\uAC00\u11A8"), 3);
}

TEST(Graphemes, KeepsIndicVowelSignsWithTheirLetter) {
    EXPECT_EQ(splitGraphemes(u"நிகா"), (Pieces{u"நி", u"கா"}));
}

TEST(Graphemes, JoinsIndicConsonantsThroughAVirama) {
    EXPECT_EQ(splitGraphemes(u"क्षमा"), (Pieces{u"क्ष", u"मा"}));
    EXPECT_EQ(graphemeCount(u"\u0915\u094D\u200D\u0937"), 1);
    EXPECT_EQ(graphemeCount(u"\u0915\u094Da"), 2);
}

TEST(Graphemes, TakesALoneSurrogateAsACharacter) {
    const char16_t text[] = {u'a', 0xD83D, u'b', 0xDE00, 0xD83D};
    EXPECT_EQ(graphemeCount(QStringView(text)), 5);
}

TEST(Graphemes, PrefixNeverCutsACharacter) {
    EXPECT_EQ(graphemePrefix(u"e\u0301👩‍👩‍👧b", 2), u"e\u0301👩‍👩‍👧");
    EXPECT_EQ(graphemePrefix(u"ab", 5), u"ab");
    EXPECT_EQ(graphemePrefix(u"ab", std::numeric_limits<qsizetype>::max()), u"ab");
    EXPECT_EQ(graphemePrefix(u"ab", -1), u"");
    EXPECT_EQ(graphemePrefix(u"ab", 0), u"");
    EXPECT_EQ(graphemePrefix(u"", 3), u"");
}

TEST(Graphemes, CountAtLeastStopsAtTheCharacterAskedFor) {
    EXPECT_TRUE(graphemeCountAtLeast(u"ae\u0301", 2));
    EXPECT_FALSE(graphemeCountAtLeast(u"ae\u0301", 3));
    EXPECT_TRUE(graphemeCountAtLeast(u"", 0));
    EXPECT_FALSE(graphemeCountAtLeast(u"", 1));
}

TEST(Graphemes, TellsWhatJoinsItsNeighbour) {
    EXPECT_TRUE(extendsCharacterBefore(u"-\u0301", 1));
    EXPECT_TRUE(extendsCharacterBefore(u"-\u200D", 1));
    EXPECT_TRUE(extendsCharacterBefore(u"-🏽", 1));
    EXPECT_FALSE(extendsCharacterBefore(u"-👍", 1));
    EXPECT_FALSE(extendsCharacterBefore(u"-\u201C", 1));
    EXPECT_TRUE(takesCharacterAfter(u"\u0600-", 1));
    EXPECT_TRUE(takesCharacterAfter(u"\U000110BD-", 2));
    EXPECT_FALSE(takesCharacterAfter(u"x-", 1));
    EXPECT_FALSE(takesCharacterAfter(u"👍-", 2));
}

// Every code point between neighbours of every kind.
TEST(Graphemes, AgreesWithIcuOnEachCodePoint) {
    const QString neighbours[] = {u"a"_qs,      u"\u0301"_qs, u"\u200D👩"_qs,
                                  u"\u0600"_qs, u"🇩"_qs,      u"\u094D\u0915\u094D"_qs,
                                  u"\u1161"_qs, u"\r"_qs};
    QString text;
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        // Unassigned planes are all alike.
        if (point == 0x40000) point = 0xE0000;
        if (point == 0xE1000) point = 0x10FF00;
        for (const QString& neighbour : neighbours) {
            append(text, point);
            text += neighbour;
        }
        if (text.size() > 4000 || point == 0x10FFFF) {
            ASSERT_EQ(endsByVorq(text), endsByIcu(text)) << "before " << std::uint32_t{point};
            text.clear();
        }
    }
}

TEST(Graphemes, AgreesWithIcuOnRandomSequences) {
    constexpr char32_t alphabet[] = {
        U'a',     U'-',    U'*',    U'\r',   U'\n',   U' ',    0xAD,    0xA9,    0xE9,
        0x300,    0x301,   0x20E3,  0xFE0F,  0x200D,  0x200B,  0x200C,  0x2028,  0x2022,
        0x2764,   0x1F469, 0x1F467, 0x1F3FD, 0x1F1E6, 0x1F1FF, 0x1100,  0x1161,  0x11A8,
        0xAC00,   0xAC01,  0x915,   0x94D,   0x93F,   0x903,   0xE33,   0x600,   0x6DD,
        0x110BD,  0xD800,  0xDC00,  0x3099,  0x4E00,  0xFF9E,  0xE0020, 0xE007F, 0x1F3F4,
        0x10FFFF, 0x937,   0x93C,   0xD15,   0xD4D,   0xBAE,   0xBCD};
    std::mt19937 random(20240611);
    std::uniform_int_distribution<std::size_t> pick(0, std::size(alphabet) - 1);
    for (int round = 0; round < 20000; ++round) {
        QString text;
        for (int length = 0; length < 24; ++length)
            append(text, alphabet[pick(random)]);
        ASSERT_EQ(endsByVorq(text), endsByIcu(text)) << shown(text);
        ASSERT_EQ(graphemeCount(text), static_cast<qsizetype>(endsByIcu(text).size()));
    }
}

} // namespace
} // namespace vorq
