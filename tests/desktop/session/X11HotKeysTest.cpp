// Hot keys and the active window on a real X server.

#include "platform/linux/x11/X11HotKeys.h"
#include "doubles/desktop/DesktopSession.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Workspace.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <thread>

namespace vorq::desktop {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t bothModifiers = HotKeyModifier::command + HotKeyModifier::shift;
const SessionOptions withoutAccessibility{.hasAccessibilityBus = false, .isAccessibilityOn = false};

constexpr int placeOfA = 38;
constexpr int placeOfB = 56;

class X11HotKeysTest : public testing::Test {
  protected:
    X11HotKeysTest() {
        QObject::connect(&m_keys, &GlobalHotKeys::pressed, [this](HotKeyId id) {
            m_pressed.push_back(static_cast<char>(id.number));
        });
        EXPECT_TRUE(m_keys.installEventHandler());
    }

    static GlobalHotKeys::Outcome registerKey(X11HotKeys& keys, char letter) {
        return keys.registerHotKey({letter, 0, bothModifiers},
                                   {1, static_cast<std::uint32_t>(letter)});
    }

    void xdotool(const QStringList& arguments) const {
        run("xdotool", "xdotool", arguments, m_session.environment());
    }

    // Whether another program gets the key just now, which it gives back at once.
    static bool grabsA(std::uint16_t modifiers = XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT) {
        const X11Connection other;
        const auto cookie = xcb_grab_key_checked(other.get(), 0, other.root(), modifiers, placeOfA,
                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_generic_error_t* error = xcb_request_check(other.get(), cookie);
        const bool hasGrabbed = error == nullptr;
        std::free(error);
        return hasGrabbed;
    }

    void waitForPresses(std::size_t count) const {
        DesktopSession::waitUntil("the presses", [&] { return m_pressed.size() >= count; });
    }

    DesktopSession m_session{withoutAccessibility};
    X11HotKeys m_keys;
    std::vector<char> m_pressed;
};

TEST_F(X11HotKeysTest, ArriveWhateverLocksAreOn) {
    for (const char letter : {'A', 'S', 'P', 'T'})
        ASSERT_TRUE(registerKey(m_keys, letter));
    for (const char* lock : {"Caps_Lock", "Num_Lock", "Caps_Lock", "Num_Lock"}) {
        m_pressed.clear();
        xdotool({"key", lock});
        xdotool({"key", "super+shift+a", "super+shift+s", "super+shift+p", "super+shift+t"});
        waitForPresses(4);
        EXPECT_THAT(m_pressed, ElementsAre('A', 'S', 'P', 'T')) << "after " << lock;
    }
}

const QStringList holdingAndPressingAgain = {
    "keydown", "super", "keydown", "shift", "keydown", "a",     "sleep", "1.5",   "keyup",
    "a",       "key",   "t",       "key",   "a",       "keyup", "shift", "keyup", "super"};

TEST_F(X11HotKeysTest, HeldDownCountsAsOnePress) {
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    ASSERT_TRUE(registerKey(m_keys, 'T'));
    m_session.start("xdotool", "xdotool", holdingAndPressingAgain);
    waitForPresses(3);
    EXPECT_THAT(m_pressed, ElementsAre('A', 'T', 'A'));
}

TEST_F(X11HotKeysTest, HeldDownWhileTheProgramIsBusyCountsAsOnePress) {
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    ASSERT_TRUE(registerKey(m_keys, 'T'));
    xdotool(holdingAndPressingAgain);
    waitForPresses(3);
    EXPECT_THAT(m_pressed, ElementsAre('A', 'T', 'A'));
}

// From its repetition on, its grab is active again, and its release comes another way.
TEST_F(X11HotKeysTest, LetGoWhileTheProgramIsBusyItCanBePressedAgain) {
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    ASSERT_TRUE(registerKey(m_keys, 'T'));
    xdotool({"keydown", "super", "keydown", "shift", "keydown", "a"});
    waitForPresses(1);
    xdotool(
        {"sleep", "1.5", "keyup", "a", "key", "t", "key", "a", "keyup", "shift", "keyup", "super"});
    waitForPresses(3);
    EXPECT_THAT(m_pressed, ElementsAre('A', 'T', 'A'));
}

constexpr std::array<std::uint16_t, 3> partsOfTheChord = {0, XCB_MOD_MASK_SHIFT, XCB_MOD_MASK_4};

TEST_F(X11HotKeysTest, HeldDownItIsNobodyElsesUntilItIsLetGo) {
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    EXPECT_TRUE(grabsA(0));
    xdotool({"keydown", "super", "keydown", "shift", "keydown", "a"});
    waitForPresses(1);
    for (const std::uint16_t left : partsOfTheChord)
        EXPECT_FALSE(grabsA(left)) << left;
    xdotool({"keyup", "shift", "keyup", "super", "keyup", "a"});
    for (const std::uint16_t left : partsOfTheChord)
        DesktopSession::waitUntil("the key to be free", [&] { return grabsA(left); });
    EXPECT_FALSE(grabsA()) << "the hot key";
}

// A window that has the keyboard.
class TypedInto {
  public:
    TypedInto() {
        constexpr std::array<std::uint32_t, 2> values = {1, XCB_EVENT_MASK_KEY_PRESS};
        const xcb_window_t window = xcb_generate_id(m_connection.get());
        xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, window, m_connection.root(), 0,
                          0, 10, 10, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
        xcb_map_window(m_connection.get(), window);
        const auto focus = xcb_set_input_focus_checked(
            m_connection.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
        xcb_generic_error_t* error = xcb_request_check(m_connection.get(), focus);
        EXPECT_EQ(error, nullptr);
        std::free(error);
    }

    /// The As and Bs so far.
    const std::vector<int>& letters() {
        while (xcb_generic_event_t* event = xcb_poll_for_event(m_connection.get())) {
            const int key = reinterpret_cast<xcb_key_press_event_t*>(event)->detail;
            const bool isPress = (event->response_type & 0x7f) == XCB_KEY_PRESS;
            if (isPress && (key == placeOfA || key == placeOfB)) m_letters.push_back(key);
            std::free(event);
        }
        return m_letters;
    }

  private:
    X11Connection m_connection;
    std::vector<int> m_letters;
};

// Whoever opens something by the key types into it at once, before the program comes to anything.
TEST_F(X11HotKeysTest, WhatIsTypedAfterItIsTheFocusedWindowsWhileTheProgramIsBusy) {
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    TypedInto window;
    xdotool({"keydown", "super", "keydown", "shift", "keydown", "a"});
    waitForPresses(1);
    xdotool({"keyup", "a", "keyup", "shift", "keyup", "super", "key", "a", "key", "b", "key", "a",
             "key", "b"});
    DesktopSession::waitUntil("the keys",
                              [&] { return std::ranges::count(window.letters(), placeOfB) == 2; });
    EXPECT_THAT(window.letters(), ElementsAre(placeOfA, placeOfB, placeOfA, placeOfB));
    EXPECT_THAT(m_pressed, ElementsAre('A'));
}

TEST_F(X11HotKeysTest, HeldLongerThanItsModifiersItTypesNothingAndLosesNothingTypedAfterIt) {
    run("xset", "x11-xserver-utils", {"r", "rate", "60", "40"}, m_session.environment());
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    TypedInto window;
    xdotool({"keydown", "super", "keydown", "shift", "keydown", "a"});
    waitForPresses(1);
    // The program sees nothing of all this before it is over.
    xdotool(
        {"keyup", "shift", "keyup", "super", "sleep", "0.5", "keyup", "a", "key", "a", "key", "b"});
    DesktopSession::waitUntil("the keys",
                              [&] { return std::ranges::count(window.letters(), placeOfB) == 1; });
    EXPECT_THAT(window.letters(), ElementsAre(placeOfA, placeOfB));
    EXPECT_THAT(m_pressed, ElementsAre('A'));
}

bool grabsKeyboard() {
    const X11Connection other;
    const auto cookie = xcb_grab_keyboard(other.get(), 0, other.root(), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_grab_keyboard_reply_t* reply = xcb_grab_keyboard_reply(other.get(), cookie, nullptr);
    const bool hasGrabbed = reply != nullptr && reply->status == XCB_GRAB_STATUS_SUCCESS;
    std::free(reply);
    return hasGrabbed;
}

// Its press was on the way when it was given up. Without repetition nothing else would come of the
// key while it is held.
TEST_F(X11HotKeysTest, PressedBeforeItIsGivenBackItDoesNotKeepTheKeyboard) {
    run("xset", "x11-xserver-utils", {"r", "off"}, m_session.environment());
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    ASSERT_TRUE(registerKey(m_keys, 'T'));
    QCoreApplication::processEvents();
    xdotool({"keydown", "super", "keydown", "shift", "keydown", "a"});
    EXPECT_FALSE(grabsKeyboard());
    m_keys.unregisterHotKey({1, 'A'});
    DesktopSession::waitUntil("the keyboard to be free", [] { return grabsKeyboard(); });
    EXPECT_THAT(m_pressed, ElementsAre());
    xdotool({"keyup", "a", "key", "t", "keyup", "shift", "keyup", "super"});
    waitForPresses(1);
    EXPECT_THAT(m_pressed, ElementsAre('T'));
}

TEST_F(X11HotKeysTest, HeldDownWhenTheLastIsGivenBackItIsFreeForOthers) {
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    ASSERT_TRUE(registerKey(m_keys, 'T'));
    xdotool({"keydown", "super", "keydown", "shift", "keydown", "a"});
    waitForPresses(1);
    m_keys.unregisterHotKey({1, 'A'});
    EXPECT_FALSE(grabsA(0)) << "still kept from typing";
    m_keys.unregisterHotKey({1, 'T'});
    for (const std::uint16_t left : partsOfTheChord)
        DesktopSession::waitUntil("the key to be free", [&] { return grabsA(left); });
    xdotool({"keyup", "shift", "keyup", "super", "keyup", "a"});
}

TEST_F(X11HotKeysTest, RegisteredAnewWhileItIsHeldItStillCountsAsOnePress) {
    run("xset", "x11-xserver-utils", {"r", "rate", "60", "40"}, m_session.environment());
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    xdotool({"keydown", "super", "keydown", "shift", "keydown", "a"});
    waitForPresses(1);
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    m_session.start("xdotool", "xdotool",
                    {"sleep", "0.5", "keyup", "a", "key", "a", "keyup", "shift", "keyup", "super"});
    waitForPresses(2);
    EXPECT_THAT(m_pressed, ElementsAre('A', 'A'));
}

TEST_F(X11HotKeysTest, OtherModifiersAreOtherChords) {
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    ASSERT_TRUE(registerKey(m_keys, 'T'));
    xdotool({"key", "super+a", "shift+a", "ctrl+super+shift+a", "super+shift+t"});
    waitForPresses(1);
    EXPECT_THAT(m_pressed, ElementsAre('T'));
}

TEST_F(X11HotKeysTest, OneThatAnotherProgramHoldsIsReportedAndTheOthersWork) {
    X11HotKeys other;
    ASSERT_TRUE(other.installEventHandler());
    ASSERT_TRUE(registerKey(other, 'S'));
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    const GlobalHotKeys::Outcome taken = registerKey(m_keys, 'S');
    ASSERT_FALSE(taken);
    EXPECT_EQ(taken.error(), (HotKeyFailure{.status = 10, .isTaken = true}));
    xdotool({"key", "super+shift+s", "super+shift+a"});
    waitForPresses(1);
    EXPECT_THAT(m_pressed, ElementsAre('A'));
}

TEST_F(X11HotKeysTest, GivenBackTheyAreFreeForOthers) {
    ASSERT_TRUE(registerKey(m_keys, 'S'));
    m_keys.unregisterHotKey({1, 'S'});
    QCoreApplication::processEvents();
    run("xset", "x11-xserver-utils", {"q"}, m_session.environment());
    X11HotKeys other;
    ASSERT_TRUE(other.installEventHandler());
    EXPECT_TRUE(registerKey(other, 'S'));
}

TEST_F(X11HotKeysTest, MoveWithTheLayoutOfTheKeyboard) {
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    ASSERT_TRUE(registerKey(m_keys, 'T'));
    constexpr int placeOfQ = 24;
    // Everything that was pressed up to the T that ends it.
    const auto pressAll = [this](const QList<int>& places) {
        m_pressed.clear();
        for (const int place : places)
            xdotool({"keydown", "super", "keydown", "shift", "key", QString::number(place), "keyup",
                     "shift", "keyup", "super"});
        xdotool({"key", "super+shift+t"});
        DesktopSession::waitUntil("the T",
                                  [this] { return !m_pressed.empty() && m_pressed.back() == 'T'; });
        return m_pressed;
    };
    EXPECT_THAT(pressAll({placeOfA, placeOfQ}), ElementsAre('A', 'T'));
    run("setxkbmap", "x11-xkb-utils", {"fr"}, m_session.environment());
    DesktopSession::waitUntil("the French A", [&] { return pressAll({placeOfQ}).front() == 'A'; });
    EXPECT_THAT(pressAll({placeOfA}), ElementsAre('T'));
}

// Servers describe the keyboard anew as soon as another one is used, which a press of the key may
// be.
TEST_F(X11HotKeysTest, StayGrabbedWhileTheKeyboardIsDescribedAnew) {
    constexpr std::uint8_t unusedKey = 255;
    constexpr xcb_keysym_t nothing = 0;
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    std::atomic<int> attempts = 0;
    std::atomic<bool> isStolen = false;
    {
        const std::jthread thief([&](const std::stop_token& stop) {
            while (!stop.stop_requested() && !isStolen) {
                isStolen = grabsA();
                ++attempts;
            }
        });
        const X11Connection settings;
        const int before = attempts;
        for (int change = 0; change < 200; ++change) {
            xcb_change_keyboard_mapping(settings.get(), 1, unusedKey, 1, &nothing);
            xcb_flush(settings.get());
            DesktopSession::waitUntil(
                "an attempt", [&, last = attempts.load()] { return attempts > last || isStolen; });
        }
        EXPECT_GT(attempts, before);
    }
    EXPECT_FALSE(isStolen);
    xdotool({"key", "super+shift+a"});
    waitForPresses(1);
}

TEST_F(X11HotKeysTest, ALayoutWithoutLatinLettersKeepsTheirPlaces) {
    run("setxkbmap", "x11-xkb-utils", {"ru"}, m_session.environment());
    ASSERT_TRUE(registerKey(m_keys, 'A'));
    xdotool(
        {"keydown", "super", "keydown", "shift", "key", "38", "keyup", "shift", "keyup", "super"});
    waitForPresses(1);
    EXPECT_THAT(m_pressed, ElementsAre('A'));
}

TEST(X11HotKeysElsewhere, ThereAreNoneUnderWayland) {
    const DesktopSession session(withoutAccessibility);
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    X11HotKeys keys;
    const GlobalHotKeys::Outcome outcome = keys.installEventHandler();
    qunsetenv("WAYLAND_DISPLAY");
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().status, X11HotKeys::noServer);
}

class X11WorkspaceTest : public testing::Test {
  protected:
    DesktopSession::Window openTerminal(const QString& name) {
        m_session.start("xterm", "xterm", {"-name", name, "-e", "sleep", "600"});
        return m_session.waitForWindow(name);
    }

