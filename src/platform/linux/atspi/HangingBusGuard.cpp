#include "platform/linux/atspi/HangingBusGuard.h"

#include "platform/linux/atspi/BusAnswer.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QLoggingCategory>
#include <QVariantList>

using namespace Qt::StringLiterals;

namespace vorq {

static Q_LOGGING_CATEGORY(platformLog, "vorq.platform", QtInfoMsg);

namespace {

constexpr int answerLimit = 500; // milliseconds
// Where Qt seeks the bus before it asks the service.
constexpr const char* addressVariable = "AT_SPI_BUS_ADDRESS";

QDBusMessage askAnnouncer(const QDBusConnection& session, const QString& interface,
                          const QString& method, const QVariantList& arguments) {
    QDBusMessage question =
        QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, interface, method);
    question.setArguments(arguments);
    question.setAutoStartService(false);
    return session.call(question, QDBus::Block, answerLimit);
}

bool isNoAnswer(const QDBusMessage& reply) {
    return QDBusError(reply).type() == QDBusError::NoReply;
}

// The service that announces the bus, or the bus itself, which Qt seeks only if it is on.
bool hangs(const QDBusConnection& session) {
    const QVariantList property{u"org.a11y.Status"_s, u"IsEnabled"_s};
    const QDBusMessage status =
        askAnnouncer(session, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, property);
    if (isNoAnswer(status)) return true;
    const auto isOn = status.arguments().value(0).value<QDBusVariant>();
    if (!isOn.variant().toBool()) return false;
    const QDBusMessage address = askAnnouncer(session, u"org.a11y.Bus"_s, u"GetAddress"_s, {});
    return isNoAnswer(address) || !answersConnections(address.arguments().value(0).toString());
}

} // namespace

HangingBusGuard::HangingBusGuard(const QDBusConnection& session)
    : m_isOn(session.isConnected() && !qEnvironmentVariableIsSet(addressVariable) &&
             hangs(session)) {
    if (!m_isOn) return;
    qCWarning(platformLog,
              "Vorq: the accessibility bus hangs; assistive technology does not see Vorq.");
    qputenv(addressVariable, "disabled:");
}

HangingBusGuard::~HangingBusGuard() {
    if (!m_isOn) return;
    // Has Qt seek the bus now, so that programs we start find the true one.
    QAccessible::isActive();
    qunsetenv(addressVariable);
}

} // namespace vorq
