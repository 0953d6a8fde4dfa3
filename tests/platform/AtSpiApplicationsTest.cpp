#include "platform/linux/AtSpiApplications.h"
#include "platform/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTest>
#include <QThread>
#include <QVariant>

#include <atomic>

namespace vorq {
namespace {

// Announces the bus it is on as that of accessibility, and is the only application there. It
// answers on a thread of its own, since questions are waited for.
class FakeApplication final : public QDBusVirtualObject {
  public:
    std::atomic<bool> tellsItsName = true;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() == "GetAddress") return reply(message, bus, address);
        if (message.member() != "Get") return reply(message, bus, {});
        const QString property = message.arguments().value(1).toString();
        if (property == "IsEnabled") return answer(message, bus, true);
        if (property == "ToolkitName") return answer(message, bus, QStringLiteral("gtk"));
        if (property != "Name") return false;
        // A busy application says nothing, rather than that it has none.
        if (!tellsItsName) return true;
        return answer(message, bus, QStringLiteral("soffice"));
    }

    QString address;

  private:
    static bool answer(const QDBusMessage& question, const QDBusConnection& bus,
                       const QVariant& value) {
        return reply(question, bus, QVariant::fromValue(QDBusVariant(value)));
    }
    static bool reply(const QDBusMessage& question, const QDBusConnection& bus,
                      const QVariant& value) {
        return bus.send(value.isValid() ? question.createReply(value) : question.createReply());
    }
};

class AtSpiApplicationsTest : public testing::Test {
  protected:
    AtSpiApplicationsTest() {
        m_application.address = m_bus.address();
        m_application.moveToThread(&m_thread);
        m_thread.start();
        m_server.registerVirtualObject("/", &m_application, QDBusConnection::SubPath);
        m_server.registerService("org.a11y.Bus");
        EXPECT_TRUE(QTest::qWaitFor([&] { return bus.isOn(); }));
    }
    ~AtSpiApplicationsTest() override {
        m_thread.quit();
        m_thread.wait();
    }

    [[nodiscard]] AtSpiToolkit toolkit() {
        return applications.toolkitOf(m_server.baseService(), {});
    }

  private:
    PrivateBus m_bus;
    QThread m_thread;

  protected:
    FakeApplication m_application;

  private:
    QDBusConnection m_server = m_bus.connection("accessible-application");

  protected:
    AtSpiBus bus{m_bus.address()};
    AtSpiApplications applications{bus};
};

TEST_F(AtSpiApplicationsTest, KnowsAToolkitByItsNameAndThatOfTheApplication) {
    EXPECT_EQ(toolkit(), atSpiToolkit(u"gtk", u"soffice"));
}

TEST_F(AtSpiApplicationsTest, AsksABusyApplicationForItsNameAgain) {
    m_application.tellsItsName = false;
    EXPECT_NE(toolkit(), atSpiToolkit(u"gtk", u"soffice"));
    m_application.tellsItsName = true;
    EXPECT_EQ(toolkit(), atSpiToolkit(u"gtk", u"soffice"));
}

} // namespace
} // namespace vorq
