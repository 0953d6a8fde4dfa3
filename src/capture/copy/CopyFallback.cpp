#include "capture/copy/CopyFallback.h"

#include "capture/copy/CopyChords.h"
#include "capture/source/CaptureLogging.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <QPointer>

#include <memory>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr int modifierRounds = 50;
constexpr int moreModifierRounds = 25;
constexpr int frontRounds = 20;
constexpr auto settlingInFront = 24ms;
// The panel may come to the front once while the chord is on its way.
constexpr int postTries = 2;
constexpr int answerRounds = 12;
constexpr auto answerRound = 12ms;
// Some write more than once for one copy.
constexpr auto settlingOfAnswer = 40ms;

} // namespace

std::optional<CopyFallback::Target> CopyFallback::targetOf(std::optional<ProcessId> source,
                                                           const SourceFocus& focus) const {
    if (!m_services.keys.supported() || !m_services.pasteboard.supported()) return std::nullopt;
    if (!source || focus.isVorq(*source)) source = m_services.workspace.frontmostProcess();
    if (!source || focus.isVorq(*source)) return std::nullopt;
    const auto application = m_services.workspace.application(*source);
    const auto chord =
        application ? copyChordOf(application->identifier) : std::optional<KeyChord>();
    return chord ? std::optional(Target{.process = *source, .chord = *chord}) : std::nullopt;
}

bool CopyFallback::canCopyFrom(std::optional<ProcessId> source) const {
    const SourceFocus focus({m_services.clock, m_services.keys, m_services.workspace});
    return targetOf(source, focus).has_value();
}

QCoro::Task<QString> CopyFallback::captureFromCopyShortcutFast(std::optional<ProcessId> source,
                                                               std::stop_token stop) {
    const QPointer<CopyFallback> self(this);
    QString text;
    const TurnQueue::Turn turn = m_turns.takeTurn();
    const Wakeup begins = turn.begins();
    const std::stop_callback onStop(stop, [begins] { begins.fire(); });
    co_await begins;
    if (!self || stop.stop_requested()) co_return text;
    const SourceFocus focus({m_services.clock, m_services.keys, m_services.workspace});
    const auto target = targetOf(source, focus);
    if (!target) co_return text;
    // Else its answer would be taken for what the user has in the clipboard.
    if (const auto last = m_last.lock()) co_await last->giveBackLate();
    if (!self) co_return text;
    m_guard.cancel();
    text = co_await copyFrom(*target, stop);
    const QString result = stop.stop_requested() ? QString() : trimmed(text).toString();
    co_return result;
}

QCoro::Task<> CopyFallback::waitOutModifiers(SourceFocus& focus, KeyPoster& keys,
                                             std::stop_token stop) {
    co_await focus.waitForModifierKeysReleased(modifierRounds, stop);
    if (!focus.hasLeftoverModifiers() || stop.stop_requested()) co_return;
    qCInfo(captureLog, "Vorq copy fallback waiting out leftover modifiers flags=%u",
           keys.heldModifiers());
    co_await focus.waitForModifierKeysReleased(moreModifierRounds, stop);
    if (!focus.hasLeftoverModifiers() || stop.stop_requested()) co_return;
    qCInfo(captureLog,
           "Vorq copy fallback leftover modifiers flags=%u — posting private-state ⌘C anyway",
           keys.heldModifiers());
}

// Once the chord is sent, a stop no longer ends this early: the clipboard is to be given back. This
// object may be gone by then.
QCoro::Task<QString> CopyFallback::copyFrom(Target target, std::stop_token stop) {
    const QPointer<CopyFallback> self(this);
    const Services services = m_services;
    SourceFocus focus({services.clock, services.keys, services.workspace});
    const auto loan = std::make_shared<ClipboardLoan>(services, target.process);
    QString text;
    co_await waitOutModifiers(focus, services.keys, stop);
    const bool isPosted = co_await post(target, focus, *loan, stop);
    if (isPosted) loan->followUse();
    if (isPosted) co_await awaitAnswer(services.clock, *loan);
    // At once: what the user types meanwhile would overwrite the selection.
    focus.giveBack(target.process);
    if (!isPosted) co_return text;
    text = co_await answer(services.clock, *loan);
    co_await loan->giveBack();
    qCInfo(captureLog, "Vorq copy fallback chars=%lld pasteboardChanged=%s",
           static_cast<long long>(graphemeCount(text)), loan->wasWritten() ? "true" : "false");
    if (!self) co_return text;
    self->m_last = loan;
    self->m_guard.restart(
        [loan](std::stop_token guarded) { return ClipboardLoan::guard(loan, std::move(guarded)); });
    co_return text;
}

QCoro::Task<bool> CopyFallback::post(Target target, SourceFocus& focus, ClipboardLoan& loan,
                                     std::stop_token stop) {
    const QPointer<CopyFallback> self(this);
    const Services services = m_services;
    co_await focus.activateSourceApp(target.process, stop);
    for (int tries = 0; tries < postTries; ++tries) {
        const bool isInFront = co_await focus.bringToFront(target.process, frontRounds, stop);
        if (!self || !isInFront || stop.stop_requested()) co_return false;
        co_await sleepFor(services.clock, settlingInFront, stop);
        const bool isBegun = co_await loan.begin(stop);
        if (!self || !isBegun || stop.stop_requested()) co_return false;
        if (services.keys.post(target.chord, target.process)) co_return true;
    }
    co_return false;
}

QCoro::Task<> CopyFallback::awaitAnswer(Clock& clock, const ClipboardLoan& loan) {
    for (int round = 0; round < answerRounds && !loan.isWritten(); ++round)
        co_await sleepFor(clock, answerRound, {});
}

// What somebody else has written meanwhile is no answer.
QCoro::Task<QString> CopyFallback::answer(Clock& clock, const ClipboardLoan& loan) {
    co_await sleepFor(clock, settlingOfAnswer, {});
    QString text;
    if (loan.isWrittenByProcess()) text = co_await loan.text();
    co_return text;
}

} // namespace vorq
