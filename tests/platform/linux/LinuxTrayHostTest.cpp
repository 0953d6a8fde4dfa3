#include "platform/linux/LinuxTrayHost.h"
#include "doubles/platform/PrivateBus.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString watcherName = u"org.kde.StatusNotifierWatcher"_s;

// Without an X server.
class LinuxTrayHostTest : public testing::Test {
  protected:
    LinuxTrayHostTest() { qunsetenv("DISPLAY"); }
    ~LinuxTrayHostTest() override {
        if (!m_display.isNull()) qputenv("DISPLAY", m_display);
    }

  private:
    QByteArray m_display = qgetenv("DISPLAY");

  protected:
    PrivateBus bus;
    QDBusConnection bar = bus.connection(u"bar"_s);
    LinuxTrayHost host{bus.connection(u"vorq"_s)};
};

TEST_F(LinuxTrayHostTest, WithoutATrayItSaysSo) {
    ASSERT_FALSE(host.supported());
    EXPECT_EQ(host.supported().error(), u"This desktop has no tray.");
}

TEST_F(LinuxTrayHostTest, EachTimeATrayComesItTells) {
    QSignalSpy arrived(&host, &TrayHost::arrived);
    ASSERT_TRUE(bar.registerService(watcherName));
    ASSERT_TRUE(QTest::qWaitFor([&] { return arrived.count() == 1; }));
    EXPECT_TRUE(host.supported());
    ASSERT_TRUE(bar.unregisterService(watcherName));
    EXPECT_FALSE(host.supported());
    ASSERT_TRUE(bar.registerService(watcherName));
    EXPECT_TRUE(QTest::qWaitFor([&] { return arrived.count() == 2; }));
}

TEST_F(LinuxTrayHostTest, OneThatWasThereBeforeIsFound) {
    ASSERT_TRUE(bar.registerService(watcherName));
    const LinuxTrayHost late(bus.connection(u"vorq"_s));
    EXPECT_TRUE(late.supported());
}

TEST_F(LinuxTrayHostTest, WithoutABusThereIsNone) {
    const LinuxTrayHost lone(
        QDBusConnection::connectToBus(u"unix:path=/nonexistent"_s, u"broken"_s));
    EXPECT_FALSE(lone.supported());
    QDBusConnection::disconnectFromBus(u"broken"_s);
}

} // namespace
} // namespace vorq
