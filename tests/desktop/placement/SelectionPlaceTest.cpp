// Where the selections of real applications are said to be, beside where they are drawn.

#include "doubles/desktop/ForeignToolkits.h"
#include "doubles/desktop/PlacingDesktop.h"

#include <algorithm>

namespace vorq::desktop {
namespace {

const QByteArray& lines = placedLines;
const QByteArray field = R"(<textarea autofocus rows=5 cols=40 style="outline:none">first line
also words of another line</textarea>)";
const QByteArray paragraphs = R"(<body contenteditable style="outline:none;margin:8px" autofocus>
<p>first line</p><p>also words of <b>another</b> <a href="x">line</a></p></body>)";

Application openAccessibleChromium(DesktopSession& session, const QByteArray& html) {
    return openChromium(session, html, true);
}

Application openSilentChromium(DesktopSession& session, const QByteArray& html) {
    return openChromium(session, html, false);
}

class SelectionPlace : public PlacingDesktop, public testing::WithParamInterface<Place> {
  protected:
    SelectionPlace() : PlacingDesktop(GetParam()) {}
};

TEST_P(SelectionPlace, IsWhereTheSelectionIsDrawn) {
    open();
    const QRectF expected = drawnInPoints();
    const SelectionSnapshot snapshot = placedBy(expected.center());

    EXPECT_TRUE(snapshot.hasReliablePlacement);
    ASSERT_THAT(placeLog().toStdString(), testing::HasSubstr(place.step));
    EXPECT_EQ(snapshot.text, selectedText);
    EXPECT_NEAR(snapshot.screenFrame.left(), expected.left(), 4);
    EXPECT_NEAR(snapshot.screenFrame.right(), expected.right(), 4);
    EXPECT_NEAR(snapshot.screenFrame.top(), expected.top(), 4); // its lower edge
    EXPECT_NEAR(snapshot.screenFrame.height(), std::clamp(expected.height(), 12.0, 24.0), 4);
}

constexpr auto seen = "capture: screenshot";

const std::vector<Place> places{
    Place{.name = "mousepad", .open = openMousepad, .text = lines, .color = 0x3584e4},
    Place{.name = "mousepad2",
          .open = openMousepad,
          .text = lines,
          .color = 0x3584e4,
          .scale = 2,
          .scaleVariable = "GDK_SCALE"},
    Place{.name = "texteditor",
          .open = openTextEditor,
          .text = lines,
          .color = 0xc0d8f4,
          .step = seen},
    Place{.name = "featherpad",
          .open = openFeatherPad,
          .text = lines,
          .color = 0x308cc6,
          .step = seen},
    Place{.name = "qt6", .open = openTextWindow, .text = lines, .color = 0x308cc6, .step = seen},
    Place{.name = "qt6large",
          .open = openTextWindow,
          .text = lines,
          .color = 0x308cc6,
          .step = seen,
          .scale = 1.5,
          .scaleVariable = "QT_SCALE_FACTOR"},
    Place{.name = "writer", .open = openWriter, .text = lines, .color = 0xcde1f8},
    Place{.name = "firefox", .open = openFirefox, .text = field, .color = 0x3584e4},
    Place{.name = "firefoxpage", .open = openFirefox, .text = paragraphs, .color = 0x3584e4},
    Place{.name = "chromium", .open = openAccessibleChromium, .text = field, .color = 0x3367d1},
    // As it is without a screen reader: it tells accessibility nothing of its pages.
    Place{.name = "silent_chromium",
          .open = openSilentChromium,
          .text = field,
          .color = 0x3367d1,
          .step = seen},
    // It tells accessibility nothing at all.
    Place{.name = "swing", .open = openSwing, .text = lines, .color = 0xb8cfe5, .step = seen},
    // As a session tells all of them that has one and a half pixels to a point.
    Place{.name = "dense_mousepad",
          .open = openMousepad,
          .text = lines,
          .color = 0x3584e4,
          .scale = 1.5},
    Place{.name = "dense_texteditor",
          .open = openTextEditor,
          .text = lines,
          .color = 0xc0d8f4,
          .step = seen,
          .scale = 1.5},
    Place{.name = "dense_featherpad",
          .open = openFeatherPad,
          .text = lines,
          .color = 0x308cc6,
          .step = seen,
          .scale = 1.5},
    Place{.name = "dense_qt6",
          .open = openTextWindow,
          .text = lines,
          .color = 0x308cc6,
          .step = seen,
          .scale = 1.5},
    Place{
        .name = "dense_writer", .open = openWriter, .text = lines, .color = 0xcde1f8, .scale = 1.5},
    Place{.name = "dense_firefox",
          .open = openFirefox,
          .text = field,
          .color = 0x3584e4,
          .scale = 1.5},
    Place{.name = "dense_chromium",
          .open = openAccessibleChromium,
          .text = field,
          .color = 0x3367d1,
          .scale = 1.5}};

INSTANTIATE_TEST_SUITE_P(, SelectionPlace, testing::ValuesIn(places),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace vorq::desktop
