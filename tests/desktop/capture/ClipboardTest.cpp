// The clipboard of a desktop, with owners well-behaved and not.

#include "doubles/desktop/Applications.h"
#include "doubles/desktop/ClipboardDesktop.h"
#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/X11SelectionRequest.h"
#include "platform/linux/x11/copying/X11Pasteboard.h"

#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstring>
#include <thread>
#include <unistd.h>
#include <xcb/xcb.h>

namespace vorq::desktop {
namespace {

using namespace std::chrono_literals;

class ClipboardTest : public testing::Test {
  protected:
    [[nodiscard]] Pasteboard::Contents contents() { return awaited(pasteboard.contents({})); }
    [[nodiscard]] PasteboardContents held() {
        return contents().value_or(PasteboardContents{clipboardForm("could not be read", {})});
    }

    // Reads until the limit.
    [[nodiscard]] Pasteboard::Contents contentsWithin(std::chrono::milliseconds limit) {
        std::stop_source stop;
        const std::jthread timer([stop, limit]() mutable {
            std::this_thread::sleep_for(limit);
            stop.request_stop();
        });
        return awaited(pasteboard.contents(stop.get_token()));
    }

    // Waits until the pasteboard knows that the process was the last to write.
    void waitForWriter(std::optional<ProcessId> process) {
        DesktopSession::waitUntil("the write to be seen",
                                  [&] { return pasteboard.lastChange().writer == process; });
    }

    // Another program fills the clipboard.
    DesktopProgram& fill(const QByteArray& text) {
        DesktopProgram& owner = session.own("clipboard", text);
        waitForWriter(static_cast<ProcessId>(owner.process()));
        return owner;
    }

    // Writes over whatever is there.
    static bool write(Pasteboard& into, const PasteboardContents& what) {
        return awaited(into.write(what, into.lastChange().count)).has_value();
    }

    static PasteboardContents manyForms() {
        PasteboardContents many;
        for (int index = 0; index < 200; ++index)
            many.push_back(clipboardForm("vnd.form-" + QByteArray::number(index), "bytes"));
        return many;
    }

    // One form as a program of others reads it.
    [[nodiscard]] QByteArray readByOthers(const QString& name) {
        return run("timeout", "coreutils",
                   {"10", "xclip", "-o", "-selection", "clipboard", "-t", name},
                   session.environment());
    }

