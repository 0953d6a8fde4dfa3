#include "platform/linux/atspi/AtSpiSwitch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// The first question starts the bus.
constexpr int switchLimit = 10'000; // milliseconds

bool isMissing(const QString& error) {
    return error == u"org.freedesktop.DBus.Error.ServiceUnknown" ||
           error == u"org.freedesktop.DBus.Error.Spawn.ServiceNotFound";
}

} // namespace

std::expected<void, QString> switchAccessibilityOn(const QDBusConnection& session) {
    if (!session.isConnected())
        return std::unexpected(u"There is no session bus: accessibility can be "
                               "turned on only from within the desktop."_s);
    QDBusMessage wish = QDBusMessage::createMethodCall(
        u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.freedesktop.DBus.Properties"_s, u"Set"_s);
    wish << u"org.a11y.Status"_s << u"IsEnabled"_s << QVariant::fromValue(QDBusVariant(true));
    const QDBusMessage reply = session.call(wish, QDBus::Block, switchLimit);
    if (reply.type() == QDBusMessage::ReplyMessage) return {};
    if (isMissing(reply.errorName()))
        return std::unexpected(u"There is no accessibility on this desktop: the "
                               "package at-spi2-core is missing."_s);
    return std::unexpected(u"Accessibility could not be turned on: %1"_s.arg(reply.errorMessage()));
}

} // namespace vorq
