// The built program in a real session: its hot keys, its tray icon, and what other starts of it do.

#include "doubles/desktop/TrayProgram.h"
#include "platform/linux/x11/X11HotKeys.h"

#include <QElapsedTimer>
#include <QFile>

#include <gmock/gmock.h>

#include <csignal>
#include <thread>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST_F(TrayProgramTest, AHotKeyReachesItWithTheApplicationInFront) {
    const QByteArray terminal = QByteArray::number(openTerminal());
    DesktopProgram& vorq = startAndWait();
    m_session.key({"super+shift+s"});
    waitFor(vorq, "Vorq ⌘⇧S note hotkey — source: debian-xterm pid=" + terminal);
    m_session.key({"super+shift+p"});
    waitFor(vorq, "Vorq ⌘⇧P push-note hotkey");
    m_session.key({"super+shift+a"});
    waitFor(vorq, "Vorq ⌘⇧A: sourcePID=" + terminal + " app=XTerm");
}

TEST_F(TrayProgramTest, AKeyThatAnotherProgramHoldsLeavesTheOthers) {
    X11HotKeys other;
    ASSERT_TRUE(other.installEventHandler());
    ASSERT_TRUE(
        other.registerHotKey({'S', 1, HotKeyModifier::command + HotKeyModifier::shift}, {1, 1}));
    DesktopProgram& vorq = startAndWait();
    EXPECT_THAT(vorq.output().toStdString(),
                HasSubstr("Vorq failed to register Command+Shift+S hotkey: 10"));
    m_session.key({"super+shift+a"});
    waitFor(vorq, "Vorq ⌘⇧A: ");
}

TEST_F(TrayProgramTest, ACommandIsHandedToTheOneThatRuns) {
    const QByteArray terminal = QByteArray::number(openTerminal());
    DesktopProgram& vorq = startAndWait();
    for (const char* verb : {"note", "push-note", "clear", "summon", "toggle"})
        EXPECT_EQ(runToEnd({verb}).status, 0) << verb;
    waitFor(vorq, "Vorq ⌘⇧A: sourcePID=" + terminal + " app=XTerm");
    waitFor(vorq, "source: debian-xterm pid=" + terminal);
    waitFor(vorq, "Vorq ⌘⇧P push-note hotkey");
    EXPECT_EQ(runToEnd({"--background"}).status, 0);
    EXPECT_TRUE(vorq.isRunning());
}

TEST_F(TrayProgramTest, ACommandStartsItWhereNoneRuns) {
    DesktopProgram& vorq = start({"summon"});
    waitFor(vorq, "Vorq ⌘⇧A: ");
    EXPECT_TRUE(vorq.isRunning());
}

// As of a shortcut that is held on a machine with much to do.
TEST_F(TrayProgramTest, ACommandThatComesLateRepeatsTheOneItWasGivenWith) {
    DesktopProgram& vorq = startAndWait();
    DesktopProgram& late = start({"summon"});
    {
        const Stopped slow(late.process());
        EXPECT_EQ(runToEnd({"summon"}).status, 0);
        waitFor(vorq, "Vorq ⌘⇧A: ");
        std::this_thread::sleep_for(std::chrono::milliseconds(900));
    }
    DesktopSession::waitUntil("the end of the late one", [&] { return !late.isRunning(); });
    EXPECT_EQ(late.qt().exitCode(), 0);
    EXPECT_EQ(runToEnd({"note"}).status, 0);
    waitFor(vorq, "note hotkey");
    EXPECT_EQ(vorq.output().count("Vorq ⌘⇧A: "), 1);
}

