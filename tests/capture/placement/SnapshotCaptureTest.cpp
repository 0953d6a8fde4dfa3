#include "doubles/capture/CaptureFixture.h"

namespace vorq {
namespace {

class SnapshotCaptureTest : public CaptureTest {};

TEST_F(SnapshotCaptureTest, StandAtTheMouseWithoutTrust) {
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

TEST_F(SnapshotCaptureTest, StandAtTheBoundsThatAccessibilityGives) {
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

TEST_F(SnapshotCaptureTest, TakeTheCopyAndThePlaceThatIsKnownAfterIt) {
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

TEST_F(SnapshotCaptureTest, TakeTheTextOfAccessibilityWhenNothingIsCopied) {
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

TEST_F(SnapshotCaptureTest, StandAtMarkersWhereNoRangeCanBeRead) {
    focus().text = "words";
    focus().markerBounds = QRectF(100, 50, 60, 20);

    const SelectionSnapshot snapshot = selection();
    EXPECT_EQ(snapshot.screenFrame, QRectF(100, 730, 60, 20));
    EXPECT_EQ(snapshot.selectedRange, std::nullopt);
    EXPECT_TRUE(snapshot.hasReliablePlacement);
}

TEST_F(SnapshotCaptureTest, StandAtAnElementThatIsLowAndAreSoughtInAHigherOne) {
    select("words");
    search.seen =
        VisualHighlight{.screenFrame = QRectF(5, 6, 70, 20), .clickPoint = QPointF(40, 16)};
    focus().origin = QPointF(10, 20);
    focus().extent = QSizeF(100, 80);
    EXPECT_EQ(selection(true).screenFrame, QRectF(10, 700, 100, 24));
    EXPECT_EQ(search.screenshots, 0);

    focus().extent = QSizeF(100, 81);
    copyShortcut.text = "words";
    EXPECT_EQ(selection(true).screenFrame, QRectF(5, 6, 70, 20));
    EXPECT_EQ(search.screenshots, 1);
}

TEST_F(SnapshotCaptureTest, AreSoughtOnAPictureOnlyWhenThatIsWanted) {
    copyShortcut.text = "copied";
    search.seen =
        VisualHighlight{.screenFrame = QRectF(5, 6, 70, 20), .clickPoint = QPointF(40, 16)};

    EXPECT_FALSE(selection(false).hasReliablePlacement);
    EXPECT_EQ(search.screenshots, 0);

    const SelectionSnapshot snapshot = selection(true);
    EXPECT_EQ(snapshot.screenFrame, QRectF(5, 6, 70, 20));
    EXPECT_EQ(snapshot.clickPoint, QPointF(40, 16));
    EXPECT_EQ(snapshot.exactText, "copied");
    EXPECT_TRUE(snapshot.hasReliablePlacement);
    EXPECT_THAT(placeLog().toStdString(),
                testing::EndsWith(
                    "capture: screenshot frame=(5.0, 6.0, 70.0, 20.0) mouse=(300.0, 200.0)\n"));
}

TEST_F(SnapshotCaptureTest, AreNotSoughtOnAPictureWithoutText) {
    search.seen = VisualHighlight{};

    EXPECT_FALSE(selection(true).hasReliablePlacement);
    EXPECT_EQ(search.screenshots, 0);
    EXPECT_THAT(placeLog().toStdString(),
                testing::EndsWith("capture: FALLBACK to mouse anchor (280.0, 193.0, 40.0, 14.0) "
                                  "copiedEmpty=true screenGeometry=true\n"));
}

TEST_F(SnapshotCaptureTest, TakeTheHighlightInsteadOfACopy) {
    highlight(" highlighted ");

    const SelectionSnapshot snapshot = selection();
    EXPECT_EQ(snapshot.text, "highlighted");
    EXPECT_EQ(copyShortcut.copies, 0);
}

class LateSnapshotCaptureTest : public SnapshotCaptureTest {
  protected:
    // A capture whose first questions took all the time that they have.
    [[nodiscard]] Running<SelectionSnapshot> startLate() {
        accessibility.hangs = true;
        const Running<SelectionSnapshot> running(
            captures->snapshots.captureSelection(source, QPointF(1, 2), false, stop.get_token()));
        waitUntilHanging();
        clock.advance(CaptureBudget::captureLimit);
        waitUntil([this] { return copyShortcut.copies == 1; });
        waitUntilHanging();
        return running;
    }
};

TEST_F(LateSnapshotCaptureTest, AreEmptyWhenTheApplicationHangs) {
    const Running<SelectionSnapshot> running = startLate();
    clock.advance(CaptureBudget::accessibilityLimit);

    EXPECT_EQ(running.result().text, "");
    EXPECT_EQ(running.result().clickPoint, QPointF(1, 2));
}

} // namespace
} // namespace vorq
