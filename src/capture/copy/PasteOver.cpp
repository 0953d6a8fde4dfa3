#include "capture/copy/PasteOver.h"

#include "capture/copy/CopyChords.h"
#include "capture/selection/AccessibleSelection.h"
#include "capture/selection/CaptureLog.h"
#include "support/async/BlockFor.h"
#include "support/text/Text.h"

#include <QPointer>
#include <QScopeGuard>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr int pasteModifierRounds = 60;
constexpr int pasteFrontRounds = 25;
constexpr auto settlingAfterActivation = 100ms;
constexpr auto settlingOfSelection = 40ms;
constexpr auto settlingOfClipboard = 40ms;
constexpr auto timeToPaste = 220ms;
// One that is busy asks for the text only later, and must not get what was there before.
constexpr auto lateTaking = 2s;
constexpr auto takingRound = 20ms;
constexpr auto settlingOfPaste = 80ms;
constexpr auto lateShowing = 2s;
constexpr auto selectingRound = 20ms;
constexpr int selectingRounds = 15;
// An application that takes longer to tell is one that tells nothing.
constexpr auto lookLimit = 2s;

AccessibleElementPtr elementOf(const CaptureSource& from, const QString& original) {
    if (auto focused = from.accessibility.focusedElement(from.process, from.stop)) return focused;
    if (!from.process || original.isEmpty()) return nullptr;
    return findTextElement(from.accessibility.application(*from.process, from.stop), original);
}

std::optional<QStringView> partOf(const std::optional<QString>& text, TextRange range) {
    if (!text || range.location < 0 || range.length < 0) return std::nullopt;
    if (range.location > text->size() || range.length > text->size() - range.location)
        return std::nullopt;
    return QStringView(*text).sliced(range.location, range.length);
}

PasteOver::Target::Whole wholeOf(const PasteOver::Target& target) {
    return target.within.value_or(PasteOver::Target::Whole());
}

TextRange rangeOf(const PasteOver::Target& target) {
    return target.range.value_or(TextRange());
}

// What a part stands in, once another text stands in its place. The part must lie in it.
PasteOver::Target::Whole wholeWith(const QString& replacement, const PasteOver::Target& target) {
    PasteOver::Target::Whole whole = wholeOf(target);
    const TextRange range = rangeOf(target);
    whole.text.replace(range.location - whole.range.location, range.length, replacement);
    whole.range.length = whole.text.size();
    return whole;
}

// Whether it is said where the part is, and that is in the whole.
bool isPlacedWithin(const PasteOver::Target& target) {
    const PasteOver::Target::Whole whole = wholeOf(target);
    TextRange place = rangeOf(target);
    place.location -= whole.range.location;
    return target.range && partOf(whole.text, place) == target.original;
}

// The range tells also where the original occurs elsewhere. One may be the beginning of the other.
bool isReplacedIn(const QString& replacement, const PasteOver::Target& target,
                  const AccessibleElement& element) {
    if (target.within) {
        const PasteOver::Target::Whole whole = wholeWith(replacement, target);
        const auto text = element.value();
        return partOf(text, whole.range) == whole.text;
    }
    if (selectionReplaced(target.original, replacement, element)) return true;
    const auto value = element.value();
    if (!value || !target.range || target.range->location < 0) return false;
    if (target.range->location > value->size() || replacement == target.original) return false;
    const QStringView there = QStringView(*value).sliced(target.range->location);
    const bool isOriginal =
        there.startsWith(target.original) && !replacement.startsWith(target.original);
    return there.startsWith(replacement) && !isOriginal;
}

QCoro::Task<bool> awaitTaking(Clock& clock, const Pasteboard& pasteboard, ProcessId process) {
    co_await sleepFor(clock, timeToPaste, {});
    const Clock::Duration end = clock.now() + lateTaking;
    while (!pasteboard.wasTakenBy(process) && clock.now() < end)
        co_await sleepFor(clock, takingRound, {});
    co_return pasteboard.wasTakenBy(process);
}

