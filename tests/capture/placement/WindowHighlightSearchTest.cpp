#include "capture/placement/WindowHighlightSearch.h"

#include "doubles/capture/CaptureFixture.h"
#include "doubles/capture/PaintedPicture.h"
#include "platform/testing/ScriptedAppearance.h"
#include "platform/testing/ScriptedScreenCapture.h"

namespace vorq {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

// A screen of 1000 by 800, and on it a window of 400 by 300 whose upper left corner is at 100, 50.
class WindowHighlightSearchTest : public CaptureTest {
  protected:
    static constexpr WindowId window = 7;

    WindowHighlightSearchTest() {
        capture.windows = {{.window = window, .process = source, .frame = {100, 50, 400, 300}}};
        place(focus(), {100, 50, 400, 300});
    }

    static void place(ScriptedElement& element, const QRectF& frame) {
        element.origin = frame.topLeft();
        element.extent = frame.size();
    }

    void show(const PaintedPicture& picture, WindowId of = window) {
        const auto kept = std::make_shared<const PaintedPicture>(picture);
        const PixelBuffer buffer = kept->buffer();
        capture.pictures[of] = {.bytes = buffer.bytes,
                                .width = buffer.width,
                                .height = buffer.height,
                                .bytesPerRow = buffer.bytesPerRow,
                                .bytesPerPixel = buffer.bytesPerPixel,
                                .memory = kept};
    }

    // Of the window's own pixels.
    static PaintedPicture selectionAt(const QRectF& pixels, QSize size = {400, 300}) {
        PaintedPicture picture(size.width(), size.height());
        picture.paint(pixels, PaintedPicture::paleBlue);
        return picture;
    }

    [[nodiscard]] Running<std::optional<VisualHighlight>>
    start(std::optional<ProcessId> of = source) {
        return Running<std::optional<VisualHighlight>>(
            visual->highlightPlacementFromScreenshot(of, mouse, stop.get_token()));
    }
    [[nodiscard]] std::optional<VisualHighlight> seen() { return start().result(); }
    [[nodiscard]] std::string lines() const { return placeLog().toStdString(); }

