// Keys that are pressed in real programs.

#include "doubles/desktop/Applications.h"
#include "doubles/desktop/ClipboardDesktop.h"
#include "platform/linux/x11/X11Events.h"
#include "platform/linux/x11/X11RawInput.h"
#include "platform/linux/x11/copying/X11KeyPoster.h"
#include "platform/linux/x11/copying/X11Pasteboard.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <stdexcept>
#include <vector>

#include <gmock/gmock.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace vorq::desktop {
namespace {

// The keys that go down and up from now on, whoever they are for.
class SeenKeys {
  public:
    SeenKeys()
        : m_events([this](const xcb_generic_event_t& event) { note(event); }),
          m_opcode(rawInputOpcode(m_events.connection())) {
        selectRawInput(m_events.connection(), XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                                                  XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
        m_events.catchUp();
    }

    /// Whether the first key ever went down and up with no other going down between.
    [[nodiscard]] bool isFirstPressedAlone() {
        m_events.catchUp();
        if (m_keys.empty()) throw std::runtime_error("no key was seen");
        const std::uint32_t first = m_keys.front().code;
        std::uint32_t last = 0;
        return std::ranges::any_of(m_keys, [&](const Key& key) {
            if (key.isPress) last = key.code;
            return !key.isPress && key.code == first && last == first;
        });
    }

  private:
    struct Key {
        bool isPress = false;
        std::uint32_t code = 0;
    };

    void note(const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != XCB_GE_GENERIC) return;
        const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
        if (raw.extension != m_opcode) return;
        m_keys.push_back({raw.event_type == XCB_INPUT_RAW_KEY_PRESS, raw.detail});
    }

    std::vector<Key> m_keys;
    X11Events m_events;
    std::uint8_t m_opcode;
};

class KeyPosterTest : public testing::Test {
  protected:
    static constexpr KeyChord copyChord{.key = KeyChord::Key::C};

    KeyPosterTest() {
        editor = openTextWindow(session, "alle Worte");
        // Until its field takes keys, a chord copies nothing.
        DesktopSession::waitUntil("the text to be selected", [&] {
            session.key({"ctrl+a", "ctrl+c"});
            return session.selection("clipboard") == "alle Worte";
        });
        session.own("clipboard", "of the user");
        DesktopSession::waitUntil("the clipboard of the user",
                                  [&] { return pasteboard.lastChange().writer != editor.process; });
    }

    void keysGo(const QString& what, const QStringList& names) {
        run("xdotool", "xdotool", QStringList{what} + names, session.environment());
    }

    [[nodiscard]] bool isCopied() { return pasteboard.lastChange().writer == editor.process; }

