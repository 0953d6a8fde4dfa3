// The settings of the built program as a person uses them, with its backend.

#include "doubles/desktop/DragSource.h"
#include "doubles/desktop/SettingsProgramFixture.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonDocument>

#include <gmock/gmock.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

TEST_F(SettingsProgramTest, TheCommandOpensOneWindowAndBringsItForward) {
    open();
    EXPECT_EQ(windowsOfVorq().size(), 1U);
    keep("list");
    session.start("xterm", "xterm", {"-e", "sleep", "600"});
    session.activate(session.waitForWindow("xterm"));
    tell({"settings"});
    waitForSettings();
    EXPECT_EQ(windowsOfVorq().size(), 1U);
}

TEST_F(SettingsProgramTest, TheCommandStartsVorqIfItDoesNotRun) {
    DesktopProgram& started = session.start(VORQ_PROGRAM, "", {"settings"});
    DesktopSession::waitUntil("the window", [&] {
        const Window active = session.activeWindow();
        return active != 0 && session.processOf(active) == started.process();
    });
    tell({"quit"});
    DesktopSession::waitUntil("the end", [&] { return !started.isRunning(); });
}

TEST_F(SettingsProgramTest, VorqQuitsWhileItsSettingsAreOpen) {
    open();
    tell({"quit"});
    DesktopSession::waitUntil("the end", [this] { return !vorq.program().isRunning(); });
}

TEST_F(SettingsProgramTest, TheProfileIsKeptByTheBackend) {
    open();
    session.key({"Return"});
    waitForKeyboardIn("First name");
    enter("Augusta");
    session.key({"Tab"});
    waitForKeyboardIn("Last name");
    enter("King");
    session.key({"Return"});
    waitFor("Profile saved.");
    keep("profile");
    session.key({"Escape"});
    waitFor("Augusta King");
    vorq.stop();
    QJsonObject settings = stored();
    settings.remove("vorq.session.firstName");
    settings.remove("vorq.session.lastName");
    store(settings);
    open();
    waitFor("Augusta King"); // as the backend has it
}

TEST_F(SettingsProgramTest, ThePasswordIsKeptByTheBackend) {
    open();
    openPrivacy();
    changePassword("none so far", "a long password");
    waitFor("Privacy settings saved.");
    changePassword("not that one", "another password");
    waitFor("The current password is not right.");
    keep("privacy");
    changePassword("a long password", "another password");
    waitFor("Privacy settings saved.");
}

TEST_F(SettingsProgramTest, NobodyReadsAPasswordThatIsTyped) {
    open();
    openPrivacy();
    vorq.tabTo("Current password");
    enter("swordfish");
    session.key({"Tab"});
    EXPECT_TRUE(shows("Current password"));
    bool isMet = false;
    for (const AccessibleNode& node : vorq.controls()) {
        EXPECT_FALSE(node.name.contains("swordfish")) << node.role.toStdString();
        EXPECT_FALSE(vorq.textOf(node).contains("swordfish")) << node.role.toStdString();
        if (node.name != u"Current password") continue;
        isMet = true;
        EXPECT_EQ(vorq.textOf(node), u"•••••••••");
    }
    EXPECT_TRUE(isMet);
    vorq.tabTo("Show the password");
}