bool takesText(const AccessibleElement& element) {
    return !element.isPasswordField().value_or(false);
}

bool tellsNothing(const AccessibleElement& element) {
    return !element.value() && !element.selectedText() && !element.selectedTextRange();
}

bool standsIn(const AccessibleElement& element, const QString& original,
              const std::optional<TextRange>& range) {
    const auto value = element.value();
    if (!value || !range || range->location < 0 || range->location > value->size()) return false;
    return value->mid(range->location, range->length) == original;
}

// Another selection than these two is one that the user has made since.
bool selectPart(const PasteOver::Target& target, AccessibleElement& element) {
    const PasteOver::Target::Whole whole = wholeOf(target);
    const auto text = element.value();
    if (partOf(text, whole.range) != whole.text) return false;
    const QString selected = element.selectedText().value_or(QString());
    const bool isOther =
        !selected.isEmpty() && selected != whole.text && selected != target.original;
    if (isOther && !target.reselects) return false;
    (void)element.setSelectedTextRange(rangeOf(target));
    // Browsers select late.
    for (int round = 0; round < selectingRounds; ++round) {
        if (element.selectedText() == target.original) return true;
        blockFor(selectingRound, {});
    }
    return false;
}

// Has the original selected, if it is there.
bool selectOriginal(const PasteOver::Target& target, AccessibleElement& element) {
    if (!takesText(element)) return false;
    if (target.within) return selectPart(target, element);
    const bool isOther = hasAnySelection(element) && !selectionMatches(target.original, element);
    if (target.reselects && isOther && standsIn(element, target.original, target.range))
        return element.setSelectedTextRange(target.range.value_or(TextRange{})) &&
               selectionMatches(target.original, element);
    if (!holdsOriginal(target.original, target.range, element)) return false;
    if (hasAnySelection(element)) return true;
    if (restoreSelection(target.original, target.range, element) && hasAnySelection(element))
        return true;
    return target.range && target.range->length >= 1 &&
           element.setSelectedTextRange(*target.range) && hasAnySelection(element);
}

} // namespace

bool PasteOver::isInFront(const Target& target) const {
    const Workspace& workspace = m_services.workspace;
    if (!target.source || workspace.frontmostProcess() != target.source) return false;
    return !target.window || workspace.activeWindow() == target.window;
}

QCoro::Task<PasteOver::Outcome> PasteOver::replaceSelectedText(QString replacement, Target target,
                                                               std::stop_token stop) {
    const QPointer<PasteOver> self(this);
    const Services services = m_services;
    Outcome outcome = Outcome::NotReplaced;
    if (replacement.isEmpty() || !services.accessibility.isTrusted()) co_return outcome;
    if (target.within && !isPlacedWithin(target)) co_return outcome;
    SourceFocus focus({services.clock, services.keys, services.workspace});
    const auto atEnd =
        qScopeGuard([&focus, &target] { focus.giveBack(target.source.value_or(0)); });
    co_await focus.waitForModifierKeysReleased(pasteModifierRounds, stop);
    co_await focus.activateSourceApp(target.source, stop);
    co_await sleepFor(services.clock, settlingAfterActivation, stop);
    if (!self || stop.stop_requested()) co_return outcome;
    outcome = co_await write(replacement, target, stop);
    if (!self) co_return outcome;
    if (outcome == Outcome::Replaced) remember(replacement, target);
    if (!target.within) co_return outcome;
    // Who does not answer is not asked again.
    if (outcome == Outcome::Unanswered || outcome == Outcome::Pending) co_return outcome;
    const bool isReplaced = outcome == Outcome::Replaced;
    services.log.pillDbg(isReplaced ? u"word: replaced"_s : u"word: not replaced"_s);
    Target left = target;
    if (isReplaced) left.original = replacement;
    if (isReplaced) left.within = wholeWith(replacement, target);
    co_await selectAgain(left, isReplaced);
    co_return outcome;
}

