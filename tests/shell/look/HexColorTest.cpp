#include "shell/look/HexColor.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

TEST(HexColor, ReadsSixDigitsAsOpaque) {
    EXPECT_EQ(HexColor::rgbaComponents(u"#FF3300"), (RgbaColor{1, 0.2, 0, 1}));
}

TEST(HexColor, ReadsTheAlphaLast) {
    EXPECT_EQ(HexColor::rgbaComponents(u"00FF0033"), (RgbaColor{0, 1, 0, 0.2}));
}

TEST(HexColor, IgnoresCaseAndSpaceAround) {
    EXPECT_EQ(HexColor::rgbaComponents(u" \n#ff3300\t"), (RgbaColor{1, 0.2, 0, 1}));
}

TEST(HexColor, RefusesOtherLengths) {
    for (const QStringView text : {u"", u"#", u"#abc", u"12345", u"#1234567", u"#123456789"})
        EXPECT_FALSE(HexColor::rgbaComponents(text)) << text.toUtf8().constData();
}

TEST(HexColor, RefusesWhatIsNoDigit) {
    for (const QStringView text : {u"#GG0000", u"##11223", u"##112233", u"# 12345", u"+12345",
                                   u"\uFF11\uFF11\uFF11\uFF11\uFF11\uFF11"})
        EXPECT_FALSE(HexColor::rgbaComponents(text)) << text.toUtf8().constData();
}

TEST(HexColor, NormalizesToUpperCaseBehindAHash) {
    EXPECT_EQ(HexColor::normalize(u"f97316"), "#F97316");
    EXPECT_EQ(HexColor::normalize(u"#0a0b0c"), "#0A0B0C");
}

TEST(HexColor, DropsTheAlphaOnlyOfAnOpaqueColor) {
    EXPECT_EQ(HexColor::normalize(u"#F97316FF"), "#F97316");
    EXPECT_EQ(HexColor::normalize(u"#f97316fe"), "#F97316FE");
    EXPECT_EQ(HexColor::normalize(u"#f9731600"), "#F9731600");
}

TEST(HexColor, NormalizesNothingElse) {
    EXPECT_EQ(HexColor::normalize(u"orange"), std::nullopt);
}

TEST(HexColor, EveryByteSurvivesNormalizing) {
    for (int byte = 0; byte < 256; ++byte) {
        const QString digits = u"%1"_s.arg(byte, 2, 16, QLatin1Char('0')).toUpper();
        EXPECT_EQ(HexColor::normalize(digits + digits + digits), u'#' + digits + digits + digits);
    }
}

TEST(HexColor, SetsDarkTextOnLightColorsOnly) {
    EXPECT_EQ(HexColor::contrastingForeground(u"#FFFFFF"), 0.12);
    EXPECT_EQ(HexColor::contrastingForeground(u"#8D8D8D"), 0.12);
    EXPECT_EQ(HexColor::contrastingForeground(u"#8C8C8C"), 0.95);
    EXPECT_EQ(HexColor::contrastingForeground(u"#00FF00"), 0.12);
    EXPECT_EQ(HexColor::contrastingForeground(u"#FF00FF"), 0.95);
}

TEST(HexColor, SetsItsOwnTextOnAnUnknownColor) {
    EXPECT_EQ(HexColor::contrastingForeground(u"orange"), 0.9);
}

TEST(HexColor, WritesSixDigitsOfAnyColor) {
    EXPECT_EQ(HexColor::hex(RgbaColor{1, 0.2, 0, 0.5}), "#FF3300");
    EXPECT_EQ(HexColor::hex(RgbaColor{0.501, 0.499, 0, 1}), "#807F00");
    EXPECT_EQ(HexColor::hex(RgbaColor{1.2, -0.1, 0, 1}), "#FF0000");
}

TEST(HexColor, WritesGreyForWhatCannotBeConverted) {
    EXPECT_EQ(HexColor::hex(std::nullopt), "#808080");
}

} // namespace
} // namespace vorq
