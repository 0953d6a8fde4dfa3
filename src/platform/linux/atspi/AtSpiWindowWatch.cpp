#include "platform/linux/atspi/AtSpiWindowWatch.h"

#include "platform/linux/atspi/AtSpiCalls.h"

#include <QDBusPendingCallWatcher>
#include <QFile>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Milliseconds. Nobody waits for an answer, and on a busy machine it may well come late.
constexpr int callLimit = 5'000;

const auto registry = u"org.a11y.atspi.Registry"_s;
const auto objectEvents = u"org.a11y.atspi.Event.Object"_s;
const auto windowEvents = u"org.a11y.atspi.Event.Window"_s;

AtSpiRef windowOf(const QDBusMessage& event) {
    return {event.service(), event.path()};
}

// The shell of a desktop draws bars and overviews, which count as active for it at times.
bool isShellOfDesktop(ProcessId process) {
    QFile file(u"/proc/%1/comm"_s.arg(process));
    return file.open(QIODevice::ReadOnly) && file.readAll().trimmed() == "gnome-shell";
}

} // namespace

AtSpiWindowWatch::AtSpiWindowWatch(const QDBusConnection& bus, ProcessId own, QObject* parent)
    : QObject(parent), m_bus(bus), m_own(own) {}

AtSpiWindowWatch::~AtSpiWindowWatch() = default;

void AtSpiWindowWatch::begin() {
    listen();
    for (const char* event :
         {"window:activate", "window:deactivate", "object:state-changed:active"}) {
        QDBusMessage wish = QDBusMessage::createMethodCall(registry, u"/org/a11y/atspi/registry"_s,
                                                           registry, u"RegisterEvent"_s);
        wish << QString::fromLatin1(event);
        m_bus.asyncCall(wish);
    }
    survey();
}

// A second connection of the same signal to the same slot would deliver it twice.
void AtSpiWindowWatch::listen() {
    const auto follow = [this](const QString& interface, const QString& signal, const char* slot) {
        m_bus.disconnect(QString(), QString(), interface, signal, this, slot);
        m_bus.connect(QString(), QString(), interface, signal, this, slot);
    };
    follow(windowEvents, u"Activate"_s, SLOT(windowActivated(QDBusMessage)));
    follow(windowEvents, u"Deactivate"_s, SLOT(windowDeactivated(QDBusMessage)));
    follow(objectEvents, u"StateChanged"_s, SLOT(stateChanged(QDBusMessage)));
    const QString root = atspi::registryRoot().path;
    const QString children = u"ChildrenChanged"_s;
    m_bus.disconnect(registry, root, objectEvents, children, this,
                     SLOT(applicationsChanged(QDBusMessage)));
    m_bus.connect(registry, root, objectEvents, children, this,
                  SLOT(applicationsChanged(QDBusMessage)));
}

void AtSpiWindowWatch::ask(const QDBusMessage& call, Answer answered) {
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, callLimit), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [watcher, answered = std::move(answered)] {
                watcher->deleteLater();
                answered(watcher->reply());
            });
}

void AtSpiWindowWatch::survey() {
    ask(atspi::children(atspi::registryRoot()), [this](const QDBusMessage& reply) {
        for (const AtSpiRef& root : atspi::refsIn(reply).value_or(std::vector<AtSpiRef>()))
            survey(root.service);
    });
}

void AtSpiWindowWatch::survey(const QString& service) {
    ask(atspi::processOf(service), [this, service](const QDBusMessage& reply) {
        const auto process = atspi::numberIn(reply);
        // Vorq must not be asked, as it may be waiting itself.
        if (!process || isLeftOut(static_cast<ProcessId>(*process))) return;
        ask(atspi::children(atspi::applicationRoot(service)), [this](const QDBusMessage& windows) {
            for (const AtSpiRef& window : atspi::refsIn(windows).value_or(std::vector<AtSpiRef>()))
                confirm(window);
        });
    });
}

void AtSpiWindowWatch::confirm(const AtSpiRef& window) {
    if (const auto known = m_processes.constFind(window.service); known != m_processes.constEnd())
        return confirm(window, *known);
    ask(atspi::processOf(window.service), [this, window](const QDBusMessage& reply) {
        const auto process = atspi::numberIn(reply);
        if (!process) return;
        m_processes.insert(window.service, static_cast<ProcessId>(*process));
        confirm(window, static_cast<ProcessId>(*process));
    });
}

void AtSpiWindowWatch::confirm(const AtSpiRef& window, ProcessId process) {
    if (isLeftOut(process)) return;
    ask(atspi::states(window), [this, window, process](const QDBusMessage& reply) {
        const std::uint64_t states = atspi::statesIn(reply).value_or(0);
        if (!atspi::has(states, atspi::State::Active)) return deactivate(window);
        m_windows.activated(window, process);
        tell();
    });
}

void AtSpiWindowWatch::deactivate(const AtSpiRef& window) {
    m_windows.deactivated(window);
    tell();
}

bool AtSpiWindowWatch::isLeftOut(ProcessId process) const {
    return process == m_own || isShellOfDesktop(process);
}

void AtSpiWindowWatch::forget(const QString& service) {
    m_processes.remove(service);
    m_windows.forget(service);
    tell();
}

void AtSpiWindowWatch::tell() {
    const auto front = m_windows.front();
    if (front == std::exchange(m_front, front)) return;
    emit frontChanged();
}

void AtSpiWindowWatch::windowActivated(const QDBusMessage& event) {
    confirm(windowOf(event));
}

void AtSpiWindowWatch::windowDeactivated(const QDBusMessage& event) {
    deactivate(windowOf(event));
}

// Some toolkits tell of a window only as a state, and of their first one not at all; then the
// element that gets the focus gives it away.
void AtSpiWindowWatch::stateChanged(const QDBusMessage& event) {
    const QList<QVariant> arguments = event.arguments();
    if (arguments.size() < 2) return;
    const QString state = arguments[0].toString();
    const bool isOn = arguments[1].toInt() != 0;
    if (state == u"active" && isOn) confirm(windowOf(event));
    if (state == u"active" && !isOn) deactivate(windowOf(event));
    if (state == u"focused" && isOn && !m_windows.hasWindowOf(event.service()))
        survey(event.service());
}

void AtSpiWindowWatch::applicationsChanged(const QDBusMessage&) {
    survey();
}

} // namespace vorq
