#include "shell/panel/PanelViewModel.h"

#include "core/VorqAppState.h"
#include "shell/notices/Advice.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <algorithm>
#include <utility>

namespace vorq {
namespace {

constexpr std::chrono::milliseconds bounceTime{220};

QCoro::Task<> resetLater(QPointer<PanelViewModel> self, Clock& clock, std::function<void()> reset,
                         std::stop_token stop) {
    co_await sleepFor(clock, bounceTime, stop);
    if (self && !stop.stop_requested()) reset();
}

} // namespace

PanelViewModel::PanelViewModel(VorqAppState& state, Clock& clock, LocalSignIn* localSignIn)
    : m_state(state),
      m_clock(clock),
      m_attachableNotes(state, m_attachments),
      m_announcer(state.panel().messages()),
      m_signIn(state.account(), state.signIn(), localSignIn) {
    m_selection.setOnDeepen([this](const QString& excerpt) { addDeepenSelection(excerpt); });
    m_prompt = m_state.panelDraft().text();
    connectState();
    syncStudyNoteClip();
}

PanelViewModel::~PanelViewModel() = default;

void PanelViewModel::connectState() {
    connect(&m_attachments, &AttachmentList::countChanged, this,
            &PanelViewModel::leaveStudyWithItsClip);
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
    connect(&m_state.hotKeyContext().held(), &HeldCapture::changed, this, [this] {
        emit heldChanged();
        announceHeld();
    });
    connect(&m_state.hotKeyContext(), &HotKeyContext::nothingCaptured, this,
            &PanelViewModel::adviseOnNothingCaptured);
    connect(&m_state.hotKeyContext(), &HotKeyContext::textCaptured, this,
            [this](const QString& application) { m_knownToShowNothing.remove(application); });
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

void PanelViewModel::adviseOnNothingCaptured(const QString& application) {
    if (m_knownToShowNothing.contains(application)) return setNotice({});
    m_knownToShowNothing.insert(application);
    const QString name = application.isEmpty() ? tr("The application in front") : application;
    setNotice(tr("%1: no highlighted text was found. Highlight some first, or copy it there and "
                 "paste it here.")
                  .arg(name));
}

void PanelViewModel::takePermissions() {
    const bool isGranted =
        m_state.permissions().textCapturePermission() == PermissionState::Granted;
    if (isGranted && m_notice == accessibilityAdvice) setNotice({});
}

QAbstractItemModel* PanelViewModel::messages() const {
    return &m_state.panel().messages();
}

bool PanelViewModel::canSend() const {
    if (!trimmed(m_prompt).isEmpty()) return true;
    return std::ranges::any_of(m_attachments.attachments(), [this](const PromptAttachment& held) {
        return !m_studyClipWasSent || !isStudyClip(held);
    });
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

bool PanelViewModel::isHolding() const {
    return !m_state.hotKeyContext().held().isEmpty();
}

QString PanelViewModel::heldFrom() const {
    return m_state.hotKeyContext().held().application();
}

void PanelViewModel::announceHeld() {
    if (!isHolding()) return;
    const QString from = heldFrom();
    const QString what =
        from.isEmpty() ? tr("What is highlighted reads like a password or a key.")
                       : tr("What is highlighted in %1 reads like a password or a key.").arg(from);
    emit announced(what + u' ' + tr("It is held back: send it or discard it."));
}

void PanelViewModel::sendHeld() {
    if (!mayTalk()) return bounce();
    m_state.hotKeyContext().sendHeld();
    emit focusPromptWanted();
}

void PanelViewModel::discardHeld() {
    m_state.hotKeyContext().held().discard();
    emit announced(tr("Discarded."));
    emit focusPromptWanted();
}

bool PanelViewModel::closeInnermost() {
    if (!m_showAttachTray) return false;
    if (m_attachTrayMode == AttachTrayMode::Notes)
        setAttachTrayMode(AttachTrayMode::Root);
    else
        setShowAttachTray(false);
    emit focusPromptWanted();
    return true;
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
    const std::optional<QUuid> studied = m_studyClip;
    dispatch();
    const QString sent = trimmed(m_prompt).toString();
    if (!sent.isEmpty()) m_lastPrompt = sent;
    clearSent(studied);
    setPrompt({});
    m_state.panelDraft().drop();
    setShowAttachTray(false);
    emit composerSent();
}

// The note under study goes with the next prompt too, so its clip stays. The prompt itself may have
// loaded it.
void PanelViewModel::clearSent(const std::optional<QUuid>& studiedBefore) {
    m_studyClipWasSent = m_studyClip && m_studyClip == studiedBefore;
    m_attachments.removeIf([this](const PromptAttachment& held) { return !isStudyClip(held); });
    emit canSendChanged();
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
        m_state.panel().deepenSelection(deepen->textContent.value_or(QString()), prompt);
}

void PanelViewModel::submitLabel(const QString& label) {
    if (!mayTalk()) return bounce();
    m_lastPrompt = label;
    m_state.panel().submit(label);
    // The labels go once one of them is chosen.
    emit focusPromptWanted();
}

void PanelViewModel::retry(const QUuid& failedReply) {
    if (!mayTalk()) return bounce();
    m_state.panel().retry(failedReply);
    // The button goes once it is pressed.
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

bool PanelViewModel::isStudyClip(const PromptAttachment& attachment) const {
    return m_studyClip && attachment.noteID == m_studyClip;
}

void PanelViewModel::syncStudyNoteClip() {
    const std::optional<QUuid> active = m_state.study().activeStudyNoteID();
    if (m_studyClip == active) return;
    const std::optional<QUuid> former = std::exchange(m_studyClip, std::nullopt);
    m_studyClipWasSent = false;
    // Also a clip of the same note that the user attached before: the study has its text already.
    m_attachments.removeIf([&](const PromptAttachment& held) {
        return held.noteID && (held.noteID == former || held.noteID == active);
    });
    if (!active) return;
    PromptAttachment attachment;
    attachment.fileName = QStringLiteral("Notes");
    attachment.noteID = active; // its text goes with each turn of the study anyway
    m_studyClip = active;
    m_attachments.append(attachment);
}

// However the clip was taken off, in the composer or in the list of notes.
void PanelViewModel::leaveStudyWithItsClip() {
    const auto isHeld = [this](const PromptAttachment& held) { return isStudyClip(held); };
    if (!m_studyClip || std::ranges::any_of(m_attachments.attachments(), isHeld)) return;
    m_studyClip.reset();
    m_state.studyNotes().leaveStudy();
}

} // namespace vorq
