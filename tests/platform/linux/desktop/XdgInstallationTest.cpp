#include "platform/linux/desktop/XdgInstallation.h"

#include "platform/testing/ScriptedAppPaths.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const QString menuEntry = "/share/applications/com.vorq.desk.desktop";

class XdgInstallationTest : public testing::Test {
  protected:
    [[nodiscard]] QString at(const QString& path) const { return m_folder.filePath(path); }

    void put(const QString& path, const QByteArray& content = {}) const {
        QDir().mkpath(QFileInfo(at(path)).path());
        QFile file(at(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    void install(const QString& prefix) const {
        put(prefix + "/bin/vorq");
        put(prefix + menuEntry);
    }

    // The system's own is below "usr".
    [[nodiscard]] XdgInstallation running(const QString& executable,
                                          const QStringList& additional = {}) const {
        return {at(executable),
                QStringList{at("home/.local/share"), at("usr/local/share/"), at("usr/share")} +
                    additional,
                at("usr")};
    }

    static void expectNothingBelow(const QString& folder, const QStringList& files) {
        for (const QString& file : files)
            EXPECT_FALSE(file.startsWith(folder + "/")) << file.toStdString();
    }

    QTemporaryDir m_folder;
};

TEST_F(XdgInstallationTest, TheUsersOwnAndTheSharedOneAreFound) {
    install("home/.local");
    install("usr/local");
    const QStringList all = running("elsewhere/bin/vorq").files();
    for (const char* prefix : {"home/.local", "usr/local"}) {
        EXPECT_THAT(all, Contains(at(prefix) + "/bin/vorq"));
        EXPECT_THAT(all, Contains(at(prefix) + "/bin/vorq-gateway"));
        EXPECT_THAT(all, Contains(at(prefix) + menuEntry));
        EXPECT_THAT(all, Contains(at(prefix) + "/share/dbus-1/services/com.vorq.desk.service"));
    }
}

TEST_F(XdgInstallationTest, TheRunningOneIsFoundWhereverItIsInstalled) {
    install("opt/vorq");
    EXPECT_THAT(running("opt/vorq/bin/vorq").files(), Contains(at("opt/vorq/bin/vorq")));
    EXPECT_THAT(running("opt/vorq/bin/vorq").advice(), IsEmpty());
}

TEST_F(XdgInstallationTest, ACopyThatTheDesktopListsIsInstalledAlsoOfTheSystem) {
    for (const char* prefix : {"home/.local", "usr/local", "usr"}) {
        const QString executable = QString(prefix) + "/bin/vorq";
        EXPECT_FALSE(running(executable).isInstalled()) << prefix;
        install(prefix);
        EXPECT_TRUE(running(executable).isInstalled()) << prefix;
    }
}

TEST_F(XdgInstallationTest, ACopyThatTheDesktopDoesNotListIsNotInstalled) {
    install("usr/local");
    install("opt/vorq");
    EXPECT_FALSE(running("opt/vorq/bin/vorq").isInstalled());
    EXPECT_FALSE(running("build/bin/vorq").isInstalled());
    put("home/.local/bin/vorq");
    put("home/.local" + menuEntry, "[Desktop Entry]\nX-Vorq-Written-At-Start=true\n");
    EXPECT_FALSE(running("home/.local/bin/vorq").isInstalled()) << "its own entry for links";
}

TEST_F(XdgInstallationTest, EachFileIsNamedOnce) {
    install("usr/local");
    QStringList all = running("usr/local/share/../bin/vorq").files();
    EXPECT_THAT(all, Contains(at("usr/local/bin/vorq")));
    EXPECT_EQ(all.removeDuplicates(), 0);
}

TEST_F(XdgInstallationTest, ABuildFolderIsNoneAndTheUserIsTold) {
    put("build/bin/vorq");
    const XdgInstallation build = running("build/bin/vorq");
    expectNothingBelow(at("build"), build.files());
    EXPECT_THAT(build.advice(),
                ElementsAre(at("build/bin/vorq") + " was not installed and stays where it is."));
}

TEST_F(XdgInstallationTest, TheEntryThatTheProgramWritesForItsLinksIsFoundByItself) {
    EXPECT_THAT(running("build/bin/vorq").files(), ElementsAre(at("home/.local") + menuEntry));
}

// Somebody's own script, or another program of this name.
TEST_F(XdgInstallationTest, AProgramOfTheSameNameIsLeft) {
    put("home/.local/bin/vorq");
    put("home/.local" + menuEntry, "[Desktop Entry]\nX-Vorq-Written-At-Start=true\n");
    put("usr/local/bin/vorq");
    const QStringList all = running("build/bin/vorq").files();
    EXPECT_THAT(all, Not(Contains(at("home/.local/bin/vorq"))));
    expectNothingBelow(at("usr/local"), all);
}

TEST_F(XdgInstallationTest, AnEntryThatAnotherKindOfPackageShowsIsLeft) {
    put("usr/local" + menuEntry);
    expectNothingBelow(at("usr/local"), running("build/bin/vorq").files());
}

TEST_F(XdgInstallationTest, WhatBelongsToTheSystemIsLeftAndTheUserIsTold) {
    install("usr");
    const XdgInstallation system = running("usr/bin/vorq");
    expectNothingBelow(at("usr"), system.files());
    ASSERT_THAT(system.advice(), testing::SizeIs(1));
    EXPECT_THAT(system.advice().front().toStdString(),
                HasSubstr(at("usr/bin/vorq").toStdString() + " belongs to your system."));
    EXPECT_THAT(running("build/bin/vorq").advice(), testing::SizeIs(2));
}

// Sessions name such folders, too: below the system's, none of the usual form, or a link there.
TEST_F(XdgInstallationTest, NoOtherNameOfAFolderLeadsToTheSystem) {
    install("usr");
    QDir().mkpath(at("usr/share/gnome/applications"));
    ASSERT_TRUE(QFile::link(at("usr/bin"), at("bin")));
    ASSERT_TRUE(QFile::link(at("usr/share"), at("share")));
    const QStringList all =
        running("build/bin/vorq", {at("usr/share/gnome"), at("share"), at("snapd/desktop"),
                                   "/share", "share", "", "/"})
            .files();
    EXPECT_THAT(all, ElementsAre(at("home/.local") + menuEntry));
    EXPECT_THAT(running("bin/vorq").files(), ElementsAre(at("home/.local") + menuEntry));
}

TEST_F(XdgInstallationTest, TheFoldersAreTheUsersOwnAndThoseOfTheEnvironment) {
    const ScriptedAppPaths paths;
    qputenv("XDG_DATA_DIRS", "/one/share:/two/share");
    EXPECT_THAT(XdgInstallation::dataFolders(paths),
                ElementsAre(paths.applicationSupportFolder(), "/one/share", "/two/share"));
    qunsetenv("XDG_DATA_DIRS");
    EXPECT_THAT(XdgInstallation::dataFolders(paths),
                ElementsAre(paths.applicationSupportFolder(), "/usr/local/share", "/usr/share"));
}

} // namespace
} // namespace vorq
