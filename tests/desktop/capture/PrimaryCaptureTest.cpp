// The PRIMARY selection of real programs, well-behaved and not.

#include "doubles/desktop/CaptureDesktop.h"
#include "platform/linux/x11/X11Reply.h"

#include <array>
#include <cstring>
#include <future>
#include <stop_token>
#include <thread>
#include <unistd.h>
#include <xcb/xcb.h>

namespace vorq::desktop {
namespace {

using namespace std::chrono_literals;

enum class Oddity { Stalls, NeverEnds, GivesNothing, GivesNoText };

// An owner of PRIMARY in this process that hands out what makes no sense, on a thread of its own.
class OddOwner {
  public:
    explicit OddOwner(Oddity oddity) : m_oddity(oddity) {
        m_window = xcb_generate_id(m_x11.get());
        xcb_create_window(m_x11.get(), XCB_COPY_FROM_PARENT, m_window, m_x11.root(), -1, -1, 1, 1,
                          0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(m_x11.get(), m_window, XCB_ATOM_PRIMARY, XCB_CURRENT_TIME);
        // Makes sure that it is done.
        (void)m_x11.atom("PRIMARY");
        m_thread = std::jthread([this](const std::stop_token& stop) { serve(stop); });
    }

    [[nodiscard]] static std::int32_t process() { return ::getpid(); }

  private:
    using Event = X11Reply<xcb_generic_event_t>;

    void serve(const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            while (const Event event{xcb_poll_for_event(m_x11.get())})
                answer(*event);
            xcb_flush(m_x11.get());
            std::this_thread::sleep_for(1ms);
        }
    }
    void answer(const xcb_generic_event_t& event) {
        const auto kind = event.response_type & 0x7f;
        if (kind == XCB_SELECTION_REQUEST)
            begin(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        if (kind != XCB_PROPERTY_NOTIFY || m_oddity != Oddity::NeverEnds) return;
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.state == XCB_PROPERTY_DELETE)
            put(change.window, change.atom, m_x11.atom("UTF8_STRING"), QByteArray(60'000, 'x'));
    }
    void begin(const xcb_selection_request_event_t& request) {
        const std::uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_x11.get(), request.requestor, XCB_CW_EVENT_MASK, &changes);
        if (m_oddity == Oddity::Stalls || m_oddity == Oddity::NeverEnds)
            put(request.requestor, request.property, m_x11.atom("INCR"), QByteArray("\0\1\0\0", 4));
        if (m_oddity == Oddity::GivesNoText)
            put(request.requestor, request.property, m_x11.atom("UTF8_STRING"),
                QByteArray("a\xff\xc3\0\xf0\x9f z", 8));
        const xcb_selection_notify_event_t told{.response_type = XCB_SELECTION_NOTIFY,
                                                .pad0 = 0,
                                                .sequence = 0,
                                                .time = request.time,
                                                .requestor = request.requestor,
                                                .selection = request.selection,
                                                .target = request.target,
                                                .property = request.property};
        std::array<char, 32> raw{};
        std::memcpy(raw.data(), &told, sizeof told);
        xcb_send_event(m_x11.get(), 0, request.requestor, 0, raw.data());
    }
    void put(std::uint32_t window, std::uint32_t property, std::uint32_t type,
             const QByteArray& bytes) {
        xcb_change_property(m_x11.get(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                            static_cast<std::uint32_t>(bytes.size()), bytes.constData());
    }

    Oddity m_oddity;
    X11Connection m_x11;
    X11Connection::Window m_window = 0;
    std::jthread m_thread;
};

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

TEST_F(PrimaryCapture, GivesUpPiecesThatStopComing) {
    const OddOwner owner(Oddity::Stalls);
    EXPECT_EQ(readUntilStopped(OddOwner::process(), [] { return true; }), std::nullopt);
}

TEST_F(PrimaryCapture, GivesUpPiecesThatNeverEnd) {
    const OddOwner owner(Oddity::NeverEnds);
    EXPECT_EQ(highlightOf(OddOwner::process()), std::nullopt);
}

TEST_F(PrimaryCapture, TakesWhatIsNotThereForNothing) {
    const OddOwner owner(Oddity::GivesNothing);
    EXPECT_EQ(highlightOf(OddOwner::process()).value_or(""), "");
}

TEST_F(PrimaryCapture, SurvivesWhatIsNoText) {
    const OddOwner owner(Oddity::GivesNoText);
    const QString text = highlightOf(OddOwner::process()).value_or("");
    EXPECT_TRUE(text.startsWith("a\uFFFD"));
    EXPECT_TRUE(text.endsWith(" z"));
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
