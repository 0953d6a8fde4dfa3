#include "support/text/Characters.h"
#include "support/text/CodeUnits.h"

#include <QString>

#include <gtest/gtest.h>

namespace vorq {
namespace {

TEST(Characters, FindsAPatternOfWholeCharacters) {
    EXPECT_EQ(indexOfCharacters(u"a **b**", u"**"), 2);
    EXPECT_EQ(indexOfCharacters(u"a **b**", u"**", 3), 5);
    EXPECT_EQ(indexOfCharacters(u"a *b*", u"**"), -1);
    EXPECT_EQ(indexOfCharacters(u"", u"**"), -1);
}

TEST(Characters, DoesNotFindACharacterThatCarriesAMark) {
    EXPECT_FALSE(containsCharacters(u"**\u0301 x", u"**"));
    EXPECT_FALSE(startsWithCharacters(u"#\uFE0F x", u"#"));
    EXPECT_FALSE(startsWithCharacters(u"- \u0301x", u"- "));
    EXPECT_FALSE(endsWithCharacters(u"such as:\u0301", u":"));
    EXPECT_TRUE(containsCharacters(u"**\u0301 ** x", u"**"));
}

TEST(Characters, DoesNotFindACharacterThatAPrefixTookIn) {
    EXPECT_FALSE(containsCharacters(u"\u0600- x", u"- "));
    EXPECT_FALSE(endsWithCharacters(u"a\u0600.", u"."));
}

TEST(Characters, ACarriageReturnPairIsNotALineFeed) {
    EXPECT_TRUE(containsCharacters(u"a\r\nb", u"\r\n"));
    EXPECT_TRUE(containsCharacters(u"\u0600\r\n\u0301", u"\r\n"));
}

TEST(Characters, StartsAndEndsNeedTheWholePattern) {
    EXPECT_TRUE(startsWithCharacters(u"```", u"```"));
    EXPECT_FALSE(startsWithCharacters(u"``", u"```"));
    EXPECT_TRUE(endsWithCharacters(u"a**", u"**"));
    EXPECT_FALSE(endsWithCharacters(u"*", u"**"));
}

TEST(Characters, NumbersAreWhatHasANumericValue) {
    for (const QStringView number : {u"7", u"٣", u"Ⅳ", u"½", u"一", u"𝟠", u"1️⃣"})
        EXPECT_TRUE(isNumberCharacter(number)) << number.toString().toStdString();
    for (const QStringView other : {u"a", u".", u"東", u"•", u"👍"})
        EXPECT_FALSE(isNumberCharacter(other)) << other.toString().toStdString();
}

TEST(Characters, UpperCaseIsAPropertyOfTheWholeCharacter) {
    for (const QStringView upper : {u"A", u"É", u"E\u0301", u"É\u0301", u"Σ", u"Ⓐ", u"𝐀"})
        EXPECT_TRUE(isUppercaseCharacter(upper)) << upper.toString().toStdString();
    for (const QStringView other : {u"a", u"e\u0301", u"1", u"東", u"ǅ", u"👍", u"ß"})
        EXPECT_FALSE(isUppercaseCharacter(other)) << other.toString().toStdString();
}

TEST(Characters, WhiteSpaceIsToldByTheFirstCodePoint) {
    EXPECT_TRUE(isWhitespaceCharacter(u"\r\n"));
    EXPECT_TRUE(isWhitespaceCharacter(u" \u0301"));
    EXPECT_FALSE(isWhitespaceCharacter(u"a"));
}

TEST(Characters, FirstCharacterIsWhole) {
    EXPECT_EQ(firstCharacter(u"👩‍👩‍👧x"), u"👩‍👩‍👧");
    EXPECT_EQ(firstCharacter(u""), u"");
}

TEST(CodeUnits, FindsAUnitAtEveryPositionOfEveryLength) {
    for (qsizetype size = 1; size < 70; ++size) {
        for (qsizetype at = 0; at < size; ++at) {
            QString text(size, u'x');
            text[at] = u'\n';
            for (qsizetype from = 0; from <= size; ++from) {
                const qsizetype expected = from <= at ? at : -1;
                ASSERT_EQ(codeunits::find(text, from, u'\n'), expected) << size << ' ' << at;
                ASSERT_EQ(codeunits::find(text, from, u'a', u'\n', u'b'), expected);
            }
        }
    }
}

TEST(CodeUnits, VisitsEveryHitInOrderUntilToldToStop) {
    const QString text =
        QString(40, u'x').replace(3, 1, u'a').replace(17, 1, u'b').replace(39, 1, u'a');
    std::vector<qsizetype> hits;
    codeunits::forEach(
        text, 0,
        [&hits](qsizetype index) {
            hits.push_back(index);
            return true;
        },
        u'a', u'b');
    EXPECT_EQ(hits, (std::vector<qsizetype>{3, 17, 39}));
    hits.clear();
    codeunits::forEach(
        text, 0,
        [&hits](qsizetype index) {
            hits.push_back(index);
            return hits.size() < 2;
        },
        u'a', u'b');
    EXPECT_EQ(hits, (std::vector<qsizetype>{3, 17}));
}

// Units above 0x7FFF are negative numbers to a vector of 16-bit lanes.
TEST(CodeUnits, TellsUnitsOfBothSignsApart) {
    const QString text = QString(20, QChar(0xFFFF)) + QChar(0xFF0A) + QString(20, QChar(0x0A0A));
    EXPECT_EQ(codeunits::find(text, 0, char16_t{0xFF0A}), 20);
    EXPECT_EQ(codeunits::find(text, 0, u'\n'), -1);
}

} // namespace
} // namespace vorq
