#include "platform/linux/atspi/AtSpiApplications.h"
#include "doubles/platform/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTest>
#include <QVariant>

#include <chrono>
#include <future>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Announces the bus it is on as that of accessibility, and is the only application there.
class ScriptedApplication final : public QDBusVirtualObject {
  public:
    bool tellsItsName = true;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() == "GetAddress") return reply(message, bus, address);
        if (message.member() != "Get") return reply(message, bus, {});
        const QString property = message.arguments().value(1).toString();
        if (property == "IsEnabled") return answer(message, bus, true);
        if (property == "ToolkitName") return answer(message, bus, u"gtk"_s);
        if (property != "Name") return false;
        // A busy application says nothing, rather than that it has none.
        if (!tellsItsName) return true;
        return answer(message, bus, u"soffice"_s);
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
        application.address = m_bus.address();
        m_server.registerVirtualObject("/", &application, QDBusConnection::SubPath);
        m_server.registerService("org.a11y.Bus");
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_accessibility.isOn(); }));
    }

    // Waits on another thread, since the application answers on this one.
    template<typename Question>
    [[nodiscard]] auto ask(const Question& question) {
        auto told = std::async(std::launch::async, [&] { return question(m_applications); });
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return told.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
        return told.get();
    }

    [[nodiscard]] AtSpiToolkit toolkit() {
        return ask([service = m_server.baseService()](AtSpiApplications& applications) {
            return applications.toolkitOf(service, {});
        });
    }

    // Of the application, too.
    [[nodiscard]] QStringList moreNames(int count) {
        QStringList names;
        for (int number = 0; number < count; ++number) {
            names += u"org.example.Name%1"_s.arg(number);
            EXPECT_TRUE(m_server.registerService(names.back()));
        }
        return names;
    }

    ScriptedApplication application;

  private:
    PrivateBus m_bus;
    QDBusConnection m_server = m_bus.connection("accessible-application");
    AtSpiBus m_accessibility{m_bus.address()};
    AtSpiApplications m_applications{m_accessibility};
};

TEST_F(AtSpiApplicationsTest, KnowsAToolkitByItsNameAndThatOfTheApplication) {
    EXPECT_EQ(toolkit(), atSpiToolkit(u"gtk", u"soffice"));
}

TEST_F(AtSpiApplicationsTest, AsksABusyApplicationForItsNameAgain) {
    application.tellsItsName = false;
    EXPECT_NE(toolkit(), atSpiToolkit(u"gtk", u"soffice"));
    application.tellsItsName = true;
    EXPECT_EQ(toolkit(), atSpiToolkit(u"gtk", u"soffice"));
}

TEST_F(AtSpiApplicationsTest, KnowsAProcessOfBeforeAmongMoreThanItRemembers) {
    const QStringList names = moreNames(300);
    const int unknown = ask([&](AtSpiApplications& applications) {
        int count = 0;
        for (const QString& name : names)
            for (const QString& asked : {name, names.front()})
                if (applications.processOf(asked, {}) != ::getpid()) ++count;
        return count;
    });
    EXPECT_EQ(unknown, 0);
}

} // namespace
} // namespace vorq
