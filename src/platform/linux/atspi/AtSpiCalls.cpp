#include "platform/linux/atspi/AtSpiCalls.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace vorq::atspi {
namespace {

const auto accessible = u"org.a11y.atspi.Accessible"_s;
const auto textInterface = u"org.a11y.atspi.Text"_s;
const auto hypertext = u"org.a11y.atspi.Hypertext"_s;
const auto editable = u"org.a11y.atspi.EditableText"_s;
const auto rootPath = u"/org/a11y/atspi/accessible/root"_s;

// More than any walk looks at.
constexpr std::size_t mostRefs = 4096;
constexpr std::uint32_t screenCoordinates = 0;
constexpr int matchAll = 1;
constexpr std::uint32_t canonicalOrder = 1;

QDBusMessage callOf(const AtSpiRef& element, const QString& interface, const char* method) {
    return QDBusMessage::createMethodCall(element.service, element.path, interface,
                                          QString::fromLatin1(method));
}

QDBusMessage propertyOf(const AtSpiRef& element, const QString& interface, const char* name) {
    QDBusMessage call = callOf(element, u"org.freedesktop.DBus.Properties"_s, "Get");
    call << interface << QString::fromLatin1(name);
    return call;
}

bool isOf(const QDBusMessage& reply, const char* signature) {
    return reply.type() == QDBusMessage::ReplyMessage &&
           reply.signature() == QLatin1StringView(signature);
}

// Reading it apart needs a constant. Each part that is begun is ended, else it is never freed.
QDBusArgument argumentOf(const QDBusMessage& reply) {
    return reply.arguments().constFirst().value<QDBusArgument>();
}

AtSpiRef refOf(const QDBusArgument& argument) {
    QString service;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> service >> path;
    argument.endStructure();
    return {service, path.path()};
}

QStringList namesIn(const QDBusMessage& reply) {
    return isOf(reply, "as") ? reply.arguments().constFirst().toStringList() : QStringList();
}

std::optional<QVariant> propertyIn(const QDBusMessage& reply) {
    if (!isOf(reply, "v")) return std::nullopt;
    return reply.arguments().constFirst().value<QDBusVariant>().variant();
}

} // namespace

AtSpiRef registryRoot() {
    return {u"org.a11y.atspi.Registry"_s, rootPath};
}

AtSpiRef applicationRoot(const QString& service) {
    return {service, rootPath};
}

QDBusMessage processOf(const QString& service) {
    QDBusMessage call = callOf({u"org.freedesktop.DBus"_s, u"/"_s}, u"org.freedesktop.DBus"_s,
                               "GetConnectionUnixProcessID");
    call << service;
    return call;
}

QDBusMessage toolkitName(const AtSpiRef& application) {
    return propertyOf(application, u"org.a11y.atspi.Application"_s, "ToolkitName");
}

QDBusMessage name(const AtSpiRef& element) {
    return propertyOf(element, accessible, "Name");
}

QDBusMessage children(const AtSpiRef& element) {
    return callOf(element, accessible, "GetChildren");
}

QDBusMessage parent(const AtSpiRef& element) {
    return propertyOf(element, accessible, "Parent");
}

QDBusMessage states(const AtSpiRef& element) {
    return callOf(element, accessible, "GetState");
}

QDBusMessage interfaces(const AtSpiRef& element) {
    return callOf(element, accessible, "GetInterfaces");
}

QDBusMessage role(const AtSpiRef& element) {
    return callOf(element, accessible, "GetRole");
}

QDBusMessage attributes(const AtSpiRef& element) {
    return callOf(element, accessible, "GetAttributes");
}

QDBusMessage focusedBelow(const AtSpiRef& element) {
    QDBusArgument rule;
    rule.beginStructure();
    rule << QList<int>{1 << static_cast<unsigned>(State::Focused), 0} << matchAll
         << QMap<QString, QString>() << matchAll << QList<int>{0, 0, 0, 0} << matchAll
         << QStringList() << matchAll << false;
    rule.endStructure();
    QDBusMessage call = callOf(element, u"org.a11y.atspi.Collection"_s, "GetMatches");
    call << QVariant::fromValue(rule) << canonicalOrder << 0 << true;
    return call;
}

