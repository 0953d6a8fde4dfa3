// Blocks back to text: source(), committedSource() and inlinePlain().

#include "rendering/AssistantReplyDocument.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <gtest/gtest.h>

#include <random>

namespace vorq {
namespace {

using Document = AssistantReplyDocument;
using Block = Document::Block;
using Kind = Document::Kind;

QString sourceOf(QStringView text) {
    return Document::source(Document::blocks(text));
}

// The rule as it is written, with all blocks built.
QString committedByDefinition(const QString& raw) {
    const QString text = trimmed(raw).toString();
    const QList<Block> blocks = Document::blocks(text);
    if (blocks.size() >= 2)
        return Document::source(std::span(blocks).first(std::size_t(blocks.size() - 1)));
    return graphemeCount(text) > 11 ? text : QString();
}

TEST(ReplySource, WritesEachKindInItsForm) {
    const QList<Block> blocks = {
        {.kind = Kind::Title, .text = u"**Plan**"_qs},
        {.kind = Kind::Section, .text = u"Next"_qs},
        {.kind = Kind::Body, .text = u"Some text."_qs},
        {.kind = Kind::Bullets, .items = {u"a"_qs, u"b"_qs}},
        {.kind = Kind::Numbered, .items = {u"c"_qs, u"d"_qs}},
        {.kind = Kind::Quote, .text = u"e"_qs},
        {.kind = Kind::Code, .text = u"f\n  g"_qs},
        {.kind = Kind::Table,
         .header = {u"h"_qs, u"i"_qs},
         .rows = {{u"1"_qs}, {u"2"_qs, QString()}}},
        {.kind = Kind::Divider},
    };
    EXPECT_EQ(Document::source(blocks),
              u"**Plan**\n\n**Next**\n\nSome text.\n\n- a\n- b\n\n1. c\n2. d\n\n> e\n\n"
              u"```\nf\n  g\n```\n\n| h | i |\n| --- | --- |\n| 1 |\n| 2 |  |\n\n---");
}

TEST(ReplySource, DropsBlocksThatGiveNoText) {
    const QList<Block> blocks = {
        {.kind = Kind::Title},
        {.kind = Kind::Body},
        {.kind = Kind::Bullets},
        {.kind = Kind::Body, .text = u"x"_qs},
        {.kind = Kind::Numbered},
        {.kind = Kind::Section, .text = u" \n"_qs},
        {.kind = Kind::Body, .text = u"y"_qs},
    };
    EXPECT_EQ(Document::source(blocks), u"x\n\ny");
    EXPECT_EQ(Document::source({}), u"");
}

TEST(ReplySource, CountsNumberedItemsFromOne) {
    Block block{.kind = Kind::Numbered};
    for (int item = 0; item < 101; ++item)
        block.items.append(u"x"_qs);
    const QString source = Document::source({&block, 1});
    EXPECT_TRUE(source.startsWith(u"1. x\n2. x\n"));
    EXPECT_TRUE(source.contains(u"\n10. x\n"));
    EXPECT_TRUE(source.endsWith(u"\n100. x\n101. x"));
}

TEST(ReplySource, OfATableWithNoRowsEndsAfterTheSeparator) {
    EXPECT_EQ(sourceOf(u"|a|b|\n|-|-|"), u"| a | b |\n| --- | --- |");
    const Block empty{.kind = Kind::Table};
    EXPECT_EQ(Document::source({&empty, 1}), u"|  |\n|  |");
}

TEST(ReplySource, MakesHeadingsBoldLinesThatReadBackAsHeadings) {
    EXPECT_EQ(sourceOf(u"# Plan\n## Next\n- x"), u"**Plan**\n\n**Next**\n\n- x");
    EXPECT_EQ(sourceOf(u"**Plan**\n\n**Next**\n\n- x"), u"**Plan**\n\n**Next**\n\n- x");
}

TEST(ReplyCommitted, FinishedIsTheTrimmedText) {
    EXPECT_EQ(Document::committedSource(u" # a\n\nb **c\n", true), u"# a\n\nb **c");
    EXPECT_EQ(Document::committedSource(u" \n", true), u"");
}

TEST(ReplyCommitted, IsEmptyForAnEmptyText) {
    EXPECT_EQ(Document::committedSource(u"", false), u"");
    EXPECT_EQ(Document::committedSource(u" \n ", false), u"");
}

TEST(ReplyCommitted, HoldsBackAFirstBlockOfElevenCharacters) {
    EXPECT_EQ(Document::committedSource(u"Hi", false), u"");
    EXPECT_EQ(Document::committedSource(u"Hello there!", false), u"Hello there!");
    EXPECT_EQ(Document::committedSource(u"Hello there", false), u"");
    EXPECT_EQ(Document::committedSource(u"👩‍👩‍👧👩‍👩‍👧", false), u"");
}

TEST(ReplyCommitted, ShowsASingleBlockAsItStands) {
    EXPECT_EQ(Document::committedSource(u" Some text **bold\nmore", false),
              u"Some text **bold\nmore");
    EXPECT_EQ(Document::committedSource(u"## A long heading", false), u"## A long heading");
}

TEST(ReplyCommitted, LeavesOutTheLastBlock) {
    EXPECT_EQ(Document::committedSource(u"one\n\ntwo", false), u"one");
    EXPECT_EQ(Document::committedSource(u"# a\n- b\n- c\n\nd", false), u"**a**\n\n- b\n- c");
    EXPECT_EQ(Document::committedSource(u"a\n\n---", false), u"a");
}

TEST(ReplyCommitted, MayBeEmptyWhenTheFirstBlockHasNoText) {
    EXPECT_EQ(Document::committedSource(u"**\n\nsome longer text", false), u"");
}

// All prefixes of random texts of the marks that the parser knows.
TEST(ReplyCommitted, EqualsItsDefinition) {
    constexpr QStringView pieces[] = {
        u"\n",
        u"\n\n",
        u"\n- ",
        u"\n1. ",
        u"\n> ",
        u"\n# ",
        u"\n**",
        u"**",
        u"\n```",
        u"\n|a|",
        u"\n|-|",
        u"\n|x|y",
        u"\n---",
        u" - ",
        u" --- ",
        u"such as:",
        u"Word",
        u"word ",
        u". Next ",
        u"\\n",
        u"\r\n",
        u"e\u0301",
        u"👩‍👩‍👧",
        u":",
        u" ",
        u"*",
        u"Some longer sentence that goes on and on until it is long enough. "};
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> pick(0, std::size(pieces) - 1);
    for (int round = 0; round < 3000; ++round) {
        QString text;
        for (int length = 0; length < 25; ++length) {
            text += pieces[pick(random)];
            ASSERT_EQ(Document::committedSource(text, false), committedByDefinition(text))
                << text.toStdString();
            ASSERT_EQ(Document::blockCount(text), Document::blocks(text).size());
        }
    }
}

TEST(ReplyInlinePlain, TakesAwayAPairThatEnclosesTheWholeLine) {
    EXPECT_EQ(Document::inlinePlain(u"**a**"), u"a");
    EXPECT_EQ(Document::inlinePlain(u"\n **Two words** "), u"Two words");
    EXPECT_EQ(Document::inlinePlain(u"**a*b**"), u"a*b");
    EXPECT_EQ(Document::inlinePlain(u"** **"), u" ");
}

TEST(ReplyInlinePlain, LeavesEverythingElse) {
    EXPECT_EQ(Document::inlinePlain(u" plain "), u"plain");
    EXPECT_EQ(Document::inlinePlain(u"**a"), u"**a");
    EXPECT_EQ(Document::inlinePlain(u"a**"), u"a**");
    EXPECT_EQ(Document::inlinePlain(u"****"), u"****");
    EXPECT_EQ(Document::inlinePlain(u"***"), u"***");
    EXPECT_EQ(Document::inlinePlain(u"**a** **b**"), u"**a** **b**");
    EXPECT_EQ(Document::inlinePlain(u"**Plan** for May"), u"**Plan** for May");
    EXPECT_EQ(Document::inlinePlain(u"*a*"), u"*a*");
    EXPECT_EQ(Document::inlinePlain(u""), u"");
}

TEST(ReplyInlinePlain, SeesWholeCharacters) {
    EXPECT_EQ(Document::inlinePlain(u"**\u0301a**"), u"**\u0301a**");
    EXPECT_EQ(Document::inlinePlain(u"**a**\u0301"), u"**a**\u0301");
    EXPECT_EQ(Document::inlinePlain(u"**👍🏽**"), u"👍🏽");
}

TEST(ReplyKind, HasTheNameOfItsCase) {
    const std::pair<Kind, const char*> names[] = {
        {Kind::Title, "title"},     {Kind::Section, "section"},   {Kind::Body, "body"},
        {Kind::Bullets, "bullets"}, {Kind::Numbered, "numbered"}, {Kind::Quote, "quote"},
        {Kind::Code, "code"},       {Kind::Table, "table"},       {Kind::Divider, "divider"}};
    for (const auto& [kind, name] : names)
        EXPECT_EQ(Document::kindName(kind), QLatin1StringView(name));
}

} // namespace
} // namespace vorq
