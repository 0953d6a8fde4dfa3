#include "platform/linux/desktop/PortalDesktop.h"
#include "doubles/platform/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class ScriptedPortal final : public QDBusVirtualObject {
  public:
    QHash<QString, QVariant> values{{"color-scheme", 1U},
                                    {"contrast", 1U},
                                    {"enable-animations", false},
                                    {"text-scaling-factor", 1.25}};
    bool isWrappedTwice = false;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() != "Read") return false;
        const QString key = message.arguments().value(1).toString();
        if (!values.contains(key)) {
            bus.send(message.createErrorReply("org.freedesktop.portal.Error.NotFound", key));
            return true;
        }
        QVariant value = values.value(key);
        if (isWrappedTwice) value = QVariant::fromValue(QDBusVariant(value));
        bus.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
        return true;
    }
};

class PortalDesktopTest : public testing::Test {
  protected:
    void offer() {
        m_server.registerVirtualObject("/org/freedesktop/portal/desktop", &portal);
        m_server.registerService("org.freedesktop.portal.Desktop");
    }
    void announce(const QString& area, const QString& key, const QVariant& value) {
        QDBusMessage signal = QDBusMessage::createSignal(
            "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged");
        signal << area << key << QVariant::fromValue(QDBusVariant(value));
        m_server.send(signal);
    }

    PrivateBus m_bus;
    QDBusConnection m_server = m_bus.connection("portal-server");
    QDBusConnection m_client = m_bus.connection("portal-client");
    ScriptedPortal portal;
};

TEST_F(PortalDesktopTest, ReadsWhatTheDesktopWants) {
    offer();
    const PortalDesktop desktop(m_client);
    const DesktopLook expected{true, false, true, 1.25};
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look() == expected; }));
}

TEST_F(PortalDesktopTest, ReadsValuesThatAreWrappedTwice) {
    portal.isWrappedTwice = true;
    portal.values["color-scheme"] = 2U;
    offer();
    const PortalDesktop desktop(m_client);
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.look().prefersDark.has_value(); }));
    EXPECT_EQ(desktop.look().prefersDark, false);
}

TEST_F(PortalDesktopTest, HearsOfChanges) {
    offer();
    const PortalDesktop desktop(m_client);
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.look().prefersDark == true; }));
    announce("org.freedesktop.appearance", "color-scheme", 2U);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().prefersDark == false; }));
    announce("org.freedesktop.appearance", "color-scheme", 0U);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !desktop.look().prefersDark; }));
    announce("org.freedesktop.appearance", "contrast", 0U);
    announce("org.gnome.desktop.interface", "text-scaling-factor", 1.5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().textScale == 1.5; }));
    EXPECT_EQ(desktop.look().wantsHighContrast, false);
    announce("some.other.area", "color-scheme", 1U);
    announce("org.gnome.desktop.interface", "enable-animations", true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.look().allowsAnimations == true; }));
    EXPECT_EQ(desktop.look().prefersDark, std::nullopt);
}

QVariant colorOf(double red, double green, double blue) {
    QDBusArgument argument;
    argument.beginStructure();
    argument << red << green << blue;
    argument.endStructure();
    return QVariant::fromValue(argument);
}

TEST_F(PortalDesktopTest, ReadsTheColoursOfWhatIsSelected) {
    portal.values["accent-color"] = colorOf(0.25, 0.5, 1);
    portal.values["BackgroundNormal"] = "51, 102,255";
    offer();
    const PortalDesktop desktop(m_client);
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.look().selection.has_value(); }));
    EXPECT_EQ(desktop.look().selection, (LookColor{.red = 0.2, .green = 0.4, .blue = 1}));
    EXPECT_EQ(desktop.look().accent, (LookColor{.red = 0.25, .green = 0.5, .blue = 1}));

    // Out of its range, there is none.
    announce("org.freedesktop.appearance", "accent-color", colorOf(-1, -1, -1));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !desktop.look().accent; }));
    for (const char* none : {"51,102", "51,102,256", "a,b,c", ""}) {
        announce("org.kde.kdeglobals.Colors:Selection", "BackgroundNormal", "1,2,3");
        ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.look().selection.has_value(); }));
        announce("org.kde.kdeglobals.Colors:Selection", "BackgroundNormal", none);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !desktop.look().selection; })) << none;
    }
}

TEST_F(PortalDesktopTest, MissesNoColours) {
    offer();
    const PortalDesktop desktop(m_client);
    const QSignalSpy incomplete(&desktop, &PortalDesktop::isIncomplete);
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.look().textScale.has_value(); }));
    // What is asked last is answered last.
    QTest::qWait(100);
    EXPECT_EQ(incomplete.count(), 0);
}

TEST_F(PortalDesktopTest, WithoutAPortalNothingIsKnown) {
    const PortalDesktop desktop(m_client);
    QTest::qWait(100);
    EXPECT_EQ(desktop.look(), DesktopLook{});
}

} // namespace
} // namespace vorq
