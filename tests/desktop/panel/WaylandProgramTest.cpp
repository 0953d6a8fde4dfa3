// The built program in Wayland sessions, beside native windows.

#include "app/instance/CommandRepeats.h"
#include "doubles/desktop/CaptureDesktop.h"
#include "doubles/desktop/PanelProgram.h"
#include "doubles/wayland/VirtualSeat.h"
#include "doubles/wayland/WaylandCompositor.h"
#include "platform/linux/desktop/ProcessExecutable.h"

#include <QFile>
#include <QTest>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <ranges>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString line = u"Silt settles on the fields."_s;

struct CommandRun {
    std::int32_t process = 0;
    std::chrono::milliseconds began{}; // since the machine was started
};

// Whoever holds a key presses it once, unless a repetition came so late that it looks like another.
int pressesIn(std::vector<CommandRun> runs) {
    std::ranges::sort(runs, {}, &CommandRun::began);
    int presses = 1;
    for (std::size_t run = 1; run < runs.size(); ++run)
        if (runs[run].began - runs[run - 1].began >= CommandRepeats::pause) ++presses;
    return presses;
}

class WaylandDesktop {
  public:
    explicit WaylandDesktop(SessionType type) : vorq(options(type)), m_type(type) {}

    PanelProgram vorq;

    [[nodiscard]] DesktopSession& session() { return vorq.session; }
    [[nodiscard]] WaylandCompositor& compositor() { return vorq.session.compositor(); }

    // Each waits until the program is in front and gives its process.
    std::int32_t openEditor() {
        return inFront(session().start("mousepad", "mousepad",
                                       {session().write("document.txt", line.toUtf8())}));
    }
    // One that accessibility does not know. foot shows no window over kwin 5.27.
    std::int32_t openTerminal() {
        if (m_type == SessionType::KWin)
            return inFront(session().start("xterm", "xterm", {"-e", "sleep", "600"}));
        return inFront(session().start("foot", "foot", {"sleep", "600"}));
    }

    // In an editor that is in front.
    void highlight(std::int32_t editor) {
        const auto accessibility = connected();
        DesktopSession::waitUntil("the highlight", [&] {
            compositor().seat().chord({VirtualSeat::control, VirtualSeat::keyA});
            QTest::qWait(200);
            return focusedText(*accessibility, editor) == line;
        });
    }

    // Has a chord run a command of Vorq, each run of which notes its process and when that began.
    void bind(QChar letter, const QString& command) {
        const QString file = session().write(
            "shortcut-" + command,
            "#!/bin/sh\n"
            "read -r a b c d e f g h i j k l m n o p q r s t u v rest < /proc/$$/stat\n"
            "echo $$ $v >> \"$0.processes\"\nexec " VORQ_PROGRAM " " +
                command.toUtf8() + "\n");
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        compositor().bind(letter, file);
    }
    // Holds a chord that runs a command until that has repeated, and waits until all is over. Gives
    // how many presses that was: more than one where the machine was too busy to repeat in time.
    int holdShortcut(QChar letter, const QString& command) {
        constexpr std::size_t enough = 4;
        VirtualSeat& seat = compositor().seat();
        const std::array keys{VirtualSeat::super, VirtualSeat::shift, VirtualSeat::codeOf(letter)};
        for (const unsigned key : keys)
            seat.key(key, true);
        QTest::qWait(1500);
        DesktopSession::waitUntil("the repetitions",
                                  [&] { return commandsRun(command).size() >= enough; });
        for (const unsigned key : keys | std::views::reverse)
            seat.key(key, false);
        std::vector<CommandRun> runs;
        DesktopSession::waitUntil("the end of the commands", [&] {
            const std::size_t before = std::exchange(runs, commandsRun(command)).size();
            const bool isOver =
                before == runs.size() && std::ranges::none_of(runs, [](const CommandRun& run) {
                    return !executableName(run.process).isEmpty();
                });
            if (!isOver) QTest::qWait(200);
            return isOver;
        });
        // From here on the same command is no repetition.
        QTest::qWait(800);
        return pressesIn(std::move(runs));
    }

    // One of the compositor, with Super and Shift.
    void pressShortcut(QChar letter, std::chrono::milliseconds hold = 0ms) {
        compositor().seat().chord(
            {VirtualSeat::super, VirtualSeat::shift, VirtualSeat::codeOf(letter)}, hold);
    }

    // Where the panel, which may be above it, is not.
    void clickOnTheEdgeOf(std::int32_t process) {
        compositor().seat().click(compositor().windowOf(process).bottomRight() - QPoint(20, 20));
    }

    void waitUntilInFront(std::int32_t process) {
        DesktopSession::waitUntil("the window to come to the front",
                                  [&] { return compositor().isInFront(process); });
    }

    [[nodiscard]] qsizetype summons() { return vorq.program().output().count("Vorq ⌘⇧A: "); }

    void waitForSentText() {
        explained([this] {
            DesktopSession::waitUntil("the text to be sent",
                                      [this] { return !vorq.analysed().isEmpty(); });
        });
    }
    void waitForPanel() {
        explained([this] { vorq.waitForPanel(); });
    }

    // Long enough for a text to be read and sent.
    void waitForNothing() { QTest::qWait(1500); }

