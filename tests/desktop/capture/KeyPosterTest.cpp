// Keys that are pressed in real programs.

#include "doubles/desktop/Applications.h"
#include "doubles/desktop/ClipboardDesktop.h"
#include "platform/linux/x11/copying/X11KeyPoster.h"
#include "platform/linux/x11/copying/X11Pasteboard.h"

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

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
