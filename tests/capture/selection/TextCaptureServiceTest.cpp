#include "doubles/capture/CaptureFixture.h"

#include <semaphore>

namespace vorq {
namespace {

using namespace std::chrono_literals;

class HotKeyCapture : public CaptureTest {};
class NoteCaptureText : public CaptureTest {};
class SelectionSnapshots : public CaptureTest {};

TEST_F(HotKeyCapture, GivesTheSelectedTextOfTheFocusedElementTrimmed) {
    select("  some words \n");

    EXPECT_EQ(hotKey(), "some words");
    EXPECT_EQ(primary.reads, 0);
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(HotKeyCapture, ReadsNothingWithoutTrust) {
    select("some words");
    highlight("some words");
    identify("firefox-esr");
    accessibility.trusted = false;

    EXPECT_EQ(hotKey(), "");
    EXPECT_THAT(accessibility.reads(), testing::IsEmpty());
    EXPECT_EQ(primary.reads, 0);
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(HotKeyCapture, NeverWalksTheTree) {
    focus();
    accessibility.element("application").text = "elsewhere";

    EXPECT_EQ(hotKey(), "");
    EXPECT_THAT(accessibility.reads(), testing::Not(testing::Contains(QString("application"))));
}

TEST_F(HotKeyCapture, TakesTheHighlightOfTheSourceWhenAccessibilitySaysNothing) {
    highlight(" highlighted\n");

    EXPECT_EQ(hotKey(), "highlighted");
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(HotKeyCapture, LeavesTheHighlightOfAnotherProcess) {
    highlight("of another");
    primary.owner = source + 1;

    EXPECT_EQ(hotKey(), "");
}

TEST_F(HotKeyCapture, BelievesAnElementThatSaysThatNothingIsSelected) {
    highlight("old text");
    focus().text = "";
    focus().range = TextRange{.location = 3, .length = 0};

    EXPECT_EQ(hotKey(), "");
    EXPECT_EQ(primary.reads, 0);
}

TEST_F(HotKeyCapture, LooksTwiceSinceSomeApplicationsBuildWhatTheyTellWhenFirstAsked) {
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

TEST_F(HotKeyCapture, TakesAHighlightOnceWhileThePanelStaysOpen) {
    surroundings.showing = 1;
    highlight("highlighted");

    EXPECT_EQ(hotKey(), "highlighted");
    EXPECT_EQ(hotKey(), "");
    highlight("highlighted", 2);
    EXPECT_EQ(hotKey(), "highlighted");
}

TEST_F(HotKeyCapture, TakesAnotherTextThoughItsOwnerDoesNotTellThatItIsAnother) {
    surroundings.showing = 1;
    highlight("first");
    EXPECT_EQ(hotKey(), "first");

    highlight("second");
    EXPECT_EQ(hotKey(), "second");
    EXPECT_EQ(hotKey(), "");
}

TEST_F(HotKeyCapture, TakesAHighlightAgainWhenThePanelIsOpenedAnew) {
    surroundings.showing = 1;
    highlight("highlighted");
    EXPECT_EQ(hotKey(), "highlighted");

    surroundings.showing = 2;
    EXPECT_EQ(hotKey(), "highlighted");
}

TEST_F(HotKeyCapture, TreatsABlankHighlightAsNone) {
    highlight(" \n\t");

    EXPECT_EQ(hotKey(), "");
}

TEST_F(HotKeyCapture, LeavesTheObjectsOfAHighlight) {
    highlight(QStringLiteral("\uFFFC a line\n\uFFFCbeside"));
    EXPECT_EQ(hotKey(), "a line\nbeside");
    highlight(QStringLiteral(" \uFFFC\n"));
    EXPECT_EQ(hotKey(), "");
}

TEST_F(HotKeyCapture, SendsTheCopyShortcutToBrowsersOnly) {
    copyShortcut.text = "copied";
    EXPECT_EQ(hotKey(), "");
    EXPECT_EQ(copyShortcut.copies, 0);

    identify("Chromium");
    EXPECT_EQ(hotKey(), "copied");
    EXPECT_EQ(copyShortcut.copies, 1);
}

TEST_F(HotKeyCapture, WithoutASourceGoesByTheApplicationInFront) {
    copyShortcut.text = "copied";
    identify("firefox-esr");

    const Running<QString> running(textOf(service->captureSelectedTextForHotKey({}, {})));
    EXPECT_EQ(running.result(), "copied");
    EXPECT_THAT(accessibility.reads(), testing::Contains(QString("system-wide focusedElement")));
}

TEST_F(HotKeyCapture, WithoutASourceTakesTheHighlightOfTheApplicationInFront) {
    highlight("highlighted");

    const Running<QString> running(textOf(service->captureSelectedTextForHotKey({}, {})));
    EXPECT_EQ(running.result(), "highlighted");
}

TEST_F(HotKeyCapture, WithoutASourceReadsNothingWhereOneMayBeInFrontThatIsNotKnown) {
    select("of the one that had the focus last");
    highlight("of that, too");
    copyShortcut.text = "copied";
    identify("firefox-esr");
    workspace.knowsAll = false;

    const Running<CapturedText> running(service->captureSelectedTextForHotKey({}, {}));
    EXPECT_EQ(running.result().text, "");
    EXPECT_THAT(accessibility.reads(), testing::IsEmpty());
    EXPECT_EQ(primary.reads, 0);
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(HotKeyCapture, ReadsASourceThatIsKnownWhereNotAllAre) {
    select("some words");
    workspace.knowsAll = false;

    EXPECT_EQ(hotKey(), "some words");
}

TEST_F(HotKeyCapture, GivesAnApplicationThatHangsAQuarterOfASecond) {
    accessibility.hangs = true;
    primary.hangs = true;
    const Running<QString> running = startHotKey();
    waitUntilHanging();
    clock.advance(TextCaptureService::headStart);
    waitUntilPrimaryHangs();
    clock.advance(TextCaptureService::captureLimit - TextCaptureService::headStart - 1ms);
    for (int turn = 0; turn < 20; ++turn)
        Running<QString>::turnOnce();
    EXPECT_FALSE(running.hasEnded());

    clock.advance(1ms);
    EXPECT_EQ(running.result(), "");
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(HotKeyCapture, GoesOnToTheHighlightWhenAccessibilityTakesTooLong) {
    accessibility.hangs = true;
    highlight("highlighted");
    const Running<QString> running = startHotKey();
    waitUntilHanging();

    clock.advance(TextCaptureService::accessibilityLimit);
    EXPECT_EQ(running.result(), "highlighted");
}

// An application whose reads wait until they are let go.
class SlowApplication : public CaptureTest {
  protected:
    SlowApplication() {
        focus();
        accessibility.onRead = [this](const QString&) {
            isAsked.release();
            isLetGo.acquire();
            isLetGo.release();
        };
    }
    // The reading thread ends before what it waits for goes.
    ~SlowApplication() override {
        isLetGo.release();
        service.reset();
    }
    // The clock stands still once PRIMARY is being read.
    [[nodiscard]] Running<QString> startAndFallBehind() {
        Running<QString> running = startHotKey();
        isAsked.acquire();
        clock.advance(TextCaptureService::headStart);
        for (const QDeadlineTimer guard(20'000); primary.reads == 0 && !guard.hasExpired();)
            Running<QString>::turnOnce();
        EXPECT_EQ(primary.reads, 1);
        return running;
    }

    std::counting_semaphore<> isAsked{0};
    std::counting_semaphore<> isLetGo{0};
};

TEST_F(SlowApplication, IsAskedForItsHighlightMeanwhile) {
    highlight("highlighted");
    const Running<QString> running = startAndFallBehind();
    EXPECT_FALSE(running.hasEnded());

    clock.advance(TextCaptureService::accessibilityLimit - TextCaptureService::headStart);
    EXPECT_EQ(running.result(), "highlighted");
    isLetGo.release();
}

TEST_F(SlowApplication, IsBelievedByAccessibilityAllTheSame) {
    highlight("highlighted");
    select("selected");
    const Running<QString> running = startAndFallBehind();

    isLetGo.release();
    EXPECT_EQ(running.result(), "selected");
}

TEST_F(SlowApplication, IsBelievedThatNothingIsSelected) {
    highlight("old text");
    focus().text = "";
    focus().range = TextRange{.location = 3, .length = 0};
    const Running<QString> running = startAndFallBehind();

    isLetGo.release();
    EXPECT_EQ(running.result(), "");
}

TEST_F(SlowApplication, WaitsForNoHighlightOnceItHasTold) {
    primary.hangs = true;
    select("selected");
    const Running<QString> running = startAndFallBehind();

    isLetGo.release();
    EXPECT_EQ(running.result(), "selected");
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(HotKeyCapture, GivesAHighlightThatHangsTheRestOfTheTime) {
    primary.hangs = true;
    const Running<QString> running = startHotKey();
    waitUntilPrimaryHangs();

    clock.advance(TextCaptureService::captureLimit);
    EXPECT_EQ(running.result(), "");
}

TEST_F(HotKeyCapture, GivesAHighlightItsTurnThoughTheMainThreadWasBusy) {
    primary.hangs = true;
    const Running<QString> running = startHotKey();
    clock.passUnattended(TextCaptureService::captureLimit);
    waitUntilPrimaryHangs();

    clock.advance(TextCaptureService::captureLimit - TextCaptureService::accessibilityLimit - 1ms);
    EXPECT_FALSE(running.hasEnded());
    clock.advance(1ms);
    EXPECT_EQ(running.result(), "");
}

TEST_F(HotKeyCapture, ReadsAgainAfterAnApplicationThatHung) {
    accessibility.hangs = true;
    const Running<QString> first = startHotKey();
    waitUntilHanging();
    clock.advance(TextCaptureService::captureLimit);
    EXPECT_EQ(first.result(), "");

    accessibility.hangs = false;
    select("some words");
    EXPECT_EQ(hotKey(), "some words");
}

TEST_F(HotKeyCapture, EndsAtOnceWhenStopped) {
    accessibility.hangs = true;
    identify("firefox-esr");
    const Running<QString> running = startHotKey();
    waitUntilHanging();

    stop.request_stop();
    EXPECT_EQ(running.result(), "");
    EXPECT_EQ(copyShortcut.copies, 0);
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(HotKeyCapture, ASecondCaptureWaitsForTheFirstAndIsRightAfterIt) {
    accessibility.hangs = true;
    const Running<QString> first = startHotKey();
    waitUntilHanging();
    std::stop_source secondStop;
    const Running<QString> second(
        textOf(service->captureSelectedTextForHotKey(source, secondStop.get_token())));
    stop.request_stop();
    EXPECT_EQ(first.result(), "");

    accessibility.hangs = false;
    secondStop.request_stop();
    EXPECT_EQ(second.result(), "");
}

TEST_F(HotKeyCapture, TouchesNothingAfterTheServiceIsGone) {
    accessibility.hangs = true;
    identify("firefox-esr");
    const Running<QString> running = startHotKey();
    waitUntilHanging();

    service.reset();
    EXPECT_EQ(running.result(), "");
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(HotKeyCapture, TouchesNothingWhenTheServiceGoesWhileItCopies) {
    identify("firefox-esr");
    copyShortcut.text = "copied";
    copyShortcut.onCopy = [this] { service.reset(); };

    EXPECT_EQ(startHotKey().result(), "copied");
    EXPECT_EQ(service, nullptr);
}

TEST_F(NoteCaptureText, TakesTheLongerOfBothTexts) {
    select("short");
    copyShortcut.text = "quite a bit longer";
    EXPECT_EQ(noteSave(), "quite a bit longer");

    copyShortcut.text = "tiny";
    EXPECT_EQ(noteSave(), "short");
}

TEST_F(NoteCaptureText, WithoutASourceReadsNothingWhereOneMayBeInFrontThatIsNotKnown) {
    select("of the one that had the focus last");
    copyShortcut.text = "copied";
    workspace.knowsAll = false;

    const Running<CapturedText> running(service->captureSelectedTextForNoteSave({}, {}));
    EXPECT_EQ(running.result().text, "");
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(NoteCaptureText, PrefersAccessibilityWhenBothAreEquallyLong) {
    select("abcde");
    copyShortcut.text = "vwxyz";

    EXPECT_EQ(noteSave(), "abcde");
    EXPECT_EQ(copyShortcut.copies, 1);
}

TEST_F(NoteCaptureText, GivesNothingWhenNothingIsFound) {
    EXPECT_EQ(noteSave(), "");
    EXPECT_EQ(copyShortcut.copies, 1);
}

TEST_F(NoteCaptureText, ReadsNothingWithoutTrust) {
    copyShortcut.text = "copied";
    accessibility.trusted = false;

    EXPECT_EQ(noteSave(), "");
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(NoteCaptureText, NeverCopiesTheFilesOfTheFileManager) {
    identify("com.apple.Finder");
    copyShortcut.text = "file names";
    highlight("file names");

    EXPECT_EQ(noteSave(), "");
    EXPECT_EQ(copyShortcut.copies, 0);
    EXPECT_EQ(primary.reads, 0);
}

TEST_F(NoteCaptureText, CopiesFromTheFileManagerWhenTextIsSelectedThere) {
    identify("com.apple.finder");
    select("a name");
    copyShortcut.text = "a longer name";

    EXPECT_EQ(noteSave(), "a longer name");
}

TEST_F(NoteCaptureText, FindsASelectionAnywhereInTheTree) {
    focus();
    accessibility.element("application").childNames = QStringList{"pane"};
    accessibility.element("pane").text = "in the pane";

    EXPECT_EQ(noteSave(), "in the pane");
}

TEST_F(NoteCaptureText, TakesTheHighlightEachTime) {
    surroundings.showing = 1;
    highlight("highlighted");

    EXPECT_EQ(noteSave(), "highlighted");
    EXPECT_EQ(noteSave(), "highlighted");
}

TEST_F(NoteCaptureText, TreatsBlankTextAsNone) {
    select(" \n ");

    EXPECT_EQ(noteSave(), "");
}

TEST_F(SelectionSnapshots, StandAtTheMouseWithoutTrust) {
    accessibility.trusted = false;
    copyShortcut.text = "copied";

    const SelectionSnapshot snapshot = selection(true);
    EXPECT_EQ(snapshot.text, "");
    EXPECT_EQ(snapshot.screenFrame, QRectF(280, 193, 40, 14));
    EXPECT_EQ(snapshot.clickPoint, QPointF(300, 200));
    EXPECT_EQ(snapshot.sourcePID, source);
    EXPECT_FALSE(snapshot.hasReliablePlacement);
    EXPECT_EQ(copyShortcut.copies, 0);
    EXPECT_EQ(placeLog(), "2026-01-01 00:00:00 +0000 capture: not trusted\n");
}

TEST_F(SelectionSnapshots, StandAtTheBoundsThatAccessibilityGives) {
    select(" words ");
    focus().bounds.emplace_back(TextRange{.location = 0, .length = 7}, QRectF(100, 50, 60, 20));

    const SelectionSnapshot snapshot = selection();
    EXPECT_EQ(snapshot.text, "words");
    EXPECT_EQ(snapshot.exactText, " words ");
    EXPECT_EQ(snapshot.screenFrame, QRectF(100, 730, 60, 20));
    EXPECT_EQ(snapshot.clickPoint, QPointF(130, 740));
    EXPECT_EQ(snapshot.selectedRange, (TextRange{.location = 0, .length = 7}));
    EXPECT_TRUE(snapshot.hasReliablePlacement);
    EXPECT_EQ(copyShortcut.copies, 0);
    EXPECT_THAT(placeLog().toStdString(),
                testing::EndsWith("capture: AX-direct frame=(100.0, 730.0, 60.0, 20.0) "
                                  "mouse=(300.0, 200.0)\n"));
}

TEST_F(SelectionSnapshots, TakeTheCopyAndThePlaceThatIsKnownAfterIt) {
    copyShortcut.text = "copied";
    copyShortcut.onCopy = [this] {
        select(" exact ");
        focus().bounds.emplace_back(TextRange{.location = 0, .length = 7}, QRectF(100, 50, 60, 20));
    };
    focus();

    const SelectionSnapshot snapshot = selection();
    EXPECT_EQ(snapshot.text, "copied");
    EXPECT_EQ(snapshot.exactText, " exact ");
    EXPECT_TRUE(snapshot.hasReliablePlacement);
    EXPECT_THAT(placeLog().toStdString(),
                testing::HasSubstr("capture: AX-after-copy frame=(100.0, 730.0, 60.0, 20.0) "
                                   "rawAX=(100.0, 50.0, 60.0, 20.0) mouse=(300.0, 200.0)"));
}

TEST_F(SelectionSnapshots, TakeTheTextOfAccessibilityWhenNothingIsCopied) {
    copyShortcut.onCopy = [this] {
        select(" exact ");
        focus().origin = QPointF(10, 20);
        focus().extent = QSizeF(100, 30);
    };
    focus();

    const SelectionSnapshot snapshot = selection();
    EXPECT_EQ(snapshot.text, "exact");
    EXPECT_EQ(snapshot.exactText, " exact ");
    EXPECT_EQ(snapshot.screenFrame, QRectF(10, 750, 100, 24));
    EXPECT_EQ(snapshot.clickPoint, QPointF(60, 762));
    EXPECT_THAT(placeLog().toStdString(), testing::HasSubstr(" rawAX=nil "));
}

TEST_F(SelectionSnapshots, AreSoughtOnAPictureOnlyWhenThatIsWanted) {
    copyShortcut.text = "copied";
    surroundings.seen =
        VisualHighlight{.screenFrame = QRectF(5, 6, 70, 20), .clickPoint = QPointF(40, 16)};

    EXPECT_FALSE(selection(false).hasReliablePlacement);
    EXPECT_EQ(surroundings.screenshots, 0);

    const SelectionSnapshot snapshot = selection(true);
    EXPECT_EQ(snapshot.screenFrame, QRectF(5, 6, 70, 20));
    EXPECT_EQ(snapshot.clickPoint, QPointF(40, 16));
    EXPECT_EQ(snapshot.exactText, "copied");
    EXPECT_TRUE(snapshot.hasReliablePlacement);
    EXPECT_THAT(placeLog().toStdString(),
                testing::EndsWith(
                    "capture: screenshot frame=(5.0, 6.0, 70.0, 20.0) mouse=(300.0, 200.0)\n"));
}

TEST_F(SelectionSnapshots, AreNotSoughtOnAPictureWithoutText) {
    surroundings.seen = VisualHighlight{};

    EXPECT_FALSE(selection(true).hasReliablePlacement);
    EXPECT_EQ(surroundings.screenshots, 0);
    EXPECT_THAT(placeLog().toStdString(),
                testing::EndsWith("capture: FALLBACK to mouse anchor (280.0, 193.0, 40.0, 14.0) "
                                  "copiedEmpty=true screenGeometry=true\n"));
}

TEST_F(SelectionSnapshots, TakeTheHighlightInsteadOfACopy) {
    highlight(" highlighted ");

    const SelectionSnapshot snapshot = selection();
    EXPECT_EQ(snapshot.text, "highlighted");
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(SelectionSnapshots, AreEmptyWhenTheApplicationHangs) {
    accessibility.hangs = true;
    const Running<SelectionSnapshot> running(
        service->captureSelection(source, QPointF(1, 2), false, stop.get_token()));
    waitUntilHanging();
    clock.advance(TextCaptureService::captureLimit);

    EXPECT_EQ(running.resultOnceDue(clock).text, "");
    EXPECT_EQ(running.result().clickPoint, QPointF(1, 2));
}

TEST_F(CaptureTest, ItsOwnProcessIsNotForeign) {
    workspace.frontmost = static_cast<std::int32_t>(QCoreApplication::applicationPid());
    EXPECT_EQ(service->frontmostForeignProcess(), std::nullopt);

    workspace.frontmost = source;
    EXPECT_EQ(service->frontmostForeignProcess(), source);
}

TEST_F(CaptureTest, ApplicationsAreNamedByTheWorkspace) {
    EXPECT_EQ(service->applicationName(source), "Source");
    EXPECT_EQ(service->applicationName(source + 1), "");
}

TEST_F(CaptureTest, AnUnknownProcessIsNoFileManager) {
    EXPECT_FALSE(service->isFinderSource(std::nullopt));
    EXPECT_FALSE(service->isFinderSource(source + 1));
}

TEST_F(CaptureTest, TheHighlightOfABrowserIsGoneIfAClickMayHaveUndoneIt) {
    identify("org.kde.falkon");
    highlight("a passage");
    primary.highlight.mayBeUndone = true;
    EXPECT_EQ(hotKey(), "");
    primary.highlight.mayBeUndone = false;
    EXPECT_EQ(hotKey(), "a passage");
}

TEST_F(CaptureTest, TheHighlightOfATerminalOutlivesAClick) {
    identify("xterm");
    highlight("a passage");
    primary.highlight.mayBeUndone = true;
    EXPECT_EQ(hotKey(), "a passage");
}

} // namespace
} // namespace vorq
