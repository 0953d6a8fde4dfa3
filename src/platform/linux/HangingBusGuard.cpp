#include "platform/linux/HangingBusGuard.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>

namespace vorq {
namespace {

constexpr int answerLimit = 500; // milliseconds
// Where Qt seeks the bus before it asks the service.
constexpr const char* addressVariable = "AT_SPI_BUS_ADDRESS";

bool hangs(const QDBusConnection& session) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << QStringLiteral("org.a11y.Status") << QStringLiteral("IsEnabled");
    question.setAutoStartService(false);
    const QDBusMessage reply = session.call(question, QDBus::Block, answerLimit);
    return QDBusError(reply).type() == QDBusError::NoReply;
}

} // namespace

HangingBusGuard::HangingBusGuard(const QDBusConnection& session)
    : m_isOn(session.isConnected() && !qEnvironmentVariableIsSet(addressVariable) &&
             hangs(session)) {
    if (!m_isOn) return;
    qWarning("Vorq: the accessibility bus hangs; assistive technology does not see Vorq.");
    qputenv(addressVariable, "disabled:");
}

HangingBusGuard::~HangingBusGuard() {
    if (!m_isOn) return;
    // Has Qt seek the bus now, so that programs we start find the true one.
    QAccessible::isActive();
    qunsetenv(addressVariable);
}

} // namespace vorq
