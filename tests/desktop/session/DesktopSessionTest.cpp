#include "doubles/desktop/DesktopSession.h"

#include <QFileInfo>

#include <gmock/gmock.h>

#include <csignal>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

TEST(DesktopSession, BringsUpADisplayThatProgramsShowWindowsOn) {
    DesktopSession session;
    DesktopProgram& terminal = session.start("xterm", "xterm", {"-e", "sleep", "60"});
    const DesktopSession::Window window = session.waitForWindow("xterm");
    session.activate(window);

    EXPECT_EQ(session.processOf(window), terminal.process());
    EXPECT_FALSE(session.geometry(window).isEmpty());
}

TEST(DesktopSession, OwnsASelectionThroughAProgram) {
    DesktopSession session;
    session.own("primary", "some text");

    EXPECT_EQ(session.selection("primary"), "some text");
    EXPECT_EQ(session.selection("clipboard"), "");
}

TEST(DesktopSession, EndsEverythingThatRanInIt) {
    std::int32_t grandchild = 0;
    QString home;
    {
        DesktopSession session;
        home = session.home();
        DesktopProgram& shell =
            session.start("sh", "dash", {"-c", "setsid sleep 600 & echo $! > \"$HOME/pid\"; wait"});
        DesktopSession::waitUntil("the shell to tell a process",
                                  [&] { return QFileInfo(home + "/pid").size() > 1; });
        QFile file(home + "/pid");
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        grandchild = file.readAll().trimmed().toInt();
        ASSERT_GT(grandchild, 1);
        shell.kill();
        ASSERT_EQ(::kill(grandchild, 0), 0);
    }
    // What was killed may wait for someone to collect it, and then has no program any more.
    const QString program = u"/proc/%1/exe"_s.arg(grandchild);
    DesktopSession::waitUntil("the grandchild to be gone",
                              [&] { return QFileInfo(program).symLinkTarget().isEmpty(); });
    EXPECT_FALSE(QFileInfo::exists(home));
}

TEST(DesktopSession, GivesTheEnvironmentBack) {
    const QByteArray home = qgetenv("HOME");
    {
        const DesktopSession session;
        EXPECT_EQ(qgetenv("HOME"), session.home().toUtf8());
    }
    EXPECT_EQ(qgetenv("HOME"), home);
}

TEST(DesktopSession, NamesThePackageOfAMissingProgram) {
    DesktopSession session;
    try {
        session.start("no-such-program", "its-package");
        FAIL() << "started";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("install the package its-package"));
    }
}

TEST(DesktopSession, StopsAProcessForAWhile) {
    DesktopSession session;
    DesktopProgram& sleeper = session.start("sleep", "coreutils", {"60"});
    {
        const Stopped stopped(sleeper.process());
        DesktopSession::waitUntil("the process to stand still", [&] { return stopped.holds(); });
    }
    EXPECT_TRUE(sleeper.isRunning());
}

} // namespace
} // namespace vorq::desktop
