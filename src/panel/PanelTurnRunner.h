#pragma once

#include "backend/api/AIAnalysis.h"
#include "backend/api/AnalysisStream.h"
#include "panel/PanelRequests.h"
#include "support/async/TaskSlot.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <exception>
#include <functional>
#include <optional>

namespace vorq {

class AccountSession;
class PanelTranscript;
class StudyContext;
class VorqAPIService;

/// How a turn of the panel came to its end.
enum class TurnEnd { Replied, Failed, SignedOut, Cancelled };

/// Runs a turn of the panel, against the backend or by work of the program's own, and takes its
/// outcome to the placeholder that waits for it. One that is started while another runs replaces
/// that. Main thread only.
class PanelTurnRunner final : public QObject {
    Q_OBJECT

  public:
    /// What it works with; all must outlive it.
    struct Services {
        VorqAPIService& api;
        AccountSession& account;
        StudyContext& study;
        PanelTranscript& transcript;
    };

    /// What a turn of the program's own says at its end; nothing to end without a word. What it
    /// throws is said instead.
    using LocalWork = std::function<QCoro::Task<std::optional<QString>>(std::stop_token)>;

    explicit PanelTurnRunner(const Services& services) : m_services(services) {}

    /// Asks for this model, whatever the user's own choice.
    void setModelForNow(const QString& id) { m_modelForNow = id; }

    void sendPrompt(const PanelRequest& request, const QUuid& placeholder);
    void analyze(const QString& text, const QUuid& placeholder);
    void runLocally(const QUuid& placeholder, LocalWork work);

    [[nodiscard]] bool canRetry(const QUuid& failedReply) const;
    /// Runs the turn of a failed reply again, in the place of that reply, with all that it sent
    /// before. False if there is none any more.
    bool retry(const QUuid& failedReply);
    void forgetRetries() { m_retries.clear(); }

    /// Whether a turn runs that has not been replaced.
    [[nodiscard]] bool isRunning() const { return m_panelRequestTask.isRunning(); }
    /// Ends the turn that runs and those that it replaced.
    void cancelAll() { m_panelRequestTask.cancelAll(); }

  signals:
    /// A turn has begun or ended.
    void runningChanged();
    /// Nobody waits any longer for what waited: the next turn may have its turn.
    void mayBeIdle();
    /// So much of a reply has come in, whether or not it shows already.
    void replyStreamed(QUuid placeholder, QString text);
    /// A turn is over, before its reply is typed to the end. The sentence is that of a failure.
    void turnEnded(QUuid placeholder, vorq::TurnEnd end, QString sentence);

  private:
    using OnDelta = AnalysisStream::OnDelta;
    using Send = std::function<QCoro::Task<AIAnalysis>(PanelTurnRunner&, const QString& token,
                                                       const OnDelta&, std::stop_token)>;
    struct Turn {
        QUuid placeholder;
        Send send;
        bool isStudyTurn = false;
    };

    [[nodiscard]] std::optional<QString> preferredModel() const;
    void start(Turn turn);
    static QCoro::Task<> run(QPointer<PanelTurnRunner> self, Turn turn, std::stop_token stop);
    static QCoro::Task<> runWork(QPointer<PanelTurnRunner> self, QUuid placeholder, LocalWork work,
                                 std::stop_token stop);
    void finish(const Turn& turn, const AIAnalysis& analysis);
    void fail(const Turn& turn, const std::exception_ptr& error, bool wasStopped);
    void finishWork(const QUuid& placeholder, const std::optional<QString>& reply);
    void drop(const QUuid& placeholder);
    void endTurn();
    void offerRetry(const QUuid& failedReply, const std::function<void()>& again);

    Services m_services;
    QString m_modelForNow;                         // "" for the user's own choice
    QHash<QUuid, std::function<void()>> m_retries; // by the failed reply
    TaskSlot m_panelRequestTask;
};

} // namespace vorq
