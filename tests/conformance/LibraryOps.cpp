#include "conformance/Ops.h"
#include "conversation/PanelHistory.h"
#include "library/SavedNote.h"

#include <QJsonArray>

namespace vorq::conformance {
namespace {

QJsonValue note(const QJsonObject& in) {
    SavedNote note;
    note.text = stringOf(in, "text");
    note.thoughts = stringOf(in, "thoughts");
    const std::optional<QString> snippet = noteSnippet(note);
    return QJsonObject{{"studySource", studySource(note)},
                       {"displayTitle", displayTitle(note)},
                       {"snippet", snippet ? QJsonValue(*snippet) : QJsonValue::Null}};
}

QJsonValue savedChat(const QJsonObject& in) {
    std::vector<VorqMessage> messages;
    for (const QJsonValue& value : arrayOf(in, "messages")) {
        const QJsonObject object = value.toObject();
        VorqMessage& message = messages.emplace_back();
        message.role =
            stringOf(object, "role") == u"assistant" ? MessageRole::Assistant : MessageRole::User;
        message.text = stringOf(object, "text");
        message.isWorking = object["isWorking"].toBool();
        message.isTyping = object["isTyping"].toBool();
    }
    const std::optional<SavedChat> chat = vorq::savedChat(messages, Date());
    if (!chat) return QJsonValue::Null;
    QJsonArray kept;
    for (const SavedChatMessage& message : chat->messages)
        kept += QJsonObject{{"role", message.role}, {"text", message.text}};
    return QJsonObject{{"title", chat->title}, {"messages", kept}};
}

} // namespace

void addLibraryOps(Ops& ops) {
    ops["note"] = note;
    ops["savedChat"] = savedChat;
}

} // namespace vorq::conformance
