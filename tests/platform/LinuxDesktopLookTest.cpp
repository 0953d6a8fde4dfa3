#include "platform/linux/LinuxDesktopLook.h"
#include "platform/PrivateBus.h"

#include <QDBusMessage>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

// A bus without a portal, and a "gsettings" that answers what a file holds.
class LinuxDesktopLookTest : public testing::Test {
  protected:
    LinuxDesktopLookTest() {
        QFile program(m_folder.filePath("gsettings"));
        EXPECT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\n[ \"$*\" = 'get org.gnome.desktop.interface color-scheme' ] || "
                      "exit 1\ncat \"$(dirname \"$0\")/answer\"\n");
        program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", m_folder.path().toUtf8() + ":" + m_path);
    }
    ~LinuxDesktopLookTest() override { qputenv("PATH", m_path); }

    void store(const QByteArray& value) {
        QFile answer(m_folder.filePath("answer"));
        EXPECT_TRUE(answer.open(QIODevice::WriteOnly | QIODevice::Truncate));
        answer.write(value + "\n");
    }
    void announce(const QString& prefix, const QStringList& keys) {
        QDBusMessage signal = QDBusMessage::createSignal("/ca/desrt/dconf/Writer/user",
                                                         "ca.desrt.dconf.Writer", "Notify");
        signal << prefix << keys << "tag";
        m_server.send(signal);
    }

    const QByteArray m_path = qgetenv("PATH");
    QTemporaryDir m_folder;
    PrivateBus m_bus;
    QDBusConnection m_server = m_bus.connection("look-server");
    QDBusConnection m_client = m_bus.connection("look-client");
};

TEST_F(LinuxDesktopLookTest, WithoutAPortalTheSettingsOfTheDesktopCount) {
    store("'prefer-dark'");
    const LinuxDesktopLook desktop(m_client);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().prefersDark == true; }));
}

TEST_F(LinuxDesktopLookTest, ChangesOfTheSettingsAreHeardHoweverTheyAreAnnounced) {
    store("'default'");
    const LinuxDesktopLook desktop(m_client);
    QTest::qWait(100);
    EXPECT_EQ(desktop.look().prefersDark, std::nullopt);
    store("'prefer-light'");
    announce("/org/gnome/desktop/interface/color-scheme", {""});
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().prefersDark == false; }));
    store("'prefer-dark'");
    announce("/org/gnome/desktop/interface/", {"gtk-theme", "color-scheme"});
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().prefersDark == true; }));
    store("'prefer-light'");
    announce("/org/gnome/desktop/interface/", {"gtk-theme"});
    announce("/org/gnome/desktop/background/", {"color-scheme"});
    QTest::qWait(100);
    EXPECT_EQ(desktop.look().prefersDark, true) << "told of other settings";
}

TEST_F(LinuxDesktopLookTest, WithoutTheProgramNothingIsKnown) {
    qputenv("PATH", "/nonexistent");
    const LinuxDesktopLook desktop(m_client);
    QTest::qWait(100);
    EXPECT_EQ(desktop.look(), DesktopLook{});
}

} // namespace
} // namespace vorq
