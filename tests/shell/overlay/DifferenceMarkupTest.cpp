#include "shell/overlay/DifferenceMarkup.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using Part = DifferencePart;
using Kind = DifferencePart::Kind;

const DifferenceColors colors{.removed = QColor(255, 0, 0), .added = QColor(0, 128, 0)};

TEST(DifferenceMarkup, StrikesWhatWasRemovedAndUnderlinesWhatWasAdded) {
    EXPECT_EQ(differenceMarkup({Part{Kind::Same, "a "}, Part{Kind::Removed, "very "},
                                Part{Kind::Added, "quite "}, Part{Kind::Same, "good day"}},
                               colors),
              "a <font color=\"#ff0000\"><s>very</s></font> "
              "<font color=\"#008000\"><u>quite</u></font> good day");
}

TEST(DifferenceMarkup, TellsWhatWasAddedFromWhatItStandsInsteadOf) {
    EXPECT_EQ(differenceMarkup({Part{Kind::Removed, "one"}, Part{Kind::Added, "two"}}, colors),
              "<font color=\"#ff0000\"><s>one</s></font> "
              "<font color=\"#008000\"><u>two</u></font>");
}

TEST(DifferenceMarkup, ShowsMarkupOfTheTextAsItIs) {
    EXPECT_EQ(styledText("<b>&amp;</b>"), "&lt;b&gt;&amp;amp;&lt;/b&gt;");
    EXPECT_EQ(differenceMarkup({Part{Kind::Added, "<img src=\"file:///x\">"}}, colors),
              "<font color=\"#008000\"><u>&lt;img src=\"file:///x\"&gt;</u></font>");
}

TEST(DifferenceMarkup, KeepsLinesAndBlanks) {
    EXPECT_EQ(styledText("one\r\n  two   three"), "one<br>&nbsp;&nbsp;two &nbsp;&nbsp;three");
    EXPECT_EQ(styledText(" x"), "&nbsp;x");
}

TEST(DifferenceMarkup, WhiteSpaceAloneIsNotMarked) {
    EXPECT_EQ(differenceMarkup({Part{Kind::Removed, "\n"}}, colors), "<br>");
}

TEST(DifferenceMarkup, NothingIsNothing) {
    EXPECT_EQ(differenceMarkup({}, colors), "");
    EXPECT_EQ(styledText(""), "");
}

} // namespace
} // namespace vorq
