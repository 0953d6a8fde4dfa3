// The built program taken off the machine by its own menu, with keys alone.

#include "doubles/desktop/TrayProgram.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

using testing::HasSubstr;
using testing::Not;

// An installation for all users and one of the user's own, neither of them the machine's.
class DeleteProgramTest : public TrayProgramTest {
  protected:
    DeleteProgramTest() {
        m_session.write("all/bin/vorq", "program");
        m_session.write("all/share/applications/com.vorq.desk.desktop", "[Desktop Entry]\n");
        m_session.write(".local/bin/vorq", "program");
        m_session.write(".local/share/applications/com.vorq.desk.desktop", "[Desktop Entry]\n");
        m_session.write(".local/share/Vorq/Library/saved-notes.json", "[]");
        m_session.write(".cache/vorq/qmlcache/page.qmlc", "page");
        m_session.write(".config/Vorq/gateway.json", "{}");
        m_dataFolders.insert("XDG_DATA_DIRS", at("all/share") + ":/usr/share");
    }

    [[nodiscard]] QString at(const QString& path) const { return m_session.home() + "/" + path; }
    [[nodiscard]] bool isThere(const QString& path) const { return QFile::exists(at(path)); }

    DesktopProgram& startWithTray() {
        m_session.start("tint2", "tint2");
        DesktopProgram& running = start({"--background"}, m_dataFolders);
        waitFor(running, "clear-chat hotkey.");
        DesktopSession::waitUntil("the mark in the tray", [this] { return showsColor(iris); });
        EXPECT_TRUE(isThere(".config/autostart/com.vorq.desk.desktop"));
        return running;
    }

    // The last line but one of the menu.
    void askToDelete() {
        startAgainForMenu();
        m_session.key({"Up", "Up", "Return"});
        m_session.activate(m_session.waitForWindow("vorq"));
    }

    QProcessEnvironment m_dataFolders;
};

TEST_F(DeleteProgramTest, NothingHappensUnlessTheUserAgrees) {
    DesktopProgram& vorq = startWithTray();
    askToDelete();
    m_session.key({"Escape"});
    m_session.waitForNoWindow("vorq");
    askToDelete();
    m_session.key({"Return"});
    m_session.waitForNoWindow("vorq");
    EXPECT_TRUE(vorq.isRunning());
    EXPECT_TRUE(isThere("all/bin/vorq"));
    EXPECT_TRUE(isThere(".local/share/Vorq/Library/saved-notes.json"));
    EXPECT_TRUE(isThere(".config/Vorq/settings.json"));
}

TEST_F(DeleteProgramTest, ThenAllOfItIsGoneAndItEnds) {
    DesktopProgram& vorq = startWithTray();
    askToDelete();
    m_session.key({"Tab", "space"});
    DesktopSession::waitUntil("the removal", [this] { return !isThere(".config/Vorq"); });
    // What runs was built and not installed, which the user is told.
    m_session.activate(m_session.waitForWindow("vorq"));
    m_session.key({"super+shift+a"});
    EXPECT_TRUE(vorq.isRunning());
    m_session.key({"Return"});
    DesktopSession::waitUntil("the end", [&] { return !vorq.isRunning(); });
    EXPECT_EQ(vorq.qt().exitCode(), 0);
    EXPECT_THAT(vorq.output().toStdString(), Not(HasSubstr("could not remove")));
    EXPECT_THAT(vorq.output().toStdString(), Not(HasSubstr("Vorq ⌘⇧A: "))) << "after its end";
    for (const char* path :
         {"all/bin/vorq", ".local/bin/vorq", "all/share/applications/com.vorq.desk.desktop",
          ".local/share/applications/com.vorq.desk.desktop", ".local/share/Vorq",
          ".config/autostart/com.vorq.desk.desktop", ".config/Vorq", ".cache/vorq"})
        EXPECT_FALSE(isThere(path)) << path;
    EXPECT_TRUE(isThere(".local/share/Trash/files/Vorq/Library/saved-notes.json"));
    EXPECT_TRUE(QFile::exists(program));
}

} // namespace
} // namespace vorq::desktop
