#pragma once

#include "panel/MessageList.h"
#include "panel/ReplyTypewriter.h"
#include "panel/WorkStatus.h"

#include <optional>

namespace vorq {

/// The messages of the panel, what their placeholders say, and the pace at which replies grow in
/// them. It knows of turns what the messages show. An unknown id changes nothing. Main thread only.
class PanelTranscript final {
  public:
    explicit PanelTranscript(Clock& clock);

    [[nodiscard]] MessageList& messages() { return m_messages; }
    [[nodiscard]] const MessageList& messages() const { return m_messages; }
    [[nodiscard]] WorkStatus& workStatus() { return m_status; }
    [[nodiscard]] ReplyTypewriter& typewriter() { return m_typewriter; }

    /// Whether a reply is waited for or typed. A greeting by itself is none.
    [[nodiscard]] bool isTurnInFlight() const;
    /// Whether some text stands that is no placeholder.
    [[nodiscard]] bool hasText() const;

    QUuid appendUserMessage(const QString& text);
    /// Marks what went out with a prompt beside its words; "" marks nothing.
    void rememberSent(const QUuid& bubble, const QString& text, const QString& application);
    void dropFollowUps();

    QUuid appendPlaceholder();
    /// Puts a placeholder in the place of a failed reply.
    void awaitAgain(const QUuid& failedReply);
    void removeEmptyPlaceholders();
    /// What has come of the reply stays.
    void dropWorkingPlaceholder(const QUuid& id);
    void remove(const QUuid& id);

    /// Types what the program says by itself.
    void say(const QString& text, AssistantReveal reveal);
    /// The program speaks in this message; it is no reply to keep.
    void markAsNotice(const QUuid& id);
    void offerRetry(const QUuid& failedReply);

    /// So much of a reply has come. What shows already never shrinks.
    void applyStreamingAssistantText(const QString& text, const QUuid& id);
    /// The whole reply has come.
    void finishStreamingAssistantText(const QString& text,
                                      const std::optional<VorqFollowUp>& followUp, const QUuid& id);
    /// Ends the typing of replies; what is known of them shows at once.
    void completeAssistantTyping();

    /// Ends all typing and removes what nobody will answer.
    void stop();
    void clear();

  private:
    MessageList m_messages;
    WorkStatus m_status;
    ReplyTypewriter m_typewriter;
};

} // namespace vorq
