// The built program in Wayland sessions, beside native windows.

#include "doubles/desktop/CaptureDesktop.h"
#include "doubles/desktop/PanelProgram.h"
#include "doubles/wayland/VirtualSeat.h"
#include "doubles/wayland/WaylandCompositor.h"
#include "platform/linux/desktop/ProcessExecutable.h"

#include <QFile>
#include <QTest>

#include <gmock/gmock.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString line = u"Silt settles on the fields."_s;

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

    // Has a chord run a command of Vorq, each run of which notes its process.
    void bind(QChar letter, const QString& command) {
        const QString file =
            session().write("shortcut-" + command,
                            "#!/bin/sh\necho $$ >> \"$0.processes\"\nexec " VORQ_PROGRAM " " +
                                command.toUtf8() + "\n");
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        compositor().bind(letter, file);
    }
    // Holds a chord that runs a command, and waits until all that it ran is over. Gives how often.
    qsizetype holdShortcut(QChar letter, const QString& command) {
        pressShortcut(letter, 1500ms);
        QFile noted(session().home() + "/shortcut-" + command + ".processes");
        QByteArrayList processes;
        DesktopSession::waitUntil("the end of the commands", [&] {
            const qsizetype before = processes.size();
            if (noted.open(QIODevice::ReadOnly)) processes = noted.readAll().trimmed().split('\n');
            noted.close();
            const bool isOver = before > 0 && before == processes.size() &&
                                std::ranges::none_of(processes, [](const QByteArray& process) {
                                    return !executableName(process.toInt()).isEmpty();
                                });
            if (!isOver) QTest::qWait(200);
            return isOver;
        });
        // From here on the same command is no repetition.
        QTest::qWait(800);
        return processes.size();
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

    EXPECT_GT(desktop.holdShortcut(u'a', "summon"), 3);
    desktop.waitForPanel();
    EXPECT_EQ(desktop.summons(), 1);

    desktop.pressShortcut(u'a');
    vorq.waitForNoPanel();
    DesktopSession::waitUntil("its log", [&] { return desktop.summons() == 2; });
}

TEST_P(WaylandProgramTest, AHeldShortcutOfAnyCommandCountsOnce) {
    vorq.start();
    desktop.openTerminal();
    desktop.bind(u's', "note");
    EXPECT_GT(desktop.holdShortcut(u's', "note"), 3);
    EXPECT_EQ(vorq.program().output().count("note hotkey — source: "), 1);

    desktop.bind(u'a', "toggle");
    EXPECT_GT(desktop.holdShortcut(u'a', "toggle"), 3);
    desktop.waitForPanel();
    for (int look = 0; look < 8; ++look) {
        QTest::qWait(100);
        EXPECT_NE(vorq.panel(), 0U);
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