// What the user has selected since stays selected.
QCoro::Task<> PasteOver::selectAgain(Target target, bool isReplaced) {
    Look selecting = [target, isReplaced](AccessibleElement& element) {
        const Target::Whole whole = wholeOf(target);
        const QString selected = element.selectedText().value_or(QString());
        const bool isOurs = selected == target.original || (isReplaced && selected.isEmpty());
        const auto text = element.value();
        if (!isOurs || !takesText(element) || partOf(text, whole.range) != whole.text)
            return Sight::Other;
        return element.setSelectedTextRange(whole.range) ? Sight::Original : Sight::Other;
    };
    co_await look(target, std::move(selecting), {});
}

QCoro::Task<PasteOver::Sight> PasteOver::look(Target target, Look look, std::stop_token stop) {
    const auto sight = std::make_shared<Sight>(Sight::Unknown);
    Accessibility& accessibility = m_services.accessibility;
    CaptureThread::Job job = [&accessibility, target, look = std::move(look),
                              sight](std::stop_token running) {
        const CaptureSource from{
            .accessibility = accessibility, .process = target.source, .stop = std::move(running)};
        if (const auto element = elementOf(from, target.original)) *sight = look(*element);
        const bool isSilent = *sight == Sight::Unknown && from.process &&
                              accessibility.isSilent(*from.process, from.stop);
        if (isSilent) *sight = Sight::Silent;
    };
    const bool isInTime = co_await m_thread.run(std::move(job), lookLimit, std::move(stop));
    // Until it has come to its end, it still belongs to the other thread.
    co_return isInTime ? *sight : Sight::Late;
}

bool PasteOver::canPaste(const Target& target) const {
    return chordOf(target) && m_services.keys.supported() && m_services.pasteboard.supported();
}

std::optional<KeyChord> PasteOver::chordOf(const Target& target) const {
    const auto application =
        target.source ? m_services.workspace.application(*target.source) : std::nullopt;
    return application ? pasteChordOf(application->identifier) : std::nullopt;
}

// With what is given to be written, else it is only selected.
PasteOver::Look PasteOver::selecting(Target target, std::optional<QString> written) {
    return [target = std::move(target), written = std::move(written)](AccessibleElement& element) {
        if (takesText(element) && tellsNothing(element)) return Sight::Unknown;
        if (!selectOriginal(target, element)) return Sight::Other;
        if (!written) return Sight::Original;
        if (element.setSelectedText(*written) && isReplacedIn(*written, target, element))
            return Sight::Replaced;
        return selectOriginal(target, element) ? Sight::Original : Sight::Other;
    };
}

// What the user takes back in one step is better than what spares the clipboard.
QCoro::Task<PasteOver::Outcome> PasteOver::write(QString replacement, Target target,
                                                 std::stop_token stop) {
    const QPointer<PasteOver> self(this);
    Outcome outcome = Outcome::NotReplaced;
    const bool writesFirst = m_services.accessibility.writesInOneStep() || !canPaste(target);
    Look first = selecting(target, writesFirst ? std::optional(replacement) : std::nullopt);
    Sight sight = Sight::Other;
    if (isInFront(target) || !target.window) sight = co_await look(target, std::move(first), stop);
    if (!self || stop.stop_requested()) co_return outcome;
    if (sight == Sight::Replaced) co_return Outcome::Replaced;
    // A key pressed now would be dealt with whenever it wakes.
    if (sight == Sight::Silent || sight == Sight::Late) {
        const bool mayWrite = sight == Sight::Late && writesFirst;
        co_return co_await refuse(replacement, target,
                                  mayWrite ? Outcome::Pending : Outcome::Unanswered);
    }
    if (target.within && sight == Sight::Unknown) co_return outcome;
    if (sight == Sight::Unknown) {
        const bool isThere = co_await isOriginalCopied(target, stop);
        if (!self || stop.stop_requested()) co_return outcome;
        if (!isThere) sight = Sight::Other;
    }
    outcome = sight == Sight::Other
                  ? co_await refuse(replacement, target, Outcome::OnClipboard)
                  : co_await paste(replacement, target, sight != Sight::Unknown, stop);
    co_return outcome;
}

