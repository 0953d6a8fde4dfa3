#include "panel/PanelConversation.h"

#include "panel/LocalRoutes.h"
#include "panel/PanelHistory.h"
#include "panel/PanelRequests.h"
#include "panel/StudyContext.h"
#include "support/text/Text.h"

using namespace Qt::StringLiterals;

namespace vorq {

PanelConversation::PanelConversation(const Services& services)
    : m_study(services.study),
      m_routes(services.routes),
      m_transcript(services.clock),
      m_greeting(m_transcript),
      m_runner({services.api, services.account, services.study, m_transcript}),
      m_queue([this] { return isPanelTurnInFlight(); },
              [this](const PanelTurn& turn) {
                  std::visit([this](const auto& next) { start(next); }, turn);
              }) {
    connectTurns();
}

void PanelConversation::connectTurns() {
    connect(&m_runner, &PanelTurnRunner::replyStreamed, this, &PanelConversation::replyStreamed);
    connect(&m_runner, &PanelTurnRunner::turnEnded, this, &PanelConversation::turnEnded);
    connect(&m_runner, &PanelTurnRunner::runningChanged, this, &PanelConversation::stateChanged);
    connect(&messages(), &MessageList::changed, this, &PanelConversation::stateChanged);
    connect(&m_runner, &PanelTurnRunner::mayBeIdle, this, [this] { m_queue.drainIfIdle(); });
    connect(&typewriter(), &ReplyTypewriter::typingEnded, this, [this] { m_queue.drainIfIdle(); });
}

bool PanelConversation::isPanelTurnInFlight() const {
    return m_runner.isRunning() || m_transcript.isTurnInFlight();
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
    const std::optional<PromptTurn> turn = appendUserBubble(prompt, attachments);
    if (turn && !m_routes.take(turn->prompt)) m_queue.submit(*turn);
}

void PanelConversation::submitToBackend(const QString& prompt,
                                        const QList<PromptAttachment>& attachments) {
    if (const std::optional<PromptTurn> turn = appendUserBubble(prompt, attachments))
        m_queue.submit(*turn);
}

// Gives the turn of the trimmed prompt; nothing if there is nothing to send.
std::optional<PromptTurn>
PanelConversation::appendUserBubble(const QString& prompt,
                                    const QList<PromptAttachment>& attachments) {
    const std::optional<QString> bubble = submitBubble(prompt, attachments);
    if (!bubble) return std::nullopt;
    m_transcript.dropFollowUps();
    return PromptTurn{m_transcript.appendUserMessage(*bubble), trimmed(prompt).toString(),
                      attachments};
}

void PanelConversation::deepenSelection(const QString& excerpt, const QString& userPrompt) {
    const std::optional<QString> bubble = deepenBubble(excerpt, userPrompt);
    if (!bubble) return;
    const QUuid id = m_transcript.appendUserMessage(*bubble);
    m_queue.submit(DeepenTurn{id, trimmed(excerpt).toString(), trimmed(userPrompt).toString()});
}

void PanelConversation::typeHighlightAndAnalyze(const QString& text) {
    const QString kept = trimmed(text).toString();
    if (kept.isEmpty()) return;
    typewriter().finishTypingFlags(MessageRole::User);
    const QUuid bubble = m_transcript.appendUserMessage(u"Attached: Text capture"_s);
    m_transcript.rememberSent(bubble, kept, m_highlightedApplication);
    typewriter().showWaitingReply();
    m_transcript.removeEmptyPlaceholders();
    m_runner.analyze(kept, m_transcript.appendPlaceholder());
}

void PanelConversation::retry(const QUuid& failedReply) {
    if (!m_runner.canRetry(failedReply) || m_queue.hasRetryOf(failedReply)) return;
    m_queue.submit(RetryTurn{failedReply});
}

void PanelConversation::startLocalTurn(LocalWork work) {
    m_runner.runLocally(m_transcript.appendPlaceholder(), std::move(work));
}

void PanelConversation::start(const PromptTurn& turn) {
    m_transcript.completeAssistantTyping();
    const QUuid placeholder = m_transcript.appendPlaceholder();
    PanelPromptContext context;
    context.prompt = turn.prompt;
    context.attachments = turn.attachments;
    context.highlightedText = m_highlightedText;
    context.studySource = m_study.activeStudySource();
    context.isStudyingNote = m_study.activeStudyNoteID().has_value();
    context.messages = messages().messages();
    const PanelRequest request = panelPromptRequest(context);
    m_transcript.rememberSent(turn.bubble, request.body.selectedText, m_highlightedApplication);
    m_runner.sendPrompt(request, placeholder);
}

void PanelConversation::start(const DeepenTurn& turn) {
    m_transcript.completeAssistantTyping();
    const QUuid placeholder = m_transcript.appendPlaceholder();
    m_transcript.rememberSent(turn.bubble, turn.excerpt, {});
    m_runner.sendPrompt(panelDeepenRequest(turn.excerpt, turn.userPrompt, messages().messages()),
                        placeholder);
}

void PanelConversation::start(const RetryTurn& turn) {
    m_runner.retry(turn.failedReply);
}

void PanelConversation::stopPanelResponse() {
    // Also a turn that has lost its handle to one it replaced.
    m_runner.cancelAll();
    m_queue.clear();
    m_transcript.stop();
    emit stateChanged();
}

void PanelConversation::answer(const QString& text) {
    m_transcript.say(text, AssistantReveal::Blocks);
}

QString PanelConversation::latestPanelAssistantText() const {
    return latestAssistantText(messages().messages());
}

void PanelConversation::bringForward() {
    emit vorqShowPanel();
    emit vorqFocusPrompt();
}

void PanelConversation::drop() {
    m_runner.cancelAll();
    m_runner.forgetRetries();
    m_queue.clear();
    emit dropped();
    m_transcript.clear();
}

void PanelConversation::restorePanelHistory(const SavedChat& chat) {
    setRestoringPanelHistory(true);
    drop();
    workStatus().endPanelWorkStatus();
    for (VorqMessage& message : panelMessages(chat))
        messages().append(std::move(message));
    bringForward();
    emit stateChanged();
}

void PanelConversation::clearPanelChat() {
    drop();
    setHighlightedText({});
    m_study.setLastStudyResearch({});
    ensurePanelGreeting();
    emit stateChanged();
}

} // namespace vorq
