#include "library/records/SavedChat.h"

#include "library/json/RecordJson.h"

namespace vorq {

template<>
inline constexpr auto fieldsOf<SavedChatMessage> = std::to_array<Field>({
    required<&SavedChatMessage::id>("id"),
    defaulted<&SavedChatMessage::isNotice>("isNotice"),
    required<&SavedChatMessage::role>("role"),
    defaulted<&SavedChatMessage::sentFrom>("sentFrom"),
    defaulted<&SavedChatMessage::sentText>("sentText"),
    required<&SavedChatMessage::text>("text"),
});

template<>
inline constexpr auto fieldsOf<SavedChat> = std::to_array<Field>({
    required<&SavedChat::createdAt>("createdAt"),
    required<&SavedChat::id>("id"),
    required<&SavedChat::messages>("messages"),
    required<&SavedChat::title>("title"),
});

std::optional<std::vector<SavedChat>> decodeSavedChats(JsonFile file,
                                                       const RecordHook<SavedChat>& hook) {
    return decodedFile<SavedChat>(file, {}, hook);
}

QByteArray encode(const std::vector<SavedChat>& chats) {
    return encodedFile(chats);
}

void encode(const std::vector<SavedChat>& chats, const JsonWriter::Sink& put) {
    encodeFile(chats, put);
}

} // namespace vorq
