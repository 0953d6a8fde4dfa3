// vorq doctor in a real session, on a Vorq that runs and without one.

#include "doubles/desktop/PanelProgram.h"
#include "platform/linux/x11/X11HotKeys.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using testing::HasSubstr;
using testing::Not;

class DoctorTest : public testing::Test {
  protected:
    struct Ended {
        int status = 0;
        QByteArray output;
        QProcess::ExitStatus exit = QProcess::NormalExit;
    };

    DoctorTest() { m_vorq.emplace(); }

    void useSession(const SessionOptions& options) {
        m_vorq.reset();
        m_vorq.emplace(options);
    }

    [[nodiscard]] DesktopSession& session() { return m_vorq->session; }

    void startTray() { session().start("tint2", "tint2"); }

    // Of Vorq, in the tray.
    void waitForMark() {
        const QByteArray iris = "\x5b\x78\xfb";
        DesktopSession::waitUntil("the mark in the tray", [&] {
            return run("import", "imagemagick", {"-window", "root", "-depth", "8", "rgb:-"},
                       session().environment())
                .contains(iris);
        });
    }

    // A window in front, as a user has one.
    DesktopSession::Window openEditor(const QByteArray& text = "of the user") {
        return openMousepad(session(), text).window;
    }

    Ended doctor(const QStringList& options = {}, const QProcessEnvironment& additional = {}) {
        QProcessEnvironment environment;
        environment.insert("VORQ_API_BASE_URL", m_vorq->backend());
        environment.insert(additional);
        DesktopProgram& running =
            session().start(VORQ_PROGRAM, "", QStringList{"doctor"} + options, environment);
        DesktopSession::waitUntil(
            "the end of the test", [&] { return !running.isRunning(); }, std::chrono::seconds(90));
        return {running.qt().exitCode(), running.output(), running.qt().exitStatus()};
    }

    // Of the line of a check: its state and what it says.
    static std::string lineOf(const QByteArray& output, const QByteArray& id) {
        for (const QByteArray& line : output.split('\n')) {
            const QByteArray plain = line.simplified();
            if (plain.split(' ').value(1) == id) return plain.toStdString();
        }
        return "no line of " + id.toStdString() + " in:\n" + output.toStdString();
    }

    static QJsonObject checkIn(const QByteArray& json, const QString& id) {
        const QJsonArray checks =
            QJsonDocument::fromJson(json).object().value("checks"_L1).toArray();
        for (const auto& check : checks)
            if (check["id"_L1].toString() == id) return check.toObject();
        return {};
    }

    std::optional<PanelProgram> m_vorq;
};

TEST_F(DoctorTest, OnAWholeDesktopNothingFails) {
    startTray();
    m_vorq->start();
    waitForMark();
    const auto editor = openEditor();
    session().own("clipboard", "the user's clipboard");
    const Ended ended = doctor();
    EXPECT_EQ(ended.status, 0) << ended.output.toStdString();
    for (const char* id : {"program", "session", "accessibility", "programs", "tray", "notes",
                           "backend", "account", "window", "capture-accessibility",
                           "capture-primary", "capture-copy", "replacement", "hot-keys"})
        EXPECT_THAT(lineOf(ended.output, id), testing::StartsWith("ok "));
    EXPECT_THAT(lineOf(ended.output, "provider"), HasSubstr("No language model is connected"));
    EXPECT_THAT(lineOf(ended.output, "notes"), HasSubstr("Gnote"));
    DesktopSession::waitUntil("the window that was in front",
                              [&] { return session().activeWindow() == editor; });
    session().waitForNoWindow("vorq-test-window");
    EXPECT_EQ(session().selection("clipboard"), "the user's clipboard");
    EXPECT_EQ(m_vorq->panel(), 0U);
    EXPECT_TRUE(m_vorq->analysed().isEmpty());
}

TEST_F(DoctorTest, WhatWasHighlightedIsStillHandedOut) {
    m_vorq->start();
    openEditor();
    session().own("primary", "the user's highlight");
    const Ended ended = doctor();
    EXPECT_THAT(lineOf(ended.output, "capture-primary"), testing::StartsWith("ok "));
    EXPECT_EQ(session().selection("primary"), "the user's highlight");
}

