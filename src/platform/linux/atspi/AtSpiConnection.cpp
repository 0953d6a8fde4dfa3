#include "platform/linux/atspi/AtSpiConnection.h"

#include "platform/linux/atspi/AtSpiWindowWatch.h"
#include "platform/linux/atspi/BusAnswer.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QVariantMap>

#include <atomic>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Milliseconds. The first question starts the bus.
constexpr int startLimit = 10'000;

const auto announcer = u"org.a11y.Bus"_s;
const auto announcerPath = u"/org/a11y/bus"_s;
const auto statusInterface = u"org.a11y.Status"_s;
const auto propertiesInterface = u"org.freedesktop.DBus.Properties"_s;
const auto localPath = u"/org/freedesktop/DBus/Local"_s;
const auto localInterface = u"org.freedesktop.DBus.Local"_s;
const auto switchName = u"IsEnabled"_s;

// Connections are known by name within the process.
QString uniqueName(const char* kind) {
    static std::atomic<int> last = 0;
    return u"vorq-%1-%2"_s.arg(QLatin1StringView(kind)).arg(++last);
}

} // namespace

void AtSpiBatch::answer(std::size_t index, const QDBusMessage& reply) {
    const std::scoped_lock lock(m_mutex);
    m_replies[index] = reply;
    --m_missing;
    if (m_missing == 0) m_changed.notify_all();
}

std::vector<QDBusMessage> AtSpiBatch::wait(const std::stop_token& stop) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, stop, [this] { return m_missing == 0; });
    return m_replies;
}

AtSpiFocusOrder AtSpiShared::focusOrder() const {
    const std::scoped_lock lock(m_mutex);
    return m_focusOrder;
}

std::optional<std::int32_t> AtSpiShared::front() const {
    const std::scoped_lock lock(m_mutex);
    return m_front;
}

void AtSpiShared::setFront(std::optional<std::int32_t> process) {
    const std::scoped_lock lock(m_mutex);
    m_front = process;
}

AtSpiConnection::AtSpiConnection(QString sessionBusAddress, std::chrono::milliseconds callLimit)
    : m_sessionAddress(std::move(sessionBusAddress)),
      m_callLimit(static_cast<int>(callLimit.count())) {}

AtSpiConnection::~AtSpiConnection() {
    disconnectFromBus();
    if (!m_session) return;
    m_session.reset();
    QDBusConnection::disconnectFromBus(m_sessionName);
}

void AtSpiConnection::seek() {
    if (m_bus || !connectToSession()) {
        m_shared.isSought = false;
        return;
    }
    askForAddress();
}

bool AtSpiConnection::connectToSession() {
    if (m_session) return true;
    m_sessionName = uniqueName("session");
    QDBusConnection session = QDBusConnection::connectToBus(m_sessionAddress, m_sessionName);
    if (!session.isConnected()) {
        QDBusConnection::disconnectFromBus(m_sessionName);
        return false;
    }
    session.connect(QString(), localPath, localInterface, u"Disconnected"_s, this,
                    SLOT(sessionLost()));
    session.connect(announcer, announcerPath, propertiesInterface, u"PropertiesChanged"_s, this,
                    SLOT(statusChanged(QDBusMessage)));
    m_announcement = new QDBusServiceWatcher(announcer, session,
                                             QDBusServiceWatcher::WatchForRegistration, this);
    connect(m_announcement, &QDBusServiceWatcher::serviceRegistered, this,
            &AtSpiConnection::announced);
    m_session = session;
    return true;
}

void AtSpiConnection::announced() {
    askForAddress();
}

void AtSpiConnection::askForAddress() {
    if (!m_session) return;
    const QDBusMessage question =
        QDBusMessage::createMethodCall(announcer, announcerPath, announcer, u"GetAddress"_s);
    auto* answer = new QDBusPendingCallWatcher(m_session->asyncCall(question, startLimit), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QString> reply = *answer;
        const QString address = reply.isValid() ? reply.value() : QString();
        // Whoever announces the bus anew has another one, which programs find from now on.
        if (m_bus && !address.isEmpty() && address != m_busAddress) disconnectFromBus();
        if (!m_bus && !address.isEmpty()) connectTo(address);
        m_shared.isSought = false;
    });
}

void AtSpiConnection::connectTo(const QString& address) {
    if (!answersConnections(address)) return;
    m_busName = uniqueName("a11y");
    QDBusConnection bus = QDBusConnection::connectToBus(address, m_busName);
    if (!bus.isConnected()) {
        QDBusConnection::disconnectFromBus(m_busName);
        return;
    }
    m_bus = bus;
    m_busAddress = address;
    ++m_shared.connections;
    listen(bus);
    registerForEvents(bus);
    if (m_followsWindows) watchWindows(bus);
    m_shared.isConnected = true;
    emit switchChanged();
    askForStatus();
}

