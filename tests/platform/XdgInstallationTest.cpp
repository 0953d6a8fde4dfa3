#include "platform/linux/XdgInstallation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class XdgInstallationTest : public testing::Test {
  protected:
    [[nodiscard]] QString at(const QString& path) const { return m_folder.filePath(path); }

    void put(const QString& path) const {
        QDir().mkpath(QFileInfo(at(path)).path());
        QFile file(at(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    void install(const QString& prefix) const {
        put(prefix + "/bin/vorq");
        put(prefix + "/share/applications/com.vorq.desk.desktop");
    }

    [[nodiscard]] QStringList files(const QString& executableFolder) const {
        return XdgInstallation(at(executableFolder), {at("home/.local/share"), at("local/share/")})
            .files();
    }

    QTemporaryDir m_folder;
};

TEST_F(XdgInstallationTest, TheUsersOwnAndTheSharedOneAreFound) {
    install("home/.local");
    install("local");
    const QStringList all = files("elsewhere/bin");
    for (const char* prefix : {"home/.local", "local"}) {
        EXPECT_THAT(all, Contains(at(prefix) + "/bin/vorq"));
        EXPECT_THAT(all, Contains(at(prefix) + "/bin/vorq-gateway"));
        EXPECT_THAT(all, Contains(at(prefix) + "/share/applications/com.vorq.desk.desktop"));
        EXPECT_THAT(all, Contains(at(prefix) + "/share/dbus-1/services/com.vorq.desk.service"));
    }
}

TEST_F(XdgInstallationTest, TheRunningOneIsFoundWhereverItIsInstalled) {
    install("opt/vorq");
    EXPECT_THAT(files("opt/vorq/bin/"), Contains(at("opt/vorq/bin/vorq")));
}

TEST_F(XdgInstallationTest, EachFileIsNamedOnce) {
    install("local");
    QStringList all = files("local/share/../bin");
    EXPECT_THAT(all, Contains(at("local/bin/vorq")));
    EXPECT_EQ(all.removeDuplicates(), 0);
}

TEST_F(XdgInstallationTest, ABuildFolderIsNone) {
    put("build/bin/vorq");
    for (const QString& file : files("build/bin"))
        EXPECT_FALSE(file.startsWith(at("build"))) << file.toStdString();
}

// Such an entry the program writes by itself, for its links.
TEST_F(XdgInstallationTest, AnEntryOfTheUsersCountsWithoutAProgramBesideIt) {
    EXPECT_THAT(files("build/bin"),
                Contains(at("home/.local/share/applications/com.vorq.desk.desktop")));
    EXPECT_THAT(files("build/bin"), Not(Contains(at("home/.local/bin/vorq"))));
}

TEST_F(XdgInstallationTest, AnEntryThatAnotherKindOfPackageShowsIsLeft) {
    put("local/share/applications/com.vorq.desk.desktop");
    for (const QString& file : files("build/bin"))
        EXPECT_FALSE(file.startsWith(at("local"))) << file.toStdString();
}

TEST_F(XdgInstallationTest, WhatPackagesOfTheSystemHoldIsLeftToThem) {
    const XdgInstallation system("/usr/bin", {at("home/.local/share"), "/usr/share/"});
    for (const QString& file : system.files())
        EXPECT_FALSE(file.startsWith("/usr")) << file.toStdString();
    EXPECT_THAT(system.advice().toStdString(), HasSubstr("package"));
    EXPECT_EQ(XdgInstallation(at("build/bin"), {}).advice(), "");
}

TEST_F(XdgInstallationTest, TheFoldersAreThoseOfTheEnvironment) {
    qputenv("XDG_DATA_HOME", at("mine").toUtf8());
    qputenv("XDG_DATA_DIRS", at("all").toUtf8());
    QDir().mkpath(at("all"));
    EXPECT_EQ(XdgInstallation::standardDataFolders(), (QStringList{at("mine"), at("all")}));
    qunsetenv("XDG_DATA_HOME");
    qunsetenv("XDG_DATA_DIRS");
}

} // namespace
} // namespace vorq
