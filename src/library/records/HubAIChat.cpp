#include "library/records/HubAIChat.h"

#include "library/json/RecordJson.h"

namespace vorq {

template<>
inline constexpr auto fieldsOf<VorqFollowUp> = std::to_array<Field>({
    required<&VorqFollowUp::labels>("labels"),
    required<&VorqFollowUp::question>("question"),
});

template<>
inline constexpr auto fieldsOf<HubQuizQuestion> = std::to_array<Field>({
    required<&HubQuizQuestion::answerIndex>("answerIndex"),
    defaulted<&HubQuizQuestion::explanation>("explanation"),
    required<&HubQuizQuestion::options>("options"),
    required<&HubQuizQuestion::prompt>("prompt"),
});

template<>
inline constexpr auto fieldsOf<HubQuizData> = std::to_array<Field>({
    required<&HubQuizData::primer>("primer"),
    required<&HubQuizData::questions>("questions"),
    defaulted<&HubQuizData::sourceNoteIDs>("sourceNoteIDs"),
});

template<>
inline constexpr auto fieldsOf<HubAIMessage> = std::to_array<Field>({
    required<&HubAIMessage::createdAt>("createdAt"),
    defaulted<&HubAIMessage::fileClips>("fileClips"),
    defaulted<&HubAIMessage::followUp>("followUp"),
    required<&HubAIMessage::id>("id"),
    defaulted<&HubAIMessage::noteClips>("noteClips"),
    defaulted<&HubAIMessage::quiz>("quiz"),
    required<&HubAIMessage::role>("role"),
    required<&HubAIMessage::text>("text"),
});

template<>
inline constexpr auto fieldsOf<HubAIChat> = std::to_array<Field>({
    required<&HubAIChat::createdAt>("createdAt"),
    required<&HubAIChat::id>("id"),
    defaulted<&HubAIChat::isSaved>("isSaved"),
    defaulted<&HubAIChat::messages>("messages"),
    defaulted<&HubAIChat::sourceNoteIDs>("sourceNoteIDs"),
    required<&HubAIChat::title>("title"),
    required<&HubAIChat::updatedAt>("updatedAt"),
});

std::optional<std::vector<HubAIChat>> decodeHubAIChats(JsonFile file,
                                                       const RecordHook<HubAIChat>& hook) {
    return decodedFile<HubAIChat>(file, {}, hook);
}

QByteArray encode(const std::vector<HubAIChat>& chats) {
    return encodedFile(chats);
}

void encode(const std::vector<HubAIChat>& chats, const JsonWriter::Sink& put) {
    encodeFile(chats, put);
}

} // namespace vorq
