#include "platform/linux/atspi/AtSpiSwitch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariant>

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
        return std::unexpected(QStringLiteral("There is no session bus: accessibility can be "
                                              "turned on only from within the desktop."));
    QDBusMessage wish = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    wish << QStringLiteral("org.a11y.Status") << QStringLiteral("IsEnabled")
         << QVariant::fromValue(QDBusVariant(true));
    const QDBusMessage reply = session.call(wish, QDBus::Block, switchLimit);
    if (reply.type() == QDBusMessage::ReplyMessage) return {};
    if (isMissing(reply.errorName()))
        return std::unexpected(QStringLiteral("There is no accessibility on this desktop: the "
                                              "package at-spi2-core is missing."));
    return std::unexpected(
        QStringLiteral("Accessibility could not be turned on: %1").arg(reply.errorMessage()));
}

} // namespace vorq
