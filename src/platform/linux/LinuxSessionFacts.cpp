#include "platform/linux/LinuxSessionFacts.h"

#include "support/async/Wakeup.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int portalLimit = 5000; // milliseconds; the first question starts it

QDBusMessage versionQuestion() {
    QDBusMessage question = QDBusMessage::createMethodCall(
        u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
        u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << u"org.freedesktop.portal.Settings"_s << u"version"_s;
    return question;
}

} // namespace

LinuxSessionFacts::LinuxSessionFacts(SessionKind session, QDBusConnection bus)
    : m_session(session), m_bus(std::move(bus)) {}

QString LinuxSessionFacts::name() const {
    switch (m_session) {
    case SessionKind::X11:
        return u"X11"_s;
    case SessionKind::Wayland:
        return u"Wayland"_s;
    case SessionKind::None:
        break;
    }
    return {};
}

QCoro::Task<PortSupport> LinuxSessionFacts::portal(std::stop_token stop) {
    PortSupport result = std::unexpected(u"There is no session bus."_s);
    if (!m_bus.isConnected()) co_return result;
    const Wakeup done;
    const QDBusPendingCall call = m_bus.asyncCall(versionQuestion(), portalLimit);
    const auto watcher = std::make_unique<QDBusPendingCallWatcher>(call);
    QObject::connect(watcher.get(), &QDBusPendingCallWatcher::finished, watcher.get(),
                     [done] { done.fire(); });
    const std::stop_callback onStop(std::move(stop), [done] { done.fire(); });
    co_await done;
    const QDBusPendingReply<QDBusVariant> reply = call;
    result = {};
    if (!reply.isFinished() || reply.isError())
        result = std::unexpected(u"No desktop portal answers."_s);
    co_return result;
}

} // namespace vorq
