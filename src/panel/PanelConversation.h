#pragma once

#include "backend/api/AIAnalysis.h"
#include "backend/api/AnalysisStream.h"
#include "capture/attachments/PromptAttachment.h"
#include "capture/selection/SelectionCapture.h"
#include "panel/HeldCapture.h"
#include "panel/LocalRoutes.h"
#include "panel/MessageList.h"
#include "panel/PanelRequests.h"
#include "panel/ReplyTypewriter.h"
#include "panel/WorkStatus.h"
#include "support/async/TaskSlot.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <deque>
#include <exception>
#include <functional>
#include <optional>
#include <variant>

namespace vorq {

class AccountSession;
class Permissions;
class StudyContext;
class VorqAPIService;
struct SavedChat;

/// How a turn of the panel came to its end.
enum class TurnEnd { Replied, Failed, SignedOut, Cancelled };

/// The panel's conversation: takes prompts and captured text to replies, one turn at a time, the
/// rest waiting in order. Main thread only.
class PanelConversation final : public QObject {
    Q_OBJECT
    Q_PROPERTY(vorq::MessageList* messages READ messageList CONSTANT)
    Q_PROPERTY(QString highlightedText READ highlightedText NOTIFY highlightedTextChanged)
    Q_PROPERTY(bool isPanelResponding READ isPanelResponding NOTIFY stateChanged)
    Q_PROPERTY(bool isPanelGreetingOnly READ isPanelGreetingOnly NOTIFY stateChanged)
    Q_PROPERTY(bool canSaveCurrentChat READ canSaveCurrentChat NOTIFY stateChanged)
    Q_PROPERTY(bool isRestoringPanelHistory READ isRestoringPanelHistory NOTIFY stateChanged)

  public:
    /// What the conversation works with; all must outlive it.
    struct Services {
        Clock& clock;
        VorqAPIService& api;
        AccountSession& account;
        StudyContext& study;
        Permissions& permissions;
        LocalRoutes& routes;
        SelectionCapture& capture;
    };

    explicit PanelConversation(const Services& services);

    [[nodiscard]] MessageList& messages() { return m_messages; }
    [[nodiscard]] MessageList* messageList() { return &m_messages; }
    [[nodiscard]] const MessageList& messages() const { return m_messages; }
    [[nodiscard]] WorkStatus& workStatus() { return m_status; }
    [[nodiscard]] ReplyTypewriter& typewriter() { return m_typewriter; }
    /// What was captured and waits for the user's word.
    [[nodiscard]] HeldCapture& heldCapture() { return m_heldCapture; }
    [[nodiscard]] const QString& highlightedText() const { return m_highlightedText; }
    [[nodiscard]] std::size_t queuedTurns() const { return m_panelTurnQueue.size(); }

    [[nodiscard]] bool isPanelTurnInFlight() const;
    [[nodiscard]] bool isPanelResponding() const { return isPanelTurnInFlight(); }
    [[nodiscard]] bool isPanelGreetingOnly() const;
    [[nodiscard]] bool canSaveCurrentChat() const;
    [[nodiscard]] bool isRestoringPanelHistory() const { return m_isRestoringPanelHistory; }

    /// The application is the one whose text this is, as the user knows it; "" for none.
    void setHighlightedText(const QString& text, const QString& application = {});

    /// While a saved chat is loaded into the panel.
    void setRestoringPanelHistory(bool restoring);

    /// Asks for this model, whatever the user's own choice, as long as the program runs.
    void setModelForNow(const QString& id) { m_modelForNow = id; }

    /// Sends a prompt, or queues it behind the running turn. Nothing happens if there is nothing to
    /// send.
    void submit(const QString& prompt, const QList<PromptAttachment>& attachments = {});

    /// The same for callers that are no panel: no prompt is a command.
    void submitToBackend(const QString& prompt, const QList<PromptAttachment>& attachments = {});

    /// Asks for more on an excerpt of a reply.
    void deepenSelection(const QString& excerpt, const QString& userPrompt);

    /// Takes up what is highlighted in the source application, or the text given instead. What is
    /// held back of it waits as heldCapture(); what was held before is dropped.
    QCoro::Task<> submitHotKeyContext(std::optional<ProcessId> sourcePID,
                                      std::optional<CapturedText> prefilledText,
                                      std::stop_token stop);

    /// The user wants the held text to be sent after all.
    void sendHeldCapture();

    /// Shows the captured text as the user's bubble and asks for its analysis.
    void typeHighlightAndAnalyze(const QString& text);

    /// Ends the running turn and drops the waiting ones.
    void stopPanelResponse();

