#pragma once

#include "capture/placement/WindowHighlightSearch.h"
#include "doubles/capture/CaptureFixture.h"
#include "doubles/desktop/CaptureDesktop.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/linux/x11/pixels/X11ScreenCapture.h"
#include "platform/testing/ScriptedAppearance.h"

#include <cstdlib>
#include <utility>

namespace vorq::desktop {

/// What is selected.
inline const auto selectedText = QStringLiteral("words");
inline const QByteArray placedLines =
    "first line of some text\nalso words of another line\nthird line\n";

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

inline void PrintTo(const Place& place, std::ostream* out) {
    *out << place.name;
}

/// What is started in a session has the environment of the test.
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

/// Pictures of the screen, before each of which something may happen.
class HookedScreenCapture final : public ScreenCapture {
  public:
    explicit HookedScreenCapture(ScreenCapture& screen) : m_screen(screen) {}

    /// On the thread that takes the picture.
    std::function<void()> onPicture;

    [[nodiscard]] std::expected<std::vector<CapturableWindow>, QString>
    windowsOnScreen(std::stop_token stop) override {
        return m_screen.windowsOnScreen(std::move(stop));
    }
    [[nodiscard]] std::expected<WindowPicture, QString> pictureOf(WindowId window,
                                                                  std::stop_token stop) override {
        if (onPicture) onPicture();
        return m_screen.pictureOf(window, std::move(stop));
    }

  private:
    ScreenCapture& m_screen;
};

/// A desktop of two monitors, with all that finds out where a selection is.
class PlacingDesktop : public testing::Test {
  protected:
    // What is large has room on the right screen all the same.
    [[nodiscard]] QSize sizeOfBoth() const {
        return place.scale == 1 ? QSize(1280, 900) : QSize(2400, 1600);
    }

    explicit PlacingDesktop(Place shown) : place(std::move(shown)) {
        const double scale = place.scale;
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
        if (!place.scaleVariable) setDots(static_cast<int>(96 * scale));
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
        application = place.open(session, place.text);
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
                const auto wanted = static_cast<int>(place.color >> (8 * part) & 0xffU);
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
        const double scale = place.scale;
        const QPointF upperLeft = corner + (pixels.topLeft() - corner) / scale;
        const QSizeF size = pixels.size() / scale;
        const double height = leftSize.height() / leftScale;
        return {{upperLeft.x(), height - upperLeft.y() - size.height()}, size};
    }

    // Under load one reading may take longer than it is given; the user presses the key again.
    [[nodiscard]] SelectionSnapshot placedBy(QPointF mouse) {
        SelectionSnapshot snapshot;
        for (int press = 0; press < 20 && !placeLog().contains(place.step); ++press)
            snapshot = start(mouse).result();
        return snapshot;
    }

    [[nodiscard]] Running<SelectionSnapshot> start(QPointF mouse) {
        return Running<SelectionSnapshot>(
            captures.snapshots.captureSelection(application.process, mouse, true, {}));
    }

    [[nodiscard]] QByteArray placeLog() const {
        QFile file(session.home() + "/place.log");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    const Place place;
    const QSize leftSize{200, sizeOfBoth().height()};
    const double leftScale = place.scaleVariable ? 1 : place.scale;
    const QRect rightPixels{200, 0, sizeOfBoth().width() - 200, sizeOfBoth().height()};
    Scaling scaling{place};
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
    HookedScreenCapture pictures{screen};
    WindowHighlightSearch search{{clock, others.reader, pictures, screens, appearance, log}};
    Captures captures{Captures::Ports{clock, *accessibility, primary, workspace, copyShortcut,
                                      search, screens, showings, log, settings}};
    Application application;
};

} // namespace vorq::desktop
