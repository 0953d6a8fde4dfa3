// The walkthrough of the built program as a person uses it.

#include "doubles/desktop/PanelProgram.h"

#include <QElapsedTimer>

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using Window = DesktopSession::Window;

class WalkthroughProgramTest : public testing::Test {
  protected:
    explicit WalkthroughProgramTest(const SessionOptions& options = {}) : vorq(options) {}

    void tell(const QStringList& command) const {
        run(VORQ_PROGRAM, "", command, session.environment());
    }
    [[nodiscard]] bool shows(const QString& words) const {
        return std::ranges::any_of(vorq.controls(), [&](const AccessibleNode& node) {
            return node.isShowing && node.name == words;
        });
    }
    void waitFor(const QString& words,
                 std::chrono::seconds limit = std::chrono::seconds(20)) const {
        DesktopSession::waitUntil(words, [&] { return shows(words); }, limit);
    }
    [[nodiscard]] bool has(const QString& role, const QString& name) const {
        return std::ranges::any_of(vorq.controls(), [&](const AccessibleNode& node) {
            return node.isShowing && node.role == role && node.name == name;
        });
    }
    void waitForKeyboardIn(const QString& name) const {
        DesktopSession::waitUntil("the keyboard in " + name, [&] {
            const auto focused = vorq.focused();
            return focused && focused->name == name;
        });
    }
    [[nodiscard]] std::vector<Window> windowsOfVorq() {
        std::vector<Window> found;
        for (const Window window : session.windows())
            if (session.processOf(window) == vorq.program().process() && session.isShown(window))
                found.push_back(window);
        return found;
    }
    void waitForWindows(std::size_t count) {
        DesktopSession::waitUntil(u"%1 windows"_s.arg(count),
                                  [&] { return windowsOfVorq().size() == count; });
    }
    void startTray() { session.start("tint2", "tint2"); }
    // The rows of the self-test, as they are heard.
    [[nodiscard]] QStringList checks() const {
        QStringList found;
        for (const AccessibleNode& node : vorq.controls())
            if (node.role == "list item") found += node.name;
        return found;
    }
    void keep(const QString& name) const {
        const QString folder = qEnvironmentVariable("VORQ_SHOTS");
        if (folder.isEmpty()) return;
        run("import", "imagemagick", {"-window", "root", folder + "/walkthrough-" + name + ".png"},
            session.environment());
    }

    PanelProgram vorq;
    DesktopSession& session = vorq.session;
};

TEST_F(WalkthroughProgramTest, TheSelfTestRunsInAWindowAndNothingFails) {
    startTray();
    vorq.start();
    const Application editor = openMousepad(session, "of the user");
    session.own("clipboard", "the user's clipboard");
    tell({"doctor", "--window"});
    waitForWindows(1);
    waitFor("Cancel");
    keep("testing");
    waitFor("Vorq works on this desktop.", std::chrono::seconds(90));
    keep("tested");
    EXPECT_THAT(checks(), testing::SizeIs(15));
    for (const QString& check : checks())
        EXPECT_FALSE(check.contains(u"Does not work"_s)) << qPrintable(check);
    EXPECT_THAT(checks(), testing::Contains(testing::Truly([](const QString& check) {
                    return check.startsWith(u"Hot keys: Works. "_s);
                })));
    EXPECT_EQ(session.selection("clipboard"), "the user's clipboard");
    DesktopSession::waitUntil("the keyboard in the walkthrough",
                              [&] { return session.activeWindow() == windowsOfVorq().front(); });
    waitForKeyboardIn("Done");
    session.key({"Escape"});
    waitForWindows(0);
    DesktopSession::waitUntil("the window that was in front",
                              [&] { return session.activeWindow() == editor.window; });
}

TEST_F(WalkthroughProgramTest, ATestCanBeEndedAndRunAgain) {
    vorq.start();
    openMousepad(session, "of the user");
    tell({"doctor", "--window"});
    EXPECT_NE(session.waitForWindow("vorq-test-window"), 0U);
    ASSERT_TRUE(vorq.press("Cancel"));
    waitFor("The test was ended early.");
    session.waitForNoWindow("vorq-test-window");
    ASSERT_TRUE(vorq.press("Run Again"));
    waitFor("Vorq works on this desktop.", std::chrono::seconds(90));
}

TEST_F(WalkthroughProgramTest, ClosedDuringTheTestItLeavesNothingBehind) {
    vorq.start();
    openMousepad(session, "of the user");
    tell({"doctor", "--window"});
    EXPECT_NE(session.waitForWindow("vorq-test-window"), 0U);
    run("xdotool", "xdotool", {"windowclose", QString::number(windowsOfVorq().front())},
        session.environment());
    session.waitForNoWindow("vorq-test-window");
    tell({"quit"});
    DesktopSession::waitUntil("the end", [this] { return !vorq.program().isRunning(); });
}

TEST_F(WalkthroughProgramTest, TheSettingsLeadThereAndItComesUpWhereItWasLeft) {
    vorq.start();
    tell({"settings"});
    waitFor("Self-Test");
    const Window settings = windowsOfVorq().front();
    ASSERT_TRUE(vorq.press("Self-Test"));
    waitFor("Run");
    waitForKeyboardIn("Run");
    keep("new");
    const auto walkthrough = [&] {
        for (const Window window : windowsOfVorq())
            if (window != settings) return window;
        return Window{0};
    };
    const QString window = QString::number(walkthrough());
    run("xdotool", "xdotool", {"windowmove", window, "30", "40"}, session.environment());
    DesktopSession::waitUntil("the new place", [&] {
        return session.geometry(walkthrough()).topLeft() == QPoint(30, 40);
    });
    const QPoint middle = session.geometry(walkthrough()).center();
    session.key({"Escape"});
    waitForWindows(1);
    ASSERT_TRUE(vorq.press("Self-Test"));
    waitForWindows(2);
    waitForKeyboardIn("Run");
    EXPECT_LE((session.geometry(walkthrough()).center() - middle).manhattanLength(), 2);
}