    DesktopSession session;
    X11Pasteboard pasteboard;
};

TEST_F(ClipboardTest, GivesBackEveryFormWhenItsOwnerIsGone) {
    auto user = std::make_unique<X11Pasteboard>();
    ASSERT_TRUE(write(*user, richContents()));
    ASSERT_EQ(held(), richContents());

    const DesktopProgram& application = fill("copied");
    ASSERT_EQ(session.selection("clipboard"), "copied");
    ASSERT_TRUE(write(pasteboard, richContents()));
    user.reset();

    EXPECT_EQ(held(), richContents());
    EXPECT_EQ(readByOthers("image/png"), richContents()[3].bytes);
    EXPECT_EQ(readByOthers("text/html"), "<b>of the user</b>");
    EXPECT_NE(pasteboard.lastChange().writer, application.process());
}

TEST_F(ClipboardTest, TakesAndHandsOutALongTextInPieces) {
    const QByteArray text = QByteArray("Zeile mit Umlaut ä\n").repeated(100'000);
    DesktopProgram& owner = fill(text);
    const PasteboardContents before = held();
    ASSERT_TRUE(write(pasteboard, before));
    owner.kill();

    EXPECT_EQ(session.selection("clipboard"), text);
    EXPECT_EQ(held(), before);
    EXPECT_EQ(awaited(pasteboard.text({})), QString::fromUtf8(text));
}

TEST_F(ClipboardTest, GivesTheNamesOfItsFormsAndOneFormAlone) {
    EXPECT_EQ(awaited(pasteboard.formNames({})), QList<QByteArray>());
    X11Pasteboard user;
    ASSERT_TRUE(write(user, richContents()));
    QList<QByteArray> names;
    for (const PasteboardForm& form : richContents())
        names += form.name;
    EXPECT_EQ(awaited(pasteboard.formNames({})), names);
    EXPECT_EQ(awaited(pasteboard.form("image/png", {})), richContents()[3].bytes);
    EXPECT_EQ(awaited(pasteboard.form("image/jpeg", {})), std::nullopt);
}

TEST_F(ClipboardTest, AFormThatIsWaitedForHoldsUpNothingElse) {
    const DesktopProgram& owner = fill("one");
    ASSERT_EQ(::kill(owner.process(), SIGSTOP), 0);
    std::stop_source stop;
    std::optional<std::optional<QByteArray>> form;
    const auto wait = [&]() -> QCoro::Task<> {
        form = co_await pasteboard.form("UTF8_STRING", stop.get_token());
    };
    const QCoro::Task<> waiting = wait();
    EXPECT_FALSE(contentsWithin(100ms));
    EXPECT_FALSE(form.has_value());
    stop.request_stop();
    EXPECT_TRUE(turnUntil([&] { return form.has_value(); }));
    EXPECT_EQ(*form, std::nullopt);
}

TEST_F(ClipboardTest, KnowsWhoWroteLast) {
    EXPECT_EQ(pasteboard.lastChange().writer, std::nullopt);
    const DesktopProgram& owner = fill("one");
    const std::uint64_t first = pasteboard.lastChange().count;
    EXPECT_EQ(pasteboard.lastChange().writer, owner.process());

    const auto own = awaited(pasteboard.write(pasteboardText("two"), first));
    ASSERT_TRUE(own);
    EXPECT_EQ(pasteboard.lastChange().count, *own);
    EXPECT_EQ(pasteboard.lastChange().writer, ::getpid());
}

TEST_F(ClipboardTest, KnowsWhoWasGivenWhatItHolds) {
    X11Pasteboard reader;
    ASSERT_TRUE(write(pasteboard, pasteboardText("one")));
    EXPECT_EQ(session.selection("clipboard"), "one");
    EXPECT_FALSE(pasteboard.wasTakenBy(::getpid()));
    EXPECT_EQ(awaited(reader.text({})), "one");
    EXPECT_TRUE(pasteboard.wasTakenBy(::getpid()));

    ASSERT_TRUE(write(pasteboard, pasteboardText("two")));
    EXPECT_FALSE(pasteboard.wasTakenBy(::getpid()));
}

TEST_F(ClipboardTest, LeavesWhatSomebodyElseWroteSince) {
    fill("one");
    const std::uint64_t before = pasteboard.lastChange().count;
    session.own("clipboard", "two");

    EXPECT_EQ(awaited(pasteboard.write(richContents(), before)), std::nullopt);
    EXPECT_EQ(session.selection("clipboard"), "two");
}

TEST_F(ClipboardTest, EmptiesItAgain) {
    fill("one");
    ASSERT_TRUE(write(pasteboard, {}));
    EXPECT_EQ(session.selection("clipboard"), "");
    EXPECT_EQ(contents(), PasteboardContents());
}

TEST_F(ClipboardTest, GivesUpAnOwnerThatStandsStill) {
    const DesktopProgram& owner = fill("words");
    {
        const Stopped stopped(owner.process());
        DesktopSession::waitUntil("the owner to stand still", [&] { return stopped.holds(); });
        EXPECT_FALSE(contentsWithin(300ms));
    }
    EXPECT_EQ(session.selection("clipboard"), "words");
}

TEST_F(ClipboardTest, GivesUpAnOwnerThatDiesWhileItIsAsked) {
    DesktopProgram& owner = fill("words");
    const Stopped stopped(owner.process());
    DesktopSession::waitUntil("the owner to stand still", [&] { return stopped.holds(); });
    const std::jthread killer([process = owner.process()] {
        std::this_thread::sleep_for(50ms);
        ::kill(process, SIGKILL);
    });
    EXPECT_FALSE(contentsWithin(300ms));
    waitForWriter(std::nullopt);
    EXPECT_EQ(contents(), PasteboardContents());
}

TEST_F(ClipboardTest, RefusesMoreThanCanBeGivenBack) {
    fill(QByteArray(Pasteboard::mostBytes + 1, 'x'));
    EXPECT_FALSE(contents());
    // What came too late does no harm to the next read.
    fill("short");
    EXPECT_EQ(awaited(pasteboard.text({})), "short");
}

TEST_F(ClipboardTest, TakesTwoHundredForms) {
    X11Pasteboard user;
    ASSERT_TRUE(write(user, manyForms()));
    EXPECT_EQ(held(), manyForms());
}

TEST_F(ClipboardTest, LeavesASecretAlone) {
    PasteboardContents secret = pasteboardText("word");
    secret.push_back(clipboardForm("x-kde-passwordManagerHint", "secret"));
    X11Pasteboard user;
    ASSERT_TRUE(write(user, secret));
    EXPECT_FALSE(contents());
    EXPECT_EQ(awaited(pasteboard.text({})), "");
}

// Owns a selection and answers on a thread of its own.
class Owner {
  public:
    explicit Owner(const char* selection) {
        m_window = xcb_generate_id(m_x11.get());
        xcb_create_window(m_x11.get(), XCB_COPY_FROM_PARENT, m_window, m_x11.root(), -1, -1, 1, 1,
                          0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(m_x11.get(), m_window, m_x11.atom(selection), XCB_CURRENT_TIME);
        // Makes sure that it is done.
        (void)m_x11.atom(selection);
    }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    virtual ~Owner() = default;

    void start() {
        m_thread = std::jthread([this](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_x11.get())})
                    handle(*event);
                std::this_thread::sleep_for(1ms);
            }
        });
    }
    void end() {
        m_thread.request_stop();
        if (m_thread.joinable()) m_thread.join();
    }

