#include "library/notes/VorqNoteImport.h"

#include "library/richtext/NoteTypography.h"
#include "library/rtf/RtfReader.h"
#include "library/rtf/RtfWriter.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using Payload = VorqNoteImport::Payload;

NoteRichText document(QStringView reply) {
    return VorqNoteImport::attributedDocument(reply);
}

// The text that a run covers, beside its style and weight.
struct Stretch {
    QString text;
    std::optional<NoteTextStyle> style;
    NoteFontWeight weight;

    bool operator==(const Stretch&) const = default;
};

std::vector<Stretch> stretchesOf(const NoteRichText& text) {
    std::vector<Stretch> stretches;
    qsizetype start = 0;
    for (const NoteRichText::Run& run : text.runs()) {
        stretches.push_back({text.text().sliced(start, run.length), run.attributes.style,
                             run.attributes.font.weight});
        start += run.length;
    }
    return stretches;
}

constexpr auto regular = NoteFontWeight::Regular;
constexpr auto bold = NoteFontWeight::Bold;

} // namespace

TEST(VorqNoteImport, StructuresEveryKindOfBlock) {
    const std::optional<Payload> note = VorqNoteImport::structure(
        u"# Plan\n\nFirst **bold** words.\n\n## Steps\n- one\n- two\n\n1. x\n2. y\n\n> said\n\n"
        u"```\na **b**\n\n  c\n```\n\n| h | k |\n|---|---|\n| 1 | 2 |\n\n---");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->title, u"Plan");
    EXPECT_EQ(note->plain, u"Plan\nFirst bold words.\nSteps\n•\u00A0one\n•\u00A0two\n1.\u00A0x\n"
                           u"2.\u00A0y\nsaid\na **b**\n \n  c\nh · k\n1 · 2");
    EXPECT_TRUE(note->rtf);
}

TEST(VorqNoteImport, TagsParagraphsAndJoinsThemInBodyAttributes) {
    using enum NoteTextStyle;
    EXPECT_EQ(stretchesOf(document(u"# Plan\n\n## More\n- one\n\n> said\n\n```\ncode\n```")),
              (std::vector<Stretch>{{u"Plan"_qs, Title, bold},
                                    {u"\n"_qs, Body, regular},
                                    {u"More"_qs, Heading, bold},
                                    {u"\n"_qs, Body, regular},
                                    {u"•\u00A0one"_qs, BulletedList, regular},
                                    {u"\n"_qs, Body, regular},
                                    {u"said"_qs, BlockQuote, regular},
                                    {u"\n"_qs, Body, regular},
                                    {u"code"_qs, Mono, regular}}));
}

TEST(VorqNoteImport, MakesSpansOfBodyTextBold) {
    using enum NoteTextStyle;
    EXPECT_EQ(stretchesOf(document(u"a **b** c **d**\n\n---")),
              (std::vector<Stretch>{{u"a "_qs, Body, regular},
                                    {u"b"_qs, Body, bold},
                                    {u" c "_qs, Body, regular},
                                    {u"d"_qs, Body, bold}}));
}

TEST(VorqNoteImport, KeepsMarkersOutOfHeadingsInTheirFont) {
    const NoteRichText text = document(u"# A **b** c\n\nbody");
    EXPECT_EQ(text.text(), u"A b c\nbody");
    EXPECT_EQ(text.attributesAt(2).font, NoteTypography::attributes(NoteTextStyle::Title).font);
    EXPECT_EQ(text.attributesAt(2).style, NoteTextStyle::Title);
}

TEST(VorqNoteImport, TakesTheOuterMarkersOfALabel) {
    EXPECT_EQ(document(u"** Label **\nmore").text(), u"Label\nmore");
}

TEST(VorqNoteImport, KeepsTheAsterisksOfCode) {
    EXPECT_EQ(document(u"```\n**x**\n```").text(), u"**x**");
}

TEST(VorqNoteImport, LeavesOutEmptyRowsOfTables) {
    EXPECT_EQ(document(u"| h | k |\n|---|---|\n| | |\n| 1 | |\n").text(), u"h · k\n1 ·");
    EXPECT_EQ(document(u"| | |\n|---|---|\n| 1 | 2 |\n").text(), u"1 · 2");
}

