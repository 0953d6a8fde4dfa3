#pragma once

#include "panel/PanelGreeting.h"
#include "panel/PanelTranscript.h"
#include "panel/PanelTurnQueue.h"
#include "panel/PanelTurnRunner.h"

#include <QObject>

namespace vorq {

class LocalRoutes;
struct SavedChat;

/// The panel's conversation: takes prompts and captured text to replies, one turn at a time, the
/// rest waiting in order. PanelTranscript holds its messages, PanelTurnRunner runs its turns,
/// PanelTurnQueue those that wait. Main thread only.
class PanelConversation final : public QObject {
    Q_OBJECT

  public:
    /// What the conversation works with; all must outlive it.
    struct Services {
        Clock& clock;
        VorqAPIService& api;
        AccountSession& account;
        StudyContext& study;
        LocalRoutes& routes;
    };
    using LocalWork = PanelTurnRunner::LocalWork;

    explicit PanelConversation(const Services& services);

    [[nodiscard]] MessageList& messages() { return m_transcript.messages(); }
    [[nodiscard]] const MessageList& messages() const { return m_transcript.messages(); }
    [[nodiscard]] WorkStatus& workStatus() { return m_transcript.workStatus(); }
    [[nodiscard]] ReplyTypewriter& typewriter() { return m_transcript.typewriter(); }
    [[nodiscard]] const QString& highlightedText() const { return m_highlightedText; }
    [[nodiscard]] std::size_t queuedTurns() const { return m_queue.size(); }

    [[nodiscard]] bool isPanelTurnInFlight() const;
    [[nodiscard]] bool isPanelResponding() const { return isPanelTurnInFlight(); }
    [[nodiscard]] bool isPanelGreetingOnly() const { return m_greeting.isAlone(); }
    [[nodiscard]] bool canSaveCurrentChat() const { return m_transcript.hasText(); }
    [[nodiscard]] bool isRestoringPanelHistory() const { return m_isRestoringPanelHistory; }

    /// What goes along with prompts. The application is the one whose text this is, as the user
    /// knows it; "" for none.
    void setHighlightedText(const QString& text, const QString& application = {});

    /// While a saved chat is loaded into the panel.
    void setRestoringPanelHistory(bool restoring);

    /// Asks for this model, whatever the user's own choice, as long as the program runs.
    void setModelForNow(const QString& id) { m_runner.setModelForNow(id); }

    /// Sends a prompt, or queues it behind the running turn. Nothing happens if there is nothing to
    /// send.
    void submit(const QString& prompt, const QList<PromptAttachment>& attachments = {});

    /// The same for callers that are no panel: no prompt is a command.
    void submitToBackend(const QString& prompt, const QList<PromptAttachment>& attachments = {});

    /// Asks for more on an excerpt of a reply.
    void deepenSelection(const QString& excerpt, const QString& userPrompt);

    /// Shows the captured text as the user's bubble and asks for its analysis, in place of the turn
    /// that runs.
    void typeHighlightAndAnalyze(const QString& text);

    /// Ends the running turn and drops the waiting ones.
    void stopPanelResponse();

    /// Runs the turn of a failed reply again, in the place of that reply, with all that it sent
    /// before. Behind a running turn it waits. Any other message is left alone.
    void retry(const QUuid& failedReply);

    /// Says something as a reply, without asking the backend.
    void answer(const QString& text);

    /// Runs the work in place of a turn, under a placeholder that takes its reply.
    void startLocalTurn(LocalWork work);

    /// The latest finished reply, as it stands; "" if there is none. What the program says by
    /// itself, to greet, of a command, of a failure or at the end of a local turn, is no reply.
    [[nodiscard]] QString latestPanelAssistantText() const;

    /// Shows a kept conversation in place of this one, ending whatever is under way.
    void restorePanelHistory(const SavedChat& chat);

    /// Asks for the panel to be shown, ready to be typed into.
    void bringForward();

    /// Types the greeting into an empty conversation.
    void ensurePanelGreeting() { m_greeting.ensure(); }

    /// Empties the conversation and greets anew.
    void clearPanelChat();

  signals:
    void vorqShowPanel();
    void vorqFocusPrompt();
    void highlightedTextChanged();
    /// One of the derived properties may have changed.
    void stateChanged();
    /// The conversation that was is being dropped, with all that belongs to it.
    void dropped();
    /// As of PanelTurnRunner.
    void replyStreamed(QUuid placeholder, QString text);
    void turnEnded(QUuid placeholder, vorq::TurnEnd end, QString sentence);

  private:
    void connectTurns();
    [[nodiscard]] std::optional<PromptTurn>
    appendUserBubble(const QString& prompt, const QList<PromptAttachment>& attachments);
    void start(const PromptTurn& turn);
    void start(const DeepenTurn& turn);
    void start(const RetryTurn& turn);
    void drop();

    StudyContext& m_study;
    LocalRoutes& m_routes;
    PanelTranscript m_transcript;
    PanelGreeting m_greeting;
    PanelTurnRunner m_runner;
    PanelTurnQueue m_queue;
    QString m_highlightedText;
    QString m_highlightedApplication;
    bool m_isRestoringPanelHistory = false;
};

} // namespace vorq
