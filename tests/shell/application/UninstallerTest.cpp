#include "shell/application/Uninstaller.h"
#include "doubles/shell/LogLines.h"
#include "library/store/LibraryStore.h"
#include "platform/testing/ScriptedAppPaths.h"
#include "platform/testing/ScriptedBackendAtLogin.h"
#include "platform/testing/ScriptedDefaults.h"
#include "platform/testing/ScriptedInstallation.h"
#include "platform/testing/ScriptedLoginItem.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class UninstallerTest : public testing::Test {
  protected:
    UninstallerTest() {
        // The trash is there, and not the one of whoever runs the tests. Files of another file
        // system than the home folder's would go to a trash of that.
        qputenv("XDG_DATA_HOME", m_paths.applicationSupportFolder().toUtf8());
        qputenv("HOME", m_paths.home().toUtf8());
        (void)m_loginItem.registerAtLogin();
        m_defaults.setString("vorq.session.token", "secret");
        LibraryStore(m_paths.applicationSupportFolder()).save(std::vector<SavedNote>(1));
    }
    ~UninstallerTest() override {
        qunsetenv("XDG_DATA_HOME");
        qputenv("HOME", m_homeOfTheTester);
    }

    [[nodiscard]] QString data(const QString& path) const {
        return m_paths.applicationSupportFolder() + "/" + path;
    }

    QString put(const QString& path) const {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return path;
    }

    QStringList uninstall() {
        return Uninstaller({m_loginItem, m_backend, m_installation, m_paths, m_defaults})
            .uninstall();
    }

    QByteArray m_homeOfTheTester = qgetenv("HOME");
    ScriptedAppPaths m_paths;
    LogLines m_log;
    ScriptedDefaults m_defaults;
    ScriptedLoginItem m_loginItem;
    ScriptedBackendAtLogin m_backend;
    ScriptedInstallation m_installation;
};

TEST_F(UninstallerTest, TakesEverything) {
    m_installation.paths = {put(m_paths.home() + "/bin/vorq"), m_paths.home() + "/not/there"};
    put(m_paths.cacheFolder() + "/qmlcache/page.qmlc");
    put(m_paths.settingsFolder() + "/gateway.json");
    EXPECT_THAT(uninstall(), IsEmpty());
    EXPECT_FALSE(m_loginItem.isRegistered);
    EXPECT_TRUE(m_backend.isRemoved);
    EXPECT_FALSE(QFile::exists(m_installation.paths.front()));
    EXPECT_FALSE(QFile::exists(data("Vorq")));
    EXPECT_FALSE(QFile::exists(m_paths.cacheFolder()));
    EXPECT_FALSE(QFile::exists(m_paths.settingsFolder()));
    EXPECT_THAT(m_defaults.values(), IsEmpty());
    EXPECT_THAT(m_log.all(), IsEmpty());
}

TEST_F(UninstallerTest, WhatTheUserMadeCanBeFoundInTheTrash) {
    put(m_paths.settingsFolder() + "/mine.txt");
    EXPECT_THAT(uninstall(), IsEmpty());
    EXPECT_TRUE(QFile::exists(data("Trash/files/Vorq/Library/saved-notes.json")) ||
                QFile::exists(data("Trash/files/Vorq 2/Library/saved-notes.json")));
    EXPECT_THAT(QDir(data("Trash/files")).entryList(QDir::Dirs | QDir::NoDotAndDotDot), SizeIs(2));
}

TEST_F(UninstallerTest, ALoginItemThatFailsIsLoggedAndToldAndTheRestGoes) {
    m_loginItem.failure = "the disk is full";
    EXPECT_THAT(uninstall(), ElementsAre("The start at login: the disk is full"));
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq Open at Login unregister failed: the disk is full"));
    EXPECT_THAT(m_defaults.values(), IsEmpty());
    EXPECT_FALSE(QFile::exists(data("Vorq")));
}

TEST_F(UninstallerTest, ABackendThatStaysIsLoggedAndToldAndTheRestGoes) {
    m_backend.failure = "Could not remove the entry.";
    EXPECT_THAT(uninstall(), ElementsAre("Could not remove the entry."));
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq could not remove the local backend: Could not "
                                         "remove the entry."));
    EXPECT_FALSE(QFile::exists(data("Vorq")));
}

TEST_F(UninstallerTest, TellsInOneSentenceWhatStaysForOneReason) {
    m_installation.paths = {"/proc/self/status", "/proc/self/stat", "/proc/self/maps"};
    m_installation.sentences = {"Remove the package."};
    const QStringList left = uninstall();
    ASSERT_THAT(left, SizeIs(2));
    EXPECT_THAT(left.front().toStdString(), HasSubstr("/proc/self/status and 2 more: "));
    EXPECT_EQ(left.back(), "Remove the package.");
    EXPECT_THAT(m_log.all(), SizeIs(3));
    EXPECT_THAT(m_log.all().front().toStdString(),
                HasSubstr("Vorq could not remove /proc/self/status: "));
    EXPECT_THAT(m_defaults.values(), IsEmpty());
    EXPECT_FALSE(QFile::exists(data("Vorq")));
}

} // namespace
} // namespace vorq
