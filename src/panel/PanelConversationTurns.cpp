// The part of the conversation that runs a turn against the backend and takes up its outcome.

#include "areas/Permissions.h"
#include "backend/account/AccountSession.h"
#include "backend/account/ModelCatalogue.h"
#include "backend/api/VorqAPIService.h"
#include "backend/http/Errors.h"
#include "panel/PanelConversation.h"
#include "panel/StudyContext.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <QLoggingCategory>

#include <algorithm>

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

void PanelConversation::startRequest(const PanelRequest& request, const QUuid& placeholder) {
    Turn turn;
    turn.placeholder = placeholder;
    turn.isStudyTurn = request.isStudyTurn;
    turn.send = [body = request.body](PanelConversation& self, const QString& token,
                                      const OnDelta& onDelta, std::stop_token stop) {
        PromptRequest sent = body;
        sent.preferredModel = self.preferredModel();
        return self.m_services.api.streamAnalysis(sent, resolvedAIToken(token), onDelta,
                                                  std::move(stop));
    };
    startTurn(std::move(turn));
}

void PanelConversation::requestHighlightAnalysis(const QString& text) {
    m_typewriter.showWaitingReply();
    removeEmptyPlaceholders();
    Turn turn;
    turn.placeholder = appendPlaceholder();
    turn.send = [text](PanelConversation& self, const QString& token, const OnDelta& onDelta,
                       std::stop_token stop) {
        return self.m_services.api.streamAnalysis(AnalyzeRequest{text, self.preferredModel()},
                                                  resolvedAIToken(token), onDelta, std::move(stop));
    };
    startTurn(std::move(turn));
}

std::optional<QString> PanelConversation::preferredModel() const {
    if (m_modelForNow.isEmpty()) return m_services.account.preferredModelForAIRequest();
    return modelForRequest(m_services.account.signedIn(), m_modelForNow);
}

void PanelConversation::startTurn(Turn turn) {
    m_panelRequestTask.restart(
        [self = QPointer(this), turn = std::move(turn)](std::stop_token stop) {
            return runTurn(self, turn, std::move(stop));
        });
    emit stateChanged();
}