QDBusMessage extents(const AtSpiRef& element) {
    QDBusMessage call = callOf(element, u"org.a11y.atspi.Component"_s, "GetExtents");
    call << screenCoordinates;
    return call;
}

QDBusMessage characterCount(const AtSpiRef& element) {
    return propertyOf(element, textInterface, "CharacterCount");
}

QDBusMessage caretOffset(const AtSpiRef& element) {
    return propertyOf(element, textInterface, "CaretOffset");
}

QDBusMessage text(const AtSpiRef& element, std::int32_t start, std::int32_t end) {
    QDBusMessage call = callOf(element, textInterface, "GetText");
    call << start << end;
    return call;
}

QDBusMessage selectionCount(const AtSpiRef& element) {
    return callOf(element, textInterface, "GetNSelections");
}

QDBusMessage selection(const AtSpiRef& element, std::int32_t index) {
    QDBusMessage call = callOf(element, textInterface, "GetSelection");
    call << index;
    return call;
}

QDBusMessage rangeExtents(const AtSpiRef& element, std::int32_t start, std::int32_t end) {
    QDBusMessage call = callOf(element, textInterface, "GetRangeExtents");
    call << start << end << screenCoordinates;
    return call;
}

QDBusMessage setSelection(const AtSpiRef& element, std::int32_t start, std::int32_t end) {
    QDBusMessage call = callOf(element, textInterface, "SetSelection");
    call << 0 << start << end;
    return call;
}

QDBusMessage addSelection(const AtSpiRef& element, std::int32_t start, std::int32_t end) {
    QDBusMessage call = callOf(element, textInterface, "AddSelection");
    call << start << end;
    return call;
}

QDBusMessage deleteText(const AtSpiRef& element, std::int32_t start, std::int32_t end) {
    QDBusMessage call = callOf(element, editable, "DeleteText");
    call << start << end;
    return call;
}

QDBusMessage insertText(const AtSpiRef& element, std::int32_t at, const QString& inserted,
                        std::int32_t length) {
    QDBusMessage call = callOf(element, editable, "InsertText");
    call << at << inserted << length;
    return call;
}

QDBusMessage linkIndex(const AtSpiRef& element, std::int32_t offset) {
    QDBusMessage call = callOf(element, hypertext, "GetLinkIndex");
    call << offset;
    return call;
}

QDBusMessage link(const AtSpiRef& element, std::int32_t index) {
    QDBusMessage call = callOf(element, hypertext, "GetLink");
    call << index;
    return call;
}

QDBusMessage linkedObject(const AtSpiRef& link) {
    QDBusMessage call = callOf(link, u"org.a11y.atspi.Hyperlink"_s, "GetObject");
    call << 0;
    return call;
}

std::optional<std::vector<AtSpiRef>> refsIn(const QDBusMessage& reply) {
    if (!isOf(reply, "a(so)")) return std::nullopt;
    const QDBusArgument argument = argumentOf(reply);
    std::vector<AtSpiRef> refs;
    argument.beginArray();
    while (!argument.atEnd() && refs.size() < mostRefs)
        if (AtSpiRef ref = refOf(argument); !ref.isNull()) refs.push_back(std::move(ref));
    argument.endArray();
    return refs;
}

std::optional<AtSpiRef> refIn(const QDBusMessage& reply) {
    if (!isOf(reply, "(so)")) return std::nullopt;
    const AtSpiRef ref = refOf(argumentOf(reply));
    return ref.isNull() ? std::nullopt : std::optional(ref);
}

