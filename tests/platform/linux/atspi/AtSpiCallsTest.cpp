// Replies of the accessibility bus as they come off a bus. What reading them keeps is found by the
// leak check of the sanitizers.

#include "platform/linux/atspi/AtSpiCalls.h"
#include "doubles/platform/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVirtualObject>
#include <QTest>

#include <gmock/gmock.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::Optional;

// Gives the same reply to whatever it is asked.
class ScriptedBusElement final : public QDBusVirtualObject {
  public:
    QVariantList reply;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        return bus.send(message.createReply(reply));
    }
};

class AtSpiCallsTest : public testing::Test {
  protected:
    AtSpiCallsTest() { m_server.registerVirtualObject("/element", &m_element); }

    QDBusMessage replyOf(const QVariantList& content) {
        m_element.reply = content;
        const QDBusPendingCall call =
            m_client.asyncCall(atspi::states({m_server.baseService(), "/element"}));
        EXPECT_TRUE(QTest::qWaitFor([&] { return call.isFinished(); }));
        return call.reply();
    }

    static QVariant structure(const std::function<void(QDBusArgument&)>& fill) {
        QDBusArgument argument;
        argument.beginStructure();
        fill(argument);
        argument.endStructure();
        return QVariant::fromValue(argument);
    }

  private:
    PrivateBus m_bus;
    ScriptedBusElement m_element;
    QDBusConnection m_server = m_bus.connection("element");
    QDBusConnection m_client = m_bus.connection("reader");
};

TEST_F(AtSpiCallsTest, ReadsStatesOfTwoWordsAndNoMore) {
    const auto words = [](const QList<uint>& list) {
        return QVariantList{QVariant::fromValue(list)};
    };
    EXPECT_THAT(atspi::statesIn(replyOf(words({2, 1}))), Optional((std::uint64_t{1} << 32) + 2));
    EXPECT_THAT(atspi::statesIn(replyOf(words({5}))), Optional(std::uint64_t{5}));
    EXPECT_THAT(atspi::statesIn(replyOf(words({}))), Optional(std::uint64_t{0}));
    EXPECT_THAT(atspi::statesIn(replyOf(words({1, 0, 7}))), Optional(std::uint64_t{1}));
    EXPECT_EQ(atspi::statesIn(replyOf({7})), std::nullopt);
}

TEST_F(AtSpiCallsTest, ReadsAPlaceAsAStructureAndAsNumbers) {
    const QVariant place = structure([](QDBusArgument& fill) { fill << 1 << 2 << 30 << 40; });
    EXPECT_THAT(atspi::rectIn(replyOf({place})), Optional(QRectF(1, 2, 30, 40)));
    EXPECT_THAT(atspi::rectIn(replyOf({1, 2, 30, 40})), Optional(QRectF(1, 2, 30, 40)));
    const QVariant empty = structure([](QDBusArgument& fill) { fill << 1 << 2 << 0 << 0; });
    EXPECT_EQ(atspi::rectIn(replyOf({empty})), std::nullopt);
}

TEST_F(AtSpiCallsTest, ReadsAnElementAndNotTheNullOne) {
    const auto reference = [](const char* path) {
        return [path](QDBusArgument& fill) { fill << u":1.7"_s << QDBusObjectPath(path); };
    };
    const AtSpiRef one{":1.7", "/one"};
    EXPECT_THAT(atspi::refIn(replyOf({structure(reference("/one"))})), Optional(one));
    EXPECT_EQ(atspi::refIn(replyOf({structure(reference("/org/a11y/atspi/null"))})), std::nullopt);
    EXPECT_EQ(atspi::refsIn(replyOf({structure(reference("/one"))})), std::nullopt);
}

} // namespace
} // namespace vorq
