// The whole capture against applications and buses that do not behave.

#include "doubles/capture/CaptureFixture.h"
#include "doubles/desktop/CaptureDesktop.h"
#include "platform/linux/desktop/SystemClock.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

const auto text = u"einige Worte"_s;

// Of the session: the daemon that carries the accessibility bus, and the one that announces it.
std::vector<std::int32_t> processesOf(const DesktopSession& session,
                                      const QList<QByteArray>& programs) {
    std::vector<std::int32_t> processes;
    for (const QString& name : QDir("/proc").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile arguments("/proc/" + name + "/cmdline");
        QFile environment("/proc/" + name + "/environ");
        if (!arguments.open(QIODevice::ReadOnly) || !environment.open(QIODevice::ReadOnly))
            continue;
        const QByteArray line = arguments.readAll();
        const bool isOfSession = environment.readAll().contains(session.home().toUtf8());
        const bool isMeant = std::ranges::any_of(
            programs, [&](const QByteArray& program) { return line.contains(program); });
        if (isOfSession && isMeant) processes.push_back(name.toInt());
    }
    return processes;
}

void killAccessibility(const DesktopSession& session, const QList<QByteArray>& programs) {
    for (const std::int32_t process : processesOf(session, programs))
        ::kill(process, SIGKILL);
}

const QByteArray busDaemon = "at-spi2/accessibility.conf";
const QByteArray busLauncher = "at-spi-bus-launcher";

class CaptureOnDesktop : public testing::Test {
  protected:
    // The next bus is often there at once, so its end is told but not seen.
    void endBus(const QList<QByteArray>& programs) {
        int changes = 0;
        QObject context;
        accessibility->whenTrustChanges(&context, [&changes] { ++changes; });
        killAccessibility(session, programs);
        DesktopSession::waitUntil("the end of the bus", [&changes] { return changes > 0; });
    }
    void startService(const Application& application) {
        source = application.process;
        workspace.launch({.process = source, .identifier = "app", .name = "App"});
        workspace.bringToFront(source);
        captures = std::make_unique<Captures>(Captures::Ports{clock, *accessibility, primary,
                                                              workspace, copyShortcut, search,
                                                              screens, showings, log, settings});
    }

    [[nodiscard]] Running<QString> start() {
        return Running<QString>(textOf(captures->panel.captureSelectedTextForHotKey(source, {})));
    }

    // Under load one reading may take longer than it is given; the user presses the key again.
    void expectCapture(const QString& expected) {
        QString last;
        for (int press = 0; press < 20 && last != expected; ++press)
            last = start().result();
        EXPECT_EQ(last, expected);
    }

    void expectCaptureOfNext() {
        session.switchAccessibility(true);
        const Application next = openFeatherPad(session, text.toUtf8());
        session.key({"ctrl+a"});
        waitForFocusedText(*accessibility, next.process, text);
        EXPECT_TRUE(accessibility->isTrusted());
    }

    DesktopSession session;
    SystemClock clock;
    std::unique_ptr<AtSpiAccessibility> accessibility = connected();
    X11PrimarySelection primary;
    ScriptedWorkspace workspace;
    ScriptedCopyShortcut copyShortcut;
    ScriptedHighlightSearch search;
    ScriptedScreens screens;
    PanelShowings showings;
    ScriptedDefaults settings;
    CaptureLog log{clock, session.home() + "/capture.log", {}};
    std::unique_ptr<Captures> captures;
    std::int32_t source = 0;
};

