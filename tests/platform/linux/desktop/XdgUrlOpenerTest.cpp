// Over programs of the test that stand for those of the desktop.

#include "platform/linux/desktop/XdgUrlOpener.h"

#include "doubles/async/TurnUntil.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedWorkspace.h"

#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

const RunningApplication firefox{9, u"firefox-esr"_s, u"Firefox"_s};
const RunningApplication editor{7, u"org.gnome.gedit"_s, u"Text Editor"_s};

class XdgUrlOpenerTest : public testing::Test {
  protected:
    XdgUrlOpenerTest() : m_path(qgetenv("PATH")) {
        qputenv("PATH", folder.path().toUtf8());
        workspace.launch(firefox);
        workspace.launch(editor);
        workspace.bringToFront(editor.process);
    }
    ~XdgUrlOpenerTest() override { qputenv("PATH", m_path); }

    void install(const QString& name, const QByteArray& body) const {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\nPATH=/usr/bin:/bin\ncd \"${0%/*}\"\n" + body + "\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    void installAll() const {
        install(u"xdg-open"_s, "printf %s \"$1\" > opened");
        install(u"xdg-mime"_s, "[ \"$*\" = \"query default x-scheme-handler/https\" ] && echo "
                               "Firefox-ESR.desktop; : > asked");
    }
    [[nodiscard]] QByteArray content(const QString& name) const {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    void begin(std::stop_token stop = {}) {
        follow(opener.openInFront(QUrl("https://h.example/a b?x=ä"), std::move(stop)), outcome);
    }
    [[nodiscard]] bool hasEnded() const {
        return turnUntil([this] { return outcome->has_value(); }, 10s);
    }
    // Until it waits for the browser.
    void waitForQuery() const {
        EXPECT_TRUE(turnUntil([this] { return content(u"asked"_s).isEmpty(); }, 10s));
        EXPECT_TRUE(turnUntil(
            [this] { return clock.pendingTimers() == 1 && clock.untilNextTimer() > 3s; }, 10s));
    }

    QTemporaryDir folder;
    ManualClock clock;
    ScriptedWorkspace workspace;
    XdgUrlOpener opener{clock, workspace};
    std::shared_ptr<std::optional<UrlOpener::Opened>> outcome =
        std::make_shared<std::optional<UrlOpener::Opened>>();

  private:
    static QCoro::Task<> follow(QCoro::Task<UrlOpener::Opened> task,
                                std::shared_ptr<std::optional<UrlOpener::Opened>> outcome) {
        *outcome = co_await task;
    }

    QByteArray m_path;
};

TEST_F(XdgUrlOpenerTest, HandsTheAddressOverAndTellsOfTheBrowserOnceItIsInFront) {
    installAll();
    begin();
    waitForQuery();
    EXPECT_EQ(content(u"opened"_s), "https://h.example/a%20b?x=%C3%A4");
    workspace.bringToFront(editor.process);
    QCoreApplication::processEvents();
    EXPECT_FALSE(outcome->has_value()) << "an editor is not what the user opens pages in";
    workspace.bringToFront(firefox.process);
    ASSERT_TRUE(hasEnded());
    EXPECT_EQ(**outcome, UrlOpener::Opened(firefox));
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(XdgUrlOpenerTest, ABrowserThatIsInFrontAlreadyIsKnownAtOnce) {
    installAll();
    workspace.bringToFront(firefox.process);
    begin();
    ASSERT_TRUE(hasEnded());
    EXPECT_EQ(**outcome, UrlOpener::Opened(firefox));
}

TEST_F(XdgUrlOpenerTest, ABrowserThatDoesNotComeIsNotKnown) {
    installAll();
    begin();
    waitForQuery();
    clock.advance(10s);
    ASSERT_TRUE(hasEnded());
    EXPECT_EQ(**outcome, UrlOpener::Opened(std::nullopt));
}

TEST_F(XdgUrlOpenerTest, WithoutAChoiceOfBrowserNoneIsKnown) {
    install(u"xdg-open"_s, "");
    begin();
    ASSERT_TRUE(hasEnded());
    EXPECT_EQ(**outcome, UrlOpener::Opened(std::nullopt));
}

TEST_F(XdgUrlOpenerTest, WhatCannotBeOpenedIsTold) {
    install(u"xdg-open"_s, "exit 3");
    begin();
    ASSERT_TRUE(hasEnded());
    EXPECT_EQ(**outcome, UrlOpener::Opened(std::unexpected(u"xdg-open ended with status 3."_s)));
}

TEST_F(XdgUrlOpenerTest, AMissingLauncherIsTold) {
    begin();
    ASSERT_TRUE(hasEnded());
    EXPECT_EQ(**outcome, UrlOpener::Opened(std::unexpected(u"xdg-open is not installed."_s)));
}

TEST_F(XdgUrlOpenerTest, ALauncherThatStaysWithItsBrowserHasOpenedIt) {
    installAll();
    install(u"xdg-open"_s, "echo $$ > running.new; mv running.new running; exec sleep 600");
    workspace.bringToFront(firefox.process);
    begin();
    EXPECT_TRUE(turnUntil([this] { return content(u"running"_s) != "(none)"; }, 10s));
    EXPECT_FALSE(outcome->has_value());
    clock.advance(3s);
    ASSERT_TRUE(hasEnded());
    EXPECT_EQ(**outcome, UrlOpener::Opened(firefox));
    const pid_t launcher = content(u"running"_s).trimmed().toInt();
    ASSERT_GT(launcher, 0);
    EXPECT_EQ(::kill(launcher, 0), 0) << "it was ended";
    EXPECT_EQ(::getsid(launcher), launcher) << "it ends with the terminal of Vorq";
    ::kill(launcher, SIGKILL);
}

TEST_F(XdgUrlOpenerTest, AStopEndsTheWait) {
    installAll();
    std::stop_source stop;
    begin(stop.get_token());
    waitForQuery();
    stop.request_stop();
    ASSERT_TRUE(hasEnded());
    EXPECT_EQ(**outcome, UrlOpener::Opened(std::nullopt));
}

} // namespace
} // namespace vorq
