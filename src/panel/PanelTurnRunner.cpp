#include "panel/PanelTurnRunner.h"

#include "backend/account/AccountSession.h"
#include "backend/account/ModelCatalogue.h"
#include "backend/api/VorqAPIService.h"
#include "backend/http/Errors.h"
#include "panel/PanelTranscript.h"
#include "panel/StudyContext.h"

#include <utility>

namespace vorq {
namespace {

constexpr std::chrono::milliseconds pauseBeforeLocalReply{120};

// How a turn ends by this error, and the sentence for the user. Without one it was stopped.
std::pair<TurnEnd, QString> outcomeOf(const std::exception_ptr& error) {
    try {
        if (error) std::rethrow_exception(error);
        return {TurnEnd::Cancelled, {}};
    } catch (const OperationCancelled&) {
        return {TurnEnd::Cancelled, {}};
    } catch (const ServiceError& failure) {
        const bool isSignedOut = failure.kind() == ServiceError::Kind::NotSignedIn;
        return {isSignedOut ? TurnEnd::SignedOut : TurnEnd::Failed, failure.message()};
    } catch (const std::exception& failure) {
        return {TurnEnd::Failed, QString::fromUtf8(failure.what())};
    }
}

} // namespace

void PanelTurnRunner::sendPrompt(const PanelRequest& request, const QUuid& placeholder) {
    Turn turn;
    turn.placeholder = placeholder;
    turn.isStudyTurn = request.isStudyTurn;
    turn.send = [body = request.body](PanelTurnRunner& self, const QString& token,
                                      const OnDelta& onDelta, std::stop_token stop) {
        PromptRequest sent = body;
        sent.preferredModel = self.preferredModel();
        return self.m_services.api.streamAnalysis(sent, resolvedAIToken(token), onDelta,
                                                  std::move(stop));
    };
    start(std::move(turn));
}

void PanelTurnRunner::analyze(const QString& text, const QUuid& placeholder) {
    Turn turn;
    turn.placeholder = placeholder;
    turn.send = [text](PanelTurnRunner& self, const QString& token, const OnDelta& onDelta,
                       std::stop_token stop) {
        return self.m_services.api.streamAnalysis(AnalyzeRequest{text, self.preferredModel()},
                                                  resolvedAIToken(token), onDelta, std::move(stop));
    };
    start(std::move(turn));
}

std::optional<QString> PanelTurnRunner::preferredModel() const {
    if (m_modelForNow.isEmpty()) return m_services.account.preferredModelForAIRequest();
    return modelForRequest(m_services.account.signedIn(), m_modelForNow);
}

void PanelTurnRunner::start(Turn turn) {
    m_panelRequestTask.restart(
        [self = QPointer(this), turn = std::move(turn)](std::stop_token stop) {
            return run(self, turn, std::move(stop));
        });
    emit runningChanged();
}

QCoro::Task<> PanelTurnRunner::run(QPointer<PanelTurnRunner> self, Turn turn,
                                   std::stop_token stop) {
    std::optional<AIAnalysis> analysis;
    std::exception_ptr failure;
    try {
        const OnDelta onDelta = [self, id = turn.placeholder](const QString& text) {
            if (self) emit self->replyStreamed(id, text);
            if (self) self->m_services.transcript.applyStreamingAssistantText(text, id);
        };
        analysis = co_await self->m_services.account.tokens().withFreshSessionToken(
            [self, &turn, &onDelta, stop](const QString& token) {
                if (!self) throw OperationCancelled();
                return turn.send(*self, token, onDelta, stop);
            },
            stop);
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self) co_return;
    if (analysis && !stop.stop_requested())
        self->finish(turn, *analysis);
    else
        self->fail(turn, failure, stop.stop_requested());
    if (self) self->endTurn();
}

void PanelTurnRunner::finish(const Turn& turn, const AIAnalysis& analysis) {
    emit turnEnded(turn.placeholder, TurnEnd::Replied, {});
    if (!m_services.transcript.messages().find(turn.placeholder)) return;
    const QString text = displayText(analysis);
    if (turn.isStudyTurn) m_services.study.setLastStudyResearch(text);
    m_services.transcript.finishStreamingAssistantText(text, analysis.followUp, turn.placeholder);
}

void PanelTurnRunner::fail(const Turn& turn, const std::exception_ptr& error, bool wasStopped) {
    PanelTranscript& transcript = m_services.transcript;
    const auto [end, sentence] = outcomeOf(wasStopped ? nullptr : error);
    emit turnEnded(turn.placeholder, end, sentence);
    switch (end) {
    case TurnEnd::SignedOut:
        if (m_services.account.signedIn()) m_services.account.markSessionExpired();
        transcript.remove(turn.placeholder);
        break;
    case TurnEnd::Failed:
        // It stands where the reply would, but is the program's own word.
        transcript.markAsNotice(turn.placeholder);
        transcript.finishStreamingAssistantText(sentence, std::nullopt, turn.placeholder);
        offerRetry(turn.placeholder, [this, turn] { start(turn); });
        break;
    case TurnEnd::Cancelled:
    case TurnEnd::Replied:
        drop(turn.placeholder);
        // Nobody else completes what a turn has shown that was replaced.
        transcript.typewriter().settleStreamedText(turn.placeholder);
        break;
    }
}

void PanelTurnRunner::drop(const QUuid& placeholder) {
    m_services.transcript.dropWorkingPlaceholder(placeholder);
    emit mayBeIdle();
}

void PanelTurnRunner::endTurn() {
    const QPointer<PanelTurnRunner> self(this);
    // A turn that was replaced while it ended clears its successor's handle; the successor runs on.
    m_panelRequestTask.release();
    emit runningChanged();
    // A reply that is still typed drains the queue at its end; one that is not leaves it to this.
    if (self) emit mayBeIdle();
}

void PanelTurnRunner::runLocally(const QUuid& placeholder, LocalWork work) {
    m_services.transcript.markAsNotice(placeholder);
    m_panelRequestTask.restart(
        [self = QPointer(this), placeholder, work = std::move(work)](std::stop_token stop) {
            return runWork(self, placeholder, work, std::move(stop));
        });
    emit runningChanged();
}

QCoro::Task<> PanelTurnRunner::runWork(QPointer<PanelTurnRunner> self, QUuid placeholder,
                                       LocalWork work, std::stop_token stop) {
    std::optional<QString> reply;
    std::exception_ptr failure;
    try {
        reply = co_await work(stop);
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self) co_return;
    bool hasFailed = false;
    if (failure) {
        const auto [end, sentence] = outcomeOf(failure);
        hasFailed = end != TurnEnd::Cancelled && !stop.stop_requested();
        if (hasFailed) reply = sentence;
    }
    self->finishWork(placeholder, stop.stop_requested() ? std::nullopt : reply);
    if (self && hasFailed)
        self->offerRetry(placeholder, [self, placeholder, work] {
            if (self) self->runLocally(placeholder, work);
        });
    if (self) self->endTurn();
}

void PanelTurnRunner::finishWork(const QUuid& placeholder, const std::optional<QString>& reply) {
    if (!reply) return drop(placeholder);
    PanelTranscript& transcript = m_services.transcript;
    if (!transcript.messages().find(placeholder)) return;
    transcript.typewriter().startTypingAssistantMessage(
        *reply, std::nullopt, placeholder, pauseBeforeLocalReply, AssistantReveal::Blocks);
}

void PanelTurnRunner::offerRetry(const QUuid& failedReply, const std::function<void()>& again) {
    if (!m_services.transcript.messages().find(failedReply)) return;
    m_retries.insert(failedReply, again);
    m_services.transcript.offerRetry(failedReply);
}

bool PanelTurnRunner::canRetry(const QUuid& failedReply) const {
    return m_retries.contains(failedReply);
}

bool PanelTurnRunner::retry(const QUuid& failedReply) {
    const std::function<void()> again = m_retries.take(failedReply);
    if (!again || !m_services.transcript.messages().find(failedReply)) return false;
    m_services.transcript.completeAssistantTyping();
    m_services.transcript.awaitAgain(failedReply);
    again();
    return true;
}

} // namespace vorq
