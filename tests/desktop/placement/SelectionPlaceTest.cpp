// Where the selections of real applications are said to be, beside where they are drawn.

#include "capture/placement/WindowHighlightSearch.h"
#include "doubles/capture/CaptureFixture.h"
#include "doubles/desktop/CaptureDesktop.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/linux/x11/pixels/X11ScreenCapture.h"
#include "platform/testing/ScriptedAppearance.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace vorq::desktop {
namespace {

const auto selectedText = QStringLiteral("words");
const QByteArray lines = "first line of some text\nalso words of another line\nthird line\n";
const QByteArray field = R"(<textarea autofocus rows=5 cols=40 style="outline:none">first line
also words of another line</textarea>)";
const QByteArray paragraphs = R"(<body contenteditable style="outline:none;margin:8px" autofocus>
<p>first line</p><p>also words of <b>another</b> <a href="x">line</a></p></body>)";

/// One that shows a text whose second line holds the word to select.
struct Place {
    const char* name;
    Application (*open)(DesktopSession&, const QByteArray&);
    QByteArray text;
    /// What it draws behind selected text, as 0xrrggbb.
    std::uint32_t color;
    /// What tells the place, as the log names it.
    const char* step = "capture: AX-";
    /// Of the right one of two screens, on which the window is.
    double scale = 1;
    /// How the application is told; without one by the dots of both screens.
    const char* scaleVariable = nullptr;
};

void PrintTo(const Place& place, std::ostream* out) {
    *out << place.name;
}

Application openAccessibleChromium(DesktopSession& session, const QByteArray& html) {
    return openChromium(session, html, true);
}

// What is started in a session has the environment of the test.
class Scaling {
  public:
    explicit Scaling(const Place& place) : m_variable(place.scaleVariable) {
        if (m_variable) qputenv(m_variable, QByteArray::number(place.scale));
    }
    Scaling(const Scaling&) = delete;
    Scaling& operator=(const Scaling&) = delete;
    ~Scaling() {
        if (m_variable) qunsetenv(m_variable);
    }

  private:
    const char* m_variable;
};

class SelectionPlace : public testing::TestWithParam<Place> {
  protected:
    // What is large has room on the right screen all the same.
    static QSize sizeOfBoth() {
        return GetParam().scale == 1 ? QSize(1280, 900) : QSize(2400, 1600);
    }

    SelectionPlace() {
        const double scale = GetParam().scale;
        const std::vector<PixelScreen> pixels{
            {.pixels = QRect(QPoint(), leftSize), .scale = leftScale},
            {.pixels = rightPixels, .scale = scale}};
        accessibility->setScreens(pixels);
        screen.setScreens(pixels);
        const QRectF leftFrame(QPointF(), QSizeF(leftSize) / leftScale);
        const QSizeF right = QSizeF(rightPixels.size()) / scale;
        const QRectF rightFrame({double(leftSize.width()), leftFrame.height() - right.height()},
                                right);
        screens.change(
            {{.name = "left", .frame = leftFrame, .visibleFrame = leftFrame, .scale = leftScale},
             {.name = "right", .frame = rightFrame, .visibleFrame = rightFrame, .scale = scale}});
        splitScreen();
        if (!GetParam().scaleVariable) setDots(static_cast<int>(96 * scale));
    }

    // Applications see two monitors as well.
    void splitScreen() const {
        const auto monitor = [](const QRect& pixels) {
            return QStringLiteral("%1/300x%2/300+%3+0")
                .arg(pixels.width())
                .arg(pixels.height())
                .arg(pixels.left());
        };
        run("xrandr", "x11-xserver-utils",
            {"--setmonitor", "left", monitor(QRect(QPoint(), leftSize)), "screen"},
            session.environment());
        run("xrandr", "x11-xserver-utils", {"--setmonitor", "right", monitor(rightPixels), "none"},
            session.environment());
    }

    void setDots(int perInch) const {
        const QString resources =
            session.write("dots", "Xft.dpi: " + QByteArray::number(perInch) + "\n");
        run("xrdb", "x11-xserver-utils", {"-merge", resources}, session.environment());
    }

