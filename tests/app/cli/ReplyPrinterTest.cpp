#include "app/cli/ReplyPrinter.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

TEST(ReplyPrinter, PrintsEachBlockOnceAsItComes) {
    ReplyPrinter printer;
    EXPECT_EQ(printer.grow(u"one\n\n"), "one");
    EXPECT_EQ(printer.grow(u"one\n\ntwo"), "");
    EXPECT_EQ(printer.grow(u"one\n\ntwo\n\n"), "\n\ntwo");
    EXPECT_EQ(printer.grow(u"one\n\ntwo\n\n"), "");
    EXPECT_EQ(printer.finish(u"one\n\ntwo\n\nthree"), "\n\nthree\n");
}

TEST(ReplyPrinter, WaitsForABlockThatMayStillGrow) {
    for (const QStringView text : {u"Hello there", u"Hello there\n", u"- one\n", u"1. one\n2",
                                   u"> one\n", u"```\ncode\n\n", u"Plan\n\n", u"|a|b|\n|-|-|\n"}) {
        ReplyPrinter printer;
        EXPECT_EQ(printer.grow(text), "") << qPrintable(text.toString());
        EXPECT_FALSE(printer.hasPrinted());
    }
}

TEST(ReplyPrinter, AHeadingIsPrintedAsSoonAsItsLineEnds) {
    ReplyPrinter printer;
    EXPECT_EQ(printer.grow(u"**Plan**\n"), "**Plan**");
    EXPECT_EQ(printer.grow(u"**Plan**\n- one\n- two\n\n"), "\n\n- one\n- two");
}

// All that is printed of a text which comes in character by character.
QByteArray printedByCharacter(const QString& text) {
    ReplyPrinter printer;
    QByteArray printed;
    for (qsizetype end = 1; end <= text.size(); ++end)
        printed += printer.grow(QStringView(text).first(end));
    return printed + printer.finish(text);
}

TEST(ReplyPrinter, AListThatComesCharacterByCharacterIsPrintedOnce) {
    EXPECT_EQ(printedByCharacter("**Plan**\n- one\n- two\n\n1. a\n2. b"),
              "**Plan**\n\n- one\n- two\n\n1. a\n2. b\n");
}

TEST(ReplyPrinter, ATextThatComesCharacterByCharacterPrintsTheSameAsAtOnce) {
    int texts = 0;
    for (const char* op : {"blocks", "committedSource"}) {
        QFile file(QStringLiteral(VORQ_VECTORS "/%1.jsonl").arg(QLatin1StringView(op)));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
        while (!file.atEnd()) {
            const QJsonObject testCase = QJsonDocument::fromJson(file.readLine()).object();
            const QString text = testCase["in"].toObject()["text"].toString();
            ++texts;
            ReplyPrinter printer;
            EXPECT_EQ(printedByCharacter(text), printer.finish(text))
                << qPrintable(testCase["id"].toString());
        }
    }
    EXPECT_GT(texts, 400);
}

// Lines of every kind in any order, some of them too long to be parsed at each line.
QString randomReply(std::mt19937& random) {
    static const QStringList lines{"text",
                                   "Plan",
                                   "- one",
                                   "- two",
                                   "* three",
                                   "1. a",
                                   "2. b",
                                   "> said",
                                   ">",
                                   "```",
                                   "```cpp",
                                   "|a|b|",
                                   "|-|-|",
                                   "| c | d |",
                                   "---",
                                   "# Head",
                                   "**Label**",
                                   "**open",
                                   "**",
                                   "- Steps such as:",
                                   "",
                                   "",
                                   "  ",
                                   "a - b",
                                   "a **b** c",
                                   "\\n- x",
                                   "one\\ntwo",
                                   "x\r",
                                   "Plan **now",
                                   "- **bold**",
                                   QString(600, u'x'),
                                   QString(40, u'y') + ". Z. "};
    QString reply;
    const unsigned count = 1 + static_cast<unsigned>(random() % 20);
    for (unsigned index = 0; index < count; ++index) {
        reply += lines[static_cast<qsizetype>(random() % static_cast<unsigned>(lines.size()))];
        reply += random() % 12 == 0 ? u' ' : u'\n';
    }
    return reply;
}

TEST(ReplyPrinter, AnyTextThatComesLineByLinePrintsTheSameAsAtOnce) {
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        std::mt19937 random(seed);
        const QString reply = randomReply(random);
        ReplyPrinter growing;
        QByteArray printed;
        for (qsizetype end = reply.indexOf(u'\n'); end >= 0; end = reply.indexOf(u'\n', end + 1))
            printed += growing.grow(QStringView(reply).first(end + 1));
        printed += growing.finish(reply);
        ReplyPrinter atOnce;
        ASSERT_EQ(printed, atOnce.finish(reply)) << seed << '\n' << qPrintable(reply);
    }
}

TEST(ReplyPrinter, AListIsPrintedAsSoonAsItEndsHoweverLongItIs) {
    QString list;
    for (int index = 0; index < 1000; ++index)
        list += u"- item %1\n"_s.arg(index);
    ReplyPrinter printer;
    EXPECT_EQ(printer.grow(list), "");
    EXPECT_EQ(printer.grow(list + "And so on\n"), list.trimmed().toUtf8());
    EXPECT_EQ(printer.finish(list + "And so on"), "\n\nAnd so on\n");
}

TEST(ReplyPrinter, AReplyThatIsRevisedOverAndOverRepeatsNothing) {
    ReplyPrinter printer;
    EXPECT_EQ(printer.grow(u"one\n\ntwo\n\n"), "one\n\ntwo");
    EXPECT_EQ(printer.grow(u"two\n\nthree\n\n"), "\n\nthree");
    EXPECT_EQ(printer.grow(u"one\n\nfour\n\n"), "\n\nfour");
    EXPECT_EQ(printer.finish(u"one\n\ntwo\n\nthree\n\nfour"), "\n");
}

TEST(ReplyPrinter, PrintsCanonicalMarkdown) {
    ReplyPrinter printer;
    EXPECT_EQ(printer.finish(u"# Plan\n* one\n* two\n\n***"), "**Plan**\n\n- one\n- two\n\n---\n");
}

TEST(ReplyPrinter, RepeatedBlocksAreEachPrinted) {
    ReplyPrinter printer;
    EXPECT_EQ(printer.finish(u"---\n\nsame\n\n---\n\nsame"), "---\n\nsame\n\n---\n\nsame\n");
}

TEST(ReplyPrinter, ARevisedReplyAddsWhatIsNewAndRepeatsNothing) {
    ReplyPrinter printer;
    EXPECT_EQ(printer.grow(u"one\n\ntwo\n\n"), "one\n\ntwo");
    EXPECT_EQ(printer.finish(u"zero\n\none\n\ntwo\n\nthree"), "\n\nzero\n\nthree\n");
}

TEST(ReplyPrinter, ANothingReplyPrintsNothing) {
    ReplyPrinter printer;
    EXPECT_EQ(printer.finish(u""), "");
}

TEST(TerminalControls, AreTakenOutButForLinesAndTabs) {
    EXPECT_EQ(withoutTerminalControls("a\x1b[31mred\a\r\n\tb\x7f é"), "a[31mred\n\tb é");
    EXPECT_EQ(withoutTerminalControls("a\u202Eb\u2066c"), "abc");
    EXPECT_EQ(withoutTerminalControls("\xC2\x9B"
                                      "31m"),
              "31m");
}

} // namespace
} // namespace vorq