QCoro::Task<> PanelConversation::runTurn(QPointer<PanelConversation> self, Turn turn,
                                         std::stop_token stop) {
    std::optional<AIAnalysis> analysis;
    std::exception_ptr failure;
    try {
        const OnDelta onDelta = [self, id = turn.placeholder](const QString& text) {
            if (self) self->applyStreamingAssistantText(text, id);
        };
        analysis = co_await self->m_services.account.withFreshSessionToken(
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
        self->finishTurn(turn, *analysis);
    else
        self->failTurn(turn, failure, stop.stop_requested());
    if (self) self->endTurn();
}

void PanelConversation::endTurn() {
    const QPointer<PanelConversation> self(this);
    // A turn that was replaced while it ended clears its successor's handle; the successor runs on.
    m_panelRequestTask.release();
    emit stateChanged();
    // A reply that is still typed drains the queue at its end; one that is not leaves it to this.
    if (self) drainPanelQueueIfIdle();
}

void PanelConversation::startLocalTurn(LocalWork work) {
    const QUuid placeholder = appendPlaceholder();
    markAsNotice(placeholder);
    startLocalWork(placeholder, std::move(work));
}

void PanelConversation::startLocalWork(const QUuid& placeholder, LocalWork work) {
    m_panelRequestTask.restart(
        [self = QPointer(this), placeholder, work = std::move(work)](std::stop_token stop) {
            return runLocalTurn(self, placeholder, work, std::move(stop));
        });
    emit stateChanged();
}

QCoro::Task<> PanelConversation::runLocalTurn(QPointer<PanelConversation> self, QUuid placeholder,
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
    self->finishLocalTurn(placeholder, stop.stop_requested() ? std::nullopt : reply);
    if (self && hasFailed)
        self->offerRetry(placeholder, [self, placeholder, work] {
            if (!self) return;
            self->markAsNotice(placeholder);
            self->startLocalWork(placeholder, work);
        });
    if (self) self->endTurn();
}

void PanelConversation::finishLocalTurn(const QUuid& placeholder,
                                        const std::optional<QString>& reply) {
    if (!reply) return dropWorkingPlaceholder(placeholder);
    if (!m_messages.find(placeholder)) return;
    m_typewriter.startTypingAssistantMessage(*reply, std::nullopt, placeholder,
                                             pauseBeforeLocalReply, AssistantReveal::Blocks);
}

void PanelConversation::finishTurn(const Turn& turn, const AIAnalysis& analysis) {
    emit turnEnded(turn.placeholder, TurnEnd::Replied, {});
    if (!m_messages.find(turn.placeholder)) return;
    const QString text = displayText(analysis);
    if (turn.isStudyTurn) m_services.study.setLastStudyResearch(text);
    finishStreamingAssistantText(text, analysis.followUp, turn.placeholder);
}

void PanelConversation::failTurn(const Turn& turn, const std::exception_ptr& error,
                                 bool wasStopped) {
    const auto [end, sentence] = outcomeOf(wasStopped ? nullptr : error);
    emit turnEnded(turn.placeholder, end, sentence);
    switch (end) {
    case TurnEnd::SignedOut:
        if (m_services.account.signedIn()) m_services.account.markSessionExpired();
        m_messages.removeIf(
            [&turn](const VorqMessage& message) { return message.id == turn.placeholder; });
        m_status.endPanelWorkStatus();
        break;
    case TurnEnd::Failed:
        // It stands where the reply would, but is the program's own word.
        markAsNotice(turn.placeholder);
        finishStreamingAssistantText(sentence, std::nullopt, turn.placeholder);
        offerRetry(turn.placeholder, [this, turn] { startTurn(turn); });
        break;
    case TurnEnd::Cancelled:
    case TurnEnd::Replied:
        dropWorkingPlaceholder(turn.placeholder);
        // Nobody else completes what a turn has shown that was replaced.
        m_typewriter.settleStreamedText(turn.placeholder);
        break;
    }
}

void PanelConversation::offerRetry(const QUuid& failedReply, const std::function<void()>& again) {
    const VorqMessage* found = m_messages.find(failedReply);
    if (!found) return;
    m_retries.insert(failedReply, again);
    VorqMessage message = *found;
    message.canRetry = true;
    m_messages.update(message);
}

void PanelConversation::retry(const QUuid& failedReply) {
    const auto waits = [&failedReply](const PanelQueuedTurn& turn) {
        const auto* queued = std::get_if<QueuedRetry>(&turn);
        return queued && queued->failedReply == failedReply;
    };
    if (!m_retries.contains(failedReply) || std::ranges::any_of(m_panelTurnQueue, waits)) return;
    startOrQueue(QueuedRetry{failedReply});
}

void PanelConversation::start(const QueuedRetry& turn) {
    const std::function<void()> again = m_retries.take(turn.failedReply);
    if (!again || !m_messages.find(turn.failedReply)) return drainPanelQueueIfIdle();
    VorqMessage placeholder = VorqMessage::placeholder();
    placeholder.id = turn.failedReply;
    completeAssistantTyping();
    m_messages.update(placeholder);
    m_status.beginPanelWorkStatus();
    again();
}

QCoro::Task<> PanelConversation::submitHotKeyContext(std::optional<ProcessId> sourcePID,
                                                     std::optional<CapturedText> prefilledText,
                                                     std::stop_token stop) {
    const QPointer<PanelConversation> self(this);
    SelectionCapture& capture = m_services.capture;
    m_services.permissions.refreshPermissions();
    const bool trusted = capture.isTrusted();
    CapturedText captured = prefilledText.value_or(CapturedText());
    if (!prefilledText && trusted) {
        captured = co_await capture.captureSelectedTextForHotKey(sourcePID, stop);
        if (!self || stop.stop_requested()) co_return;
    }
    captured.text = trimmed(captured.text).toString();
    std::optional<ProcessId> captor = sourcePID;
    if (captured.isEmpty() && !prefilledText) {
        const auto frontmost = capture.frontmostForeignProcess();
        if (frontmost && frontmost != sourcePID) {
            captured = co_await capture.captureSelectedTextForHotKey(frontmost, stop);
            if (!self || stop.stop_requested()) co_return;
            captured.text = trimmed(captured.text).toString();
            captor = frontmost;
        }
    }
    logCapture(trusted, sourcePID, captured);
    const QString application = captor ? capture.applicationName(*captor) : QString();
    m_heldCapture.discard();
    if (captured.isHeldBack && !captured.isEmpty()) {
        setHighlightedText({});
        m_heldCapture.hold(captured.text, application);
        co_return;
    }
    if (!captured.isEmpty()) {
        takeUp(captured.text, application);
        co_return;
    }
    setHighlightedText({});
    const bool isGreetedOnly = m_messages.messages().empty() || isPanelGreetingOnly();
    if (!trusted)
        m_services.permissions.adviseToGrantAgain();
    else if (!isGreetedOnly)
        emit nothingCaptured(application);
    ensurePanelGreeting();
}

void PanelConversation::takeUp(const QString& text, const QString& application) {
    setHighlightedText(text, application);
    m_services.permissions.setPermissionMessage({});
    emit textCaptured(application);
    typeHighlightAndAnalyze(text);
}

void PanelConversation::sendHeldCapture() {
    const QString application = m_heldCapture.application();
    const QString text = m_heldCapture.release();
    if (!text.isEmpty()) takeUp(text, application);
}

// The length of what is held back tells of it, too.
void PanelConversation::logCapture(bool trusted, std::optional<ProcessId> sourcePID,
                                   const CapturedText& captured) {
    const QString name = sourcePID ? m_services.capture.applicationName(*sourcePID) : QString();
    const QString line =
        QStringLiteral("trusted=%1 perm=%2 pid=%3 app=%4 chars=%5")
            .arg(trusted ? QStringLiteral("true") : QStringLiteral("false"),
                 rawString(m_services.permissions.textCapturePermission()),
                 sourcePID ? QString::number(*sourcePID) : QStringLiteral("nil"),
                 name.isEmpty() ? QStringLiteral("-") : name,
                 captured.isHeldBack ? QStringLiteral("held")
                                     : QString::number(graphemeCount(captured.text)));
    qInfo("Vorq capture: %s", qUtf8Printable(line));
    m_services.capture.log(line);
}

void PanelConversation::typeHighlightAndAnalyze(const QString& text) {
    const QString kept = trimmed(text).toString();
    if (kept.isEmpty()) return;
    m_typewriter.finishTypingFlags(MessageRole::User);
    const QUuid bubble = appendUserMessage(QStringLiteral("Attached: Text capture"));
    rememberSent(bubble, kept, m_highlightedApplication);
    requestHighlightAnalysis(kept);
}

} // namespace vorq
