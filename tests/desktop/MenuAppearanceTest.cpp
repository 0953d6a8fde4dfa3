// Whether menus and dialogs of the built program are light or dark as the user or the desktop
// wants.

#include "desktop/MenuProgram.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

namespace vorq::desktop {
namespace {

class ScriptedPortal final : public QDBusVirtualObject {
  public:
    uint scheme = 0;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() != "Read") return false;
        const bool isScheme = message.arguments().value(1) == "color-scheme";
        const QVariant value = isScheme ? QVariant(scheme) : QVariant(true);
        bus.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
        return true;
    }
};

class MenuAppearanceTest : public MenuProgramTest {
  protected:
    ~MenuAppearanceTest() override { QDBusConnection::disconnectFromBus("scripted-portal"); }

    void offerPortal(uint scheme) {
        m_portal.scheme = scheme;
        m_bus.registerVirtualObject("/org/freedesktop/portal/desktop", &m_portal);
        ASSERT_TRUE(m_bus.registerService("org.freedesktop.portal.Desktop"));
    }
    void announce(uint scheme) {
        QDBusMessage signal = QDBusMessage::createSignal(
            "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged");
        signal << "org.freedesktop.appearance" << "color-scheme"
               << QVariant::fromValue(QDBusVariant(scheme));
        ASSERT_TRUE(m_bus.send(signal));
    }
    void setByGSettings(const QString& scheme) {
        run("gsettings", "libglib2.0-bin",
            {"set", "org.gnome.desktop.interface", "color-scheme", scheme},
            m_session.environment());
    }

    [[nodiscard]] bool isMenuDark() const { return isDark(picture().ground(placeOf("Quit Vorq"))); }
    void waitForMenu(bool dark) {
        DesktopSession::waitUntil(dark ? "a dark menu" : "a light menu",
                                  [&] { return isMenuDark() == dark; });
    }
    void expectDialog(bool dark, const QString& shot) {
        const QRect place = m_session.geometry(dialog());
        DesktopSession::waitUntil(dark ? "a dark dialog" : "a light dialog", [&] {
            const ScreenPicture shown = picture();
            return isDark(shown.ground(place)) == dark && shown.contrast(place) > 7;
        });
        (void)keep(shot);
        m_session.key({"Escape"});
        m_session.waitForNoWindow("vorq");
    }

    static constexpr int widerThanThePanel = 480;

    ScriptedPortal m_portal;
    QDBusConnection m_bus =
        QDBusConnection::connectToBus(m_session.busAddress(), "scripted-portal");
};

TEST_F(MenuAppearanceTest, MenuAndAlertAreDarkIfTheUserWantsThat) {
    startInTray(R"({"vorqAppAppearance": "dark"})");
    openMenu();
    EXPECT_TRUE(isMenuDark());
    (void)keep("menu-dark");
    choose("Delete Vorq");
    expectDialog(true, "alert-dark");
}

TEST_F(MenuAppearanceTest, MenuAndAlertStayLightIfTheUserWantsThatOnADarkDesktop) {
    offerPortal(1);
    startInTray(R"({"vorqAppAppearance": "light"})");
    openMenu();
    EXPECT_FALSE(isMenuDark());
    (void)keep("menu-light");
    choose("Delete Vorq");
    expectDialog(false, "alert-light");
}

TEST_F(MenuAppearanceTest, AnOpenMenuFollowsTheDesktop) {
    offerPortal(1);
    startInTray();
    openMenu();
    waitForMenu(true);
    announce(2);
    waitForMenu(false);
    announce(1);
    waitForMenu(true);
    announce(0);
    waitForMenu(false);
}

TEST_F(MenuAppearanceTest, WithoutAPortalAnOpenMenuFollowsTheSettingsOfTheDesktop) {
    setByGSettings("prefer-dark");
    startInTray();
    openMenu();
    waitForMenu(true);
    setByGSettings("default");
    waitForMenu(false);
    setByGSettings("prefer-dark");
    waitForMenu(true);
}

TEST_F(MenuAppearanceTest, TheDialogForAColourFollowsTheDesktopToo) {
    offerPortal(1);
    startInTray();
    for (const bool dark : {true, false}) {
        announce(dark ? 1 : 2);
        openMenu();
        waitForMenu(dark);
        chooseSubmenu("Customize Vorq", "Background…");
        (void)keep(dark ? "customize-dark" : "customize-light");
        choose("Background…");
        const QRect place = m_session.geometry(dialog(widerThanThePanel));
        DesktopSession::waitUntil("its colours",
                                  [&] { return isDark(picture().ground(place)) == dark; });
        (void)keep(dark ? "colours-dark" : "colours-light");
        m_session.key({"Escape"});
    }
}

TEST_F(MenuAppearanceTest, TheDialogForFilesFollowsTheDesktopToo) {
    offerPortal(1);
    startInTray();
    openMenu();
    choose("Toggle Vorq");
    press("Add files or notes");
    press("Add photos");
    const QRect place = m_session.geometry(dialog(widerThanThePanel));
    for (const bool dark : {true, false}) {
        announce(dark ? 1 : 2);
        DesktopSession::waitUntil("its colours",
                                  [&] { return isDark(picture().ground(place)) == dark; });
        (void)keep(dark ? "files-dark" : "files-light");
    }
}

TEST_F(MenuAppearanceTest, WhatTheMenuOnlyTellsCanBeReadInLightAndInDark) {
    for (const QString appearance : {"light", "dark"}) {
        startInTray("{\"vorqAppAppearance\": \"" + appearance.toUtf8() + "\"}");
        openMenu();
        const ScreenPicture shown = picture();
        for (const char* fact : {"Not signed in", "To sign in, run: "})
            EXPECT_GE(shown.contrast(placeOf(fact)), 4.5) << fact << appearance.toStdString();
        closeMenu();
        EXPECT_EQ(runToEnd({"quit"}).status, 0);
    }
}

} // namespace
} // namespace vorq::desktop