  private:
    // A wait that says what Vorq said, if it is in vain.
    void explained(const std::function<void()>& wait) {
        try {
            wait();
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(error.what() +
                                     ("; Vorq says: " + vorq.program().output()).toStdString());
        }
    }

    static SessionOptions options(SessionType type) {
        SessionOptions options;
        options.type = type;
        return options;
    }

    std::int32_t inFront(DesktopProgram& program) {
        try {
            waitUntilInFront(program.process());
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(error.what() +
                                     ("; it says: " + program.output()).toStdString());
        }
        return program.process();
    }

    [[nodiscard]] std::vector<CommandRun> commandsRun(const QString& command) {
        const long ticksPerSecond = ::sysconf(_SC_CLK_TCK);
        QFile noted(session().home() + "/shortcut-" + command + ".processes");
        std::vector<CommandRun> runs;
        if (!noted.open(QIODevice::ReadOnly)) return runs;
        for (const QByteArray& note : noted.readAll().trimmed().split('\n')) {
            const QByteArrayList words = note.split(' ');
            if (words.size() == 2)
                runs.push_back({.process = words[0].toInt(),
                                .began = std::chrono::milliseconds(words[1].toLongLong() * 1000 /
                                                                   ticksPerSecond)});
        }
        return runs;
    }

    SessionType m_type;
};

class WaylandProgramTest : public testing::TestWithParam<SessionType> {
  protected:
    WaylandDesktop desktop{GetParam()};
    PanelProgram& vorq = desktop.vorq;
};

TEST_P(WaylandProgramTest, TakesTheTextOfTheApplicationThatWasInFrontBeforeItsStart) {
    const std::int32_t editor = desktop.openEditor();
    desktop.highlight(editor);
    vorq.start();
    desktop.waitForNothing();

    vorq.summon();
    desktop.waitForPanel();
    desktop.waitForSentText();
    EXPECT_THAT(vorq.analysed(), ElementsAre(line));
}

TEST_P(WaylandProgramTest, SendsNoTextOfAnApplicationBehindOneThatIsNotKnown) {
    vorq.start();
    desktop.highlight(desktop.openEditor());
    desktop.openTerminal();

    vorq.summon();
    desktop.waitForPanel();
    desktop.waitForNothing();
    EXPECT_THAT(vorq.analysed(), IsEmpty());

    // Nothing is selected in the terminal, as far as is known.
    vorq.summon();
    vorq.waitForNoPanel();
    EXPECT_THAT(vorq.analysed(), IsEmpty());
}

TEST_P(WaylandProgramTest, TakesTheTextBehindItsOwnPanel) {
    vorq.start();
    desktop.highlight(desktop.openEditor());
    run(VORQ_PROGRAM, "", {"toggle"}, desktop.session().environment());
    desktop.waitForPanel();
    desktop.waitForNothing();

    vorq.summon();
    desktop.waitForSentText();
    EXPECT_THAT(vorq.analysed(), ElementsAre(line));
}

TEST_P(WaylandProgramTest, AClickOnAnotherWindowClosesThePanel) {
    vorq.start();
    const std::int32_t terminal = desktop.openTerminal();
    vorq.summon();
    desktop.waitForPanel();
    desktop.waitForNothing();
    ASSERT_NE(vorq.panel(), 0U);

    desktop.clickOnTheEdgeOf(terminal);
    vorq.waitForNoPanel();
    EXPECT_TRUE(desktop.compositor().isInFront(terminal));
}

TEST_P(WaylandProgramTest, AHeldShortcutShowsThePanelOnce) {
    vorq.start();
    desktop.openTerminal();
    desktop.bind(u'a', "summon");

    const int presses = desktop.holdShortcut(u'a', "summon");
    EXPECT_EQ(desktop.summons(), presses);
    const auto waitFor = [&](bool isShown) {
        isShown ? desktop.waitForPanel() : vorq.waitForNoPanel();
    };
    const bool isShown = presses % 2 == 1;
    waitFor(isShown);

    desktop.pressShortcut(u'a');
    waitFor(!isShown);
    DesktopSession::waitUntil("its log", [&] { return desktop.summons() == presses + 1; });
}

TEST_P(WaylandProgramTest, AHeldShortcutOfAnyCommandCountsOnce) {
    vorq.start();
    desktop.openTerminal();
    desktop.bind(u's', "note");
    const int presses = desktop.holdShortcut(u's', "note");
    EXPECT_EQ(vorq.program().output().count("note hotkey — source: "), presses);

    desktop.bind(u'a', "toggle");
    const bool isShown = desktop.holdShortcut(u'a', "toggle") % 2 == 1;
    if (isShown) desktop.waitForPanel();
    for (int look = 0; look < 8; ++look) {
        QTest::qWait(100);
        EXPECT_EQ(vorq.panel() != 0, isShown);
    }
}

std::string nameOf(const testing::TestParamInfo<SessionType>& info) {
    if (info.param == SessionType::Gnome) return "gnome";
    return info.param == SessionType::KWin ? "kwin" : "sway";
}

INSTANTIATE_TEST_SUITE_P(, WaylandProgramTest,
                         testing::Values(SessionType::Sway, SessionType::KWin, SessionType::Gnome),
                         nameOf);

} // namespace
} // namespace vorq::desktop
