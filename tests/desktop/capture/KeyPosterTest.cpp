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
    EXPECT_FALSE(keys.post(copyChord, editor.process + 1));
    // What is pressed next would come after it.
    session.key({"End"});
    ASSERT_TRUE(keys.post(copyChord, editor.process));
    session.key({"ctrl+a", "ctrl+c"});
    DesktopSession::waitUntil("the copy", [&] { return isCopied(); });
    const std::uint64_t count = pasteboard.lastChange().count;
    EXPECT_EQ(session.selection("clipboard"), "alle Worte");
    EXPECT_EQ(pasteboard.lastChange().count, count);
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