    ScriptedScreenCapture capture;
    ScriptedAppearance appearance;
    // In the middle of the window.
    QPointF mouse{300, 600};
    std::unique_ptr<WindowHighlightSearch> visual =
        std::make_unique<WindowHighlightSearch>(WindowHighlightSearch::Services{
            clock, captures->reader, capture, screens, appearance, log});
};

TEST_F(WindowHighlightSearchTest, FindsTheSelectionNearTheMouse) {
    show(selectionAt({160, 140, 81, 21}));

    const auto highlight = seen();
    ASSERT_TRUE(highlight);
    EXPECT_EQ(highlight->screenFrame, QRectF(260, 590, 80, 20));
    EXPECT_EQ(highlight->clickPoint, QPointF(300, 600));
    EXPECT_EQ(lines(), "2026-01-01 00:00:00 +0000 shot: blob hits=1701/1701 r=48 "
                       "box=(160.0, 140.0, 80.0, 20.0)\n"
                       "2026-01-01 00:00:00 +0000 shot: tintAX=(260.0, 190.0, 80.0, 20.0) "
                       "cocoa=(260.0, 590.0, 80.0, 20.0) window=(100.0, 50.0, 400.0, 300.0)\n");
}

TEST_F(WindowHighlightSearchTest, BoundsTheHeightOfTheStripAndNotItsWidth) {
    show(selectionAt({190, 130, 10, 41}));

    const auto highlight = seen();
    ASSERT_TRUE(highlight);
    EXPECT_EQ(highlight->screenFrame, QRectF(290, 580, 9, 24));
    EXPECT_EQ(highlight->clickPoint, QPointF(294.5, 600));
}

TEST_F(WindowHighlightSearchTest, RefusesASpeck) {
    show(selectionAt({190, 140, 8, 21}));

    EXPECT_FALSE(seen());
    EXPECT_THAT(lines(), EndsWith("shot: tint box too small (290.0, 590.0, 7.0, 20.0)\n"));
}

TEST_F(WindowHighlightSearchTest, CountsPointsOnAScreenWithSeveralPixelsToAPoint) {
    show(selectionAt({320, 280, 162, 42}, {800, 600}));

    const auto highlight = seen();
    ASSERT_TRUE(highlight);
    EXPECT_EQ(highlight->screenFrame, QRectF(260, 590, 80, 20));
}

TEST_F(WindowHighlightSearchTest, LooksWhereTheFocusIsFirst) {
    place(focus(), {100, 50, 400, 100});
    PaintedPicture picture = selectionAt({150, 60, 81, 21});
    picture.paint({150, 140, 81, 21}, PaintedPicture::paleBlue);
    show(picture);

    const auto highlight = seen();
    ASSERT_TRUE(highlight);
    EXPECT_EQ(highlight->screenFrame, QRectF(250, 670, 80, 20));
}

TEST_F(WindowHighlightSearchTest, LooksAtTheWholeWindowNext) {
    place(focus(), {100, 50, 400, 100});
    show(selectionAt({150, 140, 81, 21}));

    EXPECT_TRUE(seen());
}

TEST_F(WindowHighlightSearchTest, LooksAtTheWholeWindowWhereTheFocusIsElsewhere) {
    place(focus(), {600, 500, 100, 100});
    show(selectionAt({150, 140, 81, 21}));

    EXPECT_TRUE(seen());
}

TEST_F(WindowHighlightSearchTest, LooksInTheFocusedWindowWithoutAFocusedElement) {
    accessibility.focusedName.reset();
    accessibility.focusedWindowName = "window";
    place(accessibility.element("window"), {100, 50, 400, 300});
    show(selectionAt({150, 140, 81, 21}));

    EXPECT_TRUE(seen());
}

TEST_F(WindowHighlightSearchTest, NeedsRoomToLookIn) {
    place(focus(), {100, 50, 400, 39});
    EXPECT_FALSE(seen());
    EXPECT_THAT(lines(), EndsWith("shot: no search area (searchAX=(100.0, 50.0, 400.0, 39.0))\n"));

    accessibility.focusedName.reset();
    capture.windows->front().frame = {100, 50, 39, 300};
    EXPECT_FALSE(seen());
    EXPECT_THAT(lines(), EndsWith("shot: no search area (searchAX=(100.0, 50.0, 39.0, 300.0))\n"));
    EXPECT_THAT(capture.captured, testing::IsEmpty());
}

TEST_F(WindowHighlightSearchTest, LooksInTheWindowOfAnApplicationThatTellsNothing) {
    accessibility.focusedName.reset();
    show(selectionAt({150, 140, 81, 21}));
    EXPECT_TRUE(seen());

    capture.windows->clear();
    EXPECT_FALSE(seen());
    EXPECT_THAT(lines(), EndsWith("shot: no search area (searchAX=nil)\n"));
}

TEST_F(WindowHighlightSearchTest, FindsTheSelectionBelowABroadBarOfItsTint) {
    PaintedPicture picture = selectionAt({0, 0, 400, 60});
    picture.paint({160, 140, 81, 21}, PaintedPicture::paleBlue);
    show(picture);

    const auto highlight = seen();
    ASSERT_TRUE(highlight);
    EXPECT_EQ(highlight->screenFrame, QRectF(260, 590, 80, 20));
}

TEST_F(WindowHighlightSearchTest, GrowsToTheNextRadiusOnly) {
    // Out of reach of 48 points, and a bar in reach of 160.
    PaintedPicture picture = selectionAt({160, 215, 81, 11});
    picture.paint({0, 0, 400, 50}, PaintedPicture::paleBlue);
    show(picture);

    const auto highlight = seen();
    ASSERT_TRUE(highlight);
    EXPECT_EQ(highlight->screenFrame.width(), 80);
    EXPECT_THAT(lines(), HasSubstr(" r=96 box=(160.0, 215.0, 80.0, 10.0)"));
}

TEST_F(WindowHighlightSearchTest, SaysWhatItDidNotFind) {
    show(PaintedPicture(400, 300));

    EXPECT_FALSE(seen());
    EXPECT_THAT(lines(), EndsWith("shot: no selection tint in window=(100.0, 50.0, 400.0, 300.0) "
                                  "search=(0.0, 0.0, 400.0, 300.0) mouseLocal=(200.0, 150.0)\n"));
}

TEST_F(WindowHighlightSearchTest, TellsOfABand) {
    // The first radius that reaches both finds them too high, and so do the others.
    PaintedPicture picture = selectionAt({100, 10, 200, 10});
    picture.paint({100, 170, 200, 10}, PaintedPicture::paleBlue);
    show(picture);
    mouse = {10, 710};

    EXPECT_TRUE(seen());
    EXPECT_THAT(lines(), HasSubstr("shot: band fallback box=(100.0, "));
}

TEST_F(WindowHighlightSearchTest, TakesTheLargestWindowOfTheProcessAndTheUppermostOfEquals) {
    const QRectF frame(100, 50, 400, 300);
    capture.windows = {{.window = 1, .process = source, .frame = {100, 50, 50, 50}},
                       {.window = 2, .process = 43, .frame = {0, 0, 900, 700}},
                       {.window = 3, .process = source, .frame = frame},
                       {.window = 4, .process = source, .frame = frame}};
    show(selectionAt({150, 140, 81, 21}), 3);

    EXPECT_TRUE(seen());
    EXPECT_THAT(capture.captured, testing::ElementsAre(3U));
}

TEST_F(WindowHighlightSearchTest, NeverLooksAtOurOwnWindows) {
    const auto own = static_cast<ProcessId>(QCoreApplication::applicationPid());
    capture.windows = {{.window = window, .process = own, .frame = {100, 50, 400, 300}}};

    EXPECT_FALSE(start(own).result());
    EXPECT_FALSE(start(std::nullopt).result());
    EXPECT_THAT(lines(), HasSubstr("shot: no target window for pid=" + std::to_string(own)));
    EXPECT_THAT(lines(), EndsWith("shot: no target window for pid=-1\n"));
    EXPECT_THAT(capture.captured, testing::IsEmpty());
}

TEST_F(WindowHighlightSearchTest, SaysWhatFailed) {
    EXPECT_FALSE(seen());
    EXPECT_THAT(lines(), EndsWith("shot: captureImage failed The window is gone.\n"));

    capture.windows = std::unexpected("No X server answers.");
    EXPECT_FALSE(seen());
    EXPECT_THAT(lines(), EndsWith("shot: SCShareableContent failed No X server answers.\n"));
}

TEST_F(WindowHighlightSearchTest, AsksNobodyWherePicturesAreNotTaken) {
    capture.support = std::unexpected("Wayland shows no program the windows of another.");

    EXPECT_FALSE(seen());
    EXPECT_EQ(lines(), "2026-01-01 00:00:00 +0000 shot: BLOCKED — Screen Recording not granted for "
                       "this binary\n");
    EXPECT_THAT(capture.captured, testing::IsEmpty());
}

TEST_F(WindowHighlightSearchTest, KnowsTheColoursOfTheDesktop) {
    // Far from each of the blues that are known anyway.
    const TintColor violet{.red = 0.62, .green = 0.1, .blue = 0.75};
    PaintedPicture picture(400, 300);
    picture.paint({150, 140, 81, 21}, violet);
    show(picture);
    EXPECT_FALSE(seen());

    const LookColor told{.red = violet.red, .green = violet.green, .blue = violet.blue};
    appearance.wanted.selection = told;
    EXPECT_TRUE(seen());
    appearance.wanted = {.accent = told};
    EXPECT_TRUE(seen());
}

TEST_F(WindowHighlightSearchTest, GivesUpAWindowSystemThatDoesNotAnswer) {
    capture.hangs = true;
    const auto running = start();
    waitUntil([&] { return capture.hanging > 0; });
    clock.advance(WindowHighlightSearch::pictureLimit);

    EXPECT_FALSE(running.result());
    EXPECT_THAT(lines(), EndsWith("shot: captureImage failed The window system does not answer "
                                  "in time.\n"));
}

TEST_F(WindowHighlightSearchTest, LooksInTheWindowOfAnApplicationThatDoesNotAnswerInTime) {
    show(selectionAt({150, 140, 81, 21}));
    accessibility.hangs = true;
    const auto running = start();
    waitUntilHanging();
    clock.advance(CaptureBudget::accessibilityLimit);

    EXPECT_TRUE(running.result());
}

TEST_F(WindowHighlightSearchTest, EndsWhenItIsStopped) {
    capture.hangs = true;
    const auto running = start();
    waitUntil([&] { return capture.hanging > 0; });
    stop.request_stop();

    EXPECT_FALSE(running.result());
}

TEST_F(WindowHighlightSearchTest, MayGoWhileItLooks) {
    capture.hangs = true;
    const auto running = start();
    waitUntil([&] { return capture.hanging > 0; });
    visual.reset();

    EXPECT_FALSE(running.result());
    EXPECT_EQ(capture.hanging, 0);
}

} // namespace
} // namespace vorq
