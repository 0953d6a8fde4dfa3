#include "doubles/capture/CaptureFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class PanelCaptureTest : public CaptureTest {};

TEST_F(PanelCaptureTest, GivesTheSelectedTextOfTheFocusedElementTrimmed) {
    select("  some words \n");

    EXPECT_EQ(hotKey(), "some words");
    EXPECT_EQ(primary.reads, 0);
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(PanelCaptureTest, ReadsNothingWithoutTrust) {
    select("some words");
    highlight("some words");
    identify("firefox-esr");
    accessibility.trusted = false;

    EXPECT_EQ(hotKey(), "");
    EXPECT_THAT(accessibility.reads(), testing::IsEmpty());
    EXPECT_EQ(primary.reads, 0);
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(PanelCaptureTest, NeverWalksTheTree) {
    focus();
    accessibility.element("application").text = "elsewhere";

    EXPECT_EQ(hotKey(), "");
    EXPECT_THAT(accessibility.reads(), testing::Not(testing::Contains(QString("application"))));
}

TEST_F(PanelCaptureTest, TakesTheHighlightOfTheSourceWhenAccessibilitySaysNothing) {
    highlight(" highlighted\n");

    EXPECT_EQ(hotKey(), "highlighted");
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(PanelCaptureTest, LeavesTheHighlightOfAnotherProcess) {
    highlight("of another");
    primary.owner = source + 1;

    EXPECT_EQ(hotKey(), "");
}

TEST_F(PanelCaptureTest, BelievesAnElementThatSaysThatNothingIsSelected) {
    highlight("old text");
    focus().text = "";
    focus().range = TextRange{.location = 3, .length = 0};

    EXPECT_EQ(hotKey(), "");
    EXPECT_EQ(primary.reads, 0);
}

TEST_F(PanelCaptureTest, LooksTwiceSinceSomeApplicationsBuildWhatTheyTellWhenFirstAsked) {
    ScriptedElement& field = focus();
    field.text = "";
    field.range = TextRange{.location = 3, .length = 0};
    int looks = 0;
    accessibility.onRead = [&](const QString& read) {
        // Each look asks for the focus three times: for the text, whether it is a password, and
        // whether there is none.
        if (!read.contains("focused") || ++looks < 4) return;
        field.text = "a passage";
        field.range = TextRange{.location = 3, .length = 9};
    };
    EXPECT_EQ(hotKey(), "a passage");
}

TEST_F(PanelCaptureTest, TakesAHighlightOnceWhileThePanelStaysOpen) {
    showings = {.count = 1, .isVisible = true};
    highlight("highlighted");

    EXPECT_EQ(hotKey(), "highlighted");
    EXPECT_EQ(hotKey(), "");
    highlight("highlighted", 2);
    EXPECT_EQ(hotKey(), "highlighted");
}

TEST_F(PanelCaptureTest, TakesAnotherTextThoughItsOwnerDoesNotTellThatItIsAnother) {
    showings = {.count = 1, .isVisible = true};
    highlight("first");
    EXPECT_EQ(hotKey(), "first");

    highlight("second");
    EXPECT_EQ(hotKey(), "second");
    EXPECT_EQ(hotKey(), "");
}

TEST_F(PanelCaptureTest, TakesAHighlightAgainWhenThePanelIsOpenedAnew) {
    showings = {.count = 1, .isVisible = true};
    highlight("highlighted");
    EXPECT_EQ(hotKey(), "highlighted");

    showings = {.count = 2, .isVisible = true};
    EXPECT_EQ(hotKey(), "highlighted");
}

TEST_F(PanelCaptureTest, TreatsABlankHighlightAsNone) {
    highlight(" \n\t");

    EXPECT_EQ(hotKey(), "");
}

TEST_F(PanelCaptureTest, LeavesTheObjectsOfAHighlight) {
    highlight(u"\uFFFC a line\n\uFFFCbeside"_s);
    EXPECT_EQ(hotKey(), "a line\nbeside");
    highlight(u" \uFFFC\n"_s);
    EXPECT_EQ(hotKey(), "");
}

TEST_F(PanelCaptureTest, SendsTheCopyShortcutToBrowsersOnly) {
    copyShortcut.text = "copied";
    EXPECT_EQ(hotKey(), "");
    EXPECT_EQ(copyShortcut.copies, 0);

    identify("Chromium");
    EXPECT_EQ(hotKey(), "copied");
    EXPECT_EQ(copyShortcut.copies, 1);
}

TEST_F(PanelCaptureTest, WithoutASourceGoesByTheApplicationInFront) {
    copyShortcut.text = "copied";
    identify("firefox-esr");

    const Running<QString> running(textOf(captures->panel.captureSelectedTextForHotKey({}, {})));
    EXPECT_EQ(running.result(), "copied");
    EXPECT_THAT(accessibility.reads(), testing::Contains(QString("system-wide focusedElement")));
}

TEST_F(PanelCaptureTest, WithoutASourceTakesTheHighlightOfTheApplicationInFront) {
    highlight("highlighted");

    const Running<QString> running(textOf(captures->panel.captureSelectedTextForHotKey({}, {})));
    EXPECT_EQ(running.result(), "highlighted");
}

TEST_F(PanelCaptureTest, WithoutASourceReadsNothingWhereOneMayBeInFrontThatIsNotKnown) {
    select("of the one that had the focus last");
    highlight("of that, too");
    copyShortcut.text = "copied";
    identify("firefox-esr");
    workspace.forgetSome();

    const Running<CapturedText> running(captures->panel.captureSelectedTextForHotKey({}, {}));
    EXPECT_EQ(running.result().text, "");
    EXPECT_THAT(accessibility.reads(), testing::IsEmpty());
    EXPECT_EQ(primary.reads, 0);
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(PanelCaptureTest, ReadsASourceThatIsKnownWhereNotAllAre) {
    select("some words");
    workspace.forgetSome();

    EXPECT_EQ(hotKey(), "some words");
}

TEST_F(PanelCaptureTest, EndsAtOnceWhenStopped) {
    accessibility.hangs = true;
    identify("firefox-esr");
    const Running<QString> running = startHotKey();
    waitUntilHanging();

    stop.request_stop();
    EXPECT_EQ(running.result(), "");
    EXPECT_EQ(copyShortcut.copies, 0);
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(PanelCaptureTest, TouchesNothingAfterTheServiceIsGone) {
    accessibility.hangs = true;
    identify("firefox-esr");
    const Running<QString> running = startHotKey();
    waitUntilHanging();

    captures.reset();
    EXPECT_EQ(running.result(), "");
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(PanelCaptureTest, TouchesNothingWhenTheServiceGoesWhileItCopies) {
    identify("firefox-esr");
    copyShortcut.text = "copied";
    copyShortcut.onCopy = [this] { captures.reset(); };

    EXPECT_EQ(startHotKey().result(), "copied");
    EXPECT_EQ(captures, nullptr);
}

} // namespace
} // namespace vorq
