// Where a selection is while its application does not answer, or goes.

#include "doubles/desktop/PlacingDesktop.h"

#include <QElapsedTimer>
#include <QTimer>

#include <csignal>
#include <thread>

namespace vorq::desktop {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

/// Counts the turns of the main thread, ten milliseconds apart.
class Ticks {
  public:
    Ticks() {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            m_longest = std::max(m_longest, m_since.restart());
            ++m_count;
        });
        m_since.start();
        m_timer.start(10);
    }
    [[nodiscard]] int count() const { return m_count; }
    /// The longest time that the thread was held, in milliseconds.
    [[nodiscard]] qint64 longest() const { return m_longest; }

  private:
    QTimer m_timer;
    QElapsedTimer m_since;
    qint64 m_longest = 0;
    int m_count = 0;
};

class HangingPlace : public PlacingDesktop {
  protected:
    // One whose selection accessibility tells the place of, and one where it is sought.
    static inline const Place told{
        .name = "mousepad", .open = openMousepad, .text = placedLines, .color = 0x3584e4};
    static inline const Place sought{.name = "featherpad",
                                     .open = openFeatherPad,
                                     .text = placedLines,
                                     .color = 0x308cc6,
                                     .step = "capture: screenshot"};

    explicit HangingPlace(const Place& shown = told) : PlacingDesktop(shown) { open(); }

    const QPointF mouse = drawnInPoints().center();
};

class ClosingPlace : public HangingPlace {
  protected:
    ClosingPlace() : HangingPlace(sought) {}
};

TEST_F(HangingPlace, IsTheMouseWhileTheApplicationStandsStill) {
    const Stopped stopped(application.process);
    DesktopSession::waitUntil("it to stand still", [&] { return stopped.holds(); });
    const Ticks ticks;
    QElapsedTimer elapsed;
    elapsed.start();
    const SelectionSnapshot snapshot = start(mouse).result();

    EXPECT_TRUE(stopped.holds());
    EXPECT_FALSE(snapshot.hasReliablePlacement);
    EXPECT_EQ(snapshot.clickPoint, mouse);
    EXPECT_LT(elapsed.elapsed(), 3000);
    EXPECT_GT(ticks.count(), 3);
    EXPECT_LT(ticks.longest(), 250);
    EXPECT_THAT(placeLog().toStdString(), HasSubstr("capture: FALLBACK to mouse anchor"));
}

TEST_F(HangingPlace, IsKnownAgainOnceTheApplicationAnswers) {
    auto stopped = std::make_unique<Stopped>(application.process);
    DesktopSession::waitUntil("it to stand still", [&] { return stopped->holds(); });
    QTimer::singleShot(200ms, [&stopped] { stopped.reset(); });
    // Whether or not it is known in time.
    const SelectionSnapshot early = start(mouse).result();
    EXPECT_TRUE(early.hasReliablePlacement || early.clickPoint == mouse);
    DesktopSession::waitUntil("it to go on", [&] { return !stopped; });

    SelectionSnapshot snapshot;
    for (int press = 0; press < 20 && !snapshot.hasReliablePlacement; ++press)
        snapshot = start(mouse).result();
    EXPECT_TRUE(snapshot.hasReliablePlacement);
    EXPECT_EQ(snapshot.text, selectedText);
}

TEST_F(ClosingPlace, IsTheMouseWhereTheWindowClosesMeanwhile) {
    copyShortcut.text = selectedText;
    pictures.onPicture = [this] {
        ::kill(application.process, SIGKILL);
        X11ScreenCapture others;
        const auto isThere = [&] {
            const auto all = others.windowsOnScreen({});
            return all && std::ranges::any_of(*all, [&](const CapturableWindow& each) {
                       return each.window == application.window;
                   });
        };
        while (isThere())
            std::this_thread::sleep_for(5ms);
    };
    const SelectionSnapshot snapshot = start(mouse).result();

    EXPECT_FALSE(snapshot.hasReliablePlacement);
    EXPECT_EQ(snapshot.clickPoint, mouse);
    EXPECT_EQ(snapshot.text, selectedText);
    EXPECT_THAT(placeLog().toStdString(),
                HasSubstr("shot: captureImage failed The window is gone."));
    // The connection to the X server goes on.
    EXPECT_TRUE(screen.windowsOnScreen({}));
}

} // namespace
} // namespace vorq::desktop