TEST_F(CaptureOnDesktop, ReadsByAccessibility) {
    startService(openMousepad(session, text.toUtf8()));
    session.own("clipboard", "of the user");
    session.key({"ctrl+a"});
    waitForFocusedText(*accessibility, source, text);

    expectCapture(text);
    session.key({"ctrl+Home"});
    waitForFocusedText(*accessibility, source, "");
    expectCapture("");
    EXPECT_EQ(session.selection("clipboard"), "of the user");
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(CaptureOnDesktop, ReadsPrimaryOfATerminal) {
    const Application terminal = openXterm(session, text.toUtf8() + "\n");
    startService(terminal);
    const QPoint line = session.geometry(terminal.window).topLeft() + QPoint(6, 8);
    DesktopSession::waitUntil("the highlight", [&] {
        session.click(line, 3);
        return session.selection("primary") == text.toUtf8() + "\n";
    });

    expectCapture(text);
}

TEST_F(CaptureOnDesktop, LeavesAnApplicationThatStandsStill) {
    startService(openMousepad(session, text.toUtf8()));
    session.key({"ctrl+a"});
    waitForFocusedText(*accessibility, source, text);
    const Stopped stopped(source);
    DesktopSession::waitUntil("the application to stand still", [&] { return stopped.holds(); });

    int ticks = 0;
    QTimer ticking;
    QObject::connect(&ticking, &QTimer::timeout, [&] { ++ticks; });
    ticking.start(10);
    EXPECT_EQ(start().result(), "");
    EXPECT_TRUE(stopped.holds());
    EXPECT_GT(ticks, 3);
}

TEST_F(CaptureOnDesktop, ReadsAgainWhenTheApplicationGoesOn) {
    startService(openMousepad(session, text.toUtf8()));
    session.key({"ctrl+a"});
    waitForFocusedText(*accessibility, source, text);
    {
        const Stopped stopped(source);
        DesktopSession::waitUntil("it to stand still", [&] { return stopped.holds(); });
        EXPECT_EQ(start().result(), "");
    }
    expectCapture(text);
}

TEST_F(CaptureOnDesktop, GivesNothingForAnApplicationThatDies) {
    startService(openMousepad(session, text.toUtf8()));
    session.key({"ctrl+a"});
    waitForFocusedText(*accessibility, source, text);
    const AccessibleElementPtr element = accessibility->focusedElement(source, {});
    ASSERT_TRUE(element);
    ::kill(source, SIGKILL);
    session.waitForNoWindow("mousepad");

    EXPECT_EQ(element->selectedText(), std::nullopt);
    EXPECT_EQ(element->children(), std::nullopt);
    EXPECT_FALSE(element->setSelectedText("anders"));
    EXPECT_EQ(start().result(), "");
}

TEST_F(CaptureOnDesktop, NeverAsksItself) {
    const auto own = static_cast<std::int32_t>(QCoreApplication::applicationPid());
    EXPECT_EQ(accessibility->focusedElement(own, {}), nullptr);
    EXPECT_EQ(accessibility->application(own, {}), nullptr);
    EXPECT_EQ(accessibility->focusedWindow(own, {}), nullptr);
}

TEST_F(CaptureOnDesktop, FindsTheFocusOfTheSession) {
    startService(openMousepad(session, text.toUtf8()));
    session.key({"ctrl+a"});
    const auto late = connected();
    for (Accessibility* reader : {accessibility.get(), late.get()}) {
        DesktopSession::waitUntil("the selection", [&] {
            return captureSelectedTextFromFocusedElement(
                       {.accessibility = *reader, .process = {}, .stop = {}}) == text;
        });
    }
}

TEST_F(CaptureOnDesktop, FindsASelectionThatHasNotTheFocus) {
    startService(openMousepad(session, text.toUtf8()));
    session.key({"ctrl+a"});
    waitForFocusedText(*accessibility, source, text);
    const CaptureSource from{.accessibility = *accessibility, .process = source, .stop = {}};

    const AccessibleElementPtr owner = selectionOwningElement(from);
    ASSERT_TRUE(owner);
    EXPECT_EQ(owner->selectedText(), text);
}

TEST_F(CaptureOnDesktop, EndsAtOnceWhenItIsStoppedBefore) {
    startService(openMousepad(session, text.toUtf8()));
    std::stop_source stop;
    stop.request_stop();

    EXPECT_EQ(accessibility->focusedElement(source, stop.get_token()), nullptr);
}

TEST_F(CaptureOnDesktop, RecoversFromTheEndOfTheBus) {
    startService(openMousepad(session, text.toUtf8()));
    endBus({busDaemon, busLauncher});
    EXPECT_EQ(start().result(), "");

    expectCaptureOfNext();
}

// On another bus the same names are those of other programs.
TEST_F(CaptureOnDesktop, KnowsTheApplicationsOfANewBusFromThoseOfTheOld) {
    startService(openMousepad(session, text.toUtf8()));
    session.key({"ctrl+a"});
    waitForFocusedText(*accessibility, source, text);
    endBus({busDaemon});

    expectCaptureOfNext();
}

// The old bus goes on, but programs that start find the new one.
TEST_F(CaptureOnDesktop, GoesToTheBusThatIsAnnouncedAnew) {
    startService(openMousepad(session, text.toUtf8()));
    killAccessibility(session, {busLauncher});

    expectCaptureOfNext();
}

TEST(CaptureWithoutAccessibility, GivesNothingWithoutABus) {
    DesktopSession session({.hasAccessibilityBus = false});
    AtSpiAccessibility accessibility;
    accessibility.requestTrust();
    int turns = 0;
    DesktopSession::waitUntil("the loop to turn", [&] {
        EXPECT_EQ(accessibility.focusedElement(std::nullopt, {}), nullptr);
        return ++turns > 20;
    });
    EXPECT_FALSE(accessibility.isTrusted());
}

TEST(CaptureWithoutAccessibility, GivesNothingWithoutASession) {
    AtSpiAccessibility accessibility("unix:path=/no/such/bus");
    EXPECT_EQ(accessibility.focusedElement(1, {}), nullptr);
    EXPECT_EQ(accessibility.application(1, {}), nullptr);
    EXPECT_FALSE(accessibility.isTrusted());
}

TEST(CaptureWithoutAccessibility, ABusThatHangsHoldsUpNoOtherBus) {
    DesktopSession session;
    // Which starts the bus.
    (void)openMousepad(session, text.toUtf8());
    const std::vector<std::int32_t> daemons = processesOf(session, {busDaemon});
    ASSERT_EQ(daemons.size(), 1U);
    QDBusConnection other = QDBusConnection::connectToBus(session.busAddress(), "other");
    auto stopped = std::make_unique<Stopped>(daemons.front());
    DesktopSession::waitUntil("the bus to stand still", [&] { return stopped->holds(); });
    AtSpiAccessibility accessibility;

    const QDBusMessage question = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/",
                                                                 "org.freedesktop.DBus", "GetId");
    for (int turn = 0; turn < 30; ++turn) {
        EXPECT_FALSE(accessibility.isTrusted());
        ASSERT_EQ(other.call(question, QDBus::Block, 10'000).type(), QDBusMessage::ReplyMessage);
        QThread::msleep(20);
    }
    stopped.reset();
    DesktopSession::waitUntil("the bus", [&] { return accessibility.isTrusted(); });
    QDBusConnection::disconnectFromBus("other");
}

TEST(CaptureWithoutAccessibility, IsNotTrustedUntilItIsSwitchedOn) {
    DesktopSession session({.isAccessibilityOn = false});
    AtSpiAccessibility accessibility;
    const Application editor = openMousepad(session, text.toUtf8());
    // Where toolkits show themselves anyway, the bus is there.
    DesktopSession::waitUntil(
        "the bus", [&] { return accessibility.application(editor.process, {}) != nullptr; });
    EXPECT_FALSE(accessibility.isTrusted());

    accessibility.requestTrust();
    DesktopSession::waitUntil("the switch", [&] { return accessibility.isTrusted(); });
    session.switchAccessibility(false);
    DesktopSession::waitUntil("the switch back", [&] { return !accessibility.isTrusted(); });
}

} // namespace
} // namespace vorq::desktop