TEST_F(TrayProgramTest, ALinkIsHandedToTheOneThatRuns) {
    DesktopProgram& vorq = startAndWait();
    const Ended refused = runToEnd({"open", "vorq://auth/callback?handoff=abc"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.output, HasSubstr("Could not reach Vorq at http://127.0.0.1:9"));
    EXPECT_THAT(vorq.output().toStdString(), HasSubstr("Vorq mac handoff failed: "));
    EXPECT_EQ(runToEnd({"open", "vorq://auth/callback"}).status, 0);
    EXPECT_EQ(runToEnd({"open", "vorq://nothing"}).status, 2);
    EXPECT_TRUE(vorq.isRunning());
}

TEST_F(TrayProgramTest, QuitEndsIt) {
    DesktopProgram& vorq = startAndWait();
    EXPECT_EQ(runToEnd({"quit"}).status, 0);
    DesktopSession::waitUntil("the end", [&] { return !vorq.isRunning(); });
    EXPECT_EQ(vorq.qt().exitCode(), 0);
    const Ended again = runToEnd({"quit"});
    EXPECT_EQ(again.status, 0);
    EXPECT_THAT(again.output, HasSubstr("Vorq is not running."));
}

// A shell is told of the signal, though the program has put its things in order before.
TEST_F(TrayProgramTest, ASignalEndsItInOrder) {
    for (const int signal : {SIGTERM, SIGINT}) {
        DesktopProgram& vorq = startAndWait();
        ::kill(vorq.process(), signal);
        DesktopSession::waitUntil("the end", [&] { return !vorq.isRunning(); });
        EXPECT_EQ(vorq.qt().exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(vorq.qt().exitCode(), signal);
        EXPECT_THAT(vorq.output().toStdString(), Not(HasSubstr("ERROR: ")));
    }
}

TEST_F(TrayProgramTest, KilledItLeavesThePlaceToTheNext) {
    startAndWait().kill();
    DesktopProgram& next = startAndWait();
    m_session.key({"super+shift+a"});
    waitFor(next, "Vorq ⌘⇧A: ");
}

TEST_F(TrayProgramTest, OneThatHangsDoesNotHangTheOthers) {
    DesktopProgram& vorq = startAndWait();
    const Stopped hung(vorq.process());
    QElapsedTimer timer;
    timer.start();
    for (const QStringList& arguments :
         {QStringList{"summon"}, {"quit"}, {"open", "vorq://auth/callback?handoff=abc"}}) {
        const Ended ended = runToEnd(arguments);
        EXPECT_EQ(ended.status, 1);
        EXPECT_THAT(ended.output, HasSubstr("Vorq is running, but does not answer."));
    }
    EXPECT_TRUE(hung.holds());
}

TEST_F(TrayProgramTest, WithoutABusItRunsAloneAndSaysSo) {
    QProcessEnvironment noBus;
    noBus.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    DesktopProgram& vorq = start({"--background"}, noBus);
    waitFor(vorq, "clear-chat hotkey.");
    EXPECT_THAT(vorq.output().toStdString(), HasSubstr("There is no session bus"));
    m_session.key({"super+shift+a"});
    waitFor(vorq, "Vorq ⌘⇧A: ");
    const Ended second = runToEnd({"summon"}, noBus);
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.output, HasSubstr("Vorq is running already"));
}

TEST_F(TrayProgramTest, WithoutADesktopItSaysWhatToDo) {
    QProcessEnvironment noDisplay;
    noDisplay.insert("DISPLAY", "");
    const Ended ended = runToEnd({}, noDisplay);
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, HasSubstr("use vorq ask"));
}

TEST_F(TrayProgramTest, TheTerminalCommandNeedsNoDesktop) {
    QProcessEnvironment noDisplay;
    noDisplay.insert("DISPLAY", "");
    EXPECT_THAT(runToEnd({"ask", "a", "question"}, noDisplay).output, Not(HasSubstr("display")));
}

TEST_F(TrayProgramTest, ItsIconAppearsWhenATrayComesLater) {
    startAndWait();
    EXPECT_FALSE(showsColor(iris));
    m_session.start("tint2", "tint2");
    DesktopSession::waitUntil("the mark in the tray", [this] { return showsColor(iris); });
}

TEST_F(TrayProgramTest, StartedAgainItOpensItsMenu) {
    m_session.start("tint2", "tint2");
    startAndWait();
    DesktopSession::waitUntil("the mark in the tray", [this] { return showsColor(iris); });
    startAgainForMenu();
}

TEST_F(TrayProgramTest, ItEntersItselfForLoginAndForLinks) {
    startAndWait();
    const auto content = [this](const QString& path) {
        QFile file(m_session.home() + "/" + path);
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    };
    DesktopSession::waitUntil("the default for links", [&] {
        return content(".config/mimeapps.list").contains("vorq=com.vorq.desk.desktop");
    });
    const std::string path = program.toStdString();
    EXPECT_THAT(content(".config/autostart/com.vorq.desk.desktop"),
                HasSubstr("Exec=" + path + " --background --launched-at-login\n"));
    EXPECT_THAT(content(".local/share/applications/com.vorq.desk.desktop"),
                HasSubstr("Exec=" + path + " %u\n"));
}

// The bus of accessibility is there, and nobody has agreed to its use yet.
class AccessibilityConsentTest : public TrayProgramTest {
  protected:
    AccessibilityConsentTest()
        : TrayProgramTest({.hasAccessibilityBus = true, .isAccessibilityOn = false}) {}
};

TEST_F(AccessibilityConsentTest, TheCommandTurnsItOnForTheOneThatRuns) {
    openTerminal();
    DesktopProgram& vorq = startAndWait();
    m_session.key({"super+shift+a"});
    waitFor(vorq, "trusted=false perm=pending");
    const Ended ended = runToEnd({"enable-accessibility"});
    EXPECT_EQ(ended.status, 0) << ended.output;
    EXPECT_THAT(ended.output, HasSubstr("Accessibility is on."));
    DesktopSession::waitUntil("the capture to be trusted", [&] {
        // Any faster, the commands would be the repetitions of one key that is held.
        std::this_thread::sleep_for(std::chrono::milliseconds(800));
        runToEnd({"summon"});
        return vorq.output().contains("trusted=true perm=granted");
    });
}