  protected:
    virtual void handle(const xcb_generic_event_t& event) = 0;

    void tell(const xcb_selection_request_event_t& request) {
        xcb_selection_notify_event_t told{};
        told.response_type = XCB_SELECTION_NOTIFY;
        told.requestor = request.requestor;
        told.selection = request.selection;
        told.target = request.target;
        told.property = request.property;
        std::array<char, 32> raw{};
        std::memcpy(raw.data(), &told, sizeof told);
        xcb_send_event(m_x11.get(), 0, request.requestor, 0, raw.data());
        xcb_flush(m_x11.get());
    }

    X11Connection m_x11;

  private:
    X11Connection::Window m_window = 0;
    std::jthread m_thread;
};

// Keeps the clipboard of programs that end.
class Manager final : public Owner {
  public:
    Manager() : Owner("CLIPBOARD_MANAGER") { start(); }
    ~Manager() override { end(); }

    /// Once it has kept something.
    [[nodiscard]] QByteArray kept() {
        end();
        return m_kept;
    }

  private:
    void handle(const xcb_generic_event_t& event) override {
        if ((event.response_type & 0x7f) == XCB_SELECTION_REQUEST)
            keep(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    }
    void keep(const xcb_selection_request_event_t& request) {
        if (request.target != m_x11.atom("SAVE_TARGETS")) return;
        X11Connection reading;
        const auto names = m_x11.numbers(request.requestor, request.property);
        for (const X11Connection::Atom name : names)
            m_kept += X11SelectionRequest(reading, reading.atom("CLIPBOARD"), {})
                          .convert(name, Pasteboard::mostBytes)
                          .value_or(X11SelectionRequest::Converted())
                          .bytes;
        tell(request);
    }

    QByteArray m_kept;
};

// Announces more in pieces than is taken, and would end with the first error of the X server, as
// programs do that handle none.
class HugeOwner final : public Owner {
  public:
    HugeOwner() : Owner("CLIPBOARD") { start(); }
    ~HugeOwner() override { end(); }

    [[nodiscard]] bool hasGivenPiece() const { return m_pieces > 0; }
    [[nodiscard]] bool isAlive() const { return !m_hasFailed; }