    /// Runs the turn of a failed reply again, in the place of that reply, with all that it sent
    /// before. Behind a running turn it waits. Any other message is left alone.
    void retry(const QUuid& failedReply);

    /// Says something as a reply, without asking the backend.
    void answer(const QString& text);

    /// What a turn of the program's own says at its end; nothing to end without a word. What it
    /// throws is said instead.
    using LocalWork = std::function<QCoro::Task<std::optional<QString>>(std::stop_token)>;

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
    void ensurePanelGreeting();

    /// Empties the conversation and greets anew.
    void clearPanelChat();

  signals:
    void vorqShowPanel();
    void vorqFocusPrompt();
    void highlightedTextChanged();
    /// The hot key has taken up text of the application, which may have no name.
    void textCaptured(const QString& application);
    /// The hot key found no text in the application, which may have no name, though it may read it.
    void nothingCaptured(const QString& application);
    /// One of the derived properties may have changed.
    void stateChanged();
    /// So much of a reply has come in, whether or not it shows already.
    void replyStreamed(QUuid placeholder, QString text);
    /// A turn is over, before its reply is typed to the end. The sentence is that of a failure.
    void turnEnded(QUuid placeholder, vorq::TurnEnd end, QString sentence);

  private:
    struct QueuedPrompt {
        QUuid bubble;
        QString prompt;
        QList<PromptAttachment> attachments;
    };
    struct QueuedDeepen {
        QUuid bubble;
        QString excerpt;
        QString userPrompt;
    };
    struct QueuedRetry {
        QUuid failedReply;
    };
    using PanelQueuedTurn = std::variant<QueuedPrompt, QueuedDeepen, QueuedRetry>;
    using OnDelta = AnalysisStream::OnDelta;
    using Send = std::function<QCoro::Task<AIAnalysis>(PanelConversation&, const QString& token,
                                                       const OnDelta&, std::stop_token)>;
    struct Turn {
        QUuid placeholder;
        Send send;
        bool isStudyTurn = false;
    };

    std::optional<QueuedPrompt> appendUserBubble(const QString& prompt,
                                                 const QList<PromptAttachment>& attachments);
    QUuid appendUserMessage(const QString& text);
    void startOrQueue(PanelQueuedTurn turn);
    void endAllTurns();
    void start(const QueuedPrompt& turn);
    void start(const QueuedDeepen& turn);
    void start(const QueuedRetry& turn);
    void rememberSent(const QUuid& bubble, const QString& text, const QString& application);
    void requestHighlightAnalysis(const QString& text);
    void completeAssistantTyping();
    void markAsNotice(const QUuid& id);
    QUuid appendPlaceholder();
    void startRequest(const PanelRequest& request, const QUuid& placeholder);
    [[nodiscard]] std::optional<QString> preferredModel() const;
    void startTurn(Turn turn);
    void startLocalWork(const QUuid& placeholder, LocalWork work);
    void offerRetry(const QUuid& failedReply, const std::function<void()>& again);
    static QCoro::Task<> runTurn(QPointer<PanelConversation> self, Turn turn, std::stop_token stop);
    static QCoro::Task<> runLocalTurn(QPointer<PanelConversation> self, QUuid placeholder,
                                      LocalWork work, std::stop_token stop);
    void finishLocalTurn(const QUuid& placeholder, const std::optional<QString>& reply);
    void endTurn();
    void finishTurn(const Turn& turn, const AIAnalysis& analysis);
    void failTurn(const Turn& turn, const std::exception_ptr& error, bool wasStopped);
    [[nodiscard]] bool isTurnInFlightByMessages() const;
    void drainPanelQueueIfIdle();
    void applyStreamingAssistantText(const QString& text, const QUuid& id);
    void finishStreamingAssistantText(const QString& text,
                                      const std::optional<VorqFollowUp>& followUp, const QUuid& id);
    void dropWorkingPlaceholder(const QUuid& id);
    void removeEmptyPlaceholders();
    void logCapture(bool trusted, std::optional<ProcessId> sourcePID, const CapturedText& captured);
    void takeUp(const QString& text, const QString& application);

    Services m_services;
    MessageList m_messages;
    WorkStatus m_status;
    ReplyTypewriter m_typewriter;
    QHash<QUuid, std::function<void()>> m_retries; // by the failed reply
    HeldCapture m_heldCapture;
    QString m_highlightedText;
    QString m_highlightedApplication;
    QString m_modelForNow; // "" for the user's own choice
    bool m_isRestoringPanelHistory = false;
    std::deque<PanelQueuedTurn> m_panelTurnQueue;
    TaskSlot m_panelRequestTask;
};

} // namespace vorq
