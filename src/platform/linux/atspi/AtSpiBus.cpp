#include "platform/linux/atspi/AtSpiBus.h"

#include "platform/linux/atspi/AtSpiConnection.h"

#include <QMetaObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// So that an application that hangs is not buried under questions.
constexpr std::size_t mostCallsAtOnce = 512;

} // namespace

AtSpiBus::AtSpiBus(const QString& sessionBusAddress, std::chrono::milliseconds callLimit)
    : m_connection(new AtSpiConnection(sessionBusAddress, callLimit)) {
    m_thread.setObjectName(u"vorq-a11y"_s);
    m_connection->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_connection, &QObject::deleteLater);
    m_thread.start();
    seekConnection();
}

AtSpiBus::~AtSpiBus() {
    m_thread.quit();
    m_thread.wait();
}

AtSpiBus::Messages AtSpiBus::call(const Messages& calls, const std::stop_token& stop) {
    Messages replies(calls.size());
    for (std::size_t first = 0; first < calls.size(); first += mostCallsAtOnce) {
        if (stop.stop_requested()) break;
        if (!m_connection->shared().isConnected) {
            seekConnection();
            break;
        }
        const std::size_t count = std::min(mostCallsAtOnce, calls.size() - first);
        const auto begin = calls.begin() + static_cast<std::ptrdiff_t>(first);
        const auto batch = std::make_shared<AtSpiBatch>(
            Messages(begin, begin + static_cast<std::ptrdiff_t>(count)));
        QMetaObject::invokeMethod(
            m_connection, [connection = m_connection, batch] { connection->send(batch); },
            Qt::QueuedConnection);
        std::ranges::copy(batch->wait(stop), replies.begin() + static_cast<std::ptrdiff_t>(first));
    }
    return replies;
}

QDBusMessage AtSpiBus::call(const QDBusMessage& one, const std::stop_token& stop) {
    return call(Messages{one}, stop).front();
}

bool AtSpiBus::isOn() const {
    const AtSpiShared& shared = m_connection->shared();
    if (!shared.isConnected) seekConnection();
    return shared.isConnected && shared.isSwitchedOn;
}

int AtSpiBus::connection() const {
    return m_connection->shared().connections;
}

void AtSpiBus::whenChanged(QObject* context, const std::function<void()>& callback) const {
    QObject::connect(m_connection, &AtSpiConnection::switchChanged, context, callback);
}

void AtSpiBus::switchOn() {
    QMetaObject::invokeMethod(m_connection, &AtSpiConnection::switchOn, Qt::QueuedConnection);
}

AtSpiFocusOrder AtSpiBus::focusOrder() const {
    return m_connection->shared().focusOrder();
}

void AtSpiBus::learnFocus(const AtSpiRef& element) {
    m_connection->shared().changeFocusOrder([&](AtSpiFocusOrder& order) {
        if (order.candidates(element.service).empty()) order.gained(element);
    });
}

void AtSpiBus::followWindows() {
    QMetaObject::invokeMethod(m_connection, &AtSpiConnection::followWindows, Qt::QueuedConnection);
}

std::optional<std::int32_t> AtSpiBus::front() const {
    return m_connection->shared().front();
}

void AtSpiBus::whenFrontChanges(QObject* context, const std::function<void()>& callback) const {
    QObject::connect(m_connection, &AtSpiConnection::frontChanged, context, callback);
}

void AtSpiBus::seekConnection() const {
    // One request at a time.
    if (m_connection->shared().isSought.exchange(true)) return;
    QMetaObject::invokeMethod(m_connection, &AtSpiConnection::seek, Qt::QueuedConnection);
}

} // namespace vorq
