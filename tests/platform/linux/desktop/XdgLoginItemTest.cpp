#include "platform/linux/desktop/XdgLoginItem.h"
#include "platform/testing/ScriptedDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class XdgLoginItemTest : public testing::Test {
  protected:
    [[nodiscard]] QString path() const {
        return m_folder.filePath("autostart/com.vorq.desk.desktop");
    }

    [[nodiscard]] QByteArray entry() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void write(const QByteArray& text) {
        ASSERT_TRUE(QDir(m_folder.path()).mkpath("autostart"));
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    XdgLoginItem item(const QString& executable = "/opt/vorq/bin/vorq") {
        return {m_defaults, m_folder.path(), executable};
    }

    QTemporaryDir m_folder;
    ScriptedDefaults m_defaults;
};

TEST_F(XdgLoginItemTest, StartsTheProgramInTheBackground) {
    EXPECT_TRUE(item().registerAtLogin());
    EXPECT_TRUE(entry().startsWith("[Desktop Entry]\nType=Application\nName=Vorq\n"));
    EXPECT_THAT(entry().toStdString(), testing::HasSubstr("\nExec=/opt/vorq/bin/vorq --background "
                                                          "--launched-at-login\n"));
}

TEST_F(XdgLoginItemTest, FollowsTheProgramToAnotherPlace) {
    ASSERT_TRUE(item("/old/vorq").registerAtLogin());
    ASSERT_TRUE(item("/new/vorq").registerAtLogin());
    EXPECT_TRUE(entry().contains("Exec=/new/vorq "));
}

TEST_F(XdgLoginItemTest, WhatTheUserSwitchedOffStaysOff) {
    for (const QByteArray setting : {"Hidden=true", "X-GNOME-Autostart-enabled=false",
                                     "Hidden = true", "X-GNOME-Autostart-enabled=False"}) {
        const QByteArray text = "[Desktop Entry]\nType=Application\nExec=vorq\n" + setting + "\n";
        write(text);
        EXPECT_TRUE(item().registerAtLogin());
        EXPECT_EQ(entry(), text);
    }
}

TEST_F(XdgLoginItemTest, AnEntryThatTheUserEditedIsLeftAlone) {
    ASSERT_TRUE(item().registerAtLogin());
    const QByteArray delayed = entry() + "X-GNOME-Autostart-Delay=10\n";
    const QByteArray wrapped = entry().replace("Exec=", "Exec=nice ");
    for (const QByteArray& edited : {delayed, wrapped}) {
        write(edited);
        EXPECT_TRUE(item().registerAtLogin());
        EXPECT_EQ(entry(), edited);
    }
}

TEST_F(XdgLoginItemTest, AnEntryThatTheUserDeletedDoesNotComeBack) {
    ASSERT_TRUE(item().registerAtLogin());
    ASSERT_TRUE(QFile::remove(path()));
    EXPECT_TRUE(item().registerAtLogin());
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(XdgLoginItemTest, UnregisteringTakesTheEntryAwayAndForgets) {
    ASSERT_TRUE(item().registerAtLogin());
    EXPECT_TRUE(item().unregisterAtLogin());
    EXPECT_FALSE(QFile::exists(path()));
    EXPECT_TRUE(item().registerAtLogin());
    EXPECT_TRUE(QFile::exists(path()));
}

TEST_F(XdgLoginItemTest, UnregisteringTakesTheStartBySystemdAwayToo) {
    const QString folder = m_folder.filePath("systemd/user/graphical-session.target.wants");
    const QString link = folder + "/vorq.service";
    QDir().mkpath(folder);
    ASSERT_TRUE(QFile::link("/nowhere/vorq.service", link));
    EXPECT_TRUE(item().unregisterAtLogin());
    EXPECT_FALSE(QFileInfo(link).isSymLink());
}

TEST_F(XdgLoginItemTest, SaysWhyItCannotBeWritten) {
    QFile blocker(m_folder.filePath("autostart"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    const auto outcome = item().registerAtLogin();
    ASSERT_FALSE(outcome);
    EXPECT_NE(outcome.error(), "");
}

TEST(DesktopExecWord, QuotesWhatTheLineWouldReadOtherwise) {
    EXPECT_EQ(desktopExecWord("/usr/bin/vorq"), "/usr/bin/vorq");
    EXPECT_EQ(desktopExecWord("/my programs/vorq"), "\"/my programs/vorq\"");
    EXPECT_EQ(desktopExecWord("/o'brien/vorq"), "\"/o'brien/vorq\"");
    EXPECT_EQ(desktopExecWord("/a&b/vorq"), "\"/a&b/vorq\"");
    EXPECT_EQ(desktopExecWord("/opt/vorq-1.0_b+c/vorq"), "/opt/vorq-1.0_b+c/vorq");
    EXPECT_EQ(desktopExecWord("/100%/vorq"), "\"/100%%/vorq\"");
    EXPECT_EQ(desktopExecWord("/a$b\\c"), R"("/a\\$b\\\\c")");
}

} // namespace
} // namespace vorq