TEST_F(SettingsProgramTest, PicturesThatAreNoneChangeNothing) {
    const QString text = session.write("text.jpg", "This is no picture.");
    const QString portrait = session.home() + "/portrait.png";
    QImage image(900, 600, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    ASSERT_TRUE(image.save(portrait));
    const QString avatar = session.home() + "/.local/share/Vorq/profile-avatar.jpg";
    open();
    session.key({"Return"});
    waitForKeyboardIn("First name");
    choosePicture(text);
    waitFor("This file is no picture, or it is damaged. Choose a JPEG, PNG or WebP file, for "
            "example.");
    keep("no-picture");
    choosePicture(portrait);
    waitFor("Tap the + to add a photo.");
    EXPECT_FALSE(QFileInfo::exists(avatar)) << "it is not saved yet";
    press("Save");
    waitFor("Profile saved.");
    EXPECT_EQ(QImage(avatar).size(), QSize(512, 341));
    struct stat status{};
    ASSERT_EQ(::stat(qPrintable(avatar), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    keep("portrait");
}

TEST_F(SettingsProgramTest, APictureThatIsDroppedOnTheAvatarIsTheUsers) {
    const QString portrait = session.home() + "/portrait.png";
    QImage image(900, 600, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    ASSERT_TRUE(image.save(portrait));
    const QString text = session.write("text.jpg", "This is no picture.");
    const QString avatar = session.home() + "/.local/share/Vorq/profile-avatar.jpg";
    open();
    const auto drop = [this](const QString& file) {
        DesktopProgram* source = nullptr;
        const Window window = openDragSource(session, {file}, {900, 600}, &source);
        session.activate(window);
        dragAndHold(session, session.geometry(window).center(),
                    vorq.placeOf("Profile picture").center());
        waitFor("Drop the picture to use it.");
        keep("drop");
        letGo(session);
        DesktopSession::waitUntil("the drop",
                                  [this] { return !shows("Drop the picture to use it."); });
        source->kill();
        session.waitForNoWindow("test_drag_source");
    };
    session.key({"Return"});
    waitForKeyboardIn("First name");
    drop(text);
    waitFor("This file is no picture, or it is damaged. Choose a JPEG, PNG or WebP file, for "
            "example.");
    drop(portrait);
    waitFor("Tap the + to add a photo.");
    EXPECT_FALSE(QFileInfo::exists(avatar)) << "it is not saved yet";
    EXPECT_TRUE(QFileInfo::exists(portrait) && QFileInfo::exists(text)) << "copied, not moved";
    press("Save");
    waitFor("Profile saved.");
    EXPECT_EQ(QImage(avatar).size(), QSize(512, 341));
    keep("dropped");
}

TEST_F(SettingsProgramTest, TheWindowComesUpWhereItWasLeft) {
    open();
    const QString window = QString::number(settings());
    run("xdotool", "xdotool", {"windowsize", window, "800", "640"}, session.environment());
    run("xdotool", "xdotool", {"windowmove", window, "230", "140"}, session.environment());
    DesktopSession::waitUntil("the new place", [this] {
        const QRect place = session.geometry(settings());
        return place.size() == QSize(800, 640) && place.x() > 200;
    });
    const QRect place = session.geometry(settings());
    session.key({"ctrl+w"});
    DesktopSession::waitUntil("the window to go", [this] { return windowsOfVorq().empty(); });
    tell({"settings"});
    waitForSettings();
    EXPECT_EQ(session.geometry(settings()), place);
    vorq.stop();
    open();
    EXPECT_EQ(session.geometry(settings()), place) << "in another run as well";
}

TEST_F(SettingsProgramTest, WhatIsNotSavedIsNotLostByClosing) {
    open();
    session.key({"Return"});
    waitForKeyboardIn("First name");
    enter("Augusta");
    session.key({"ctrl+w"});
    waitFor("Discard your changes?");
    waitForKeyboardIn("Keep editing");
    keep("discard");
    session.key({"Return"});
    waitForKeyboardIn("First name");
    session.key({"ctrl+w"});
    waitFor("Discard your changes?");
    press("Discard");
    DesktopSession::waitUntil("the window to go", [this] { return windowsOfVorq().empty(); });
}

TEST_F(SettingsProgramTest, WhatIsNotSavedIsNotLostByQuitting) {
    open();
    session.key({"Return"});
    waitForKeyboardIn("First name");
    enter("Augusta");
    DesktopSession::waitUntil("the name that is typed", [this] {
        const auto focused = vorq.focused();
        return focused && vorq.textOf(*focused) == u"Augusta";
    });
    const Window window = settings();
    run("xdotool", "xdotool", {"windowminimize", "--sync", QString::number(window)},
        session.environment());
    DesktopSession::waitUntil("the window minimised",
                              [&] { return session.activeWindow() != window; });
    DesktopProgram& quit = session.start(VORQ_PROGRAM, "", {"quit"});
    DesktopSession::waitUntil("the settings", [&] { return session.activeWindow() == window; });
    waitFor("Discard your changes?");
    waitForKeyboardIn("Keep editing");
    session.key({"Return"});
    waitForKeyboardIn("First name");
    DesktopSession::waitUntil("the answer", [&] { return !quit.isRunning(); });
    EXPECT_THAT(quit.output().toStdString(), testing::HasSubstr("Vorq has not ended yet."));
    EXPECT_TRUE(vorq.program().isRunning());
    session.start(VORQ_PROGRAM, "", {"quit"});
    waitFor("Discard your changes?");
    press("Discard");
    DesktopSession::waitUntil("the end", [this] { return !vorq.program().isRunning(); });
}

TEST_F(SettingsProgramTest, LooksChangeHereAndInThePanelAtOnce) {
    open();
    press("Light");
    DesktopSession::waitUntil("the theme to be stored", [this] {
        return stored().value("vorq.panelAppearance").toString() == "white";
    });
    press("Customize");
    waitFor("Reset custom colors");
    keep("customize");
    session.key({"Escape"});
    vorq.tabTo("Customize");
}

TEST_F(SettingsProgramTest, TheHubsStripComesWithItsPreview) {
    open();
    tell({"preview", "hub", "on"});
    waitFor("Trackers");
    press("Tasks");
    waitFor("Not here yet");
    keep("hub");
    tell({"preview", "hub", "off"});
    waitFor("Privacy settings");
    EXPECT_FALSE(shows("Trackers"));
}

TEST_F(SettingsProgramTest, ThePanelLeadsThereWhoIsNotSignedIn) {
    open();
    press("Sign out");
    waitFor("Sign in to Vorq");
    keep("signed-out");
    session.key({"ctrl+w"});
    DesktopSession::waitUntil("the window to go", [this] { return windowsOfVorq().empty(); });
    tell({"toggle"});
    vorq.waitForPanel();
    press("Settings");
    waitFor("Sign in to Vorq");
    DesktopSession::waitUntil("the settings alone", [this] {
        return windowsOfVorq().size() == 1 && session.activeWindow() == windowsOfVorq().front();
    });
}

TEST_F(SettingsProgramTest, AScreenReaderMeetsWhatIsSeen) {
    open();
    const auto has = [this](const QString& role, const QString& name) {
        return std::ranges::any_of(vorq.controls(), [&](const AccessibleNode& node) {
            return node.isShowing && node.role == role && node.name == name;
        });
    };
    EXPECT_TRUE(has("heading", "Settings"));
    EXPECT_TRUE(has("heading", "Permissions"));
    EXPECT_TRUE(has("push button", "Privacy settings"));
    EXPECT_TRUE(has("push button", "Sign out"));
    EXPECT_TRUE(has("radio button", "Dark"));
    openPrivacy();
    for (const QString name : {"Email", "Current password", "New password", "Confirm new password"})
        EXPECT_TRUE(has("text", name) || has("password text", name)) << qPrintable(name);
    EXPECT_TRUE(has("push button", "Save"));
}

// Nobody has agreed yet that programs show each other their windows.
class SettingsConsentTest : public SettingsProgramTest {
  protected:
    SettingsConsentTest()
        : SettingsProgramTest({.hasAccessibilityBus = true, .isAccessibilityOn = false}) {}
};

TEST_F(SettingsConsentTest, EnablingAsksTheSystemOnce) {
    DesktopProgram& heard =
        session.start("dbus-monitor", "dbus-bin",
                      {"--session", "interface='org.freedesktop.DBus.Properties',member='Set'"});
    QProcessEnvironment speaking;
    speaking.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    vorq.start({}, speaking);
    tell({"settings"});
    waitForSettings();
    press("Enable");
    waitFor("Accessibility Is On");
    waitFor("Vorq can read highlighted text.");
    tell({"quit"});
    DesktopSession::waitUntil("the end", [this] { return !vorq.program().isRunning(); });
    EXPECT_EQ(heard.output().count("\"IsEnabled\""), 1) << heard.output().toStdString();
}

} // namespace
} // namespace vorq::desktop