TEST(VorqNoteImport, CountsEachListFromOne) {
    EXPECT_EQ(document(u"1. a\n2. b\n\ntext\n\n7. c").text(),
              u"1.\u00A0a\n2.\u00A0b\ntext\n1.\u00A0c");
}

TEST(VorqNoteImport, ShowsTheRawTextOfAReplyThatIsADividerOnly) {
    const std::optional<Payload> note = VorqNoteImport::structure(u" --- ");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->plain, u"---\n");
    EXPECT_EQ(note->title, u"---");
    EXPECT_EQ(document(u"---").attributesAt(0).style, NoteTextStyle::Title);
}

TEST(VorqNoteImport, MakesNoNoteOfABlankReply) {
    EXPECT_FALSE(VorqNoteImport::structure(u" \n\t"));
    EXPECT_FALSE(VorqNoteImport::append(u" \n", u"kept", std::nullopt));
}

TEST(VorqNoteImport, TakesTitlesFromTheFirstLine) {
    EXPECT_EQ(VorqNoteImport::titleFrom(u"\n\n 1. Plan\nmore"), u"Plan");
    EXPECT_EQ(VorqNoteImport::titleFrom(u"• •\u00A0Plan"), u"Plan");
    EXPECT_EQ(VorqNoteImport::titleFrom(u"•\u00A012.\u00A0Plan"), u"Plan");
    EXPECT_EQ(VorqNoteImport::titleFrom(u"**Plan**"), u"Plan");
    EXPECT_EQ(VorqNoteImport::titleFrom(u"٣. Plan"), u"Plan");
    EXPECT_EQ(VorqNoteImport::titleFrom(u"3.5 litres"), u"5 litres");
    EXPECT_EQ(VorqNoteImport::titleFrom(u"1."), u"New Note");
    EXPECT_EQ(VorqNoteImport::titleFrom(u" \n "), u"New Note");
    EXPECT_EQ(VorqNoteImport::titleFrom(QString(72, u'x')), QString(72, u'x'));
    EXPECT_EQ(VorqNoteImport::titleFrom(QString(73, u'x')), QString(72, u'x') + u'…');
}

TEST(VorqNoteImport, AppendsBelowAnEmptyLine) {
    const std::optional<Payload> note =
        VorqNoteImport::append(u"- new", u"Old\ntext", std::nullopt);
    ASSERT_TRUE(note);
    EXPECT_EQ(note->plain, u"Old\ntext\n\n•\u00A0new");
    EXPECT_EQ(note->title, u"Old");
}

TEST(VorqNoteImport, AppendingToAnEmptyNoteStructures) {
    EXPECT_EQ(VorqNoteImport::append(u"# A\n\nb", u" \n", std::nullopt),
              VorqNoteImport::structure(u"# A\n\nb"));
    EXPECT_EQ(VorqNoteImport::append(u"# A\n\nb", u"", QByteArray("not RTF")),
              VorqNoteImport::structure(u"# A\n\nb"));
}

TEST(VorqNoteImport, AppendsToTheStoredRichText) {
    const std::optional<Payload> first = VorqNoteImport::structure(u"# A\n\nb **c**");
    ASSERT_TRUE(first);
    const std::optional<Payload> both = VorqNoteImport::append(u"> d", first->plain, first->rtf);
    ASSERT_TRUE(both && both->rtf);
    EXPECT_EQ(both->plain, u"A\nb c\n\nd");
    const std::optional<NoteRichText> text = readRtf(*both->rtf);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->text(), both->plain);
    EXPECT_EQ(text->attributesAt(0).style, NoteTextStyle::Title);
    EXPECT_EQ(text->attributesAt(4).font.weight, bold);
    EXPECT_EQ(text->attributesAt(7).style, NoteTextStyle::BlockQuote);
}

TEST(VorqNoteImport, AppendsToRichTextWithoutAPlainForm) {
    const QByteArray rtf = writeRtf(NoteRichText(u"kept", NoteAttributes()));
    const std::optional<Payload> note = VorqNoteImport::append(u"new", u"", rtf);
    ASSERT_TRUE(note);
    EXPECT_EQ(note->plain, u"kept\n\nnew");
}

