#include "shell/panel/PanelViewModel.h"

#include "core/VorqAppState.h"
#include "shell/notices/Advice.h"
#include "shell/panel/OutgoingClips.h"
#include "support/text/Text.h"

#include <QPointer>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::chrono::milliseconds bounceTime{220};

QString unsentAdvice() {
    return PanelViewModel::tr("Not sent: something could not be attached. Try it again or remove "
                              "it, then send.");
}

QString leftAdvice() {
    return PanelViewModel::tr("What is still attached goes with the next prompt.");
}

QCoro::Task<> resetLater(QPointer<PanelViewModel> self, Clock& clock, std::function<void()> reset,
                         std::stop_token stop) {
    co_await sleepFor(clock, bounceTime, stop);
    if (self && !stop.stop_requested()) reset();
}

} // namespace

PanelViewModel::PanelViewModel(VorqAppState& state, Clock& clock, AttachmentReader& reader,
                               LocalSignIn* localSignIn, Pasteboard* pasteboard)
    : m_state(state),
      m_clock(clock),
      m_clipLoader(m_attachments),
      m_clipAnnouncer(m_attachments),
      m_waiting(m_attachments),
      m_attachableNotes(state, m_attachments, m_clipLoader),
      m_intake(m_clipLoader, reader,
               pasteboard ? std::optional<PasteReader>(std::in_place, *pasteboard, clock)
                          : std::nullopt),
      m_studyClip(state.study(), state.studyNotes(), m_attachments),
      m_held(state.hotKeyContext().held()),
      m_outlet(state.panel().messages()),
      m_advice(state),
      m_announcer(state.panel().messages()),
      m_signIn(state.account(), state.signIn(), localSignIn) {
    m_selection.setOnDeepen([this](const QString& excerpt) { addDeepenSelection(excerpt); });
    m_prompt = m_state.panelDraft().text();
    connectState();
    connectParts();
}

PanelViewModel::~PanelViewModel() = default;

void PanelViewModel::connectState() {
    connect(&m_state, &VorqAppState::promptPlaceholderChanged, this,
            &PanelViewModel::promptPlaceholderChanged);
    connect(&m_state.panel(), &PanelConversation::stateChanged, this,
            &PanelViewModel::respondingChanged);
    // What was to be added to a conversation is not to begin another.
    connect(&m_state.panel(), &PanelConversation::dropped, &m_waiting, &WaitingPrompt::cancel);
    connect(&m_state.panel().workStatus(), &WorkStatus::changed, this,
            &PanelViewModel::workLabelChanged);
}

void PanelViewModel::connectParts() {
    connect(&m_attachments, &AttachmentList::countChanged, this, &PanelViewModel::canSendChanged);
    connect(&m_attachments, &AttachmentList::stateChanged, this, &PanelViewModel::canSendChanged);
    connect(&m_clipAnnouncer, &ClipAnnouncer::announced, this, &PanelViewModel::announced);
    connect(&m_attachments, &AttachmentList::countChanged, this, &PanelViewModel::followFailed);
    connect(&m_attachments, &AttachmentList::stateChanged, this, &PanelViewModel::followFailed);
    connect(&m_waiting, &WaitingPrompt::loaded, this, &PanelViewModel::send);
    connect(&m_waiting, &WaitingPrompt::announced, this, &PanelViewModel::announced);
    connect(&m_intake, &AttachmentIntake::chosen, this, [this] {
        m_tray.setShown(false);
        m_advice.clear();
        emit focusPromptWanted();
    });
    connect(&m_intake, &AttachmentIntake::refused, &m_advice, &PanelAdvice::say);
    connect(&m_intake, &AttachmentIntake::pasteSettled, this, &PanelViewModel::followPaste);
    connect(&m_tray, &AttachTrayState::modeChanged, this, [this] {
        if (m_tray.mode() == AttachTrayState::Mode::Notes) m_attachableNotes.load();
    });
    connect(&m_advice, &PanelAdvice::changed, this, [this] {
        emit noticeChanged();
        if (!notice().isEmpty()) emit announced(notice());
    });
    connect(&m_held, &HeldOffer::announced, this, &PanelViewModel::announced);
    connect(&m_held, &HeldOffer::discarded, this, &PanelViewModel::focusPromptWanted);
    connect(&m_announcer, &PanelAnnouncer::announced, this, &PanelViewModel::announced);
}

