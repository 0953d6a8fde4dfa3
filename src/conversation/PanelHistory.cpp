#include "conversation/PanelHistory.h"

#include "conversation/PromptCommands.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/Characters.h"
#include "support/Text.h"

#include <algorithm>

namespace vorq {
namespace {

constexpr qsizetype longestTitle = 56;

bool isFinished(const VorqMessage& message) {
    return !message.isWorking && !message.isTyping && !trimmed(message.text).isEmpty() &&
           message.text != workingText;
}

bool isSaveCommand(QStringView text) {
    return isSaveChatRequest(text) || normalizedCommand(text) == u"save this";
}

bool belongsToHistory(const VorqMessage& message) {
    if (!isFinished(message)) return false;
    if (message.role == MessageRole::User) return !isSaveCommand(message.text);
    return !startsWithCharacters(trimmed(message.text), u"Hello 👋");
}

QString titleOf(const std::vector<SavedChatMessage>& messages) {
    const auto asked =
        std::ranges::find(messages, rawString(MessageRole::User), &SavedChatMessage::role);
    const SavedChatMessage& named = asked == messages.end() ? messages.front() : *asked;
    const QString plain = AssistantReplyDocument::inlinePlain(named.text);
    const QStringView title = graphemePrefix(trimmed(plain), longestTitle);
    return title.isEmpty() ? QStringLiteral("Saved chat") : title.toString();
}

} // namespace

std::optional<SavedChat> savedChat(std::span<const VorqMessage> messages, Date createdAt) {
    SavedChat chat;
    for (const VorqMessage& message : messages) {
        if (!belongsToHistory(message)) continue;
        chat.messages.push_back({QUuid::createUuid(), rawString(message.role), message.text});
    }
    if (chat.messages.empty()) return std::nullopt;
    chat.id = QUuid::createUuid();
    chat.title = titleOf(chat.messages);
    chat.createdAt = createdAt;
    return chat;
}

} // namespace vorq