  private:
    void handle(const xcb_generic_event_t& event) override {
        if ((event.response_type & 0x7f) == XCB_SELECTION_REQUEST)
            announce(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        if ((event.response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
            givePiece(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    }
    void announce(const xcb_selection_request_event_t& request) {
        const X11Connection::Atom form = m_x11.atom("UTF8_STRING");
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        const auto size = static_cast<std::uint32_t>(Pasteboard::mostBytes + 1);
        if (request.target == m_x11.atom("TARGETS")) {
            put(request, XCB_ATOM_ATOM, form);
        } else {
            xcb_change_window_attributes(m_x11.get(), request.requestor, XCB_CW_EVENT_MASK,
                                         &events);
            put(request, m_x11.atom("INCR"), size);
        }
        tell(request);
    }
    void put(const xcb_selection_request_event_t& request, X11Connection::Atom type,
             std::uint32_t number) {
        xcb_change_property(m_x11.get(), XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                            type, 32, 1, &number);
    }
    void givePiece(const xcb_property_notify_event_t& change) {
        if (change.state != XCB_PROPERTY_DELETE) return;
        constexpr std::uint32_t length = 64 * 1024;
        const QByteArray piece(length, 'x');
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(
            m_x11.get(), xcb_change_property_checked(
                             m_x11.get(), XCB_PROP_MODE_REPLACE, change.window, change.atom,
                             m_x11.atom("UTF8_STRING"), 8, length, piece.constData())));
        if (error) m_hasFailed = true;
        ++m_pieces;
    }

    std::atomic<bool> m_hasFailed = false;
    std::atomic<int> m_pieces = 0;
};

TEST_F(ClipboardTest, DoesNoHarmToAnOwnerOfMoreThanCanBeGivenBack) {
    const HugeOwner owner;
    waitForWriter(::getpid());
    EXPECT_FALSE(contents());
    DesktopSession::waitUntil("the first piece", [&] { return owner.hasGivenPiece(); });
    EXPECT_TRUE(owner.isAlive());
}

TEST_F(ClipboardTest, HandsItsContentsToAClipboardManagerWhenItGoes) {
    Manager manager;
    QByteArray all;
    for (const PasteboardForm& form : richContents())
        all += form.bytes;
    {
        X11Pasteboard leaving;
        ASSERT_TRUE(write(leaving, richContents()));
    }
    EXPECT_EQ(manager.kept(), all);
}

TEST_F(ClipboardTest, DoesNotWaitForAClipboardManagerThatIsNotThere) {
    auto leaving = std::make_unique<X11Pasteboard>();
    ASSERT_TRUE(write(*leaving, richContents()));
    const auto before = std::chrono::steady_clock::now();
    leaving.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - before, X11Pasteboard::handoverLimit);
}

TEST_F(ClipboardTest, OutlivesSomebodyWhoTakesNoPieces) {
    ASSERT_TRUE(write(pasteboard, richContents()));
    X11Connection idle;
    const auto window = xcb_generate_id(idle.get());
    xcb_create_window(idle.get(), XCB_COPY_FROM_PARENT, window, idle.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_convert_selection(idle.get(), window, idle.atom("CLIPBOARD"), idle.atom("image/png"),
                          idle.atom("IDLE"), XCB_CURRENT_TIME);
    DesktopSession::waitUntil("the announcement of pieces",
                              [&] { return !idle.property(window, idle.atom("IDLE")).isEmpty(); });
    EXPECT_EQ(held(), richContents());
    xcb_destroy_window(idle.get(), window);
    xcb_flush(idle.get());
    EXPECT_EQ(held(), richContents());
}

// While it holds the server, the server reads of nobody else, so that answers pile up.
TEST_F(ClipboardTest, AnswersWhoeverAsksWhileItsAnswersPileUp) {
    constexpr int requests = 1500;
    ASSERT_TRUE(write(pasteboard, manyForms()));
    X11Connection asking;
    const auto window = xcb_generate_id(asking.get());
    xcb_create_window(asking.get(), XCB_COPY_FROM_PARENT, window, asking.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const X11Connection::Atom clipboard = asking.atom("CLIPBOARD");
    const X11Connection::Atom targets = asking.atom("TARGETS");
    xcb_grab_server(asking.get());
    for (int request = 0; request < requests; ++request) {
        xcb_convert_selection(asking.get(), window, clipboard, targets, targets, XCB_CURRENT_TIME);
        // Each is told to the owner by itself.
        const X11Reply<xcb_get_input_focus_reply_t> isTold(
            xcb_get_input_focus_reply(asking.get(), xcb_get_input_focus(asking.get()), nullptr));
    }
    xcb_ungrab_server(asking.get());
    xcb_flush(asking.get());
    int answers = 0;
    DesktopSession::waitUntil("all answers", [&] {
        while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(asking.get())})
            if ((event->response_type & 0x7f) == XCB_SELECTION_NOTIFY) ++answers;
        return answers == requests;
    });
}

TEST(ClipboardWithoutDisplay, IsNotSupported) {
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4242");
    X11Pasteboard pasteboard;
    EXPECT_FALSE(pasteboard.supported());
    EXPECT_FALSE(awaited(pasteboard.contents({})));
    EXPECT_EQ(awaited(pasteboard.write({}, 0)), std::nullopt);
    qputenv("DISPLAY", display);
}

} // namespace
} // namespace vorq::desktop
