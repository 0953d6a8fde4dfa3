// A capture key whose letter is let go last writes nothing into the application in front.

#include "doubles/desktop/PanelProgram.h"

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

class HeldKeyTest : public testing::TestWithParam<const char*> {
  protected:
    // The text of the editor in front, once it gives one.
    [[nodiscard]] QByteArray copiedText() const {
        session.own("clipboard", "former");
        QByteArray copied;
        DesktopSession::waitUntil("the text of the editor", [&] {
            session.key({"ctrl+a", "ctrl+c"});
            copied = session.selection("clipboard");
            return copied != "former" && !copied.isEmpty();
        });
        return copied;
    }

    [[nodiscard]] QString draft() const {
        for (const AccessibleNode& node : vorq.controls())
            if (node.name == "Ask Vorq for help…") return vorq.textOf(node);
        return "no draft";
    }

    PanelProgram vorq;
    DesktopSession& session = vorq.session;
};

TEST_P(HeldKeyTest, LeavesWhatIsHighlightedAlone) {
    const QByteArray text = "The quick brown fox.\nSecond line.\n";
    const QString letter = GetParam();
    // The key repeats before anything can come of its press.
    run("xset", "x11-xserver-utils", {"r", "rate", "60", "40"}, session.environment());
    vorq.start();
    const Application editor = openMousepad(session, text);
    highlight(session, [&] { session.key({"ctrl+Home", "shift+End"}); }, "The quick brown fox.");
    run("xdotool", "xdotool",
        {"keydown", "super", "keydown", "shift", "keydown", letter, "sleep", "0.1", "keyup",
         "shift", "keyup", "super", "sleep", "1.5", "keyup", letter},
        session.environment());
    DesktopSession::waitUntil("the press", [&] {
        return vorq.program().output().contains(QString("Vorq ⌘⇧" + letter.toUpper()).toUtf8());
    });
    if (letter == "a") {
        vorq.waitForPanel();
        EXPECT_EQ(vorq.waitForReply(3)[1], "You: Attached: Text capture");
        EXPECT_EQ(draft(), "") << "what is typed is for the panel from then on";
        vorq.dismissTo(editor.window);
    }
    EXPECT_EQ(copiedText().toStdString(), text.toStdString());
    // Let go, it types as ever.
    session.key({"ctrl+End", letter});
    EXPECT_EQ(copiedText().toStdString(), text.toStdString() + letter.toStdString());
}

INSTANTIATE_TEST_SUITE_P(CaptureKeys, HeldKeyTest, testing::Values("a", "s", "p"),
                         [](const auto& info) { return info.param; });

} // namespace
} // namespace vorq::desktop