TEST(VorqNoteImport, RebuildsNotesThatShowRawMarkdown) {
    const QByteArray rich = writeRtf(NoteRichText(u"rich", NoteAttributes()));
    const QByteArray raw = writeRtf(NoteRichText(u"## Raw\n\n**b**", NoteAttributes()));
    EXPECT_EQ(VorqNoteImport::append(u"new", u"## Plain", rich)->plain, u"Plain\n\nnew");
    EXPECT_EQ(VorqNoteImport::append(u"new", u"seed", raw)->plain, u"Raw\nb\n\nnew");
    EXPECT_EQ(VorqNoteImport::append(u"new", u"seed", rich)->plain, u"rich\n\nnew");
}

TEST(VorqNoteImport, TellsRawMarkdown) {
    for (const QStringView raw :
         {u"a **b", u"a ```b", u"--- a", u"a\n---", u"## a", u"a\n## b", u"# a", u"  # a"})
        EXPECT_TRUE(VorqNoteImport::needsMigration(raw)) << raw.toString().toStdString();
    for (const QStringView plain : {u"", u" \n ", u"a # b", u"a --- b", u"#a", u"a\n# b", u"* a"})
        EXPECT_FALSE(VorqNoteImport::needsMigration(plain)) << plain.toString().toStdString();
}

TEST(VorqNoteImport, AppendsParagraphsOfAStyle) {
    NoteRichText text;
    VorqNoteImport::appendParagraph(u" \n ", NoteTextStyle::Body, 1, text);
    EXPECT_TRUE(text.isEmpty());
    VorqNoteImport::appendParagraph(u" a **b** ", NoteTextStyle::DashedList, 1, text);
    VorqNoteImport::appendParagraph(u"**c**", NoteTextStyle::NumberedList, 0, text, true);
    VorqNoteImport::appendParagraph(u"d", NoteTextStyle::Subheading, 1, text);
    EXPECT_EQ(text.text(), u"–\u00A0a b\n1.\u00A0**c**\nd");
    EXPECT_EQ(text.attributesAt(4).font.weight, bold);
}

TEST(VorqNoteImport, WritesNoRtfOfAnEmptyDocument) {
    EXPECT_FALSE(VorqNoteImport::rtfData(NoteRichText()));
}

TEST(NoteTypography, MakesTheFirstLineOfAPlainNoteItsTitle) {
    using enum NoteTextStyle;
    EXPECT_TRUE(NoteTypography::document(u" \r\n ").isEmpty());
    EXPECT_EQ(stretchesOf(NoteTypography::document(u" one ")),
              (std::vector<Stretch>{{u"one\n"_qs, Title, bold}}));
    EXPECT_EQ(stretchesOf(NoteTypography::document(u"one\r\n\r\ntwo\n")),
              (std::vector<Stretch>{{u"one\n"_qs, Title, bold}, {u"\ntwo"_qs, Body, regular}}));
}

TEST(NoteTypography, SetsEachStyle) {
    const auto& title = NoteTypography::attributes(NoteTextStyle::Title);
    EXPECT_EQ(title.font.size, 28);
    EXPECT_EQ(title.paragraph.spacing, 12);
    EXPECT_EQ(title.paragraph.lineSpacing, 2);
    const auto& subheading = NoteTypography::attributes(NoteTextStyle::Subheading);
    EXPECT_EQ(subheading.font.weight, NoteFontWeight::Semibold);
    EXPECT_EQ(subheading.font.size, 19);
    const auto& quote = NoteTypography::attributes(NoteTextStyle::BlockQuote);
    EXPECT_EQ(quote.color.role, NoteColor::Role::SecondaryLabel);
    EXPECT_EQ(quote.paragraph.headIndent, 18);
    EXPECT_EQ(quote.paragraph.firstLineIndent, 18);
    EXPECT_EQ(NoteTypography::attributes(NoteTextStyle::Mono).font.family, monospacedFontFamily);
    EXPECT_EQ(NoteTypography::attributes(NoteTextStyle::NumberedList).paragraph.spacing, 4);
    EXPECT_EQ(identity(NoteTextStyle::BlockQuote), u"blockQuote");
}

} // namespace vorq
