// How the user takes Vorq off the machine.

#include "shell/ShellFixture.h"

#include <QDir>
#include <QFile>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class DeleteVorqTest : public ShellFixture {
  protected:
    DeleteVorqTest() {
        // The trash is there, and not the one of whoever runs the tests.
        qputenv("XDG_DATA_HOME", m_paths.applicationSupportFolder().toUtf8());
        launch();
    }
    ~DeleteVorqTest() override { qunsetenv("XDG_DATA_HOME"); }

    [[nodiscard]] QString library() const { return m_paths.applicationSupportFolder() + "/Vorq"; }

    QString put(const QString& path) const {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return path;
    }

    void choose() { emit m_statusItem.deleteVorqChosen(); }

    void chooseAndAgree() {
        choose();
        ASSERT_TRUE(m_host.answer);
        m_host.answer(0);
    }
};

TEST_F(DeleteVorqTest, AsksFirst) {
    state().library().createBlankNote("Mine", HubArea::Study);
    choose();
    EXPECT_EQ(m_host.lastAlert,
              (Alert{"Delete Vorq?",
                     "This moves Vorq to the Trash and quits. Vorq won’t appear in Applications "
                     "anymore — reinstall anytime from the website.",
                     {"Delete Vorq", "Cancel"}}));
    EXPECT_TRUE(m_loginItem.isRegistered);
    m_host.answer(1);
    EXPECT_THAT(m_calls, ElementsAre("alert"));
    EXPECT_TRUE(m_loginItem.isRegistered);
    EXPECT_FALSE(m_defaults.isErased());
    EXPECT_TRUE(QFile::exists(library() + "/Library/saved-notes.json"));
}

TEST_F(DeleteVorqTest, TakesEverythingAndEnds) {
    state().library().createBlankNote("Mine", HubArea::Study);
    m_installation.paths = {put(m_paths.home() + "/bin/vorq"), m_paths.home() + "/not/there"};
    put(m_paths.cacheFolder() + "/qmlcache/page.qmlc");
    chooseAndAgree();
    EXPECT_FALSE(m_loginItem.isRegistered);
    EXPECT_FALSE(QFile::exists(m_installation.paths.front()));
    EXPECT_FALSE(QFile::exists(library()));
    EXPECT_FALSE(QFile::exists(m_paths.cacheFolder()));
    EXPECT_TRUE(m_defaults.isErased());
    EXPECT_THAT(m_defaults.values(), IsEmpty());
    EXPECT_THAT(m_calls, ElementsAre("alert", "terminate"));
    EXPECT_THAT(m_log.all(), IsEmpty());
}

TEST_F(DeleteVorqTest, TheLibraryCanBeFoundInTheTrash) {
    state().library().createBlankNote("Mine", HubArea::Study);
    chooseAndAgree();
    QFile notes(m_paths.applicationSupportFolder() + "/Trash/files/Vorq/Library/saved-notes.json");
    ASSERT_TRUE(notes.open(QIODevice::ReadOnly));
    EXPECT_THAT(notes.readAll().toStdString(), HasSubstr("Mine"));
}

TEST_F(DeleteVorqTest, WhatStillHappensBringsNothingBack) {
    submit("Explain the tides");
    state().library().createBlankNote("Mine", HubArea::Study);
    chooseAndAgree();
    EXPECT_FALSE(panel().isPanelTurnInFlight());
    state().library().createBlankNote("Late", HubArea::Study);
    state().reloadLibrary();
    state().appearance().setPanelBackgroundHex("#112233");
    m_clock.settle();
    advance(10s);
    EXPECT_FALSE(QFile::exists(library()));
}

TEST_F(DeleteVorqTest, ALoginItemThatFailsIsLoggedAndTheRestGoes) {
    m_loginItem.failure = "the disk is full";
    chooseAndAgree();
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq Open at Login unregister failed: the disk is full"));
    EXPECT_TRUE(m_defaults.isErased());
    EXPECT_EQ(m_host.lastAlert.informativeText, "The start at login: the disk is full");
}

// The user sees what is left before the program ends.
TEST_F(DeleteVorqTest, SaysWhatCouldNotBeRemoved) {
    m_installation.paths = {"/proc/self/status"};
    m_installation.sentence = "Remove the package.";
    chooseAndAgree();
    EXPECT_THAT(m_calls, ElementsAre("alert", "alert"));
    EXPECT_EQ(m_host.lastAlert.message, "Vorq is deleted, but not all of it.");
    EXPECT_THAT(m_host.lastAlert.informativeText.toStdString(), HasSubstr("/proc/self/status: "));
    EXPECT_THAT(m_host.lastAlert.informativeText.toStdString(), HasSubstr("\nRemove the package."));
    EXPECT_THAT(m_log.all().join('\n').toStdString(),
                HasSubstr("Vorq could not remove /proc/self/status: "));
    EXPECT_TRUE(m_defaults.isErased());
    m_host.answer(0);
    EXPECT_THAT(m_calls, ElementsAre("alert", "alert", "terminate"));
}

TEST_F(DeleteVorqTest, AskedOfAShellThatIsGoneNothingHappens) {
    auto shell = std::make_unique<AppDelegate>(ports());
    shell->deleteVorqFromMenu();
    shell.reset();
    m_host.answer(0);
    EXPECT_THAT(m_calls, Not(Contains("terminate")));
    EXPECT_FALSE(m_defaults.isErased());
}

TEST_F(DeleteVorqTest, SigningOutIsThereForThoseWhoOnlyWantThat) {
    ASSERT_TRUE(state().account().signedIn());
    emit m_statusItem.signOutChosen();
    EXPECT_FALSE(state().account().signedIn());
}

} // namespace
} // namespace vorq
