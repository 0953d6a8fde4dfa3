#include "platform/linux/desktop/LinuxDesktopLook.h"
#include "doubles/platform/PrivateBus.h"
#include "platform/linux/desktop/GtkTheme.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// A portal that answers what it is told to, and knows nothing else.
class SparsePortal final : public QDBusVirtualObject {
  public:
    QHash<QString, QVariant> values;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() != "Read") return false;
        const QVariant value = values.value(message.arguments().value(1).toString());
        if (!value.isValid())
            return bus.send(message.createErrorReply("org.freedesktop.portal.Error.NotFound",
                                                     "Requested setting not found"));
        return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
    }
};

// A bus and a "gsettings" that lists what the file of a schema holds.
class LinuxDesktopLookTest : public testing::Test {
  protected:
    LinuxDesktopLookTest() {
        QFile program(m_folder.filePath("gsettings"));
        EXPECT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\n[ \"$1\" = list-recursively ] || exit 1\n"
                      "cat \"$(dirname \"$0\")/$2\"\n");
        program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", m_folder.path().toUtf8() + ":" + m_path);
    }
    ~LinuxDesktopLookTest() override { qputenv("PATH", m_path); }

    void store(const QString& schema, const QStringList& settings) {
        QFile answer(m_folder.filePath(schema));
        EXPECT_TRUE(answer.open(QIODevice::WriteOnly | QIODevice::Truncate));
        for (const QString& setting : settings)
            answer.write((schema + " " + setting + "\n").toUtf8());
    }
    void storeScheme(const QString& value) { store(interface, {"color-scheme " + value}); }
    void announce(const QString& prefix, const QStringList& keys) {
        QDBusMessage signal = QDBusMessage::createSignal("/ca/desrt/dconf/Writer/user",
                                                         "ca.desrt.dconf.Writer", "Notify");
        signal << prefix << keys << "tag";
        m_server.send(signal);
    }
    void offerPortal(const QHash<QString, QVariant>& values) {
        m_portal.values = values;
        m_server.registerVirtualObject("/org/freedesktop/portal/desktop", &m_portal);
        ASSERT_TRUE(m_server.registerService("org.freedesktop.portal.Desktop"));
    }

    const QString interface = "org.gnome.desktop.interface";
    const QString access = "org.gnome.desktop.a11y.interface";
    SparsePortal m_portal;
    const QByteArray m_path = qgetenv("PATH");
    QTemporaryDir m_folder;
    PrivateBus m_bus;
    QDBusConnection m_server = m_bus.connection("look-server");
    QDBusConnection m_client = m_bus.connection("look-client");
};

TEST_F(LinuxDesktopLookTest, WithoutAPortalTheSettingsOfTheDesktopCount) {
    storeScheme("'prefer-dark'");
    const LinuxDesktopLook desktop(m_client);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().prefersDark == true; }));
}

TEST_F(LinuxDesktopLookTest, ChangesOfTheSettingsAreHeardHoweverTheyAreAnnounced) {
    storeScheme("'default'");
    const LinuxDesktopLook desktop(m_client);
    QTest::qWait(100);
    EXPECT_EQ(desktop.look().prefersDark, std::nullopt);
    storeScheme("'prefer-light'");
    announce("/org/gnome/desktop/interface/color-scheme", {""});
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().prefersDark == false; }));
    storeScheme("'prefer-dark'");
    announce("/org/gnome/desktop/interface/", {"clock-format", "color-scheme"});
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().prefersDark == true; }));
    storeScheme("'prefer-light'");
    announce("/org/gnome/desktop/interface/", {"clock-format"});
    announce("/org/gnome/desktop/background/", {"color-scheme"});
    QTest::qWait(100);
    EXPECT_EQ(desktop.look().prefersDark, true) << "told of other settings";
}

TEST_F(LinuxDesktopLookTest, AnimationsContrastAndTheSizeOfTextAreSettingsToo) {
    store(interface, {"clock-format '24h'", "color-scheme 'default'", "enable-animations false",
                      "gtk-theme 'Adwaita'", "text-scaling-factor 1.25"});
    store(access, {"high-contrast true"});
    const LinuxDesktopLook desktop(m_client);
    const DesktopLook expected{.allowsAnimations = false,
                               .wantsHighContrast = true,
                               .textScale = 1.25,
                               .selection = gtkThemeSelection("Adwaita", {})};
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look() == expected; }));
    store(interface, {"enable-animations true", "text-scaling-factor 1.5"});
    announce("/org/gnome/desktop/interface/text-scaling-factor", {""});
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().textScale == 1.5; }));
    EXPECT_EQ(desktop.look().allowsAnimations, true);
    store(access, {"high-contrast false"});
    announce("/org/gnome/desktop/a11y/interface/", {"high-contrast"});
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().wantsHighContrast == false; }));
}

TEST_F(LinuxDesktopLookTest, SelectedTextHasTheColourOfTheTheme) {
    store(interface, {"gtk-theme 'Adwaita'"});
    const LinuxDesktopLook desktop(m_client);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return desktop.look().selection == gtkThemeSelection("Adwaita", {}); }));
    store(interface, {"gtk-theme 'Adwaita-dark'"});
    announce("/org/gnome/desktop/interface/gtk-theme", {""});
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return desktop.look().selection == gtkThemeSelection("Adwaita-dark", {}); }));
    store(interface, {});
    announce("/org/gnome/desktop/interface/gtk-theme", {""});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !desktop.look().selection; }));
}

TEST_F(LinuxDesktopLookTest, AThemeOfHighContrastIsASwitchForIt) {
    for (const char* theme : {"'HighContrast'", "'HighContrastInverse'"}) {
        store(interface, {u"gtk-theme "_s + theme});
        const LinuxDesktopLook desktop(m_client);
        EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().wantsHighContrast == true; }))
            << theme;
    }
}

TEST_F(LinuxDesktopLookTest, WhatThePortalDoesNotKnowTheSettingsTell) {
    offerPortal({{"color-scheme", 1U}, {"enable-animations", false}});
    store(interface,
          {"color-scheme 'prefer-light'", "enable-animations true", "text-scaling-factor 1.5"});
    store(access, {"high-contrast true"});
    const LinuxDesktopLook desktop(m_client);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().wantsHighContrast == true; }));
    EXPECT_EQ(desktop.look(), (DesktopLook{true, false, true, 1.5}));
}

TEST_F(LinuxDesktopLookTest, WithoutTheProgramNothingIsKnown) {
    qputenv("PATH", "/nonexistent");
    const LinuxDesktopLook desktop(m_client);
    QTest::qWait(100);
    EXPECT_EQ(desktop.look(), DesktopLook{});
}

} // namespace
} // namespace vorq