    DesktopSession m_session{withoutAccessibility};
};

TEST_F(X11WorkspaceTest, KnowsTheApplicationInFront) {
    const auto window = openTerminal("first");
    m_session.activate(window);
    const X11Workspace workspace;
    EXPECT_EQ(workspace.activeWindow(), window);
    EXPECT_EQ(workspace.frontmostProcess(), m_session.processOf(window));
    EXPECT_EQ(workspace.application(m_session.processOf(window)),
              (RunningApplication{m_session.processOf(window), "debian-xterm", "XTerm"}));
}

TEST_F(X11WorkspaceTest, TellsOfEachChangeOnceAndActivates) {
    const auto first = openTerminal("first");
    const auto second = openTerminal("second");
    m_session.activate(second);
    X11Workspace workspace;
    QSignalSpy changes(&workspace, &Workspace::frontmostChanged);
    workspace.activate(first);
    DesktopSession::waitUntil("the first terminal", [&] { return changes.count() > 0; });
    workspace.activate(second);
    DesktopSession::waitUntil("the second terminal", [&] { return changes.count() > 1; });
    ASSERT_EQ(changes.count(), 2);
    EXPECT_EQ(changes[0][0], m_session.processOf(first));
    EXPECT_EQ(changes[0][1], static_cast<quint64>(first));
    EXPECT_EQ(changes[1][1], static_cast<quint64>(second));
}

TEST_F(X11WorkspaceTest, AnApplicationThatIsHiddenShowsWhatStandsBelow) {
    const auto below = openTerminal("below");
    const auto above = openTerminal("above");
    m_session.activate(above);
    X11Workspace workspace;
    EXPECT_TRUE(workspace.hide(m_session.processOf(above)));
    DesktopSession::waitUntil("the terminal below",
                              [&] { return m_session.activeWindow() == below; });
    EXPECT_FALSE(m_session.isShown(above));
    EXPECT_TRUE(m_session.isShown(below));
    m_session.activate(above);
    EXPECT_TRUE(m_session.isShown(above)) << "the user brings it back";
}

TEST_F(X11WorkspaceTest, WhatIsGoneIsNothing) {
    const X11Workspace workspace;
    EXPECT_EQ(workspace.activeWindow(), std::nullopt);
    EXPECT_EQ(workspace.frontmostProcess(), std::nullopt);
    EXPECT_EQ(workspace.application(1), std::nullopt);
    EXPECT_EQ(workspace.processOf(0x7fffff), std::nullopt);
    X11Workspace().activate(0x7fffff);
    EXPECT_EQ(X11Workspace().hide(1).error(), QStringLiteral("It has no window."));
}

} // namespace
} // namespace vorq::desktop