    DesktopSession session;
    X11Pasteboard pasteboard;
    X11KeyPoster keys;
    Application editor;
};

TEST_F(KeyPosterTest, PressesAChordInTheProcessThatHasTheKeyboard) {
    ASSERT_TRUE(keys.post(copyChord, editor.process));
    DesktopSession::waitUntil("the copy", [&] { return isCopied(); });
    EXPECT_EQ(session.selection("clipboard"), "alle Worte");
    EXPECT_EQ(keys.heldModifiers(), 0U);
}

TEST_F(KeyPosterTest, PressesNothingForAnyOther) {
    const Application other = openMousepad(session, "other words");
    DesktopSession::waitUntil("the other text to be selected", [&] {
        session.key({"ctrl+a"});
        return session.selection("primary") == "other words";
    });
    const std::uint64_t before = pasteboard.lastChange().count;
    EXPECT_FALSE(keys.post(copyChord, editor.process));
    EXPECT_FALSE(keys.post(copyChord, 1));
    // What is pressed next comes after a chord, in whichever of both.
    for (const Application& application : {other, editor}) {
        session.activate(application.window);
        session.key({"ctrl+Home", "shift+Right"});
        const QByteArray first = application.window == other.window ? "o" : "a";
        DesktopSession::waitUntil("the first letter",
                                  [&] { return session.selection("primary") == first; });
    }
    EXPECT_TRUE(awaited(pasteboard.write(pasteboardText("nobody wrote"), before)));
}

TEST_F(KeyPosterTest, LiftsWhatTheUserHoldsAndPutsItBack) {
    keysGo("keydown", {"Super_L", "Shift_L"});
    ASSERT_EQ(keys.heldModifiers(), HeldModifier::command | HeldModifier::shift);
    ASSERT_TRUE(keys.post(copyChord, editor.process));
    DesktopSession::waitUntil("the copy", [&] { return isCopied(); });
    EXPECT_EQ(keys.heldModifiers(), HeldModifier::command | HeldModifier::shift);
    keysGo("keyup", {"Shift_L", "Super_L"});
    EXPECT_EQ(keys.heldModifiers(), 0U);
}

// Desktops and programs see in that a press for their overview or their menu.
TEST_F(KeyPosterTest, LetsNoModifierThatTheUserHoldsSeemPressedAlone) {
    for (const char* modifier : {"Super_L", "Alt_L"}) {
        SeenKeys seen;
        keysGo("keydown", {modifier});
        ASSERT_TRUE(keys.post(copyChord, editor.process));
        keysGo("keyup", {modifier});
        EXPECT_FALSE(seen.isFirstPressedAlone()) << modifier;
    }
    SeenKeys seen;
    keysGo("key", {"Super_L"});
    EXPECT_TRUE(seen.isFirstPressedAlone());
}

struct SwitchedLayout {
    const char* name;
    QString layouts;
    QString variants;
};

void PrintTo(const SwitchedLayout& layout, std::ostream* out) {
    *out << layout.name;
}

class KeyPosterLayouts : public KeyPosterTest, public testing::WithParamInterface<SwitchedLayout> {
  protected:
    // xdotool would go back to the first layout.
    static void pressSwitch() {
        constexpr std::uint8_t menuKey = 135;
        const X11Connection user;
        for (const std::uint8_t kind : std::array<std::uint8_t, 2>{XCB_KEY_PRESS, XCB_KEY_RELEASE})
            xcb_test_fake_input(user.get(), kind, menuKey, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        // Makes sure that it is done.
        (void)user.atom("CLIPBOARD");
    }
};

// What users press goes by the layout that they have switched to last.
TEST_P(KeyPosterLayouts, PressesTheLetterOfTheLayoutThatIsActive) {
    const auto& [name, layouts, variants] = GetParam();
    run("setxkbmap", "x11-xkb-utils",
        {"-layout", layouts, "-variant", variants, "-option", "grp:menu_toggle"},
        session.environment());
    for (qsizetype switches = layouts.count(u','); switches > 0; --switches)
        pressSwitch();
    ASSERT_TRUE(keys.post(copyChord, editor.process));
    DesktopSession::waitUntil("the copy", [&] { return isCopied(); });
}

INSTANTIATE_TEST_SUITE_P(KeyPoster, KeyPosterLayouts,
                         testing::Values(SwitchedLayout{"second", "us,us", ",dvorak"},
                                         SwitchedLayout{"third", "us,ru,us", ",,dvorak"},
                                         SwitchedLayout{"cyrillic", "us,ru", ","}),
                         testing::PrintToStringParamName());

TEST_F(KeyPosterTest, KnowsWhetherTheUserPressedAnythingSince) {
    ASSERT_TRUE(keys.post(copyChord, editor.process));
    EXPECT_FALSE(keys.wasUsedSincePost());
    session.key({"Right"});
    EXPECT_TRUE(keys.wasUsedSincePost());
    ASSERT_TRUE(keys.post(copyChord, editor.process));
    EXPECT_FALSE(keys.wasUsedSincePost());
}

TEST(KeyPosterWithoutDisplay, IsNotSupported) {
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4242");
    X11KeyPoster keys;
    EXPECT_FALSE(keys.supported());
    EXPECT_FALSE(keys.post({.key = KeyChord::Key::C}, 1));
    EXPECT_EQ(keys.heldModifiers(), 0U);
    qputenv("DISPLAY", display);
}

} // namespace
} // namespace vorq::desktop
