// The watch of the window in front, opened and closed by the command while the built program runs
// beside real windows.

#include "doubles/desktop/Applications.h"
#include "doubles/desktop/MenuProgram.h"

#include <QFile>

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

using testing::HasSubstr;
using testing::Not;

class WatchPreviewTest : public MenuProgramTest {
  protected:
    void switchWatch(bool isOn) {
        const Ended ended = runToEnd({"preview", "watch", isOn ? "on" : "off"});
        EXPECT_EQ(ended.status, 0);
        EXPECT_EQ(ended.output, isOn ? "watch is on.\n" : "watch is off.\n");
    }

    [[nodiscard]] QByteArray log() const {
        QFile file(m_session.home() + "/.local/share/Vorq/Library/capture-debug.log");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    // A line of a sample that begins so.
    [[nodiscard]] static QByteArray sampleOf(const Application& application, qsizetype selection) {
        return "watch: pid=" + QByteArray::number(application.process) +
               " selection=" + QByteArray::number(selection) + " ";
    }
    void waitForSample(const Application& application, qsizetype selection, qsizetype times = 1) {
        try {
            DesktopSession::waitUntil(sampleOf(application, selection), [&] {
                return log().count(sampleOf(application, selection)) >= times;
            });
        } catch (const std::runtime_error&) {
            ADD_FAILURE() << log().toStdString();
            throw;
        }
    }
    // What the menu says of the watch; "" where it says nothing.
    [[nodiscard]] QString fact() {
        openMenu();
        QString text;
        for (const AccessibleNode& node : menu())
            if (node.name.startsWith("Watch")) text = node.name;
        (void)keep("menu-watch-" + text.section(u' ', 0, 0));
        closeMenu();
        return text;
    }
};

TEST_F(WatchPreviewTest, WhatIsSelectedInEachWindowInFrontIsSeenWhileItIsOn) {
    DesktopProgram& vorq = startInTray();
    const Application editor = openTextWindow(m_session, "five");
    EXPECT_EQ(fact(), "");
    EXPECT_THAT(log().toStdString(), Not(HasSubstr("watch:")));
    switchWatch(true);
    waitForSample(editor, 0);
    EXPECT_EQ(fact(), "Watching test_text_window");
    m_session.activate(editor.window);
    m_session.key({"ctrl+a"});
    waitForSample(editor, 4);

    const Application other = openMousepad(m_session, "eleven char");
    m_session.key({"ctrl+a"});
    waitForSample(other, 11);
    m_session.activate(editor.window);
    waitForSample(editor, 4, 2);
    EXPECT_THAT(runToEnd({"preview"}).output, HasSubstr("watch    on "));
    EXPECT_THAT(log().toStdString(), Not(HasSubstr("eleven")));

    switchWatch(false);
    const qsizetype samples = log().count("watch:");
    m_session.activate(other.window);
    m_session.key({"Home"});
    EXPECT_EQ(fact(), "");
    EXPECT_EQ(log().count("watch:"), samples);
    EXPECT_TRUE(vorq.isRunning());
}

TEST_F(WatchPreviewTest, ThePasswordAndAnExcludedApplicationAreNotSeen) {
    startInTray("{\"vorq.capture.excludedApplications\": [\"org.xfce.mousepad\"]}");
    const Application editor = openTextWindow(m_session, "five");
    switchWatch(true);
    m_session.key({"ctrl+a"});
    waitForSample(editor, 4);
    const qsizetype empty = log().count(sampleOf(editor, 0));
    m_session.key({"Tab", "ctrl+a"});
    waitForSample(editor, 0, empty + 1);
    // Six characters long.
    EXPECT_EQ(log().count(sampleOf(editor, 6)), 0);
    m_session.key({"shift+Tab", "ctrl+a"});
    waitForSample(editor, 4, 2);

    const Application other = openMousepad(m_session, "eleven char");
    m_session.key({"ctrl+a"});
    DesktopSession::waitUntil("the fact", [this] { return fact().endsWith(" is excluded"); });
    m_session.activate(editor.window);
    waitForSample(editor, 4, 3);
    EXPECT_EQ(log().count("watch: pid=" + QByteArray::number(other.process)), 0);
}

TEST_F(WatchPreviewTest, TheSwitchIsRememberedAndAnotherRunMayHaveItOnByItself) {
    EXPECT_EQ(runToEnd({"preview", "watch", "on"}).status, 0);
    DesktopProgram& vorq = start();
    const Application editor = openTextWindow(m_session, "five");
    waitForSample(editor, 0);
    const Ended refused = runToEnd({"--preview=hub"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.output, HasSubstr("Use vorq preview hub on."));
    EXPECT_EQ(runToEnd({"preview", "watch", "off"}).status, 0);
    EXPECT_EQ(runToEnd({"quit"}).status, 0);
    DesktopSession::waitUntil("the end", [&] { return !vorq.isRunning(); });

    start({"--background", "--preview=watch"});
    waitForSample(editor, 0, 2);
    EXPECT_THAT(runToEnd({"preview"}).output, HasSubstr("watch    on "));
    EXPECT_EQ(runToEnd({"quit"}).status, 0);
    EXPECT_THAT(runToEnd({"preview"}).output, HasSubstr("watch    off"));
}

} // namespace
} // namespace vorq::desktop
