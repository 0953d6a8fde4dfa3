#include "panel/PanelHistory.h"

#include "conversation/PromptCommands.h"
#include "panel/PanelNotices.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/text/Characters.h"
#include "support/text/Text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

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

SavedChatMessage savedMessage(const VorqMessage& message) {
    SavedChatMessage kept{QUuid::createUuid(), rawString(message.role), message.text};
    if (message.isNotice) kept.isNotice = true;
    if (!message.sent) return kept;
    kept.sentText = message.sent->text;
    if (!message.sent->application.isEmpty()) kept.sentFrom = message.sent->application;
    return kept;
}

std::optional<SentText> sentOf(const SavedChatMessage& kept) {
    if (!kept.sentText || trimmed(*kept.sentText).isEmpty()) return std::nullopt;
    return SentText{*kept.sentText, kept.sentFrom.value_or(QString())};
}

QString titleOf(const std::vector<SavedChatMessage>& messages) {
    const auto asked =
        std::ranges::find(messages, rawString(MessageRole::User), &SavedChatMessage::role);
    const SavedChatMessage& named = asked == messages.end() ? messages.front() : *asked;
    const QString plain = AssistantReplyDocument::inlinePlain(named.text);
    const QStringView title = graphemePrefix(trimmed(plain), longestTitle);
    return title.isEmpty() ? u"Saved chat"_s : title.toString();
}

} // namespace

std::optional<SavedChat> savedChat(std::span<const VorqMessage> messages, Date createdAt) {
    SavedChat chat;
    for (const VorqMessage& message : messages) {
        if (!belongsToHistory(message)) continue;
        chat.messages.push_back(savedMessage(message));
    }
    if (chat.messages.empty()) return std::nullopt;
    chat.id = QUuid::createUuid();
    chat.title = titleOf(chat.messages);
    chat.createdAt = createdAt;
    return chat;
}

std::vector<VorqMessage> panelMessages(const SavedChat& chat) {
    std::vector<VorqMessage> messages;
    for (const SavedChatMessage& kept : chat.messages) {
        const QStringView text = trimmed(kept.text);
        if (text.isEmpty()) continue;
        VorqMessage& message = messages.emplace_back();
        message.role = kept.role == u"assistant" ? MessageRole::Assistant : MessageRole::User;
        message.text = text.toString();
        if (message.role == MessageRole::User)
            message.sent = sentOf(kept);
        else
            message.isNotice = kept.isNotice.value_or(false) || readsAsNotice(text);
    }
    return messages;
}

QString exportedText(std::span<const VorqMessage> messages) {
    const QString reply = latestAssistantText(messages);
    if (!reply.isEmpty()) return reply;
    QStringList texts;
    for (const VorqMessage& message : messages)
        if (!message.isWorking && !message.isTyping && !trimmed(message.text).isEmpty())
            texts += message.text;
    return texts.join(u"\n\n"_s);
}

QString latestAssistantText(std::span<const VorqMessage> messages) {
    const auto latest =
        std::find_if(messages.rbegin(), messages.rend(), [](const VorqMessage& message) {
            return message.role == MessageRole::Assistant && !message.isNotice &&
                   isFinished(message);
        });
    return latest == messages.rend() ? QString() : latest->text;
}

} // namespace vorq
