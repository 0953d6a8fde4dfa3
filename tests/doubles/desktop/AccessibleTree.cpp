#include "doubles/desktop/AccessibleTree.h"

#include "doubles/desktop/DesktopSession.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QUuid>

#include <array>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

const auto accessible = u"org.a11y.atspi.Accessible"_s;
const auto rootPath = u"/org/a11y/atspi/accessible/root"_s;
constexpr int callLimit = 5000; // milliseconds

// Kinds of pieces that a text is read in, as the bus numbers them.
constexpr std::uint32_t characterBoundary = 0;
constexpr std::uint32_t lineBoundary = 5;

constexpr std::uint32_t onScreen = 0; // the origin of coordinates

// Bits of the state, as the bus numbers them.
constexpr int checkedBit = 4;
constexpr int enabledBit = 8;
constexpr int focusableBit = 11;
constexpr int focusedBit = 12;
constexpr int showingBit = 25;

struct Reference {
    QString program;
    QString path;
};

std::vector<Reference> references(const QDBusMessage& reply) {
    std::vector<Reference> found;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return found;
    const auto list = reply.arguments().front().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        Reference reference;
        QDBusObjectPath path;
        list.beginStructure();
        list >> reference.program >> path;
        list.endStructure();
        reference.path = path.path();
        found.push_back(reference);
    }
    list.endArray();
    return found;
}

std::uint32_t lowerStates(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return 0;
    const auto list = reply.arguments().front().value<QDBusArgument>();
    std::uint32_t first = 0;
    list.beginArray();
    if (!list.atEnd()) list >> first;
    list.endArray();
    return first;
}

QDBusMessage call(const QDBusConnection& bus, const Reference& at, const QString& interface,
                  const QString& method, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(at.program, at.path, interface, method);
    message.setArguments(arguments);
    return bus.call(message, QDBus::Block, callLimit);
}

QDBusConnection accessibilityBus() {
    const QString name = QUuid::createUuid().toString();
    const QDBusConnection session = QDBusConnection::connectToBus(
        qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name + "-session");
    const QDBusMessage reply =
        call(session, {"org.a11y.Bus", "/org/a11y/bus"}, "org.a11y.Bus", "GetAddress", {});
    QDBusConnection::disconnectFromBus(name + "-session");
    return QDBusConnection::connectToBus(reply.arguments().value(0).toString(), name);
}

} // namespace

AccessibleTree::AccessibleTree(std::int32_t process) : m_bus(accessibilityBus()) {
    DesktopSession::waitUntil("the program on the accessibility bus",
                              [&] { return seek(process); });
}

AccessibleTree::~AccessibleTree() {
    QDBusConnection::disconnectFromBus(m_bus.name());
}

bool AccessibleTree::seek(std::int32_t process) {
    const Reference registry{"org.a11y.atspi.Registry", rootPath};
    for (const Reference& program :
         references(call(m_bus, registry, accessible, "GetChildren", {}))) {
        const QDBusMessage reply =
            call(m_bus, {"org.freedesktop.DBus", "/org/freedesktop/DBus"}, "org.freedesktop.DBus",
                 "GetConnectionUnixProcessID", {program.program});
        if (reply.arguments().value(0).toInt() == process) m_program = program.program;
    }
    return !m_program.isEmpty();
}

QDBusMessage AccessibleTree::ask(const QString& path, const QString& interface,
                                 const QString& method, const QVariantList& arguments) const {
    return call(m_bus, {m_program, path}, interface, method, arguments);
}

std::vector<AccessibleNode> AccessibleTree::read() const {
    std::vector<AccessibleNode> nodes;
    readBelow(rootPath, {}, nodes);
    return nodes;
}

std::vector<AccessibleNode> AccessibleTree::readSiblings(const QString& path) const {
    const QDBusMessage reply =
        ask(path, "org.freedesktop.DBus.Properties", "Get", {accessible, "Parent"});
    if (reply.type() != QDBusMessage::ReplyMessage) return {};
    const auto parent = reply.arguments().value(0).value<QDBusVariant>().variant();
    const auto pair = parent.value<QDBusArgument>();
    QString program;
    QDBusObjectPath above;
    pair.beginStructure();
    pair >> program >> above;
    pair.endStructure();
    std::vector<AccessibleNode> nodes;
    for (const Reference& child : references(ask(above.path(), accessible, "GetChildren")))
        readBelow(child.path, above.path(), nodes);
    return nodes;
}

