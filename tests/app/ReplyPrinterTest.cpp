#include "app/ReplyPrinter.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

TEST(ReplyPrinter, PrintsEachBlockOnceAsItComes) {
    ReplyPrinter printer;
    EXPECT_EQ(printer.grow(u"one", false), "one");
    EXPECT_EQ(printer.grow(u"one\n\ntwo", false), "\n\ntwo");
    EXPECT_EQ(printer.grow(u"one\n\ntwo", false), "");
    EXPECT_EQ(printer.finish(u"one\n\ntwo\n\nthree"), "\n\nthree\n");
}

TEST(ReplyPrinter, WaitsForABlockThatStillGrows) {
    ReplyPrinter printer;
    EXPECT_EQ(printer.grow(u"Hello there", true), "");
    EXPECT_FALSE(printer.hasPrinted());
    EXPECT_EQ(printer.grow(u"Hello there, friend", true), "");
    EXPECT_EQ(printer.finish(u"Hello there, friend."), "Hello there, friend.\n");
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
    EXPECT_EQ(printer.grow(u"one\n\ntwo", false), "one\n\ntwo");
    EXPECT_EQ(printer.finish(u"zero\n\none\n\ntwo\n\nthree"), "\n\nzero\n\nthree\n");
}

TEST(ReplyPrinter, ANothingReplyPrintsNothing) {
    ReplyPrinter printer;
    EXPECT_EQ(printer.finish(u""), "");
}

TEST(TerminalControls, AreTakenOutButForLinesAndTabs) {
    EXPECT_EQ(withoutTerminalControls("a\x1b[31mred\a\r\n\tb\x7f é"), "a[31mred\n\tb é");
    EXPECT_EQ(withoutTerminalControls("\xC2\x9B"
                                      "31m"),
              "31m");
}

} // namespace
} // namespace vorq
