#include "capture/selection/ColumnSelection.h"
#include "doubles/capture/CaptureFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString content = u"alpha one two\nbravo one two\ncharlie one two\ndelta\n"_s;
const QStringList threeLines = content.split('\n').mid(0, 3);

TEST(ColumnSelection, KnowsWhatIsCutOutOfColumns) {
    EXPECT_TRUE(isCutOfColumns(threeLines, u"pha\navo\narl"));
    EXPECT_TRUE(isCutOfColumns(threeLines, u"pha\navo\narl\n"));
    EXPECT_TRUE(isCutOfColumns({"long line", "", "another line"}, u"ng\n\noth"));
    EXPECT_TRUE(isCutOfColumns({"one two", "one two"}, u"two\ntwo")) << "to the ends of the lines";
}

TEST(ColumnSelection, TakesARunForNoColumns) {
    EXPECT_FALSE(isCutOfColumns(threeLines, u"pha one two\nbravo one two\ncharl"));
    EXPECT_FALSE(isCutOfColumns(threeLines, u"one two\nbravo one two\nch")) << "a former one";
    EXPECT_FALSE(isCutOfColumns({"one two", "one two"}, u"two\none"));
}

TEST(ColumnSelection, TakesOtherTextForNoColumns) {
    EXPECT_FALSE(isCutOfColumns(threeLines, u""));
    EXPECT_FALSE(isCutOfColumns(threeLines, u"pha"));
    EXPECT_FALSE(isCutOfColumns(threeLines, u"pha\navo"));
    EXPECT_FALSE(isCutOfColumns(threeLines, u"some\nother\ntext"));
    EXPECT_FALSE(isCutOfColumns({"alpha"}, u"lph"));
    EXPECT_FALSE(isCutOfColumns({}, u""));
}

class ColumnCaptureTest : public CaptureTest {
  protected:
    // As editors tell it, from the second character of the first line to the fifth of the third.
    ColumnCaptureTest() {
        identify("org.kde.kwrite");
        focus().content = content;
        focus().range = TextRange{.location = 2, .length = 31};
        focus().text = content.sliced(2, 31);
        highlight("pha\navo\narl");
    }

    [[nodiscard]] QStringList lines() {
        return selectedLines({.accessibility = accessibility, .process = source, .stop = {}});
    }
};

TEST_F(ColumnCaptureTest, FindsTheLinesOfASelection) {
    EXPECT_EQ(lines(), threeLines);
    focus().range = TextRange{.location = 0, .length = content.size()};
    EXPECT_EQ(lines(), content.split('\n'));
    focus().range = TextRange{.location = 14, .length = 3};
    EXPECT_EQ(lines(), QStringList("bravo one two"));
    for (const TextRange range :
         {TextRange{.location = -1, .length = 4}, TextRange{.location = 0, .length = 0},
          TextRange{.location = 40, .length = 4000}}) {
        focus().range = range;
        EXPECT_EQ(lines(), QStringList());
    }
}

TEST_F(ColumnCaptureTest, TakesTheColumnsThatAreHighlighted) {
    EXPECT_EQ(hotKey(), "pha\navo\narl");
    copyShortcut.text = "";
    EXPECT_EQ(noteSave(), "pha\navo\narl");
}

TEST_F(ColumnCaptureTest, TakesTheRunOverAFormerHighlight) {
    highlight("former highlight");
    EXPECT_EQ(hotKey(), content.sliced(2, 31));
    primary.owner = 77;
    EXPECT_EQ(hotKey(), content.sliced(2, 31));
}

TEST_F(ColumnCaptureTest, AsksNoOtherEditor) {
    identify("org.gnome.TextEditor");
    EXPECT_EQ(hotKey(), content.sliced(2, 31));
    EXPECT_EQ(primary.reads, 0);
}

TEST_F(ColumnCaptureTest, AsksForNoHighlightWithinALine) {
    focus().range = TextRange{.location = 2, .length = 3};
    focus().text = "pha";
    EXPECT_EQ(hotKey(), "pha");
    EXPECT_EQ(primary.reads, 0);
}

} // namespace
} // namespace vorq
