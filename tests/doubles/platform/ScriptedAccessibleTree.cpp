#include "doubles/platform/ScriptedAccessibleTree.h"

#include "platform/linux/atspi/AtSpiText.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <algorithm>

namespace vorq {
namespace {

QVariant wrapped(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

QVariant reference(const QString& service, const QString& path) {
    QDBusArgument argument;
    argument.beginStructure();
    argument << service << QDBusObjectPath(path);
    argument.endStructure();
    return QVariant::fromValue(argument);
}

struct Reference {
    QString service;
    QDBusObjectPath path;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Reference& one) {
    argument.beginStructure();
    argument << one.service << one.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Reference& one) {
    argument.beginStructure();
    argument >> one.service >> one.path;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): as the toolkit calls it
}

QDBusMessage refusal(const QDBusMessage& call) {
    return call.createErrorReply(QDBusError::UnknownMethod, "no such method");
}

QDBusMessage references(const QDBusMessage& call, const QString& service,
                        const QStringList& paths) {
    qDBusRegisterMetaType<Reference>();
    qDBusRegisterMetaType<QList<Reference>>();
    QList<Reference> list;
    for (const QString& path : paths)
        list.push_back({service, QDBusObjectPath(path)});
    return call.createReply(QVariant::fromValue(list));
}

QDBusMessage extentsOf(const QDBusMessage& call, QRect place) {
    if (place.isEmpty()) return refusal(call);
    QDBusArgument edges;
    edges.beginStructure();
    edges << place.x() << place.y() << place.width() << place.height();
    edges.endStructure();
    return call.createReply(QVariant::fromValue(edges));
}

} // namespace

bool ScriptedAccessibleTree::handleMessage(const QDBusMessage& message,
                                           const QDBusConnection& bus) {
    QDBusMessage reply = instead ? instead(message) : QDBusMessage();
    if (reply.errorMessage() == noAnswer) return true;
    if (reply.type() == QDBusMessage::InvalidMessage) reply = answer(message, bus.baseService());
    return bus.send(reply);
}

QDBusMessage ScriptedAccessibleTree::answer(const QDBusMessage& call, const QString& service) {
    const QString member = call.member();
    if (member == "GetAddress") return call.createReply(m_address);
    if (member == "Get" && call.arguments().value(1) == "IsEnabled")
        return call.createReply(wrapped(true));
    const auto found = elements.find(call.path());
    if (found == elements.end()) return refusal(call);
    const ScriptedTreeElement& element = found->second;
    m_calls += call.path() + "." + member;
    if (member == "GetRole") return call.createReply(element.role);
    if (member == "GetState")
        return call.createReply(QVariant::fromValue(QList<uint>{element.states, 0}));
    if (member == "GetChildren") return references(call, service, element.children);
    if (member == "GetAttributes") {
        qDBusRegisterMetaType<QMap<QString, QString>>();
        return call.createReply(QVariant::fromValue(element.attributes));
    }
    if (member == "GetInterfaces") {
        QStringList names{"org.a11y.atspi.Accessible"};
        if (element.hasText) names += {"org.a11y.atspi.Text", "org.a11y.atspi.Hypertext"};
        return call.createReply(names);
    }
    if (member == "GetObject") return call.createReply(reference(service, call.path()));
    if (member == "Get" && call.arguments().value(1) == "Parent") {
        const auto parent = std::ranges::find_if(elements, [&](const auto& candidate) {
            return candidate.second.children.contains(call.path());
        });
        return parent == elements.end()
                   ? refusal(call)
                   : call.createReply(wrapped(reference(service, parent->first)));
    }
    if (member == "GetExtents") return extentsOf(call, element.place);
    if (element.hasText) return answerOfText(call, element, service);
    m_misplaced += call.path() + "." + member;
    return refusal(call);
}

QDBusMessage ScriptedAccessibleTree::answerOfText(const QDBusMessage& call,
                                                  const ScriptedTreeElement& element,
                                                  const QString& service) {
    const QString member = call.member();
    const int first = call.arguments().value(0).toInt();
    if (member == "Get" && call.arguments().value(1) == "CharacterCount")
        return call.createReply(wrapped(static_cast<int>(element.text.size())));
    if (member == "GetNSelections")
        return call.createReply(static_cast<int>(element.selections.size()));
    if (member == "GetSelection") {
        const auto [start, end] = element.selections.at(static_cast<std::size_t>(first));
        return call.createReply(QVariantList{start, end});
    }
    if (member == "GetText") {
        const int end = call.arguments().value(1).toInt();
        return call.createReply(element.text.mid(first, end < 0 ? -1 : end - first));
    }
    if (member == "GetRangeExtents") {
        const auto found = element.bounds.find({first, call.arguments().value(1).toInt()});
        const QRect place = found == element.bounds.end() ? QRect() : found->second;
        return call.createReply(QVariantList{place.x(), place.y(), place.width(), place.height()});
    }
    if (member == "GetLinkIndex") {
        const bool isObject = element.text.mid(first, 1) == objectCharacter;
        const auto index = element.text.left(first).count(objectCharacter);
        return call.createReply(isObject ? static_cast<int>(index) : -1);
    }
    if (member == "GetLink" && first >= 0 && first < element.links.size())
        return call.createReply(reference(service, element.links[first]));
    return refusal(call);
}

} // namespace vorq
