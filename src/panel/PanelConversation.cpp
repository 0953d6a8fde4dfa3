#include "panel/PanelConversation.h"

#include "panel/PanelHistory.h"
#include "panel/StudyContext.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <algorithm>

namespace vorq {
namespace {

constexpr std::chrono::milliseconds pauseAfterStream{40};
constexpr std::chrono::milliseconds pauseWithoutStream{220};
constexpr std::chrono::milliseconds pauseBeforeAnswer{160}; // also before the greeting

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

} // namespace

PanelConversation::PanelConversation(const Services& services)
    : m_services(services),
      m_status(services.clock, m_messages),
      m_typewriter(services.clock, m_messages, m_status) {
    connect(&m_typewriter, &ReplyTypewriter::typingEnded, this,
            &PanelConversation::drainPanelQueueIfIdle);
    connect(&m_messages, &MessageList::changed, this, &PanelConversation::stateChanged);
}

bool PanelConversation::isTurnInFlightByMessages() const {
    const std::vector<VorqMessage>& messages = m_messages.messages();
    return std::ranges::any_of(messages, [&messages](const VorqMessage& message) {
        if (message.isWorking) return true;
        if (!message.isTyping || message.role != MessageRole::Assistant) return false;
        return messages.size() > 1 || !readsAsGreeting(message);
    });
}

bool PanelConversation::isPanelTurnInFlight() const {
    return m_panelRequestTask.isRunning() || isTurnInFlightByMessages();
}

bool PanelConversation::isPanelGreetingOnly() const {
    if (m_messages.messages().size() != 1) return false;
    const VorqMessage& message = m_messages.messages().front();
    if (message.role != MessageRole::Assistant) return false;
    return readsAsGreeting(message) || message.isTyping;
}

bool PanelConversation::canSaveCurrentChat() const {
    return std::ranges::any_of(m_messages.messages(), [](const VorqMessage& message) {
        return !message.isWorking && !trimmed(message.text).isEmpty();
    });
}

void PanelConversation::setHighlightedText(const QString& text, const QString& application) {
    m_highlightedApplication = application;
    if (m_highlightedText == text) return;
    m_highlightedText = text;
    emit highlightedTextChanged();
}

void PanelConversation::setRestoringPanelHistory(bool restoring) {
    if (m_isRestoringPanelHistory == restoring) return;
    m_isRestoringPanelHistory = restoring;
    emit stateChanged();
}

void PanelConversation::submit(const QString& prompt, const QList<PromptAttachment>& attachments) {
    const std::optional<QueuedPrompt> turn = appendUserBubble(prompt, attachments);
    if (turn && !m_services.routes.take(turn->prompt)) startOrQueue(*turn);
}

void PanelConversation::submitToBackend(const QString& prompt,
                                        const QList<PromptAttachment>& attachments) {
    if (const std::optional<QueuedPrompt> turn = appendUserBubble(prompt, attachments))
        startOrQueue(*turn);
}

// Gives the turn of the trimmed prompt; nothing if there is nothing to send.
std::optional<PanelConversation::QueuedPrompt>
PanelConversation::appendUserBubble(const QString& prompt,
                                    const QList<PromptAttachment>& attachments) {
    const std::optional<QString> bubble = submitBubble(prompt, attachments);
    if (!bubble) return std::nullopt;
    m_messages.updateAll([](VorqMessage& message) { message.followUp.reset(); });
    return QueuedPrompt{appendUserMessage(*bubble), trimmed(prompt).toString(), attachments};
}

QUuid PanelConversation::appendUserMessage(const QString& text) {
    VorqMessage message;
    message.text = text;
    const QUuid id = message.id;
    m_messages.append(std::move(message));
    return id;
}

void PanelConversation::startOrQueue(PanelQueuedTurn turn) {
    if (isPanelTurnInFlight())
        m_panelTurnQueue.push_back(std::move(turn));
    else
        std::visit([this](const auto& next) { start(next); }, turn);
}

void PanelConversation::deepenSelection(const QString& excerpt, const QString& userPrompt) {
    const std::optional<QString> bubble = deepenBubble(excerpt, userPrompt);
    if (!bubble) return;
    const QUuid id = appendUserMessage(*bubble);
    startOrQueue(QueuedDeepen{id, trimmed(excerpt).toString(), trimmed(userPrompt).toString()});
}

void PanelConversation::start(const QueuedPrompt& turn) {
    completeAssistantTyping();
    const QUuid placeholder = appendPlaceholder();
    PanelPromptContext context;
    context.prompt = turn.prompt;
    context.attachments = turn.attachments;
    context.highlightedText = m_highlightedText;
    context.studySource = m_services.study.activeStudySource();
    context.isStudyingNote = m_services.study.activeStudyNoteID().has_value();
    context.messages = m_messages.messages();
    const PanelRequest request = panelPromptRequest(context);
    rememberSent(turn.bubble, request.body.selectedText, m_highlightedApplication);
    startRequest(request, placeholder);
}

void PanelConversation::start(const QueuedDeepen& turn) {
    completeAssistantTyping();
    const QUuid placeholder = appendPlaceholder();
    rememberSent(turn.bubble, turn.excerpt, {});
    startRequest(panelDeepenRequest(turn.excerpt, turn.userPrompt, m_messages.messages()),
                 placeholder);
}

void PanelConversation::rememberSent(const QUuid& bubble, const QString& text,
                                     const QString& application) {
    const VorqMessage* found = m_messages.find(bubble);
    if (!found || text.isEmpty()) return;
    VorqMessage message = *found;
    message.sent = SentText{text, application};
    m_messages.update(message);
}

void PanelConversation::completeAssistantTyping() {
    m_typewriter.cancelTyping();
    m_typewriter.finishTypingFlags(MessageRole::Assistant);
}

void PanelConversation::markAsNotice(const QUuid& id) {
    const VorqMessage* found = m_messages.find(id);
    if (!found) return;
    VorqMessage message = *found;
    message.isNotice = true;
    m_messages.update(message);
}

QUuid PanelConversation::appendPlaceholder() {
    VorqMessage placeholder = VorqMessage::placeholder();
    const QUuid id = placeholder.id;
    m_messages.append(std::move(placeholder));
    m_status.beginPanelWorkStatus();
    return id;
}

void PanelConversation::drainPanelQueueIfIdle() {
    if (isPanelTurnInFlight() || m_panelTurnQueue.empty()) return;
    const PanelQueuedTurn turn = std::move(m_panelTurnQueue.front());
    m_panelTurnQueue.pop_front();
    std::visit([this](const auto& next) { start(next); }, turn);
}

void PanelConversation::removeEmptyPlaceholders() {
    m_messages.removeIf(isEmptyPlaceholder);
}

void PanelConversation::dropWorkingPlaceholder(const QUuid& id) {
    m_messages.removeIf(
        [&id](const VorqMessage& message) { return message.id == id && message.isWorking; });
    if (!m_messages.hasWorking()) m_status.endPanelWorkStatus();
    drainPanelQueueIfIdle();
}

void PanelConversation::stopPanelResponse() {
    // Also a turn that has lost its handle to one it replaced.
    m_panelRequestTask.cancelAll();
    m_typewriter.cancelTyping();
    m_panelTurnQueue.clear();
    removeEmptyPlaceholders();
    m_status.endPanelWorkStatus();
    m_typewriter.finishTypingFlags(std::nullopt);
    emit stateChanged();
}

void PanelConversation::ensurePanelGreeting() {
    if (!m_messages.messages().empty()) return;
    markAsNotice(m_typewriter.startTypingAssistantMessage(
        QStringLiteral("Hello 👋, Vorq here…"), std::nullopt, std::nullopt, pauseBeforeAnswer,
        AssistantReveal::Graphemes));
}

void PanelConversation::answer(const QString& text) {
    markAsNotice(m_typewriter.startTypingAssistantMessage(
        text, std::nullopt, std::nullopt, pauseBeforeAnswer, AssistantReveal::Blocks));
}

QString PanelConversation::latestPanelAssistantText() const {
    return latestAssistantText(m_messages.messages());
}

void PanelConversation::bringForward() {
    emit vorqShowPanel();
    emit vorqFocusPrompt();
}

void PanelConversation::endAllTurns() {
    m_panelRequestTask.cancelAll();
    m_typewriter.cancelTyping();
    m_panelTurnQueue.clear();
    m_heldCapture.discard();
    m_typewriter.finishTypingFlags(std::nullopt);
}

void PanelConversation::restorePanelHistory(const SavedChat& chat) {
    endAllTurns();
    setRestoringPanelHistory(true);
    m_messages.clear();
    m_retries.clear();
    m_status.endPanelWorkStatus();
    for (VorqMessage& message : panelMessages(chat))
        m_messages.append(std::move(message));
    bringForward();
    emit stateChanged();
}

void PanelConversation::clearPanelChat() {
    endAllTurns();
    m_messages.clear();
    m_retries.clear();
    setHighlightedText({});
    m_services.study.setLastStudyResearch({});
    ensurePanelGreeting();
    emit stateChanged();
}

void PanelConversation::applyStreamingAssistantText(const QString& text, const QUuid& id) {
    emit replyStreamed(id, text);
    const QString committed = AssistantReplyDocument::committedSource(text, false);
    if (committed.isEmpty()) return;
    const VorqMessage* message = m_messages.find(id);
    if (!message) return;
    if (showsStreamedText(*message) && isShorter(committed, message->text)) return;
    m_typewriter.applyTypingText(committed, id, true);
}

void PanelConversation::finishStreamingAssistantText(const QString& text,
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

} // namespace vorq