TEST_F(DoctorTest, TheKeysWorkAgainAfterwards) {
    m_vorq->start();
    openEditor();
    EXPECT_EQ(doctor().status, 0);
    m_vorq->pressHotKey();
    m_vorq->waitForPanel();
}

TEST_F(DoctorTest, WithoutAVorqThatRunsItTestsByItself) {
    startTray();
    openEditor();
    session().own("clipboard", "the user's clipboard");
    const Ended ended = doctor();
    EXPECT_EQ(ended.status, 0) << ended.output.toStdString();
    EXPECT_THAT(lineOf(ended.output, "program"), HasSubstr("warning program Vorq does not run"));
    EXPECT_THAT(lineOf(ended.output, "capture-accessibility"), testing::StartsWith("ok "));
    EXPECT_THAT(lineOf(ended.output, "hot-keys"), testing::StartsWith("ok "));
    EXPECT_THAT(lineOf(ended.output, "capture-copy"),
                HasSubstr("skipped capture-copy What is on the clipboard"));
    EXPECT_EQ(session().selection("clipboard"), "the user's clipboard");
}

TEST_F(DoctorTest, WithoutATrayItSaysSo) {
    m_vorq->start();
    openEditor();
    const Ended ended = doctor();
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(lineOf(ended.output, "tray"), HasSubstr("warning tray This desktop has no tray."));
}

TEST_F(DoctorTest, WithoutAnAccessibilityBusItSaysSo) {
    useSession({.hasAccessibilityBus = false, .isAccessibilityOn = false});
    m_vorq->start();
    const Ended ended = doctor();
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(lineOf(ended.output, "accessibility"),
                HasSubstr("failed accessibility Accessibility is off"));
    EXPECT_THAT(ended.output.toStdString(), HasSubstr("at-spi2-core"));
    EXPECT_THAT(lineOf(ended.output, "capture-accessibility"), testing::StartsWith("skipped "));
    EXPECT_THAT(lineOf(ended.output, "capture-primary"), testing::StartsWith("ok "));
}

TEST_F(DoctorTest, ABackendThatIsStoppedFails) {
    m_vorq->start(u"http://127.0.0.1:9"_s);
    openEditor();
    const Ended ended = doctor();
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(lineOf(ended.output, "backend"),
                HasSubstr("failed backend The backend on this computer does not answer."));
    EXPECT_THAT(ended.output.toStdString(), HasSubstr("vorq enable-backend"));
}

TEST_F(DoctorTest, AKeyThatAnotherProgramHoldsFails) {
    X11HotKeys other;
    ASSERT_TRUE(other.installEventHandler());
    ASSERT_TRUE(
        other.registerHotKey({'A', 0, HotKeyModifier::command + HotKeyModifier::shift}, {1, 1}));
    m_vorq->start();
    openEditor();
    const Ended ended = doctor();
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(lineOf(ended.output, "hot-keys"),
                HasSubstr("failed hot-keys Taken by another program: Super+Shift+A."));
    EXPECT_THAT(ended.output.toStdString(), HasSubstr("vorq summon"));
}

TEST_F(DoctorTest, AVorqThatHangsIsSaidToAndTheRestIsTested) {
    m_vorq->start();
    openEditor();
    const Stopped hung(m_vorq->program().process());
    const Ended ended = doctor();
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(lineOf(ended.output, "program"),
                HasSubstr("failed program Vorq is running, but does not answer."));
    EXPECT_THAT(lineOf(ended.output, "capture-accessibility"), testing::StartsWith("ok "));
    EXPECT_THAT(lineOf(ended.output, "hot-keys"),
                HasSubstr("skipped hot-keys The Vorq that runs has them."));
    EXPECT_TRUE(hung.holds());
}

TEST_F(DoctorTest, ASecondOneGivesWay) {
    m_vorq->start();
    openEditor();
    DesktopProgram& first = session().start(VORQ_PROGRAM, "", {"doctor"});
    EXPECT_NE(session().waitForWindow("vorq-test-window"), 0U);
    const Ended second = doctor();
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(lineOf(second.output, "program"),
                HasSubstr("failed program Vorq tests itself already."));
    EXPECT_THAT(second.output.toStdString(), Not(HasSubstr("hot-keys")));
    DesktopSession::waitUntil(
        "the end of the first", [&] { return !first.isRunning(); }, std::chrono::seconds(90));
    EXPECT_EQ(first.qt().exitCode(), 0) << first.output().toStdString();
}

