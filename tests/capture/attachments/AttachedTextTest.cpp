#include "capture/attachments/AttachedText.h"

#include <QStringEncoder>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QByteArray utf16(const QString& text) {
    return QStringEncoder(QStringEncoder::Utf16LE).encode(text);
}

TEST(AttachedText, IsNoUtf8IfItEndsInTheMiddleOfACharacter) {
    EXPECT_EQ(decodeAttachedText("le caf\xE9", false), std::nullopt) << "Latin 1";
    EXPECT_EQ(decodeAttachedText("caf\xC3", true), "caf") << "unless it was cut there";
    EXPECT_EQ(decodeAttachedText("café", false), u"café"_s);
}

TEST(AttachedText, IsUtf16IfItIsThatFromEndToEnd) {
    const QByteArray wave = utf16(u"Größe ÿ👋"_s);
    EXPECT_EQ(decodeAttachedText(wave, false), u"Größe ÿ👋"_s);
    EXPECT_EQ(decodeAttachedText("\xFF\xFE" + wave, false), u"Größe ÿ👋"_s);
    EXPECT_EQ(decodeAttachedText(wave.chopped(2), false), std::nullopt);
    EXPECT_EQ(decodeAttachedText(wave.chopped(2), true), u"Größe ÿ"_s) << "it was cut there";
}

// The first bytes of a picture, a program and an archive: all of an even size.
TEST(AttachedText, IsNothingOfAFileOfAnotherKind) {
    for (const char* bytes : {"89504e470d0a1a0a0000000d49484452000001f4000001f4",
                              "7f454c46020101000000000000000000ff00", "504b0304140000000800218a",
                              "ffd8ffe000104a46494600010101"})
        EXPECT_EQ(decodeAttachedText(QByteArray::fromHex(bytes), false), std::nullopt) << bytes;
}

TEST(SlideText, IsNothingIfItEndsInTheMiddleOfACharacter) {
    EXPECT_EQ(slideText("<a>caf\xC3", false), std::nullopt);
}

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