QAbstractItemModel* PanelViewModel::messages() const {
    return &m_state.panel().messages();
}

bool PanelViewModel::canSend() const {
    if (!trimmed(m_prompt).isEmpty()) return true;
    return std::ranges::any_of(m_attachments.clips(), [this](const PromptClip& clip) {
        return clip.state != PromptClip::State::Failed && m_studyClip.isNews(clip.attachment);
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
    m_waiting.cancel(); // the user has more to say
    m_state.panelDraft().keep(prompt);
    m_advice.clear();
    emit promptChanged();
    if (could != canSend()) emit canSendChanged();
}

void PanelViewModel::sendHeld() {
    if (!mayTalk()) return bounce();
    m_state.hotKeyContext().sendHeld();
    emit focusPromptWanted();
}

bool PanelViewModel::closeInnermost() {
    if (m_tray.mode() == AttachTrayState::Mode::Notes && !m_attachableNotes.search().isEmpty()) {
        m_attachableNotes.setSearch({});
        return true;
    }
    if (!m_tray.closeInnermost()) {
        if (!m_waiting.isWaiting()) return false;
        m_waiting.cancel();
    }
    emit focusPromptWanted();
    return true;
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
    if (!m_state.account().signedIn()) m_advice.say(signInAdvice());
    emit attentionWanted(m_state.account().signedIn());
}

// Whoever pastes and sends at once sends what was pasted.
void PanelViewModel::followPaste(bool hasAnswered) {
    if (std::exchange(m_sendsOncePasted, false) && hasAnswered) send();
}

void PanelViewModel::send() {
    if (!mayTalk()) return bounce();
    m_sendsOncePasted = m_intake.isPasting();
    if (m_sendsOncePasted) return;
    const OutgoingClips going = outgoingClips(m_attachments.attachments());
    if (!canSend() || !areClipsReady(going)) return;
    const std::optional<QUuid> studied = m_studyClip.note();
    dispatch(going);
    const QString sent = trimmed(m_prompt).toString();
    if (!sent.isEmpty()) m_lastPrompt = sent;
    clearSent(going, studied);
    setPrompt({});
    sayWhatIsLeft();
    m_state.panelDraft().drop();
    m_tray.setShown(false);
    emit composerSent();
}

// A prompt does not go out without what it takes along. An excerpt goes alone, and waits for
// nothing.
bool PanelViewModel::areClipsReady(const OutgoingClips& going) {
    if (going.deepen) return true;
    if (m_attachments.has(PromptClip::State::Failed)) {
        m_advice.say(unsentAdvice());
        return false;
    }
    if (!m_attachments.has(PromptClip::State::Loading)) return true;
    m_waiting.wait();
    return false;
}

void PanelViewModel::followFailed() {
    if (notice() == unsentAdvice() && !m_attachments.has(PromptClip::State::Failed))
        m_advice.clear();
}

// The note under study goes with the next prompt too, so its clip stays.
void PanelViewModel::clearSent(const OutgoingClips& gone,
                               const std::optional<QUuid>& studiedBefore) {
    m_studyClip.setSent(studiedBefore);
    m_attachments.removeIf([this, &gone](const PromptAttachment& held) {
        return gone.hold(held.id) && !m_studyClip.isOne(held);
    });
    emit canSendChanged();
}

void PanelViewModel::sayWhatIsLeft() {
    const auto isLeft = [this](const PromptAttachment& held) { return !m_studyClip.isOne(held); };
    if (std::ranges::any_of(m_attachments.attachments(), isLeft) ||
        m_attachments.has(PromptClip::State::Loading))
        m_advice.say(leftAdvice());
    else if (notice() == leftAdvice())
        m_advice.clear();
}

void PanelViewModel::dispatch(const OutgoingClips& going) {
    // A copy: whoever hears of the new turn may change the draft.
    const QString prompt = m_prompt;
    if (going.deepen)
        m_state.panel().deepenSelection(going.deepen->textContent.value_or(QString()), prompt);
    else
        m_state.panel().submit(prompt, going.attachments);
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
    attachment.fileName = u"deepen"_s;
    attachment.textContent = excerpt;
    attachment.isDeepenSelection = true;
    m_attachments.append(attachment);
    emit focusPromptWanted();
}

} // namespace vorq