std::optional<std::uint64_t> statesIn(const QDBusMessage& reply) {
    if (!isOf(reply, "au")) return std::nullopt;
    const QDBusArgument argument = argumentOf(reply);
    std::uint64_t states = 0;
    argument.beginArray();
    for (unsigned shift = 0; !argument.atEnd() && shift < 64; shift += 32) {
        std::uint32_t word = 0;
        argument >> word;
        states |= std::uint64_t{word} << shift;
    }
    argument.endArray();
    return states;
}

std::optional<std::uint32_t> numberIn(const QDBusMessage& reply) {
    if (!isOf(reply, "u")) return std::nullopt;
    return reply.arguments().constFirst().toUInt();
}

std::optional<std::int32_t> integerIn(const QDBusMessage& reply) {
    if (!isOf(reply, "i")) return std::nullopt;
    return reply.arguments().constFirst().toInt();
}

std::optional<QString> textIn(const QDBusMessage& reply) {
    if (!isOf(reply, "s")) return std::nullopt;
    return reply.arguments().constFirst().toString();
}

bool offersText(const QDBusMessage& reply) {
    return namesIn(reply).contains(textInterface);
}

bool offersLinks(const QDBusMessage& reply) {
    return namesIn(reply).contains(hypertext);
}

QMap<QString, QString> attributesIn(const QDBusMessage& reply) {
    if (!isOf(reply, "a{ss}")) return {};
    const QDBusArgument argument = argumentOf(reply);
    QMap<QString, QString> attributes;
    argument >> attributes;
    return attributes;
}

bool truthIn(const QDBusMessage& reply) {
    return isOf(reply, "b") && reply.arguments().constFirst().toBool();
}

bool isLate(const QDBusMessage& reply) {
    const QDBusError::ErrorType type = QDBusError(reply).type();
    return type == QDBusError::NoReply || type == QDBusError::Timeout ||
           type == QDBusError::TimedOut;
}

std::optional<Span> spanIn(const QDBusMessage& reply) {
    if (!isOf(reply, "ii")) return std::nullopt;
    const Span span{.start = reply.arguments()[0].toInt(), .end = reply.arguments()[1].toInt()};
    if (span.start < 0 || span.end < 0) return std::nullopt;
    return span.start <= span.end ? span : Span{.start = span.end, .end = span.start};
}

std::optional<QRectF> rectIn(const QDBusMessage& reply) {
    std::array<int, 4> numbers{};
    if (isOf(reply, "iiii")) {
        for (qsizetype i = 0; i < 4; ++i)
            numbers[static_cast<std::size_t>(i)] = reply.arguments()[i].toInt();
    } else if (isOf(reply, "(iiii)")) {
        const QDBusArgument argument = argumentOf(reply);
        argument.beginStructure();
        argument >> numbers[0] >> numbers[1] >> numbers[2] >> numbers[3];
        argument.endStructure();
    } else {
        return std::nullopt;
    }
    if (numbers[2] <= 0 || numbers[3] <= 0) return std::nullopt;
    return QRectF(numbers[0], numbers[1], numbers[2], numbers[3]);
}

std::optional<QString> propertyTextIn(const QDBusMessage& reply) {
    const std::optional<QVariant> value = propertyIn(reply);
    if (!value || value->typeId() != QMetaType::QString) return std::nullopt;
    return value->toString();
}

std::optional<AtSpiRef> propertyRefIn(const QDBusMessage& reply) {
    const std::optional<QVariant> value = propertyIn(reply);
    if (!value || value->metaType() != QMetaType::fromType<QDBusArgument>()) return std::nullopt;
    const auto argument = value->value<QDBusArgument>();
    if (argument.currentSignature() != u"(so)") return std::nullopt;
    const AtSpiRef ref = refOf(argument);
    return ref.isNull() ? std::nullopt : std::optional(ref);
}

std::optional<std::int32_t> propertyIntegerIn(const QDBusMessage& reply) {
    const std::optional<QVariant> value = propertyIn(reply);
    if (!value || value->typeId() != QMetaType::Int) return std::nullopt;
    return value->toInt();
}

} // namespace vorq::atspi