QCoro::Task<bool> PasteOver::isOriginalCopied(Target target, std::stop_token stop) {
    const QString copied = co_await m_services.copyShortcut.captureFromCopyShortcutFast(
        target.source, std::move(stop));
    co_return !copied.isEmpty() && copied == trimmed(target.original);
}

// A paste that leaves the original where it was is tried once more.
QCoro::Task<PasteOver::Outcome> PasteOver::paste(QString replacement, Target target, bool isKnown,
                                                 std::stop_token stop) {
    const QPointer<PasteOver> self(this);
    Look judging = [replacement, target](AccessibleElement& element) {
        if (isReplacedIn(replacement, target, element)) return Sight::Replaced;
        if (selectionMatches(target.original, element)) return Sight::Original;
        return selectOriginal(target, element) ? Sight::Unselected : Sight::Other;
    };
    Outcome outcome = Outcome::NotReplaced;
    co_await sleepFor(m_services.clock, settlingOfSelection, stop);
    for (int tries = 0; tries < 2; ++tries) {
        if (!self || stop.stop_requested()) co_return outcome;
        const auto pasted = co_await pasteOverSelection(replacement, target, stop);
        if (!self || stop.stop_requested()) co_return outcome;
        if (!pasted && pasted.error() == Obstacle::Clipboard)
            co_return co_await writeAlone(replacement, target, stop);
        if (!pasted) {
            const bool isLate = pasted.error() == Obstacle::Delay;
            co_return co_await refuse(replacement, target,
                                      isLate ? Outcome::Pending : Outcome::OnClipboard);
        }
        // It is given the benefit of the doubt.
        if (!isKnown) co_return Outcome::Replaced;
        Sight sight = co_await awaitPaste(replacement, target, stop);
        if (!self || stop.stop_requested()) co_return outcome;
        if (sight == Sight::Original) sight = co_await look(target, judging, stop);
        if (sight == Sight::Replaced) co_return Outcome::Replaced;
        if (sight != Sight::Unselected) co_return outcome;
    }
    co_return outcome;
}

// It has the text, and may show it late: a second paste would then be one too many.
QCoro::Task<PasteOver::Sight> PasteOver::awaitPaste(QString replacement, Target target,
                                                    std::stop_token stop) {
    const QPointer<PasteOver> self(this);
    Clock& clock = m_services.clock;
    const Look looking = [replacement, target](AccessibleElement& element) {
        if (isReplacedIn(replacement, target, element)) return Sight::Replaced;
        return holdsOriginal(target.original, target.range, element) ? Sight::Original
                                                                     : Sight::Other;
    };
    const Clock::Duration end = clock.now() + lateShowing;
    Sight sight = Sight::Original;
    const auto isOpen = [&sight] {
        return sight != Sight::Replaced && sight != Sight::Other && sight != Sight::Unselected;
    };
    while (self && clock.now() < end && isOpen()) {
        co_await sleepFor(clock, settlingOfPaste, stop);
        if (!self || stop.stop_requested()) break;
        sight = co_await look(target, looking, stop);
    }
    co_return sight;
}

// Two steps to undo are better than none done.
QCoro::Task<PasteOver::Outcome> PasteOver::writeAlone(QString replacement, Target target,
                                                      std::stop_token stop) {
    Sight sight = Sight::Other;
    if (isInFront(target)) {
        Look writing = selecting(target, replacement);
        sight = co_await look(target, std::move(writing), std::move(stop));
    }
    co_return sight == Sight::Replaced ? Outcome::Replaced : Outcome::NotReplaced;
}

