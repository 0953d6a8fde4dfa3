#include "panel/PanelTranscript.h"

#include "rendering/AssistantReplyDocument.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <algorithm>
#include <functional>

namespace vorq {
namespace {

constexpr std::chrono::milliseconds pauseAfterStream{40};
constexpr std::chrono::milliseconds pauseWithoutStream{220};
constexpr std::chrono::milliseconds pauseBeforeNotice{160};

bool isEmptyPlaceholder(const VorqMessage& message) {
    return message.isWorking && (message.text == workingText || message.text.isEmpty());
}

// Whether the placeholder has become a reply that shows something.
bool showsStreamedText(const VorqMessage& message) {
    return !message.isWorking && !message.text.isEmpty() && message.text != workingText;
}

// A reply grows at its end nearly always, which needs no counting.
bool isShorter(QStringView text, QStringView than) {
    return !text.startsWith(than) && graphemeCount(text) < graphemeCount(than);
}

void changeMessage(MessageList& messages, const QUuid& id,
                   const std::function<void(VorqMessage&)>& changing) {
    const VorqMessage* found = messages.find(id);
    if (!found) return;
    VorqMessage message = *found;
    changing(message);
    messages.update(message);
}

} // namespace

PanelTranscript::PanelTranscript(Clock& clock)
    : m_status(clock, m_messages), m_typewriter(clock, m_messages, m_status) {}

bool PanelTranscript::isTurnInFlight() const {
    const std::vector<VorqMessage>& messages = m_messages.messages();
    return std::ranges::any_of(messages, [&messages](const VorqMessage& message) {
        if (message.isWorking) return true;
        if (!message.isTyping || message.role != MessageRole::Assistant) return false;
        return messages.size() > 1 || !readsAsGreeting(message);
    });
}

bool PanelTranscript::hasText() const {
    return std::ranges::any_of(m_messages.messages(), [](const VorqMessage& message) {
        return !message.isWorking && !trimmed(message.text).isEmpty();
    });
}

QUuid PanelTranscript::appendUserMessage(const QString& text) {
    VorqMessage message;
    message.text = text;
    const QUuid id = message.id;
    m_messages.append(std::move(message));
    return id;
}

void PanelTranscript::rememberSent(const QUuid& bubble, const QString& text,
                                   const QString& application) {
    if (text.isEmpty()) return;
    changeMessage(m_messages, bubble,
                  [&](VorqMessage& message) { message.sent = SentText{text, application}; });
}

void PanelTranscript::dropFollowUps() {
    m_messages.updateAll([](VorqMessage& message) { message.followUp.reset(); });
}

QUuid PanelTranscript::appendPlaceholder() {
    VorqMessage placeholder = VorqMessage::placeholder();
    const QUuid id = placeholder.id;
    m_messages.append(std::move(placeholder));
    m_status.beginPanelWorkStatus();
    return id;
}

void PanelTranscript::awaitAgain(const QUuid& failedReply) {
    VorqMessage placeholder = VorqMessage::placeholder();
    placeholder.id = failedReply;
    m_messages.update(placeholder);
    m_status.beginPanelWorkStatus();
}

void PanelTranscript::removeEmptyPlaceholders() {
    m_messages.removeIf(isEmptyPlaceholder);
}

void PanelTranscript::dropWorkingPlaceholder(const QUuid& id) {
    m_messages.removeIf(
        [&id](const VorqMessage& message) { return message.id == id && message.isWorking; });
    if (!m_messages.hasWorking()) m_status.endPanelWorkStatus();
}

void PanelTranscript::remove(const QUuid& id) {
    m_messages.removeIf([&id](const VorqMessage& message) { return message.id == id; });
    m_status.endPanelWorkStatus();
}

void PanelTranscript::say(const QString& text, AssistantReveal reveal) {
    markAsNotice(m_typewriter.startTypingAssistantMessage(text, std::nullopt, std::nullopt,
                                                          pauseBeforeNotice, reveal));
}

void PanelTranscript::markAsNotice(const QUuid& id) {
    changeMessage(m_messages, id, [](VorqMessage& message) { message.isNotice = true; });
}

void PanelTranscript::offerRetry(const QUuid& failedReply) {
    changeMessage(m_messages, failedReply, [](VorqMessage& message) { message.canRetry = true; });
}

void PanelTranscript::applyStreamingAssistantText(const QString& text, const QUuid& id) {
    const QString committed = AssistantReplyDocument::committedSource(text, false);
    if (committed.isEmpty()) return;
    const VorqMessage* message = m_messages.find(id);
    if (!message) return;
    if (showsStreamedText(*message) && isShorter(committed, message->text)) return;
    m_typewriter.applyTypingText(committed, id, true);
}

void PanelTranscript::finishStreamingAssistantText(const QString& text,
                                                   const std::optional<VorqFollowUp>& followUp,
                                                   const QUuid& id) {
    const VorqMessage* message = m_messages.find(id);
    if (!message) return;
    const bool isStreamed = showsStreamedText(*message);
    if (!isStreamed) m_status.markPanelWorkFinishing();
    m_typewriter.startTypingAssistantMessage(text, followUp, id,
                                             isStreamed ? pauseAfterStream : pauseWithoutStream,
                                             AssistantReveal::Blocks);
}

void PanelTranscript::completeAssistantTyping() {
    m_typewriter.cancelTyping();
    m_typewriter.finishTypingFlags(MessageRole::Assistant);
}

void PanelTranscript::stop() {
    m_typewriter.cancelTyping();
    removeEmptyPlaceholders();
    m_status.endPanelWorkStatus();
    m_typewriter.finishTypingFlags(std::nullopt);
}

void PanelTranscript::clear() {
    m_typewriter.cancelTyping();
    m_typewriter.finishTypingFlags(std::nullopt);
    m_messages.clear();
}

} // namespace vorq
