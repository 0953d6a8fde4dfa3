#include "library/SavedChat.h"

#include "library/RecordJson.h"

namespace vorq {

using strict_json::Element;
using strict_json::Object;
using strict_json::readRequired;

static bool read(Element element, SavedChatMessage& message) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", message.id) &&
           readRequired(object, "role", message.role) && readRequired(object, "text", message.text);
}

static bool read(Element element, SavedChat& chat) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", chat.id) &&
           readRequired(object, "title", chat.title) &&
           readRequired(object, "createdAt", chat.createdAt) &&
           readRequired(object, "messages", chat.messages);
}

static void write(JsonWriter& writer, const SavedChatMessage& message) {
    writer.beginObject();
    member(writer, u"id", message.id);
    writer.member(u"role", message.role);
    writer.member(u"text", message.text);
    writer.endObject();
}

static void write(JsonWriter& writer, const SavedChat& chat) {
    writer.beginObject();
    member(writer, u"createdAt", chat.createdAt);
    member(writer, u"id", chat.id);
    writer.key(u"messages");
    list(writer, chat.messages, [&](const SavedChatMessage& message) { write(writer, message); });
    writer.member(u"title", chat.title);
    writer.endObject();
}

std::optional<std::vector<SavedChat>> decodeSavedChats(QByteArrayView json) {
    return strict_json::decodeDocument<std::vector<SavedChat>>(json);
}

QByteArray encode(const std::vector<SavedChat>& chats) {
    return encodedFile(chats,
                       [](JsonWriter& writer, const SavedChat& chat) { write(writer, chat); });
}

} // namespace vorq