    // By the keyboard, which all of them know.
    void open() {
        application = GetParam().open(session, GetParam().text);
        workspace.launch({.process = application.process, .identifier = "app", .name = "App"});
        workspace.bringToFront(application.process);
        // Keys that come while a program still loads are lost.
        DesktopSession::waitUntil("the selection", [&] {
            session.key({"ctrl+Home", "Down"});
            session.key(QStringList(5, "Right"));
            session.key(QStringList(5, "shift+Right"));
            return session.selection("primary") == selectedText.toUtf8();
        });
        std::optional<QRectF> before;
        DesktopSession::waitUntil("the selection to be drawn", [&] {
            const auto now = drawn();
            return now && std::exchange(before, now) == now;
        });
    }

    // In pixels of the screen.
    [[nodiscard]] std::optional<QRectF> drawn() {
        const auto picture = screen.pictureOf(application.window, {});
        if (!picture) return std::nullopt;
        const auto isColored = [&](const std::uint8_t* pixel) {
            constexpr int tolerance = 3;
            for (unsigned part = 0; part < 3; ++part) {
                const auto wanted = static_cast<int>(GetParam().color >> (8 * part) & 0xffU);
                if (std::abs(pixel[part] - wanted) > tolerance) return false;
            }
            return true;
        };
        QRect box;
        for (int y = 0; y < picture->height; ++y) {
            const std::uint8_t* row = picture->bytes.data() + y * picture->bytesPerRow;
            for (int x = 0; x < picture->width; ++x)
                if (isColored(row + x * picture->bytesPerPixel)) box |= QRect(x, y, 1, 1);
        }
        if (box.isEmpty()) return std::nullopt;
        return QRectF(box.translated(session.geometry(application.window).topLeft()));
    }

    // In screen coordinates.
    [[nodiscard]] QRectF drawnInPoints() {
        const QRectF pixels = drawn().value_or(QRectF());
        const QPointF corner = rightPixels.topLeft();
        const double scale = GetParam().scale;
        const QPointF upperLeft = corner + (pixels.topLeft() - corner) / scale;
        const QSizeF size = pixels.size() / scale;
        const double height = leftSize.height() / leftScale;
        return {{upperLeft.x(), height - upperLeft.y() - size.height()}, size};
    }

    // Under load one reading may take longer than it is given; the user presses the key again.
    [[nodiscard]] SelectionSnapshot placedBy(QPointF mouse) {
        SelectionSnapshot snapshot;
        for (int press = 0; press < 20 && !placeLog().contains(GetParam().step); ++press)
            snapshot = Running<SelectionSnapshot>(captures.snapshots.captureSelection(
                                                      application.process, mouse, true, {}))
                           .result();
        return snapshot;
    }

    [[nodiscard]] QByteArray placeLog() const {
        QFile file(session.home() + "/place.log");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    const QSize leftSize{200, sizeOfBoth().height()};
    const double leftScale = GetParam().scaleVariable ? 1 : GetParam().scale;
    const QRect rightPixels{200, 0, sizeOfBoth().width() - 200, sizeOfBoth().height()};
    Scaling scaling{GetParam()};
    DesktopSession session{{.screen = sizeOfBoth()}};
    SystemClock clock;
    std::unique_ptr<AtSpiAccessibility> accessibility = connected();
    X11PrimarySelection primary;
    X11ScreenCapture screen;
    ScriptedWorkspace workspace;
    ScriptedCopyShortcut copyShortcut;
    ScriptedScreens screens;
    ScriptedAppearance appearance;
    ScriptedDefaults settings;
    PanelShowings showings;
    CaptureLog log{clock, session.home() + "/capture.log", session.home() + "/place.log"};
    ScriptedHighlightSearch blind;
    Captures others{Captures::Ports{clock, *accessibility, primary, workspace, copyShortcut, blind,
                                    screens, showings, log, settings}};
    WindowHighlightSearch search{{clock, others.reader, screen, screens, appearance, log}};
    Captures captures{Captures::Ports{clock, *accessibility, primary, workspace, copyShortcut,
                                      search, screens, showings, log, settings}};
    Application application;
};

TEST_P(SelectionPlace, IsWhereTheSelectionIsDrawn) {
    open();
    const QRectF expected = drawnInPoints();
    const SelectionSnapshot snapshot = placedBy(expected.center());

    EXPECT_TRUE(snapshot.hasReliablePlacement);
    ASSERT_THAT(placeLog().toStdString(), testing::HasSubstr(GetParam().step));
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