QDBusConnection& AccessibleTree::listenFor(const QString& events) {
    call(m_bus, {"org.a11y.atspi.Registry", "/org/a11y/atspi/registry"}, "org.a11y.atspi.Registry",
         "RegisterEvent", {events});
    return m_bus;
}

AccessibleNode AccessibleTree::readOne(const QString& path) const {
    const QDBusMessage role = ask(path, accessible, "GetRoleName");
    if (role.type() != QDBusMessage::ReplyMessage) return {};
    const QDBusMessage name =
        ask(path, "org.freedesktop.DBus.Properties", "Get", {accessible, "Name"});
    const std::uint32_t states = lowerStates(ask(path, accessible, "GetState"));
    const auto has = [states](int bit) { return (states >> bit & 1U) != 0; };
    return {.path = path,
            .parent = {},
            .role = role.arguments().value(0).toString(),
            .name = name.arguments().value(0).value<QDBusVariant>().variant().toString(),
            .isFocusable = has(focusableBit),
            .isFocused = has(focusedBit),
            .isShowing = has(showingBit),
            .isEnabled = has(enabledBit),
            .isChecked = has(checkedBit)};
}

void AccessibleTree::readBelow(const QString& path, const QString& parent,
                               std::vector<AccessibleNode>& nodes) const {
    AccessibleNode node = readOne(path);
    if (node.role.isEmpty()) return;
    node.parent = parent;
    nodes.push_back(node);
    for (const Reference& child : references(ask(path, accessible, "GetChildren")))
        if (child.program == m_program) readBelow(child.path, path, nodes);
}

QString AccessibleTree::text(const AccessibleNode& node) const {
    const QDBusMessage reply = ask(node.path, "org.a11y.atspi.Text", "GetText", {0, -1});
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString()
                                                      : QString();
}

QString AccessibleTree::textAtCaret(const QString& path, std::uint32_t boundary) const {
    const QDBusMessage caret =
        ask(path, "org.freedesktop.DBus.Properties", "Get", {"org.a11y.atspi.Text", "CaretOffset"});
    const int offset = caret.arguments().value(0).value<QDBusVariant>().variant().toInt();
    const QDBusMessage reply =
        ask(path, "org.a11y.atspi.Text", "GetTextAtOffset", {offset, boundary});
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString()
                                                      : QString();
}

QString AccessibleTree::lineAtCaret(const QString& path) const {
    return textAtCaret(path, lineBoundary);
}

QString AccessibleTree::characterAtCaret(const QString& path) const {
    return textAtCaret(path, characterBoundary);
}

QRect AccessibleTree::place(const AccessibleNode& node) const {
    const QDBusMessage reply = ask(node.path, "org.a11y.atspi.Component", "GetExtents", {onScreen});
    if (reply.type() != QDBusMessage::ReplyMessage) return {};
    const auto told = reply.arguments().value(0).value<QDBusArgument>();
    std::array<int, 4> edges{};
    told.beginStructure();
    for (int& edge : edges)
        told >> edge;
    told.endStructure();
    return {edges[0], edges[1], edges[2], edges[3]};
}

QRect AccessibleTree::placeOfCharacter(const AccessibleNode& node, qsizetype offset) const {
    const QDBusMessage reply = ask(node.path, "org.a11y.atspi.Text", "GetCharacterExtents",
                                   {static_cast<int>(offset), onScreen});
    const QVariantList all = reply.arguments();
    if (reply.type() != QDBusMessage::ReplyMessage || all.size() < 4) return {};
    return {all[0].toInt(), all[1].toInt(), all[2].toInt(), all[3].toInt()};
}

bool AccessibleTree::press(const AccessibleNode& node) const {
    const QDBusMessage reply =
        ask(node.path, "org.a11y.atspi.Action", "DoAction", {static_cast<int>(0)});
    return reply.arguments().value(0).toBool();
}

} // namespace vorq::desktop
