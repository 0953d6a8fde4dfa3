// Places in applications of a screen with two pixels to a point.

#include "capture/selection/SelectionBounds.h"
#include "doubles/desktop/CaptureDesktop.h"

namespace vorq::desktop {
namespace {

struct ScaledEditor {
    const char* name;
    Application (*open)(DesktopSession&, const QByteArray&);
};

void PrintTo(const ScaledEditor& editor, std::ostream* out) {
    *out << editor.name;
}

// What is started in a session has the environment of the test.
class ScaledSession {
  public:
    ScaledSession() {
        for (const char* variable : variables)
            qputenv(variable, "2");
        m_session = std::make_unique<DesktopSession>(SessionOptions{.screen = screen});
    }
    ScaledSession(const ScaledSession&) = delete;
    ScaledSession& operator=(const ScaledSession&) = delete;
    ~ScaledSession() {
        m_session.reset();
        for (const char* variable : variables)
            qunsetenv(variable);
    }

    [[nodiscard]] DesktopSession& operator*() { return *m_session; }

    static constexpr QSize screen{2400, 1600};

  private:
    static constexpr const char* variables[] = {"QT_SCALE_FACTOR", "GDK_SCALE"};

    std::unique_ptr<DesktopSession> m_session;
};

class ScaledCapture : public testing::TestWithParam<ScaledEditor> {};

TEST_P(ScaledCapture, PlacesAreInPointsOfTheScreen) {
    ScaledSession scaled;
    DesktopSession& session = *scaled;
    const auto accessibility = connected();
    const Application application = GetParam().open(session, "one line");
    const QRectF pixels(session.geometry(application.window));
    const auto frame = [&] {
        std::optional<QRectF> rect;
        DesktopSession::waitUntil("the place", [&] {
            const auto element = accessibility->focusedElement(application.process, {});
            rect = element ? elementAXFrame(*element) : std::nullopt;
            return rect && rect->width() > pixels.width() / 4;
        });
        return *rect;
    };
    const QRectF inPixels = frame();
    EXPECT_TRUE(pixels.adjusted(-4, -4, 4, 4).contains(inPixels));
    EXPECT_GT(inPixels.width(), pixels.width() / 2);

    accessibility->setScreens({{.pixels = {{}, ScaledSession::screen}, .scale = 2}});
    const QRectF inPoints = frame();
    EXPECT_EQ(inPoints, QRectF(inPixels.topLeft() / 2, inPixels.size() / 2));
}

INSTANTIATE_TEST_SUITE_P(, ScaledCapture,
                         testing::Values(ScaledEditor{"mousepad", openMousepad},
                                         ScaledEditor{"texteditor", openTextEditor},
                                         ScaledEditor{"qt6", openTextWindow}),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace vorq::desktop