// Of the daemon that announces the accessibility bus, and of the one that carries it.
class HangingBusTest : public AccessibilityConsentTest {
  protected:
    [[nodiscard]] QByteArray answer(const QStringList& call, const QString& bus = "--session") {
        return run("dbus-send", "dbus-bin", QStringList{bus, "--print-reply"} + call,
                   m_session.environment());
    }
    [[nodiscard]] QString address() {
        const QStringList call{"--dest=org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus.GetAddress"};
        return QString::fromUtf8(answer(call)).section(u'"', 1, 1);
    }
    [[nodiscard]] int ownerOf(const QString& name, const QString& bus) {
        const QStringList call{"--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                               "org.freedesktop.DBus.GetConnectionUnixProcessID", "string:" + name};
        return answer(call, bus).trimmed().split(' ').last().toInt();
    }
    // By itself Qt waits for most of a minute, or without an end.
    void expectStartWhileStopped(int process) {
        ASSERT_GT(process, 0);
        const Stopped hung(process);
        openTerminal();
        DesktopProgram& vorq = startAndWait();
        EXPECT_TRUE(hung.holds());
        EXPECT_THAT(vorq.output().toStdString(), HasSubstr("the accessibility bus hangs"));
        m_session.key({"super+shift+a"});
        waitFor(vorq, "Vorq ⌘⇧A: ");
        EXPECT_THAT(runToEnd({"quit"}).output, "");
    }
};

TEST_F(HangingBusTest, AServiceThatHangsDoesNotKeepItFromStarting) {
    EXPECT_NE(address(), "");
    expectStartWhileStopped(ownerOf("org.a11y.Bus", "--session"));
}

TEST_F(HangingBusTest, ABusThatHangsDoesNotKeepItFromStarting) {
    m_session.switchAccessibility(true);
    expectStartWhileStopped(ownerOf("org.freedesktop.DBus", "--bus=" + address()));
}

TEST_F(AccessibilityConsentTest, TheCommandNeedsNoDisplay) {
    QProcessEnvironment noDisplay;
    noDisplay.insert("DISPLAY", "");
    EXPECT_EQ(runToEnd({"enable-accessibility"}, noDisplay).status, 0);
}

TEST_F(TrayProgramTest, WithoutAccessibilityTheCommandSaysWhatIsMissing) {
    const Ended ended = runToEnd({"enable-accessibility"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, HasSubstr("at-spi2-core"));
    QProcessEnvironment noBus;
    noBus.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    const Ended alone = runToEnd({"enable-accessibility"}, noBus);
    EXPECT_EQ(alone.status, 1);
    EXPECT_THAT(alone.output, HasSubstr("There is no session bus"));
}

class RendererTest : public TrayProgramTest {
  protected:
    // Shows the panel, so that all that draws it is loaded, and gives the libraries.
    std::string librariesOf(DesktopProgram& vorq) {
        waitFor(vorq, "clear-chat hotkey.");
        m_session.key({"super+shift+a"});
        EXPECT_NE(m_session.waitForWindow("vorq"), 0U);
        QFile maps(u"/proc/%1/maps"_s.arg(vorq.process()));
        return maps.open(QIODevice::ReadOnly) ? maps.readAll().toStdString() : std::string();
    }

    static inline const std::string notice =
        "Vorq: there is no graphics processor to draw with, so OpenGL is not used.";
    static inline const std::string openGl = "_dri.so";
};

// The session says that there is none, on whatever machine it runs.
TEST_F(RendererTest, WithoutAGraphicsProcessorOpenGlIsNotLoaded) {
    DesktopProgram& vorq = start();
    EXPECT_THAT(librariesOf(vorq), AllOf(HasSubstr("libQt6Quick"), Not(HasSubstr(openGl))));
    EXPECT_THAT(vorq.output().toStdString(), HasSubstr(notice));
}

TEST_F(RendererTest, TheUserMayHaveOpenGlAllTheSame) {
    QProcessEnvironment openGlWanted;
    openGlWanted.insert("QSG_RHI_BACKEND", "opengl");
    DesktopProgram& vorq = start({"--background"}, openGlWanted);
    EXPECT_THAT(librariesOf(vorq), HasSubstr(openGl));
    EXPECT_THAT(vorq.output().toStdString(), Not(HasSubstr(notice)));
}

} // namespace
} // namespace vorq::desktop
