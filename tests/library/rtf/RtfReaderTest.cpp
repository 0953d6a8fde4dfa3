#include "library/rtf/RtfReader.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

NoteRichText read(const QByteArray& rtf) {
    const std::optional<NoteRichText> text = readRtf(rtf);
    EXPECT_TRUE(text) << rtf.toStdString();
    return text.value_or(NoteRichText());
}

QString textOf(const QByteArray& content) {
    return read("{\\rtf1\\ansi " + content + "}").text();
}

// As the text system of a Mac writes it.
const QByteArray macDocument = R"({\rtf1\ansi\ansicpg1252\cocoartf2761
\cocoatextscaling0\cocoaplatform0{\fonttbl\f0\fnil\fcharset0 .SFNS-Bold;\f1\fnil\fcharset0 .AppleSystemUIFont;\f2\fnil\fcharset0 Menlo-Regular;
\f3\fswiss\fcharset0 Helvetica-BoldOblique;}
{\colortbl;\red255\green255\blue255;\red0\green0\blue0;\red127\green127\blue127;\red255\green236\blue140;}
{\*\expandedcolortbl;;\cssrgb\c0\c0\c0\c84706\cname labelColor;\cssrgb\c0\c0\c0\c49804\cname secondaryLabelColor;\cssrgb\c100000\c92549\c54902;}
{\*\listtable{\list\listtemplateid1\listhybrid{\listlevel\levelnfc23\leveljc0\levelstartat1{\*\levelmarker \{disc\}}{\leveltext\leveltemplateid1\'01\uc0\u8226 ;}{\levelnumbers;}\fi-360\li720\lin720 }{\listname ;}\listid1}}
{\*\listoverridetable{\listoverride\listid1\listoverridecount0\ls1}}
\paperw11900\paperh16840\margl1440\margr1440\vieww11520\viewh8400\viewkind0
\deftab720
\pard\pardeftab720\slleading40\sa240\partightenfactor0

\f0\b\fs56 \cf2 Caf\'e9 plan
\f1\b0\fs34 \
\pard\pardeftab720\slleading60\sa120\partightenfactor0
\cf2 Body \cb4 marked\cb1  \ul under\ulnone  \uc0\u26481 \u20140  and \uc0\u55357 \u56832 \
\pard\tx220\tx720\pardeftab720\li720\fi-720\sa80\partightenfactor0
\ls1\ilvl0\cf2 {\listtext	\uc0\u8226 	}first item\
{\listtext	\uc0\u8226 	}second item\
\pard\pardeftab720\li360\sa120\partightenfactor0
\cf3 quoted\
\pard\pardeftab720\partightenfactor0

\f2\fs30 \cf2 code \{ x \}\
\f3\i\b\fs24 both})";

} // namespace

TEST(RtfReader, ReadsWhatAMacWrites) {
    const NoteRichText text = read(macDocument);
    EXPECT_EQ(text.text(), u"Café plan\nBody marked under 東京 and \U0001F600\n•\u00A0first item\n"
                           u"•\u00A0second item\nquoted\ncode { x }\nboth");

    const NoteAttributes title = text.attributesAt(0);
    EXPECT_EQ(title.font, (NoteFont{.size = 28, .weight = NoteFontWeight::Bold}));
    EXPECT_EQ(title.color, NoteColor());
    EXPECT_EQ(title.paragraph, (NoteParagraphFormat{.spacing = 12, .lineSpacing = 2}));

    const qsizetype marked = text.text().indexOf(u"marked");
    EXPECT_EQ(text.attributesAt(marked).highlight, (NoteRgb{255, 236, 140}));
    EXPECT_EQ(text.attributesAt(marked).font, NoteFont());
    EXPECT_TRUE(text.attributesAt(text.text().indexOf(u"under")).isUnderlined);

    const NoteAttributes item = text.attributesAt(text.text().indexOf(u"second"));
    EXPECT_EQ(item.style, NoteTextStyle::BulletedList);
    EXPECT_EQ(item.paragraph.headIndent, 36);
    EXPECT_EQ(item.paragraph.firstLineIndent, 0);

    const NoteAttributes quote = text.attributesAt(text.text().indexOf(u"quoted"));
    EXPECT_EQ(quote.color.role, NoteColor::Role::SecondaryLabel);
    EXPECT_EQ(quote.paragraph.headIndent, 18);
    EXPECT_EQ(quote.paragraph.firstLineIndent, 18);

    EXPECT_EQ(text.attributesAt(text.text().indexOf(u"code")).font,
              (NoteFont{.family = "Menlo", .size = 15}));
    EXPECT_EQ(
        text.attributesAt(text.text().indexOf(u"both")).font,
        (NoteFont{
            .family = "Helvetica", .size = 12, .weight = NoteFontWeight::Bold, .isItalic = true}));
}

TEST(RtfReader, TakesOnlyRtf) {
    EXPECT_FALSE(readRtf(""));
    EXPECT_FALSE(readRtf("plain text"));
    EXPECT_FALSE(readRtf("{\\html1 x}"));
    EXPECT_TRUE(readRtf("{\\rtf1}"));
    EXPECT_EQ(read("\xEF\xBB\xBF \n{\\rtf1 a}\n").text(), u"a");
    EXPECT_EQ(read(QByteArray("{\\rtf1 a}\0{b}", 13)).text(), u"a");
}

TEST(RtfReader, ReadsCharactersByNumberAndPassesOverTheirFallback) {
    EXPECT_EQ(textOf("\\u8364?x"), u"€x");
    EXPECT_EQ(textOf("\\u8364\\'80x"), u"€x");
    EXPECT_EQ(textOf("\\uc2\\u26481\\'93\\'8cx"), u"東x");
    EXPECT_EQ(textOf("\\uc0\\u8364 x"), u"€x");
    EXPECT_EQ(textOf("{\\uc0\\u8364 x}\\u8364 ?y"), u"€x€y");
    EXPECT_EQ(textOf("\\u-10179?\\u-8704?"), u"\U0001F600");
    EXPECT_EQ(textOf("\\u8220\\ldblquote x"), u"“x");
    EXPECT_EQ(textOf("\\u8364?\\u8364?"), u"€€");
    EXPECT_EQ(textOf("\\u8364{?}x"), u"€?x");
    EXPECT_EQ(textOf("\\u8364\\par x"), u"€\nx");
    EXPECT_EQ(textOf("\\uc-4\\u8364 x"), u"€x");
}

TEST(RtfReader, ReadsBytesByTheirCodePage) {
    EXPECT_EQ(read("{\\rtf1\\ansi \\'80\\'e9}").text(), u"€é");
    EXPECT_EQ(read("{\\rtf1\\ansi\\ansicpg1251 \\'cf\\'f0}").text(), u"Пр");
    EXPECT_EQ(read("{\\rtf1\\mac \\'8e\\'d2\\'d3}").text(), u"é“”");
    EXPECT_EQ(read("{\\rtf1\\ansi\\ansicpg10000 \\'8e}").text(), u"é");
    EXPECT_EQ(read("{\\rtf1\\pc \\'82}").text(), u"é");
    EXPECT_EQ(read("{\\rtf1\\pca \\'b5}").text(), u"Á");
    EXPECT_EQ(read("{\\rtf1\\ansi\\ansicpg932 \\'93\\'8c\\'8b\\'9e}").text(), u"東京");
    EXPECT_EQ(read("{\\rtf1\\ansi\\ansicpg936 \\'b6\\'ab}").text(), u"东");
    EXPECT_EQ(read("{\\rtf1\\ansi\\ansicpg949 \\'b0\\'a1}").text(), u"가");
    EXPECT_EQ(read("{\\rtf1\\ansi\\ansicpg950 \\'aa\\'46}").text(), u"東");
    EXPECT_EQ(read("{\\rtf1\\ansi\\ansicpg65001 \xC3\xA9\\'c3\\'a9}").text(), u"éé");
    EXPECT_EQ(read("{\\rtf1\\ansi\\ansicpg4711 \\'e9}").text(), u"é");
    EXPECT_EQ(read("{\\rtf1\\ansi caf\xE9}").text(), u"café");
}

TEST(RtfReader, ReadsBytesByTheCharacterSetOfTheirFont) {
    const QByteArray head = "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0\\fcharset0 A;}"
                            "{\\f1\\fcharset204 B;}{\\f2\\fcharset128 C;}{\\f3\\fcharset77 D;}"
                            "{\\f4\\fnil\\cpg1253 E;}{\\f5\\fcharset2 Symbol;}}";
    EXPECT_EQ(read(head + "\\f0\\'e9\\f1\\'cf{\\f2\\'93\\'8c}\\'f0\\f3\\'8e\\f4\\'e1}").text(),
              u"éП東рéα");
    EXPECT_EQ(read(head + "\\f5\\'b7a}").text(), u"•\uF061");
}

TEST(RtfReader, ReadsSpecialCharacters) {
    EXPECT_EQ(textOf("a\\~b\\-c\\_d\\tab e\\line f"), u"a\u00A0b\u00ADc\u2011d\te\u2028f");
    EXPECT_EQ(textOf("\\lquote a\\rquote \\ldblquote b\\rdblquote \\bullet\\endash\\emdash"),
              u"‘a’“b”•–—");
    EXPECT_EQ(textOf("\\{\\}\\\\"), u"{}\\");
    EXPECT_EQ(textOf("a\\\nb\\\rc\\par d\\sect e"), u"a\nb\nc\nd\ne");
    EXPECT_EQ(textOf("one\ntwo\r\nthree"), u"onetwothree");
}

TEST(RtfReader, LeavesOutWhatIsNotText) {
    EXPECT_EQ(textOf("a{\\*\\unknown {deep} b}c"), u"ac");
    EXPECT_EQ(textOf("a{\\info{\\title T}{\\author A}}b"), u"ab");
    EXPECT_EQ(textOf("a{\\pict\\pngblip 89504e47}b"), u"ab");
    EXPECT_EQ(textOf("a{\\header h}{\\footerf f}b"), u"ab");
    EXPECT_EQ(textOf("a{\\v hidden}{\\deleted gone}b"), u"ab");
    EXPECT_EQ(textOf("a{\\*\\generator X;}{\\fonttbl{\\f0 F;}}{\\stylesheet{\\s1 S;}}b"), u"ab");
    EXPECT_EQ(textOf("a{\\info{\\*\\listtext no}}{\\pict{\\fonttbl;}no}b"), u"ab");
}

TEST(RtfReader, KeepsTheTextOfUnknownGroups) {
    EXPECT_EQ(textOf("a{\\unknown b{\\other12 c}}d"), u"abcd");
    EXPECT_EQ(textOf("{\\field{\\*\\fldinst{HYPERLINK \"x\"}}{\\fldrslt{\\ul link}}}"), u"link");
    EXPECT_EQ(textOf("{\\upr{old}{\\*\\ud{new \\u8364?}}} x"), u"new € x");
    EXPECT_EQ(textOf("a{\\footnote note}b"), u"anoteb");
    EXPECT_EQ(textOf("{\\shp{\\*\\shpinst{\\sp{\\sn n}{\\sv 1}}{\\shptxt box}}{\\shprslt old}}"),
              u"box");
}

TEST(RtfReader, PassesOverBinaryData) {
    EXPECT_EQ(textOf("a\\bin5 }{\\{xb"), u"ab");
    EXPECT_EQ(textOf(QByteArray("a{\\*\\blob\\bin3 \0}}}b", 20)), u"ab");
    EXPECT_EQ(textOf("a\\bin-7 b"), u"ab");
    EXPECT_EQ(read("{\\rtf1 a\\bin2000000000 b}").text(), u"a");
}

TEST(RtfReader, ReadsTablesAsLinesOfCells) {
    EXPECT_EQ(textOf("\\trowd\\cellx1\\cellx2\\pard\\intbl a\\cell b\\cell\\row"
                     "\\trowd\\pard\\intbl\\cell d\\cell\\row\\pard after"),
              u"a\tb\n\td\nafter");
}

TEST(RtfReader, ReadsMarkersOfLists) {
    const auto first = [](const QByteArray& marker) {
        const NoteRichText text =
            read("{\\rtf1{\\fonttbl{\\f3\\fcharset2 Symbol;}}" + marker + "item\\par next}");
        return std::pair(text.text().chopped(9), text.attributesAt(0).style);
    };
    using enum NoteTextStyle;
    EXPECT_EQ(first("{\\listtext\\tab 3.\\tab}"),
              std::pair(u"3.\u00A0"_qs, std::optional(NumberedList)));
    EXPECT_EQ(first("{\\listtext 3)\\tab}"),
              std::pair(u"3.\u00A0"_qs, std::optional(NumberedList)));
    EXPECT_EQ(first("{\\pntext\\f3\\'b7\\tab}"),
              std::pair(u"•\u00A0"_qs, std::optional(BulletedList)));
    EXPECT_EQ(first("{\\listtext\\uc1\\u8226\\'95\\tab}"),
              std::pair(u"•\u00A0"_qs, std::optional(BulletedList)));
    EXPECT_EQ(first("{\\listtext\\u8211 -\\tab}"),
              std::pair(u"–\u00A0"_qs, std::optional(DashedList)));
    EXPECT_EQ(first("{\\listtext iv.\\tab}").first, u"iv.\u00A0");
    EXPECT_EQ(first("{\\listtext\\tab}").first, u"");
}

TEST(RtfReader, KnowsTheStylesOfWordProcessors) {
    const NoteRichText text =
        read("{\\rtf1{\\stylesheet{\\s0 Normal;}{\\s15\\sb240 heading 1;}{\\*\\cs3 heading 1;}"
             "{\\s16{\\*\\keycode x}Preformatted Text;}{\\s17 Own;}}"
             "\\pard\\s15 a\\par\\pard\\s16 b\\par\\pard\\s17 c\\par\\pard d}");
    EXPECT_EQ(text.text(), u"a\nb\nc\nd");
    EXPECT_EQ(text.attributesAt(0).style, NoteTextStyle::Heading);
    EXPECT_EQ(text.attributesAt(2).style, NoteTextStyle::Mono);
    EXPECT_EQ(text.attributesAt(4).style, std::nullopt);
    EXPECT_EQ(text.attributesAt(6).style, std::nullopt);
}

TEST(RtfReader, ScopesFormatByGroups) {
    const NoteRichText text = read("{\\rtf1 a{\\b b{\\i c}}\\fs25 d\\plain e}");
    EXPECT_EQ(text.text(), u"abcde");
    EXPECT_EQ(text.attributesAt(0).font.weight, NoteFontWeight::Regular);
    EXPECT_EQ(text.attributesAt(1).font.weight, NoteFontWeight::Bold);
    EXPECT_TRUE(text.attributesAt(2).font.isItalic);
    EXPECT_EQ(text.attributesAt(2).font.weight, NoteFontWeight::Bold);
    EXPECT_EQ(text.attributesAt(3).font.size, 12.5);
    EXPECT_EQ(text.attributesAt(4).font.size, 12);
}

TEST(RtfReader, TakesTheFirstColourForNoneWhereItIsNoChoice) {
    const NoteRichText text = read(
        "{\\rtf1{\\colortbl\\red0\\green0\\blue0;\\red1\\green2\\blue3;}a\\cf1\\highlight1 b}");
    EXPECT_EQ(text.attributesAt(0), read("{\\rtf1 a}").attributesAt(0));
    EXPECT_EQ(text.attributesAt(1).color.rgb, (NoteRgb{1, 2, 3}));
    EXPECT_EQ(text.attributesAt(1).highlight, (NoteRgb{1, 2, 3}));
    EXPECT_EQ(read("{\\rtf1{\\colortbl\\red9;}a}").attributesAt(0).color.rgb, (NoteRgb{9, 0, 0}));
}

TEST(RtfReader, PrefersTheTrueColourToThatOfAHighlighter) {
    const NoteRichText text = read("{\\rtf1{\\colortbl;\\red255\\green255\\blue0;"
                                   "\\red255\\green240\\blue120;}\\chcbpat2\\highlight1 a}");
    EXPECT_EQ(text.attributesAt(0).highlight, (NoteRgb{255, 240, 120}));
}

TEST(RtfReader, TakesTheFormatOfAParagraphAtItsEnd) {
    const NoteRichText text = read("{\\rtf1 a\\li400\\sa100\\par b}");
    EXPECT_EQ(text.attributesAt(0).paragraph.headIndent, 20);
    EXPECT_EQ(text.attributesAt(0).paragraph.spacing, 5);
    EXPECT_EQ(text.attributesAt(2).paragraph.headIndent, 20);
}

TEST(RtfReader, ReadsBrokenDocumentsAsFarAsTheyGo) {
    EXPECT_EQ(read("{\\rtf1 a{\\b b").text(), u"ab");
    EXPECT_EQ(read("{\\rtf1 a\\").text(), u"a");
    EXPECT_EQ(read("{\\rtf1 a\\'").text(), u"a");
    EXPECT_EQ(read("{\\rtf1 a\\'4").text(), u"a4");
    EXPECT_EQ(read("{\\rtf1 a\\'zzb").text(), u"azzb");
    EXPECT_EQ(read("{\\rtf1 a\\u").text(), u"a");
    EXPECT_EQ(read("{\\rtf1 a\\fs-999999999999999 b\\li999999999999 c}").text(), u"abc");
    EXPECT_EQ(read("{\\rtf1{\\fonttbl{\\f0").text(), u"");
    EXPECT_EQ(read("{\\rtf1\\" + QByteArray(200, 'a') + " b}").text().back(), u'b');
    EXPECT_EQ(read("{\\rtf1\\cf77\\highlight-3\\f99\\s-5 a}").text(), u"a");
}

TEST(RtfReader, BoundsNesting) {
    const QByteArray open(1'000'000, '{');
    EXPECT_EQ(read("{\\rtf1 a" + open + "b" + QByteArray(open.size(), '}') + "c}").text(), u"abc");
    EXPECT_EQ(read("{\\rtf1 a" + open).text(), u"a");
}

TEST(RtfReader, IsQuickOnLongDocuments) {
    QByteArray rtf = "{\\rtf1{\\colortbl;";
    for (int number = 0; number < 50'000; ++number)
        rtf += "\\red" + QByteArray::number(number % 256) + ";";
    rtf += "}";
    for (int number = 0; number < 200'000; ++number)
        rtf += "{\\b\\cf" + QByteArray::number(number % 50'000) + " x}";
    EXPECT_EQ(read(rtf + "}").length(), 200'000);
}

TEST(RtfReader, PassesOverBrokenHexHoweverMuch) {
    EXPECT_EQ(textOf(R"(a\'zb\'4)"), u"azb4");
    EXPECT_EQ(textOf(QByteArray("\\'").repeated(1'000'000) + "end"), u"end");
}

} // namespace vorq
