#include "panel/ReplyTypewriter.h"

#include "conversation/BlockReveal.h"
#include "conversation/GraphemeTypewriter.h"
#include "panel/MessageList.h"
#include "panel/WorkStatus.h"
#include "support/text/Text.h"

#include <algorithm>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds blockInterval{120};
constexpr std::chrono::milliseconds graphemeTick{33};

// A reply that ends takes on its full text, if it knows one.
void completeText(VorqMessage& message) {
    if (message.typingFullText) {
        const QStringView full = trimmed(*message.typingFullText);
        if (!full.isEmpty()) message.text = full.toString();
    }
    message.typingFullText.reset();
}

// The whole reply is there, but its placeholder stands through the leading pause.
bool isWaitingReply(const VorqMessage& message) {
    return message.isWorking && message.typingFullText.has_value();
}

} // namespace

ReplyTypewriter::ReplyTypewriter(Clock& clock, MessageList& messages, WorkStatus& status)
    : m_clock(clock), m_messages(messages), m_status(status) {}

QUuid ReplyTypewriter::startTypingAssistantMessage(const QString& text,
                                                   const std::optional<VorqFollowUp>& followUp,
                                                   const std::optional<QUuid>& into,
                                                   Clock::Duration leadingPause,
                                                   AssistantReveal reveal) {
    m_typingTask.cancel();
    finishTypingFlags(MessageRole::Assistant);
    const Target target = prepareTarget(text, followUp, into);
    const QString reply = trimmed(text).toString();
    if (reply.isEmpty()) {
        applyTypingText({}, target.id, false);
    } else if (reveal == AssistantReveal::Graphemes) {
        startGraphemeTypewriter(reply, target.id, leadingPause);
    } else if (const BlockReveal steps(reply, target.existing);
               isInstantAssistantReply(reply) || steps.isEmpty()) {
        applyTypingText(reply, target.id, false);
    } else {
        m_typingTask.restart(
            [self = QPointer(this), steps, id = target.id, leadingPause](std::stop_token stop) {
                return revealBlocks(self, steps, id, leadingPause, std::move(stop));
            });
    }
    return target.id;
}

ReplyTypewriter::Target ReplyTypewriter::prepareTarget(const QString& text,
                                                       const std::optional<VorqFollowUp>& followUp,
                                                       const std::optional<QUuid>& into) {
    if (const VorqMessage* message = into ? m_messages.find(*into) : nullptr)
        return {*into, prepareExisting(*message, text, followUp)};
    VorqMessage message;
    message.role = MessageRole::Assistant;
    message.isTyping = true;
    message.typingFullText = text;
    message.followUp = followUp;
    const QUuid id = message.id;
    m_messages.append(std::move(message));
    return {id, {}};
}

// Gives the text that already stands on screen.
QString ReplyTypewriter::prepareExisting(VorqMessage message, const QString& text,
                                         const std::optional<VorqFollowUp>& followUp) {
    const bool isWaiting = message.isWorking || message.text == workingText;
    const QString existing = isWaiting ? QString() : message.text;
    if (message.isWorking) {
        // The placeholder stands through the leading pause.
        message.text = workingText.toString();
        message.isTyping = false;
    } else if (!isWaiting) {
        message.isTyping = true;
    }
    message.typingFullText = text;
    message.followUp = followUp;
    const bool isWorking = message.isWorking;
    m_messages.update(message);
    if (isWorking)
        m_status.markPanelWorkFinishing();
    else if (!isWaiting)
        m_status.endPanelWorkStatus();
    return existing;
}

QCoro::Task<> ReplyTypewriter::revealBlocks(QPointer<ReplyTypewriter> self, BlockReveal reveal,
                                            QUuid target, Clock::Duration leadingPause,
                                            std::stop_token stop) {
    co_await sleepFor(self->m_clock, leadingPause, stop);
    while (self && !stop.stop_requested()) {
        const std::optional<BlockReveal::Step> step = reveal.next();
        if (!step) co_return;
        self->applyTypingText(step->text, target, step->isTyping);
        if (!self) co_return;
        if (step->isTyping) co_await sleepFor(self->m_clock, blockInterval, stop);
    }
}

void ReplyTypewriter::startGraphemeTypewriter(const QString& text, const QUuid& into,
                                              Clock::Duration leadingPause) {
    if (text.isEmpty()) return applyTypingText({}, into, false);
    m_typingTask.restart([self = QPointer(this), text, into, leadingPause](std::stop_token stop) {
        return revealGraphemes(self, text, into, leadingPause, std::move(stop));
    });
}

QCoro::Task<> ReplyTypewriter::revealGraphemes(QPointer<ReplyTypewriter> self, QString text,
                                               QUuid target, Clock::Duration leadingPause,
                                               std::stop_token stop) {
    co_await sleepFor(self->m_clock, leadingPause, stop);
    if (!self) co_return;
    GraphemeTypewriter typewriter(text);
    const Clock::Duration start = self->m_clock.now();
    while (self && !stop.stop_requested()) {
        const std::chrono::duration<double> elapsed = self->m_clock.now() - start;
        if (const auto step = typewriter.at(elapsed.count()))
            self->applyTypingText(step->text, target, step->isTyping);
        if (!self) co_return;
        if (typewriter.isFinished()) {
            self->applyTypingText(text, target, false);
            co_return;
        }
        co_await sleepFor(self->m_clock, graphemeTick, stop);
    }
}

void ReplyTypewriter::applyTypingText(const QString& text, const QUuid& id, bool isTyping) {
    const VorqMessage* found = m_messages.find(id);
    if (!found) return;
    if (found->text == text && found->isTyping == isTyping && !found->isWorking) return;
    VorqMessage message = *found;
    message.text = text;
    const bool wasWorking = std::exchange(message.isWorking, false);
    message.isTyping = isTyping;
    if (!isTyping) completeText(message);
    m_messages.update(message);
    if (wasWorking) m_status.endPanelWorkStatus();
    if (!isTyping) emit typingEnded();
}

void ReplyTypewriter::finishTypingFlags(std::optional<MessageRole> role) {
    finishMessages([role](const VorqMessage& message) {
        return (message.isTyping || isWaitingReply(message)) && (!role || message.role == *role);
    });
}

void ReplyTypewriter::showWaitingReply() {
    if (std::ranges::none_of(m_messages.messages(), isWaitingReply)) return;
    // There is one reveal at a time, so it is that of this reply.
    m_typingTask.cancel();
    finishMessages(isWaitingReply);
}

void ReplyTypewriter::finishMessages(const std::function<bool(const VorqMessage&)>& isFinished) {
    const bool wasWorking = m_messages.hasWorking();
    m_messages.updateAll([&isFinished](VorqMessage& message) {
        if (!isFinished(message)) return;
        completeText(message);
        message.isTyping = false;
        message.isWorking = false;
    });
    if (wasWorking && !m_messages.hasWorking()) m_status.endPanelWorkStatus();
}

void ReplyTypewriter::settleStreamedText(const QUuid& id) {
    const VorqMessage* message = m_messages.find(id);
    if (message && message->isTyping && !message->typingFullText)
        applyTypingText(QString(message->text), id, false);
}

} // namespace vorq
