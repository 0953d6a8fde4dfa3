#include "shell/PanelViewModel.h"

#include "core/VorqAppState.h"
#include "shell/Advice.h"
#include "support/Graphemes.h"
#include "support/Text.h"

#include <algorithm>

namespace vorq {
namespace {

constexpr std::chrono::milliseconds bounceTime{220};

QCoro::Task<> resetLater(QPointer<PanelViewModel> self, Clock& clock, std::function<void()> reset,
                         std::stop_token stop) {
    co_await sleepFor(clock, bounceTime, stop);
    if (self && !stop.stop_requested()) reset();
}

} // namespace

PanelViewModel::PanelViewModel(VorqAppState& state, Clock& clock)
    : m_state(state),
      m_clock(clock),
      m_attachableNotes(state, m_attachments),
      m_announcer(state.panel().messages()) {
    m_selection.setOnDeepen([this](const QString& excerpt) { addDeepenSelection(excerpt); });
    m_prompt = m_state.panelDraft().text();
    connectState();
    syncStudyNoteClip();
}

PanelViewModel::~PanelViewModel() = default;

void PanelViewModel::connectState() {
    connect(&m_attachments, &AttachmentList::countChanged, this, &PanelViewModel::canSendChanged);
    connect(&m_attachableNotes, &AttachableNotes::noteUnreadable, this,
            [this](const QString& title) {
                setNotice(tr("%1: there is no text to attach.").arg(title));
            });
    connect(&m_announcer, &PanelAnnouncer::announced, this, &PanelViewModel::announced);
    connect(&m_state, &VorqAppState::promptPlaceholderChanged, this,
            &PanelViewModel::promptPlaceholderChanged);
    connect(&m_state.panel(), &PanelConversation::stateChanged, this,
            &PanelViewModel::respondingChanged);
    // No bubble says why there is no reply.
    connect(&m_state.panel(), &PanelConversation::turnEnded, this,
            [this](const QUuid&, TurnEnd end) {
                if (end == TurnEnd::SignedOut) setNotice(signInAdvice);
            });
    connect(&m_state.panel().workStatus(), &WorkStatus::changed, this,
            &PanelViewModel::workLabelChanged);
    connect(&m_state.permissions(), &Permissions::advised, this,
            [this] { setNotice(accessibilityAdvice); });
    connect(&m_state.permissions(), &Permissions::changed, this, &PanelViewModel::takePermissions);
    connect(&m_state.account(), &AccountSession::signedInChanged, this, [this] {
        if (m_notice == signInAdvice) setNotice({});
    });
    connect(&m_state.study(), &StudyContext::activeNoteChanged, this,
            &PanelViewModel::syncStudyNoteClip);
}

void PanelViewModel::takePermissions() {
    const bool isGranted =
        m_state.permissions().textCapturePermission() == PermissionState::Granted;
    if (isGranted && m_notice == accessibilityAdvice) setNotice({});
}

QAbstractItemModel* PanelViewModel::messages() const {
    return m_state.panel().messageList();
}

bool PanelViewModel::canSend() const {
    return !trimmed(m_prompt).isEmpty() || m_attachments.count() > 0;
}

QString PanelViewModel::promptPlaceholder() const {
    return m_state.promptPlaceholder();
}

bool PanelViewModel::isResponding() const {
    return m_state.panel().isPanelResponding();
}

QString PanelViewModel::workLabel() const {
    return m_state.panel().workStatus().label();
}

bool PanelViewModel::isRestoringHistory() const {
    return m_state.panel().isRestoringPanelHistory();
}

void PanelViewModel::historyRestored() {
    m_state.panel().setRestoringPanelHistory(false);
}

bool PanelViewModel::mayTalk() const {
    return m_state.canUsePanelAI();
}

void PanelViewModel::setPrompt(const QString& prompt) {
    if (m_prompt == prompt) return;
    const bool could = canSend();
    m_prompt = prompt;
    m_state.panelDraft().keep(prompt);
    setNotice({});
    emit promptChanged();
    if (could != canSend()) emit canSendChanged();
}

void PanelViewModel::setShowAttachTray(bool shown) {
    if (m_showAttachTray == shown) return;
    m_showAttachTray = shown;
    setAttachTrayMode(AttachTrayMode::Root);
    emit showAttachTrayChanged();
}

void PanelViewModel::setAttachTrayMode(AttachTrayMode mode) {
    if (m_attachTrayMode == mode) return;
    m_attachTrayMode = mode;
    if (mode == AttachTrayMode::Notes) m_attachableNotes.load();
    emit attachTrayModeChanged();
}

void PanelViewModel::setNotice(const QString& sentence) {
    if (m_notice == sentence) return;
    m_notice = sentence;
    emit noticeChanged();
    if (!sentence.isEmpty()) emit announced(sentence);
}

void PanelViewModel::bounce() {
    m_promptBounce = true;
    emit promptBounceChanged();
    m_bounceTask.restart([this](std::stop_token stop) {
        return resetLater(
            this, m_clock,
            [this] {
                m_promptBounce = false;
                emit promptBounceChanged();
            },
            std::move(stop));
    });
    if (!m_state.account().signedIn()) setNotice(signInAdvice);
    emit attentionWanted(m_state.account().signedIn());
}

void PanelViewModel::send() {
    if (!mayTalk()) return bounce();
    if (!canSend()) return;
    dispatch();
    const QString sent = trimmed(m_prompt).toString();
    if (!sent.isEmpty()) m_lastPrompt = sent;
    m_attachments.clear();
    setPrompt({});
    m_state.panelDraft().drop();
    setShowAttachTray(false);
    emit composerSent();
}

void PanelViewModel::dispatch() {
    // A copy: whoever hears of the new turn may change the draft.
    const QString prompt = m_prompt;
    const QList<PromptAttachment> attachments = m_attachments.attachments();
    const auto deepen = std::ranges::find_if(attachments, [](const PromptAttachment& attachment) {
        return attachment.isDeepenSelection &&
               graphemeCount(trimmed(attachment.textContent.value_or(QString()))) > 1;
    });
    if (deepen == attachments.end())
        m_state.panel().submit(prompt, attachments);
    else
        m_state.panel().deepenSelection(*deepen->textContent, prompt);
}

void PanelViewModel::submitLabel(const QString& label) {
    if (!mayTalk()) return bounce();
    m_lastPrompt = label;
    m_state.panel().submit(label);
    // The labels go once one of them is chosen.
    emit focusPromptWanted();
}

void PanelViewModel::stopPanelResponse() {
    m_state.panel().stopPanelResponse();
}

void PanelViewModel::ensurePanelGreeting() {
    m_state.panel().ensurePanelGreeting();
}

bool PanelViewModel::recallLastPrompt() {
    if (!m_prompt.isEmpty() || m_lastPrompt.isEmpty()) return false;
    setPrompt(m_lastPrompt);
    return true;
}

void PanelViewModel::addDeepenSelection(const QString& excerpt) {
    m_attachments.removeIf(&PromptAttachment::isDeepenSelection);
    PromptAttachment attachment;
    attachment.fileName = QStringLiteral("deepen");
    attachment.textContent = excerpt;
    attachment.isDeepenSelection = true;
    m_attachments.append(attachment);
    emit focusPromptWanted();
}

void PanelViewModel::removeAttachment(int row) {
    m_attachments.removeAt(row);
}

void PanelViewModel::syncStudyNoteClip() {
    const std::optional<QUuid> active = m_state.study().activeStudyNoteID();
    if (m_studyClip && m_studyClip != active)
        m_attachments.removeIf([gone = m_studyClip](const PromptAttachment& attachment) {
            return attachment.noteID == gone;
        });
    m_studyClip = active;
    if (!active) return;
    const QList<PromptAttachment>& held = m_attachments.attachments();
    if (std::ranges::find(held, active, &PromptAttachment::noteID) != held.end()) return;
    PromptAttachment attachment;
    attachment.fileName = QStringLiteral("Notes");
    attachment.noteID = active; // its text goes with each turn of the study anyway
    m_attachments.append(attachment);
}

} // namespace vorq
