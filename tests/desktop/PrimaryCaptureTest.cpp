// The PRIMARY selection of real programs, well-behaved and not.

#include "desktop/CaptureDesktop.h"

#include <future>
#include <stop_token>

namespace vorq::desktop {
namespace {

using namespace std::chrono_literals;

class PrimaryCapture : public testing::Test {
  protected:
    [[nodiscard]] std::optional<QString> highlightOf(std::int32_t process) {
        const auto highlight = primary.highlightOf(process, {});
        return highlight ? std::optional(highlight->text) : std::nullopt;
    }

    // A read that is stopped only when the event loop of this thread has gone on for a while.
    [[nodiscard]] std::optional<PrimarySelection::Highlight>
    readUntilStopped(std::int32_t process, const DesktopSession::Condition& stillHolds) {
        std::stop_source stop;
        std::future<std::optional<PrimarySelection::Highlight>> read = std::async(
            std::launch::async, [&] { return primary.highlightOf(process, stop.get_token()); });
        int turns = 0;
        DesktopSession::waitUntil("the loop to turn", [&] { return ++turns > 10; });
        EXPECT_NE(read.wait_for(0s), std::future_status::ready);
        stop.request_stop();
        EXPECT_EQ(read.wait_for(20s), std::future_status::ready);
        EXPECT_TRUE(stillHolds());
        return read.get();
    }

    DesktopSession session;
    X11PrimarySelection primary;
};

TEST_F(PrimaryCapture, ReadsWhatIsHighlightedInATerminal) {
    session.own("clipboard", "of the user");
    const Application terminal = openXterm(session, "Grüße 😀\n");
    const QRect window = session.geometry(terminal.window);
    const QPoint firstLine = window.topLeft() + QPoint(6, 8);
    DesktopSession::waitUntil("the highlight", [&] {
        session.click(firstLine, 3);
        return highlightOf(terminal.process) == "Grüße 😀\n";
    });

    EXPECT_EQ(session.selection("clipboard"), "of the user");
    EXPECT_EQ(session.selection("primary"), "Grüße 😀\n");
}

TEST_F(PrimaryCapture, TellsOneHighlightFromTheNext) {
    const Application terminal = openXterm(session, "first line\nsecond line\n");
    const QPoint firstLine = session.geometry(terminal.window).topLeft() + QPoint(6, 8);
    DesktopSession::waitUntil("the highlight", [&] {
        session.click(firstLine, 3);
        return highlightOf(terminal.process) == "first line\n";
    });
    const auto first = primary.highlightOf(terminal.process, {});
    const auto again = primary.highlightOf(terminal.process, {});
    ASSERT_TRUE(first && again);
    EXPECT_NE(first->ownership.timestamp, 0U);
    EXPECT_EQ(first->ownership, again->ownership);

    session.click(firstLine, 1);
    DesktopSession::waitUntil("another highlight", [&] {
        session.click(firstLine, 2);
        return highlightOf(terminal.process) == "first";
    });
    const auto second = primary.highlightOf(terminal.process, {});
    ASSERT_TRUE(second);
    EXPECT_NE(second->ownership, first->ownership);
}

TEST_F(PrimaryCapture, LeavesTheHighlightOfAnotherProcess) {
    const Application terminal = openXterm(session, "words\n");
    session.own("primary", "of another");

    EXPECT_EQ(highlightOf(terminal.process), std::nullopt);
    EXPECT_EQ(session.selection("primary"), "of another");
}

TEST_F(PrimaryCapture, GivesNothingWithoutAnOwner) {
    EXPECT_EQ(highlightOf(1), std::nullopt);
}

TEST_F(PrimaryCapture, TakesALongTextInPieces) {
    const QByteArray text = QByteArray("Zeile mit Umlaut ä\n").repeated(100'000);
    const DesktopProgram& owner = session.own("primary", text);

    EXPECT_EQ(highlightOf(owner.process()), QString::fromUtf8(text));
}

TEST_F(PrimaryCapture, RefusesATextOfFiftyMegabytes) {
    const DesktopProgram& owner =
        session.own("primary", QByteArray(qsizetype{50} * 1024 * 1024, 'x'));

    EXPECT_EQ(highlightOf(owner.process()), std::nullopt);
    // What came too late does no harm to the next read.
    const DesktopProgram& next = session.own("primary", "short");
    EXPECT_EQ(highlightOf(next.process()), "short");
}

TEST_F(PrimaryCapture, GivesUpAnOwnerThatStandsStill) {
    const DesktopProgram& owner = session.own("primary", "words");
    const Stopped stopped(owner.process());
    DesktopSession::waitUntil("the owner to stand still", [&] { return stopped.holds(); });

    EXPECT_EQ(readUntilStopped(owner.process(), [&] { return stopped.holds(); }), std::nullopt);
}

TEST_F(PrimaryCapture, GivesUpAnOwnerThatDiesWhileItIsAsked) {
    DesktopProgram& owner = session.own("primary", "words");
    const Stopped stopped(owner.process());
    DesktopSession::waitUntil("the owner to stand still", [&] { return stopped.holds(); });
    std::stop_source stop;
    auto read = std::async(std::launch::async,
                           [&] { return primary.highlightOf(owner.process(), stop.get_token()); });
    owner.kill();
    stop.request_stop();

    EXPECT_EQ(read.get(), std::nullopt);
    EXPECT_EQ(highlightOf(owner.process()), std::nullopt);
}

TEST(PrimaryCaptureWithoutDisplay, GivesNothing) {
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4242");
    X11PrimarySelection primary;
    EXPECT_EQ(primary.highlightOf(1, {}), std::nullopt);
    qputenv("DISPLAY", display);
}

} // namespace
} // namespace vorq::desktop
