// The built program in Wayland sessions, beside native windows.

#include "desktop/CaptureDesktop.h"
#include "desktop/PanelProgram.h"
#include "desktop/SwayCompositor.h"

#include <QTest>

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString line = QStringLiteral("Silt settles on the fields.");

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
        try {
            DesktopSession::waitUntil("the text to be sent",
                                      [this] { return !vorq.analysed().isEmpty(); });
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(error.what() +
                                     ("; Vorq says: " + vorq.program().output()).toStdString());
        }
    }

    // Long enough for a text to be read and sent.
    void waitForNothing() { QTest::qWait(1500); }

  private:
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
    vorq.waitForPanel();
    desktop.waitForSentText();
    EXPECT_THAT(vorq.analysed(), ElementsAre(line));
}

TEST_P(WaylandProgramTest, SendsNoTextOfAnApplicationBehindOneThatIsNotKnown) {
    vorq.start();
    desktop.highlight(desktop.openEditor());
    desktop.openTerminal();

    vorq.summon();
    vorq.waitForPanel();
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
    vorq.waitForPanel();
    desktop.waitForNothing();

    vorq.summon();
    desktop.waitForSentText();
    EXPECT_THAT(vorq.analysed(), ElementsAre(line));
}

TEST_P(WaylandProgramTest, AClickOnAnotherWindowClosesThePanel) {
    vorq.start();
    const std::int32_t terminal = desktop.openTerminal();
    vorq.summon();
    vorq.waitForPanel();
    desktop.waitForNothing();
    ASSERT_NE(vorq.panel(), 0U);

    desktop.clickOnTheEdgeOf(terminal);
    vorq.waitForNoPanel();
    EXPECT_TRUE(desktop.compositor().isInFront(terminal));
}

INSTANTIATE_TEST_SUITE_P(, WaylandProgramTest,
                         testing::Values(SessionType::Sway, SessionType::KWin),
                         [](const testing::TestParamInfo<SessionType>& info) {
                             return std::string(info.param == SessionType::Sway ? "sway" : "kwin");
                         });

TEST(SwayProgramTest, AHeldShortcutShowsThePanelOnce) {
    WaylandDesktop desktop(SessionType::Sway);
    auto& sway = dynamic_cast<SwayCompositor&>(desktop.compositor());
    desktop.vorq.start();
    desktop.openTerminal();
    const std::initializer_list<unsigned> shortcut{VirtualSeat::super, VirtualSeat::shift,
                                                   VirtualSeat::keyA};
    sway.bind(u'a', QStringLiteral(VORQ_PROGRAM " summon"));

    sway.seat().chord(shortcut, 1500ms);
    desktop.vorq.waitForPanel();
    QTest::qWait(800);
    EXPECT_EQ(desktop.summons(), 1);

    sway.seat().chord(shortcut);
    desktop.vorq.waitForNoPanel();
    DesktopSession::waitUntil("its log", [&] { return desktop.summons() == 2; });
}

TEST(SwayProgramTest, AHeldShortcutOfAnyCommandCountsOnce) {
    WaylandDesktop desktop(SessionType::Sway);
    auto& sway = dynamic_cast<SwayCompositor&>(desktop.compositor());
    desktop.vorq.start();
    desktop.openTerminal();
    const auto notes = [&] {
        return desktop.vorq.program().output().count("note hotkey — source: ");
    };
    sway.bind(u's', QStringLiteral(VORQ_PROGRAM " note"));
    sway.seat().chord({VirtualSeat::super, VirtualSeat::shift, VirtualSeat::keyS}, 1500ms);
    DesktopSession::waitUntil("the note key", [&] { return notes() > 0; });
    QTest::qWait(800);
    EXPECT_EQ(notes(), 1);

    sway.bind(u'a', QStringLiteral(VORQ_PROGRAM " toggle"));
    sway.seat().chord({VirtualSeat::super, VirtualSeat::shift, VirtualSeat::keyA}, 1500ms);
    desktop.vorq.waitForPanel();
    for (int look = 0; look < 8; ++look) {
        QTest::qWait(100);
        EXPECT_NE(desktop.vorq.panel(), 0U);
    }
}

} // namespace
} // namespace vorq::desktop