QCoro::Task<std::expected<void, PasteOver::Obstacle>>
PasteOver::pasteOverSelection(QString text, Target target, std::stop_token stop) {
    const QPointer<PasteOver> self(this);
    const Services services = m_services;
    std::expected<void, Obstacle> result = std::unexpected(Obstacle::Target);
    const QString aborted = u"paste: aborted — source not frontmost or Vorq still key"_s;
    if (!target.source) services.log.pillDbg(aborted);
    const auto chord = chordOf(target);
    if (!chord || !canPaste(target)) co_return result;
    const ProcessId process = target.source.value_or(0);
    const TurnQueue::Turn turn = services.turns.takeTurn();
    const Wakeup begins = turn.begins();
    const std::stop_callback onStop(stop, [begins] { begins.fire(); });
    co_await begins;
    if (!self || stop.stop_requested()) co_return result;
    SourceFocus focus({services.clock, services.keys, services.workspace});
    const bool isFront = co_await focus.bringToFront(process, pasteFrontRounds, stop);
    if (!isFront) services.log.pillDbg(aborted);
    if (self && isFront && !stop.stop_requested())
        result = co_await postPaste(text, target, *chord, stop);
    focus.giveBack(process);
    co_return result;
}

// Once something of ours is on the clipboard, that is to be given back, whoever is gone.
QCoro::Task<std::expected<void, PasteOver::Obstacle>>
PasteOver::postPaste(QString text, Target target, KeyChord chord, std::stop_token stop) {
    const QPointer<PasteOver> self(this);
    const Services services = m_services;
    std::expected<void, Obstacle> result = std::unexpected(Obstacle::Clipboard);
    const ProcessId process = target.source.value_or(0);
    ClipboardLoan loan({services.clock, services.pasteboard, services.keys, services.workspace},
                       process);
    const bool isBegun = co_await loan.begin(stop);
    if (!self || !isBegun || stop.stop_requested()) co_return result;
    const bool isPut = co_await loan.put(pasteboardText(text));
    if (!isPut) co_return result;
    co_await sleepFor(services.clock, settlingOfClipboard, {});
    const bool isPosted = self && isInFront(target) && services.keys.post(chord, process);
    bool isTaken = false;
    if (isPosted) isTaken = co_await awaitTaking(services.clock, services.pasteboard, process);
    if (isPosted && !isTaken && self) isTaken = co_await isReplaced(text, target);
    // Who was not seen to ask may do so yet.
    if (isTaken || !isPosted) co_await loan.giveBack();
    if (isTaken) co_return {};
    co_return std::unexpected(isPosted ? Obstacle::Delay : Obstacle::Target);
}

QCoro::Task<bool> PasteOver::isReplaced(QString text, Target target) {
    Look looking = [text, target](AccessibleElement& element) {
        return isReplacedIn(text, target, element) ? Sight::Replaced : Sight::Other;
    };
    const Sight sight = co_await look(target, std::move(looking), {});
    co_return sight == Sight::Replaced;
}

// A single word is sooner chosen again than pasted by hand.
QCoro::Task<PasteOver::Outcome> PasteOver::refuse(QString text, Target target, Outcome outcome) {
    if (target.within && outcome == Outcome::OnClipboard) outcome = Outcome::NotReplaced;
    if (!target.within) outcome = co_await leaveOnClipboard(std::move(text), outcome);
    co_return outcome;
}

QCoro::Task<PasteOver::Outcome> PasteOver::leaveOnClipboard(QString text, Outcome outcome) {
    Pasteboard& pasteboard = m_services.pasteboard;
    const auto written =
        co_await pasteboard.write(pasteboardText(text), pasteboard.lastChange().count);
    co_return written ? outcome : Outcome::NotReplaced;
}

void PasteOver::remember(const QString& replacement, const Target& target) {
    Target written = target;
    written.original = replacement;
    if (written.range) written.range->length = replacement.size();
    if (target.within) written.within = wholeWith(replacement, target);
    m_undo = Undo{.original = target.original, .target = std::move(written)};
}

QCoro::Task<PasteOver::Outcome> PasteOver::undo(std::stop_token stop) {
    const QPointer<PasteOver> self(this);
    const auto undone = std::exchange(m_undo, std::nullopt);
    if (!undone) co_return Outcome::NotReplaced;
    const Outcome outcome =
        co_await replaceSelectedText(undone->original, undone->target, std::move(stop));
    if (self) m_undo.reset();
    co_return outcome;
}

} // namespace vorq
