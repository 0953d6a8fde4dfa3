#include "library/notes/VorqNoteImport.h"
#include "library/richtext/NoteTypography.h"
#include "library/rtf/RtfReader.h"
#include "library/rtf/RtfWriter.h"

#include <gtest/gtest.h>
#include <limits>

namespace vorq {
namespace {

// RTF has one format for a paragraph: that of its first character.
NoteRichText withWholeParagraphs(const NoteRichText& text) {
    NoteRichText result = text;
    qsizetype start = 0;
    while (start < text.length()) {
        const qsizetype lineFeed = text.text().indexOf(u'\n', start);
        const qsizetype end = lineFeed < 0 ? text.length() : lineFeed + 1;
        const NoteAttributes& first = text.attributesAt(start);
        result.change(start, end - start, [&first](NoteAttributes& attributes) {
            attributes.paragraph = first.paragraph;
            attributes.style = first.style;
        });
        start = end;
    }
    return result;
}

NoteRichText roundTrip(const NoteRichText& text) {
    return readRtf(writeRtf(text)).value();
}

void expectRoundTrip(const NoteRichText& text) {
    EXPECT_EQ(roundTrip(text), withWholeParagraphs(text)) << writeRtf(text).toStdString();
}

} // namespace

TEST(RtfRoundTrip, KeepsEveryStyleWithItsTag) {
    for (int index = 0; index < noteTextStyleCount; ++index) {
        const auto style = static_cast<NoteTextStyle>(index);
        SCOPED_TRACE(identity(style).toString().toStdString());
        NoteRichText text;
        VorqNoteImport::appendParagraph(u"Some **bold** text", style, 12, text);
        expectRoundTrip(text);
        EXPECT_EQ(roundTrip(text).attributesAt(0), NoteTypography::attributes(style));
    }
}

TEST(RtfRoundTrip, KeepsAWholeNote) {
    expectRoundTrip(VorqNoteImport::attributedDocument(
        u"# Plan für 東京 \U0001F469‍\U0001F469‍\U0001F467\n\nFirst **bold** words.\n\n"
        u"## Steps\n- one\n- two\n\n1. x\n2. y\n\n> said {x}\\y\n\n```\na **b**\n\n\tc\n```\n\n"
        u"| h | k |\n|---|---|\n| 1 | 2 |"));
    expectRoundTrip(NoteTypography::document(u"title only"));
    expectRoundTrip(NoteTypography::document(u"title\n\n\nrest\n\nmore"));
}

TEST(RtfRoundTrip, KeepsParagraphsWithoutATag) {
    NoteRichText text(u"untagged\n", NoteAttributes());
    text.append(u"tagged", NoteTypography::attributes(NoteTextStyle::Heading));
    expectRoundTrip(text);
}

TEST(RtfRoundTrip, KeepsFontsColoursAndHighlights) {
    NoteRichText text;
    for (int number = 0; number < 300; ++number) {
        NoteAttributes attributes;
        attributes.font.family = u"Family %1; {odd} Ω"_qs.arg(number % 7);
        attributes.font.size = 8 + number * 0.25;
        attributes.font.weight = static_cast<NoteFontWeight>(number % 3);
        attributes.font.isItalic = number % 2 == 1;
        attributes.isUnderlined = number % 5 == 0;
        attributes.isStruckThrough = number % 7 == 0;
        attributes.color.role = static_cast<NoteColor::Role>(number % 3);
        if (attributes.color.role == NoteColor::Role::Own)
            attributes.color.rgb = {static_cast<std::uint8_t>(number % 256), 2, 3};
        if (number % 4 == 0)
            attributes.highlight = NoteRgb{255, static_cast<std::uint8_t>(number % 256), 0};
        text.append(u"word %1 "_qs.arg(number), attributes);
    }
    expectRoundTrip(text);
}

TEST(RtfRoundTrip, KeepsBlackText) {
    NoteAttributes black;
    black.color.role = NoteColor::Role::Own;
    expectRoundTrip(NoteRichText(u"black", black));
}

TEST(RtfRoundTrip, KeepsIndentsAndSpacing) {
    NoteAttributes attributes;
    attributes.paragraph = {.spacing = 3.5,
                            .spacingBefore = 1.25,
                            .lineSpacing = 2.75,
                            .headIndent = 40,
                            .firstLineIndent = 12.5};
    NoteRichText text(u"one\n", attributes);
    attributes.paragraph.firstLineIndent = 60;
    attributes.paragraph.headIndent = -5;
    text.append(u"two", attributes);
    expectRoundTrip(text);
}

TEST(RtfRoundTrip, KeepsEveryCodeUnit) {
    QString all;
    for (int unit = 0; unit < 0x10000; ++unit)
        all += QChar(static_cast<char16_t>(unit));
    const NoteRichText text(all, NoteAttributes());
    EXPECT_EQ(roundTrip(text).text(), all);
}

TEST(RtfRoundTrip, KeepsAttributesOfLineFeedsAndEmptyParagraphs) {
    NoteAttributes large;
    large.font.size = 40;
    NoteRichText text(u"\n\n", NoteTypography::attributes(NoteTextStyle::Title));
    text.append(u"\n", large);
    text.append(u"end\n", NoteTypography::attributes(NoteTextStyle::Mono));
    expectRoundTrip(text);
}

TEST(RtfRoundTrip, ClampsMeasuresThatRtfCannotHold) {
    NoteAttributes attributes;
    attributes.font.size = 1e300;
    attributes.paragraph.headIndent = -1e300;
    attributes.paragraph.spacing = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(roundTrip(NoteRichText(u"text", attributes)).text(), u"text");
}

TEST(RtfWriter, WritesPlainAscii) {
    const QByteArray rtf = writeRtf(NoteRichText(u"ü\u2028\t\u00A0{}\\", NoteAttributes()));
    EXPECT_TRUE(rtf.contains("\\u252?\\line \\tab \\~\\{\\}\\\\")) << rtf.toStdString();
    for (const char byte : rtf)
        EXPECT_TRUE(byte == '\n' || (byte >= ' ' && byte < 127));
}

} // namespace vorq
