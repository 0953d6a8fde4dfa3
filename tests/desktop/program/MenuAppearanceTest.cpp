// Whether menus and dialogs of the built program are light or dark as the user or the desktop
// wants.

#include "doubles/desktop/MenuProgram.h"

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
        if (message.arguments().value(1) != "color-scheme")
            return bus.send(message.createErrorReply("org.freedesktop.portal.Error.NotFound",
                                                     "Requested setting not found"));
        return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(scheme))));
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
    void announce(uint scheme) { announce("org.freedesktop.appearance", "color-scheme", scheme); }
    void announce(const QString& area, const QString& key, const QVariant& value) {
        QDBusMessage signal = QDBusMessage::createSignal(
            "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged");
        signal << area << key << QVariant::fromValue(QDBusVariant(value));
        ASSERT_TRUE(m_bus.send(signal));
    }
    void setByGSettings(const QString& scheme) {
        setByGSettings("interface", "color-scheme", scheme);
    }
    void setByGSettings(const QString& schema, const QString& key, const QString& value) {
        run("gsettings", "libglib2.0-bin", {"set", "org.gnome.desktop." + schema, key, value},
            m_session.environment());
    }

    [[nodiscard]] int heightOf(const QString& name) const { return placeOfControl(name).height(); }
    [[nodiscard]] quint32 panelGround() const {
        const QRect button = placeOfControl("Sign in on this computer");
        return picture().ground({button.left(), button.top() - 300, button.width(), 100});
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

TEST_F(MenuAppearanceTest, HighContrastBySettingsIsSeenAtOnceInPanelAndMenu) {
    startInTray(R"({"vorqAppAppearance": "dark"})");
    EXPECT_EQ(runToEnd({"toggle"}).status, 0);
    // Black too before anything is drawn.
    DesktopSession::waitUntil("the usual panel", [&] { return panelGround() != 0x000000U; });
    setByGSettings("a11y.interface", "high-contrast", "true");
    DesktopSession::waitUntil("a black panel", [&] { return panelGround() == 0x000000U; });
    DesktopSession::waitUntil("strong words in the panel", [&] {
        return picture().contrast(placeOfControl("You are not signed in.")) >= 7;
    });
    (void)keep("contrast-panel");
    setByGSettings("a11y.interface", "high-contrast", "false");
    DesktopSession::waitUntil("the usual panel", [&] { return panelGround() != 0x000000U; });
    EXPECT_EQ(runToEnd({"toggle"}).status, 0);
    setByGSettings("interface", "gtk-theme", "HighContrast");
    openMenu();
    DesktopSession::waitUntil("strong words that the menu only tells",
                              [&] { return picture().contrast(placeOf("Not signed in")) >= 7; });
    (void)keep("contrast-menu");
}

TEST_F(MenuAppearanceTest, HighContrastByThePortalIsSeenAtOnce) {
    offerPortal(0);
    startInTray();
    EXPECT_EQ(runToEnd({"toggle"}).status, 0);
    // Black too before anything is drawn.
    DesktopSession::waitUntil("the usual panel", [&] { return panelGround() != 0x000000U; });
    announce("org.freedesktop.appearance", "contrast", 1U);
    DesktopSession::waitUntil("a black panel", [&] { return panelGround() == 0x000000U; });
}

TEST_F(MenuAppearanceTest, TextGrowsAtOnceInPanelAndMenu) {
    startInTray();
    openMenu();
    const int usualEntry = placeOf("Quit Vorq").height();
    closeMenu();
    EXPECT_EQ(runToEnd({"toggle"}).status, 0);
    const QString words = "You are not signed in.";
    const int usual = heightOf(words);
    setByGSettings("interface", "text-scaling-factor", "1.5");
    DesktopSession::waitUntil("larger text", [&] { return heightOf(words) >= 1.4 * usual; });
    (void)keep("large-panel");
    setByGSettings("interface", "text-scaling-factor", "1.0");
    DesktopSession::waitUntil("the usual text", [&] { return heightOf(words) == usual; });
    EXPECT_EQ(runToEnd({"toggle"}).status, 0);
    setByGSettings("interface", "text-scaling-factor", "1.5");
    openMenu();
    DesktopSession::waitUntil("a larger menu",
                              [&] { return placeOf("Quit Vorq").height() >= 1.25 * usualEntry; });
    (void)keep("large-menu");
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
        EXPECT_GE(shown.contrast(placeOf("Not signed in")), 4.5) << appearance.toStdString();
        closeMenu();
        EXPECT_EQ(runToEnd({"quit"}).status, 0);
    }
}

} // namespace
} // namespace vorq::desktop
