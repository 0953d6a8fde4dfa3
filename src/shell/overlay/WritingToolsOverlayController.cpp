#include "shell/overlay/WritingToolsOverlayController.h"

#include "platform/Screens.h"
#include "platform/Workspace.h"
#include "shell/overlay/WritingCard.h"
#include "support/text/Text.h"

#include <algorithm>
#include <utility>

namespace vorq {

using Kind = WritingToolsInteraction::Kind;

WritingToolsOverlayController::WritingToolsOverlayController(const Platform& platform,
                                                             const Parts& parts)
    : m_platform(platform), m_parts(parts), m_liveTracker(platform.clock, parts.looker) {
    m_parts.window.setInput(this);
    connectParts();
}

WritingToolsOverlayController::~WritingToolsOverlayController() {
    // Not later: what it works with may be gone by then.
    m_parts.card.setSession(nullptr);
    m_leaving.clear();
    m_model.reset();
    close();
    forgetTimer(m_keyboardTimer);
    m_parts.window.setInput(nullptr);
}

void WritingToolsOverlayController::connectParts() {
    connect(&m_platform.presses, &PressMonitor::pressed, this,
            &WritingToolsOverlayController::handlePress);
    connect(&m_platform.presses, &PressMonitor::scrolled, &m_liveTracker,
            &WritingToolsLiveTracker::expectMovement);
    // What is typed into the card moves nothing.
    connect(&m_platform.presses, &PressMonitor::keyPressed, this, [this] {
        if (!hasKeyboard()) m_liveTracker.expectMovement();
    });
    connect(&m_platform.workspace, &Workspace::frontmostChanged, this,
            &WritingToolsOverlayController::handleFrontmost);
    connect(&m_platform.screens, &Screens::changed, this, &WritingToolsOverlayController::place);
    connect(&m_parts.card, &WritingCard::dismissed, this, &WritingToolsOverlayController::close);
    connect(&m_parts.card, &WritingCard::keyboardWanted, this,
            &WritingToolsOverlayController::takeKeyboard);
    connect(&m_liveTracker, &WritingToolsLiveTracker::placement, this,
            &WritingToolsOverlayController::move);
    connect(&m_liveTracker, &WritingToolsLiveTracker::interaction, this, [this](const Kind& kind) {
        if (m_model) m_model->record(kind);
    });
    connect(&m_liveTracker, &WritingToolsLiveTracker::selectionGone, this,
            &WritingToolsOverlayController::handleSelectionGone);
    connect(&m_liveTracker, &WritingToolsLiveTracker::sawNothing, this,
            &WritingToolsOverlayController::closeIfSourceEnded);
}

// Once it has replaced something the key is for what is highlighted next, if anything is.
void WritingToolsOverlayController::handleKey(std::optional<ProcessId> source) {
    if (m_model && !m_hasReplaced) return takeKeyboard();
    if (m_suppressOutsideClose) return;
    m_openTask.restart([self = QPointer(this), source](std::stop_token stop) {
        return open(self, source, std::move(stop));
    });
}

QCoro::Task<> WritingToolsOverlayController::open(QPointer<WritingToolsOverlayController> self,
                                                  std::optional<ProcessId> source,
                                                  std::stop_token stop) {
    if (!self || stop.stop_requested()) co_return;
    const std::optional<ProcessId> front = self->m_platform.workspace.frontmostProcess();
    const SelectionSnapshot snapshot = co_await self->m_parts.capture(source, stop);
    if (!self || stop.stop_requested() || self->m_suppressOutsideClose) co_return;
    // The writer has gone on meanwhile.
    const std::optional<ProcessId> now = self->m_platform.workspace.frontmostProcess();
    if (now && now != front && now != self->m_platform.process) co_return;
    self->openOver(snapshot);
}

void WritingToolsOverlayController::openOver(const SelectionSnapshot& snapshot) {
    const CalloutTarget target{.strip = snapshot.screenFrame, .centre = snapshot.clickPoint};
    if (trimmed(snapshot.text).isEmpty()) {
        if (m_model) return takeKeyboard();
        return presentNotice(m_parts.isTrusted()
                                 ? tr("Highlight the text that is to be rewritten, then try again.")
                                 : tr("Vorq cannot see what you highlight yet. Choose "
                                      "“Accessibility” in its menu in the tray."),
                             target);
    }
    if (snapshot.isHeldBack)
        return presentNotice(
            tr("What is highlighted reads like a password or a key, so it stays where it is."),
            target);
    const auto source = snapshot.sourcePID;
    present({.originalText = snapshot.exactText,
             .sourcePID = source,
             .window = source ? m_platform.workspace.windowOf(*source) : std::nullopt,
             .selectedRange = snapshot.selectedRange,
             .clickPoint = snapshot.clickPoint,
             .selectionScreenFrame = snapshot.screenFrame,
             .selectionReliable = snapshot.hasReliablePlacement});
}

void WritingToolsOverlayController::present(const WritingSelection& selection) {
    close();
    m_model = std::make_unique<WritingToolsModel>(m_parts.session, selection);
    m_model->record(Kind::opened());
    connectSession();
    m_target = {.strip = selection.selectionScreenFrame, .centre = selection.clickPoint};
    m_sourceWindow = selection.window;
    m_parts.card.setSession(m_model.get());
    startTracking();
    come();
}

void WritingToolsOverlayController::presentNotice(const QString& sentence,
                                                  const CalloutTarget& at) {
    close();
    m_target = at;
    m_sourceWindow = m_platform.workspace.activeWindow();
    m_parts.card.setNotice(sentence);
    come();
}

void WritingToolsOverlayController::connectSession() {
    const WritingToolsModel* model = m_model.get();
    connect(model, &WritingToolsModel::replaceStarted, this,
            &WritingToolsOverlayController::beginReplacing);
    connect(model, &WritingToolsModel::replaceFinished, this,
            &WritingToolsOverlayController::endReplacing);
    connect(model, &WritingToolsModel::replaced, this, [this] {
        m_hasReplaced = true;
        leaveSoon();
    });
    connect(model, &WritingToolsModel::sendToVorq, this, [this](const QString& text) {
        const auto source = m_model->selection().sourcePID;
        close();
        emit sendToVorq(text, source);
    });
}

void WritingToolsOverlayController::startTracking() {
    const WritingSelection& selection = m_model->selection();
    WritingToolsLiveTracker::Start start{
        .sourcePID = selection.sourcePID,
        .seedPoint = selection.clickPoint.value_or(selection.selectionScreenFrame.center()),
        .placement = {},
        .selectionText = selection.originalText};
    if (selection.selectionReliable)
        start.placement = TrackedPlacement{.screenFrame = selection.selectionScreenFrame,
                                           .clickPoint = start.seedPoint};
    m_liveTracker.start(start);
}

void WritingToolsOverlayController::come() {
    m_pointedUp.reset();
    m_presentedAt = m_platform.clock.now();
    place();
    m_parts.window.refuseKeyboard();
    m_parts.window.show();
    m_platform.presses.start();
    m_platform.presses.startKeys();
    emit openChanged();
}

void WritingToolsOverlayController::place() {
    if (!isOpen()) return;
    const auto screen = m_platform.screens.nearestScreen(m_target.bounds().center());
    if (!screen) return;
    const CalloutPlace at =
        placeCallout(m_target, m_parts.window.wantedSize(), screen->visibleFrame, m_pointedUp);
    m_pointedUp = at.pointsUp;
    m_tipPoint = at.tipPoint();
    if (m_model) m_model->setArrowPointsUp(at.pointsUp);
    m_parts.card.setPlace(at.pointsUp, at.tipX);
    m_parts.window.place(at.frame, at.pointsUp, at.tipX);
}

// After a replacement what is selected is no longer what the card is about.
void WritingToolsOverlayController::move(const TrackedPlacement& placement) {
    if (m_hasReplaced) return;
    m_target = {.strip = placement.screenFrame, .centre = placement.clickPoint};
    place();
}

void WritingToolsOverlayController::close() {
    m_openTask.cancel();
    if (!isOpen()) return;
    const bool hadKeyboard = hasKeyboard();
    m_presentedAt.reset();
    m_liveTracker.stop();
    m_platform.presses.stop();
    m_platform.presses.stopKeys();
    forgetTimer(m_leaveTimer);
    forgetTimer(m_closeTimer);
    m_suppressOutsideClose = false;
    m_hasReplaced = false;
    m_parts.window.hide();
    if (hadKeyboard) giveBackKeyboard();
    m_parts.card.setSession(nullptr);
    if (m_model) m_model->disconnect(this);
    // Whoever closes it may be called by it.
    if (m_model && m_model->isReplacing())
        leaveReplacing();
    else if (m_model)
        m_model.release()->deleteLater();
    emit openChanged();
}

// Nothing cancels a replacement, and one that fails is not to do so in silence.
void WritingToolsOverlayController::leaveReplacing() {
    WritingToolsModel* model = m_model.get();
    m_leaving.push_back(std::move(m_model));
    connect(model, &WritingToolsModel::replaceFinished, this,
            [this, model, target = m_target] { finishLeaving(model, target); });
}

void WritingToolsOverlayController::finishLeaving(WritingToolsModel* model,
                                                  const CalloutTarget& target) {
    const auto one = std::ranges::find(m_leaving, model, &std::unique_ptr<WritingToolsModel>::get);
    if (one == m_leaving.end()) return;
    one->release()->deleteLater();
    m_leaving.erase(one);
    const QString failure = WritingCard::failureOf(*model);
    if (!failure.isEmpty() && !isOpen()) presentNotice(failure, target);
}

bool WritingToolsOverlayController::hasKeyboard() const {
    return m_platform.workspace.activeWindow() == m_parts.window.id();
}

void WritingToolsOverlayController::takeKeyboard() {
    if (!m_model || m_suppressOutsideClose) return;
    m_parts.window.takeKeyboard();
    emit m_parts.card.focusPromptWanted();
}

void WritingToolsOverlayController::giveBackKeyboard() {
    if (m_sourceWindow) m_platform.workspace.activate(*m_sourceWindow);
}

// What only closes a menu of ours is no click elsewhere.
void WritingToolsOverlayController::handlePress(const ScreenPress& press) {
    if (!isOpen() || m_suppressOutsideClose || press.window == m_parts.window.id()) return;
    if (press.parent == m_parts.window.id() || press.surface == PressedSurface::OwnMenu) return;
    if (m_platform.clock.now() - *m_presentedAt < openingClick) return;
    // Not while the press is dealt with, which may be ours.
    forgetTimer(m_closeTimer);
    m_closeTimer = m_platform.clock.after(Clock::Duration::zero(), [this] {
        m_closeTimer.reset();
        if (!m_suppressOutsideClose) closeByPress();
    });
}

// Who was pressed on is about to take the keyboard, and must not lose it again to the application.
void WritingToolsOverlayController::closeByPress() {
    const auto source = m_sourceWindow;
    const bool hadKeyboard = isOpen() && hasKeyboard();
    if (hadKeyboard) m_sourceWindow.reset();
    close();
    if (!hadKeyboard || !source) return;
    forgetTimer(m_keyboardTimer);
    m_keyboardTimer = m_platform.clock.after(keyboardWait, [this, source = *source] {
        m_keyboardTimer.reset();
        const auto active = m_platform.workspace.activeWindow();
        if (!active || active == m_parts.window.id()) m_platform.workspace.activate(source);
    });
}

void WritingToolsOverlayController::handleFrontmost(ProcessId process, WindowId window) {
    if (!isOpen() || m_suppressOutsideClose) return;
    const auto source = m_model ? m_model->selection().sourcePID : std::nullopt;
    const bool isOurs = process == m_platform.process;
    if (isOurs ? window == m_parts.window.id() : process == source) return;
    // A notice is of no application: what is in front stays so.
    if (!m_model && window == m_sourceWindow.value_or(0)) return;
    close();
}

// Some applications show no selection while another window has the keyboard.
void WritingToolsOverlayController::handleSelectionGone() {
    if (!m_hasReplaced && !m_suppressOutsideClose && !hasKeyboard()) close();
}

void WritingToolsOverlayController::closeIfSourceEnded() {
    const auto source = m_model ? m_model->selection().sourcePID : std::nullopt;
    if (source && !m_platform.workspace.application(*source)) close();
}

void WritingToolsOverlayController::beginReplacing() {
    m_suppressOutsideClose = true;
    forgetTimer(m_leaveTimer);
    m_hadKeyboard = hasKeyboard();
    m_parts.window.refuseKeyboard();
    if (m_hadKeyboard) giveBackKeyboard();
}

// What failed can be said anew at once, unless the writer has gone on.
void WritingToolsOverlayController::endReplacing() {
    m_suppressOutsideClose = false;
    const QString failure = WritingCard::failureOf(*m_model);
    if (isOtherInFront()) {
        const CalloutTarget target = m_target;
        close();
        if (!failure.isEmpty()) presentNotice(failure, target);
        return;
    }
    if (!failure.isEmpty() && m_hadKeyboard) takeKeyboard();
    if (m_hasReplaced) leaveSoon();
}

bool WritingToolsOverlayController::isOtherInFront() const {
    const auto front = m_platform.workspace.frontmostProcess();
    const auto source = m_model ? m_model->selection().sourcePID : std::nullopt;
    return front && front != source && front != m_platform.process;
}

void WritingToolsOverlayController::leaveSoon() {
    forgetTimer(m_leaveTimer);
    m_leaveTimer = m_platform.clock.after(stayAfterReplacing, [this] {
        m_leaveTimer.reset();
        if (!m_hasReplaced || !isOpen()) return;
        if (m_parts.card.isHovered() || hasKeyboard() || m_model->isWorking()) return leaveSoon();
        close();
    });
}

void WritingToolsOverlayController::forgetTimer(std::optional<Clock::TimerId>& timer) {
    if (const auto id = std::exchange(timer, std::nullopt)) m_platform.clock.cancel(*id);
}

} // namespace vorq
