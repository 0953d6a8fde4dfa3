#include "doubles/desktop/EventEars.h"

#include "doubles/desktop/DesktopSession.h"

#include <QElapsedTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

constexpr int quietTime = 250; // milliseconds without any event

} // namespace

EventEars::EventEars(AccessibleTree& tree) : m_tree(tree) {
    const QString interface = u"org.a11y.atspi.Event.Object"_s;
    QDBusConnection& bus = tree.listenFor("object:");
    bus.connect(tree.program(), {}, interface, "StateChanged", this,
                SLOT(stateChanged(QDBusMessage)));
    bus.connect(tree.program(), {}, interface, "TextCaretMoved", this,
                SLOT(caretMoved(QDBusMessage)));
}

void EventEars::stateChanged(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    if (arguments.value(0) == "enabled") {
        const QString name = m_tree.readOne(message.path()).name;
        m_switched.push_back(
            (name + (arguments.value(1).toInt() == 1 ? " on" : " off")).toStdString());
    }
    if (arguments.value(1).toInt() != 1) return;
    if (arguments.value(0) == "focused") {
        const AccessibleNode node = m_tree.readOne(message.path());
        const QString said =
            node.name.isEmpty() ? m_tree.lineAtCaret(message.path()).trimmed() : node.name;
        m_heard.push_back(("focus " + node.role + ": " + said).toStdString());
    }
    if (arguments.value(0) != "showing") return;
    const AccessibleNode node = m_tree.readOne(message.path());
    if (node.role == "notification") m_announced.push_back(node.name.toStdString());
}

void EventEars::caretMoved(const QDBusMessage& message) {
    m_heard.push_back(("caret: " + m_tree.lineAtCaret(message.path()).trimmed()).toStdString());
}

void EventEars::waitForQuiet() const {
    std::size_t count = 0;
    QElapsedTimer quiet;
    quiet.start();
    DesktopSession::waitUntil("quiet", [&] {
        if (std::exchange(count, m_heard.size()) != m_heard.size()) quiet.restart();
        return quiet.elapsed() > quietTime;
    });
}

void EventEars::forget() {
    waitForQuiet();
    m_heard.clear();
}

std::vector<std::string> EventEars::heard() {
    DesktopSession::waitUntil("something to hear", [this] { return !m_heard.empty(); });
    waitForQuiet();
    return std::exchange(m_heard, {});
}

} // namespace vorq::desktop
