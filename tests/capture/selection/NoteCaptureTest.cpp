#include "doubles/capture/CaptureFixture.h"

namespace vorq {
namespace {

class NoteCaptureTest : public CaptureTest {};

TEST_F(NoteCaptureTest, TakesTheLongerOfBothTexts) {
    select("short");
    copyShortcut.text = "quite a bit longer";
    EXPECT_EQ(noteSave(), "quite a bit longer");

    copyShortcut.text = "tiny";
    EXPECT_EQ(noteSave(), "short");
}

TEST_F(NoteCaptureTest, WithoutASourceReadsNothingWhereOneMayBeInFrontThatIsNotKnown) {
    select("of the one that had the focus last");
    copyShortcut.text = "copied";
    workspace.forgetSome();

    const Running<CapturedText> running(captures->notes.captureSelectedTextForNoteSave({}, {}));
    EXPECT_EQ(running.result().text, "");
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(NoteCaptureTest, PrefersAccessibilityWhenBothAreEquallyLong) {
    select("abcde");
    copyShortcut.text = "vwxyz";

    EXPECT_EQ(noteSave(), "abcde");
    EXPECT_EQ(copyShortcut.copies, 1);
}

TEST_F(NoteCaptureTest, GivesNothingWhenNothingIsFound) {
    EXPECT_EQ(noteSave(), "");
    EXPECT_EQ(copyShortcut.copies, 1);
}

TEST_F(NoteCaptureTest, ReadsNothingWithoutTrust) {
    copyShortcut.text = "copied";
    accessibility.trusted = false;

    EXPECT_EQ(noteSave(), "");
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(NoteCaptureTest, NeverCopiesTheFilesOfTheFileManager) {
    identify("com.apple.Finder");
    copyShortcut.text = "file names";
    highlight("file names");

    EXPECT_EQ(noteSave(), "");
    EXPECT_EQ(copyShortcut.copies, 0);
    EXPECT_EQ(primary.reads, 0);
}

TEST_F(NoteCaptureTest, CopiesFromTheFileManagerWhenTextIsSelectedThere) {
    identify("com.apple.finder");
    select("a name");
    copyShortcut.text = "a longer name";

    EXPECT_EQ(noteSave(), "a longer name");
}

TEST_F(NoteCaptureTest, FindsASelectionAnywhereInTheTree) {
    focus();
    accessibility.element("application").childNames = QStringList{"pane"};
    accessibility.element("pane").text = "in the pane";

    EXPECT_EQ(noteSave(), "in the pane");
}

TEST_F(NoteCaptureTest, TakesTheHighlightEachTime) {
    showings = {.count = 1, .isVisible = true};
    highlight("highlighted");

    EXPECT_EQ(noteSave(), "highlighted");
    EXPECT_EQ(noteSave(), "highlighted");
}

TEST_F(NoteCaptureTest, TreatsBlankTextAsNone) {
    select(" \n ");

    EXPECT_EQ(noteSave(), "");
}

} // namespace
} // namespace vorq
