#include "library/records/LegacyChats.h"

#include <QSet>

namespace vorq {
namespace {

template<typename Chat>
QString likeness(const Chat& chat) {
    return chat.title + u'|' + QString::number(chat.messages.size());
}

HubAIChat hubChatFrom(const SavedChat& legacy) {
    HubAIChat chat;
    chat.id = QUuid::createUuid();
    chat.title = legacy.title;
    chat.isSaved = true;
    chat.createdAt = legacy.createdAt;
    chat.updatedAt = legacy.createdAt;
    for (const SavedChatMessage& kept : legacy.messages) {
        HubAIMessage& message = chat.messages.emplace_back();
        message.id = QUuid::createUuid();
        message.role = kept.role;
        message.text = kept.text;
        message.createdAt = legacy.createdAt;
    }
    return chat;
}

} // namespace

std::vector<HubAIChat> hubChatsFromPanel(const std::vector<SavedChat>& legacy,
                                         const std::vector<HubAIChat>& existing) {
    QSet<QString> known;
    for (const HubAIChat& chat : existing)
        known.insert(likeness(chat));
    std::vector<HubAIChat> converted;
    for (const SavedChat& chat : legacy)
        if (!known.contains(likeness(chat))) converted.push_back(hubChatFrom(chat));
    return converted;
}

} // namespace vorq
