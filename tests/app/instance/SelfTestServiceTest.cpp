// The self-test of one process as another one follows it, over a bus.

#include "app/instance/ApplicationService.h"
#include "doubles/platform/PrivateBus.h"
#include "doubles/shell/SelfTestFixture.h"

#include <QDBusPendingCall>
#include <QTest>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

class SelfTestServiceTest : public SelfTestFixture {
  protected:
    SelfTestServiceTest() {
        EXPECT_TRUE(m_service.claim());
        m_service.selfTests().serve(
            m_owner, [this]() -> SelfTest& { return *m_test; }, [] { return PrivateWords(); });
    }

    [[nodiscard]] QDBusPendingCall ask(const QString& method, const QVariantList& arguments = {}) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            ApplicationService::name, ApplicationService::path, SelfTestService::interface, method);
        message.setArguments(arguments);
        return m_caller.asyncCall(message);
    }
    void waitFor(QDBusPendingCall& call) {
        EXPECT_TRUE(QTest::qWaitFor([&] {
            turn(std::chrono::milliseconds(5));
            return call.isFinished();
        }));
    }
    [[nodiscard]] QDBusMessage answer(const QString& method, const QVariantList& arguments = {}) {
        QDBusPendingCall call = ask(method, arguments);
        waitFor(call);
        return call.reply();
    }

  private:
    PrivateBus m_bus;
    QDBusConnection m_caller = m_bus.connection(u"vorq-test-caller"_s);
    QObject m_owner;
    ApplicationService m_service{m_bus.connection(u"vorq-test-service"_s)};
};

TEST_F(SelfTestServiceTest, AWholeTestIsToldToItsEnd) {
    ASSERT_EQ(answer(u"Begin"_s).type(), QDBusMessage::ReplyMessage);
    for (std::size_t number = 0; number < m_test->count(); ++number)
        EXPECT_NE(answer(u"Next"_s, {int(number)}).arguments().value(0).toByteArray(), "");
    const QDBusMessage end = answer(u"Next"_s, {int(m_test->count())});
    EXPECT_EQ(end.type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(end.arguments().value(0).toByteArray(), "");
}

TEST_F(SelfTestServiceTest, ATestThatIsCutShortHasNotEnded) {
    m_session.isHanging = true;
    ASSERT_EQ(answer(u"Begin"_s).type(), QDBusMessage::ReplyMessage);
    QDBusPendingCall waiting = ask(u"Next"_s, {int(m_test->count())});
    m_test->cancel();
    waitFor(waiting);
    EXPECT_EQ(waiting.reply().type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(answer(u"Next"_s, {int(m_test->count())}).type(), QDBusMessage::ErrorMessage);
}

TEST_F(SelfTestServiceTest, ASecondTestIsToldThatOneRuns) {
    m_session.isHanging = true;
    ASSERT_EQ(answer(u"Begin"_s).type(), QDBusMessage::ReplyMessage);
    const QDBusMessage refusal = answer(u"Begin"_s);
    EXPECT_EQ(refusal.errorName(), SelfTestService::busy);
    EXPECT_EQ(refusal.errorMessage(), u"Vorq tests itself already.");
    m_test->cancel();
}

} // namespace
} // namespace vorq
