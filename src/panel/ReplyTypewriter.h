#pragma once

#include "conversation/VorqMessage.h"
#include "platform/Clock.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>

namespace vorq {

class BlockReveal;
class GraphemeTypewriter;
class MessageList;
class WorkStatus;

/// How a finished text enters the conversation.
enum class AssistantReveal { Blocks, Graphemes };

/// Lets replies grow in the conversation, block by block or, for the greeting, by characters.
/// Through it all text reaches a message. Main thread only.
class ReplyTypewriter final : public QObject {
    Q_OBJECT

  public:
    ReplyTypewriter(Clock& clock, MessageList& messages, WorkStatus& status);

    /// Shows a text as an assistant message: in the message named, else in a new one. Gives the id
    /// of that message.
    QUuid startTypingAssistantMessage(const QString& text,
                                      const std::optional<VorqFollowUp>& followUp,
                                      const std::optional<QUuid>& into,
                                      Clock::Duration leadingPause, AssistantReveal reveal);

    /// The only writer of a message's reply text during a turn.
    void applyTypingText(const QString& text, const QUuid& id, bool isTyping);

    /// Completes what is being typed by the role, or by anyone, without further steps. So is a
    /// reply that is there but for its leading pause.
    void finishTypingFlags(std::optional<MessageRole> role);

    /// Shows the reply that waits for the end of its leading pause, if there is one. Replies that
    /// are being typed go on.
    void showWaitingReply();

    /// Leaves a message that was streamed as far as it came. One whose whole reply is known is
    /// typed on.
    void settleStreamedText(const QUuid& id);

    /// Stops the running reveal, leaving its message as it stands.
    void cancelTyping() { m_typingTask.cancel(); }

  signals:
    /// A message has been typed to its end.
    void typingEnded();

  private:
    struct Target {
        QUuid id;
        QString existing;
    };

    Target prepareTarget(const QString& text, const std::optional<VorqFollowUp>& followUp,
                         const std::optional<QUuid>& into);
    QString prepareExisting(VorqMessage message, const QString& text,
                            const std::optional<VorqFollowUp>& followUp);
    void startGraphemeTypewriter(const QString& text, const QUuid& into,
                                 Clock::Duration leadingPause);

    void finishMessages(const std::function<bool(const VorqMessage&)>& isFinished);
    static QCoro::Task<> revealBlocks(QPointer<ReplyTypewriter> self, BlockReveal reveal,
                                      QUuid target, Clock::Duration leadingPause,
                                      std::stop_token stop);
    static QCoro::Task<> revealGraphemes(QPointer<ReplyTypewriter> self, QString text, QUuid target,
                                         Clock::Duration leadingPause, std::stop_token stop);

    Clock& m_clock;
    MessageList& m_messages;
    WorkStatus& m_status;
    TaskSlot m_typingTask;
};

} // namespace vorq