void AtSpiConnection::listen(QDBusConnection& bus) {
    bus.connect(QString(), localPath, localInterface, u"Disconnected"_s, this, SLOT(busLost()));
    // A match of the first argument would deliver nothing.
    bus.connect(QString(), QString(), u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s, this,
                SLOT(stateChanged(QDBusMessage)));
    bus.connect(u"org.freedesktop.DBus"_s, QString(), u"org.freedesktop.DBus"_s,
                u"NameOwnerChanged"_s, this, SLOT(ownerChanged(QString, QString, QString)));
}

void AtSpiConnection::registerForEvents(const QDBusConnection& bus) {
    QDBusMessage wish =
        QDBusMessage::createMethodCall(u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/registry"_s,
                                       u"org.a11y.atspi.Registry"_s, u"RegisterEvent"_s);
    wish << u"object:state-changed:focused"_s;
    bus.asyncCall(wish, startLimit);
}

void AtSpiConnection::followWindows() {
    if (std::exchange(m_followsWindows, true) || !m_bus) return;
    watchWindows(*m_bus);
}

void AtSpiConnection::watchWindows(const QDBusConnection& bus) {
    m_windows = new AtSpiWindowWatch(bus, ::getpid(), this);
    connect(m_windows, &AtSpiWindowWatch::frontChanged, this,
            [this] { setFront(m_windows->front()); });
    m_windows->begin();
}

void AtSpiConnection::setFront(std::optional<std::int32_t> process) {
    m_shared.setFront(process);
    emit frontChanged();
}

void AtSpiConnection::askForStatus() {
    if (!m_session) return;
    QDBusMessage question =
        QDBusMessage::createMethodCall(announcer, announcerPath, propertiesInterface, u"Get"_s);
    question << statusInterface << switchName;
    auto* answer = new QDBusPendingCallWatcher(m_session->asyncCall(question, startLimit), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> status = *answer;
        if (status.isValid()) setSwitchedOn(status.value().variant().toBool());
    });
}

void AtSpiConnection::setSwitchedOn(bool isSwitchedOn) {
    if (m_shared.isSwitchedOn.exchange(isSwitchedOn) != isSwitchedOn) emit switchChanged();
}

void AtSpiConnection::switchOn() {
    if (!connectToSession() || !m_session) return;
    QDBusMessage wish =
        QDBusMessage::createMethodCall(announcer, announcerPath, propertiesInterface, u"Set"_s);
    wish << statusInterface << switchName << QVariant::fromValue(QDBusVariant(true));
    auto* answer = new QDBusPendingCallWatcher(m_session->asyncCall(wish, startLimit), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        if (m_session) askForStatus();
        if (m_session && !m_bus) askForAddress();
    });
}

void AtSpiConnection::send(const std::shared_ptr<AtSpiBatch>& batch) {
    for (std::size_t i = 0; i < batch->calls().size(); ++i) {
        if (!m_bus) {
            batch->answer(i, QDBusMessage());
            continue;
        }
        auto* answer =
            new QDBusPendingCallWatcher(m_bus->asyncCall(batch->calls()[i], m_callLimit), this);
        connect(answer, &QDBusPendingCallWatcher::finished, this, [batch, i, answer] {
            answer->deleteLater();
            batch->answer(i, answer->reply());
        });
    }
}

void AtSpiConnection::statusChanged(const QDBusMessage& message) {
    if (message.signature() == "sa{sv}as"_L1 && m_session) askForStatus();
}

void AtSpiConnection::stateChanged(const QDBusMessage& message) {
    const QList<QVariant> arguments = message.arguments();
    if (arguments.size() < 2 || arguments[0].toString() != u"focused") return;
    const AtSpiRef element{message.service(), message.path()};
    const bool hasFocus = arguments[1].toInt() != 0;
    m_shared.changeFocusOrder([&](AtSpiFocusOrder& order) {
        if (hasFocus)
            order.gained(element);
        else
            order.lost(element);
    });
}

void AtSpiConnection::ownerChanged(const QString& name, const QString&, const QString& to) {
    if (to.isEmpty()) {
        m_shared.changeFocusOrder([&](AtSpiFocusOrder& order) { order.forget(name); });
        if (m_windows != nullptr) m_windows->forget(name);
    } else if (name == u"org.a11y.atspi.Registry" && m_bus) {
        registerForEvents(*m_bus);
        if (m_windows != nullptr) m_windows->begin();
    }
}

void AtSpiConnection::sessionLost() {
    delete std::exchange(m_announcement, nullptr);
    m_session.reset();
    QDBusConnection::disconnectFromBus(m_sessionName);
    disconnectFromBus();
}

void AtSpiConnection::busLost() {
    disconnectFromBus();
    if (m_session) askForAddress();
}

void AtSpiConnection::disconnectFromBus() {
    m_shared.isConnected = false;
    setSwitchedOn(false);
    m_shared.changeFocusOrder([](AtSpiFocusOrder& order) { order = {}; });
    delete std::exchange(m_windows, nullptr);
    if (m_shared.front()) setFront(std::nullopt);
    if (!m_bus) return;
    m_bus.reset();
    QDBusConnection::disconnectFromBus(m_busName);
}

} // namespace vorq