TEST_F(DoctorTest, AVorqThatIsQuitMeanwhileFails) {
    m_vorq->start();
    openEditor();
    DesktopProgram& running = session().start(VORQ_PROGRAM, "", {"doctor"});
    EXPECT_NE(session().waitForWindow("vorq-test-window"), 0U);
    run(VORQ_PROGRAM, "", {"quit"}, session().environment());
    DesktopSession::waitUntil("the end of the test", [&] { return !running.isRunning(); });
    EXPECT_EQ(running.qt().exitCode(), 1);
    EXPECT_THAT(running.output().toStdString(), HasSubstr("Vorq ended in the midst of it."));
}

TEST_F(DoctorTest, WithoutADisplayItSaysWhatItCouldNotTest) {
    QProcessEnvironment noDisplay;
    noDisplay.insert("DISPLAY", "");
    const Ended ended = doctor({}, noDisplay);
    EXPECT_EQ(ended.status, 0) << ended.output.toStdString();
    EXPECT_THAT(lineOf(ended.output, "session"),
                HasSubstr("skipped session There is no desktop here."));
    EXPECT_THAT(lineOf(ended.output, "window"), testing::StartsWith("skipped "));
    EXPECT_THAT(lineOf(ended.output, "backend"), testing::StartsWith("ok "));
}

TEST_F(DoctorTest, TheReportHasTheSchemaAndNothingPrivate) {
    m_vorq->start();
    openEditor("private words of the user");
    session().own("clipboard", "private clipboard");
    const Ended ended = doctor({"--json"});
    const QJsonObject report = QJsonDocument::fromJson(ended.output).object();
    EXPECT_EQ(report.value("schema"_L1).toString(), u"com.vorq.self-test")
        << ended.output.toStdString();
    EXPECT_EQ(report.value("testedProgram"_L1).toString(), u"running");
    EXPECT_EQ(checkIn(ended.output, u"hot-keys"_s).value("state"_L1).toString(), u"ok");
    QFile settings(session().home() + "/.config/Vorq/settings.json");
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    const QString token = QJsonDocument::fromJson(settings.readAll())
                              .object()
                              .value("vorq.session.token"_L1)
                              .toString();
    for (const QString& secret :
         {u"private"_s, session().home(), token, qEnvironmentVariable("USER"), u"127.0.0.1"_s})
        if (!secret.isEmpty())
            EXPECT_THAT(ended.output.toStdString(), Not(HasSubstr(secret.toStdString())));
}

TEST_F(DoctorTest, AnInterruptEndsItAndGivesEverythingBack) {
    const auto editor = openEditor();
    QProcessEnvironment environment;
    environment.insert("VORQ_API_BASE_URL", m_vorq->backend());
    DesktopProgram& running = session().start(VORQ_PROGRAM, "", QStringList{"doctor"}, environment);
    EXPECT_NE(session().waitForWindow("vorq-test-window"), 0U);
    ::kill(running.process(), SIGINT);
    DesktopSession::waitUntil("the end", [&] { return !running.isRunning(); });
    EXPECT_EQ(running.qt().exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(running.qt().exitCode(), SIGINT);
    session().waitForNoWindow("vorq-test-window");
    DesktopSession::waitUntil("the window that was in front",
                              [&] { return session().activeWindow() == editor; });
}

TEST_F(DoctorTest, AnInterruptEndsTheTestOfTheVorqThatRuns) {
    m_vorq->start();
    const auto editor = openEditor();
    DesktopProgram& running = session().start(VORQ_PROGRAM, "", QStringList{"doctor"});
    EXPECT_NE(session().waitForWindow("vorq-test-window"), 0U);
    ::kill(running.process(), SIGINT);
    session().waitForNoWindow("vorq-test-window");
    DesktopSession::waitUntil("the window that was in front",
                              [&] { return session().activeWindow() == editor; });
    EXPECT_EQ(doctor().status, 0);
}

TEST_F(DoctorTest, MisuseIsToldFromFailure) {
    EXPECT_EQ(doctor({"--unheard-of"}).status, 2);
    EXPECT_EQ(doctor({"word"}).status, 2);
}

} // namespace
} // namespace vorq::desktop