TEST_F(WalkthroughProgramTest, ACommandThatTestsIsFollowedInTheWindow) {
    vorq.start();
    openMousepad(session, "of the user");
    tell({"settings"});
    waitFor("Self-Test");
    ASSERT_TRUE(vorq.press("Self-Test"));
    waitFor("Run");
    session.start(VORQ_PROGRAM, "", {"doctor"});
    waitFor("Cancel");
    waitFor("Vorq works on this desktop.", std::chrono::seconds(90));
}

// The bus of accessibility is there, and nobody has agreed to its use yet. What Vorq shows can be
// read all the same.
class WalkthroughConsentTest : public WalkthroughProgramTest {
  protected:
    WalkthroughConsentTest()
        : WalkthroughProgramTest({.hasAccessibilityBus = true, .isAccessibilityOn = false}) {
        m_speaking.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    }

    [[nodiscard]] bool isOn() const {
        return run("gdbus", "libglib2.0-bin",
                   {"call", "--session", "-d", "org.a11y.Bus", "-o", "/org/a11y/bus", "-m",
                    "org.freedesktop.DBus.Properties.Get", "org.a11y.Status", "IsEnabled"},
                   session.environment())
            .contains("true");
    }

    QProcessEnvironment m_speaking;
};

TEST_F(WalkthroughConsentTest, AKeyThatFindsNothingToReadBringsItUpBesideThePanel) {
    const Application terminal = openXterm(session, "text\n");
    vorq.start({}, m_speaking);
    vorq.pressHotKey();
    waitForWindows(2);
    waitFor("Open System Settings");
    keep("beside");
    const Window front = session.activeWindow();
    QRect panel;
    QRect walkthrough;
    for (const Window window : windowsOfVorq())
        (window == front ? panel : walkthrough) = session.geometry(window);
    EXPECT_FALSE(panel.isEmpty()) << "the panel has the keyboard";
    EXPECT_FALSE(panel.intersects(walkthrough));
    ASSERT_TRUE(vorq.press("Deny"));
    waitForWindows(1);
    EXPECT_EQ(session.activeWindow(), front);
    EXPECT_FALSE(isOn());
    vorq.dismissTo(terminal.window);
}

TEST_F(WalkthroughConsentTest, OneClickTurnsItOnAndNamesWhatIsToBeStartedAgain) {
    const Application early = openTextWindow(session, "text");
    vorq.start({}, m_speaking);
    vorq.pressHotKey();
    waitForWindows(2);
    waitFor("Open System Settings");
    EXPECT_TRUE(has("label", "Not set") || has("text", "Not set") || shows("Not set"));
    EXPECT_FALSE(isOn());
    vorq.click("Open System Settings");
    waitFor("Accessibility Is On");
    EXPECT_TRUE(isOn());
    waitForWindows(1);
    waitFor(
        "These programs were started before. Close them and start them again, so that they show "
        "Vorq their text.");
    keep("granted");
    EXPECT_THAT(checks(), testing::Contains("test_text_window"_L1));
    ::kill(early.process, SIGTERM);
    waitFor("Vorq can read highlighted text.");
    waitForKeyboardIn("Done");
    session.key({"Return"});
    waitForWindows(0);
}

TEST_F(WalkthroughConsentTest, TheFirstStartByHandOffersItAndTakesNoKeyboard) {
    openXterm(session, "text\n");
    DesktopProgram& started = session.start(VORQ_PROGRAM, "", {}, m_speaking);
    const auto shown = [&] {
        return std::ranges::count_if(session.windows(), [&](Window window) {
            return session.processOf(window) == started.process() && session.isShown(window);
        });
    };
    DesktopSession::waitUntil("panel and walkthrough", [&] { return shown() == 2; });
    keep("first");
    const Window front = session.activeWindow();
    EXPECT_TRUE(session.geometry(front).height() > 0);
    AccessibleTree tree(started.process());
    const auto isThere = [&](const QString& name) {
        return std::ranges::any_of(tree.read(), [&](const AccessibleNode& node) {
            return node.isShowing && node.name == name;
        });
    };
    DesktopSession::waitUntil("the request", [&] { return isThere("Open System Settings"); });
    tell({"quit"});
    DesktopSession::waitUntil("the end", [&] { return !started.isRunning(); });
    DesktopProgram& again = session.start(VORQ_PROGRAM, "", {}, m_speaking);
    const auto ofAgain = [&] {
        return std::ranges::count_if(session.windows(), [&](Window window) {
            return session.processOf(window) == again.process() && session.isShown(window);
        });
    };
    DesktopSession::waitUntil("the panel", [&] { return ofAgain() == 1; });
    QElapsedTimer waited;
    waited.start();
    DesktopSession::waitUntil("the time in which it would come", [&] {
        EXPECT_LE(ofAgain(), 1);
        return waited.elapsed() > 4000;
    });
    tell({"quit"});
    DesktopSession::waitUntil("the end", [&] { return !again.isRunning(); });
}

} // namespace
} // namespace vorq::desktop
