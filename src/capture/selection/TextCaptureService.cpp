#include "capture/selection/TextCaptureService.h"

#include "capture/selection/ColumnSelection.h"
#include "capture/source/LinuxApplications.h"
#include "capture/source/SourceApplication.h"
#include "support/text/Text.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <memory>

namespace vorq {
namespace {

// Some programs build what they tell only when they are first asked, and say until then that
// nothing is selected.
constexpr int looksAtFocus = 2;

// Some browsers put a character in the place of each image and each field.
constexpr QChar objectCharacter(u'\uFFFC');

QString textOf(const std::optional<PrimarySelection::Highlight>& highlight) {
    QString text = highlight ? highlight->text : QString();
    return trimmed(text.remove(objectCharacter)).toString();
}

} // namespace

// How long there still is of what a capture may take, the time of the copy shortcut left out.
class TextCaptureService::Budget {
  public:
    explicit Budget(Clock& clock) : m_clock(&clock), m_begin(clock.now()) {}

    [[nodiscard]] Clock::Duration left() const {
        const Clock::Duration spent = m_clock->now() - m_begin;
        return std::max(Clock::Duration(captureLimit) - spent, Clock::Duration::zero());
    }
    [[nodiscard]] Clock::Duration forAccessibility() const {
        return std::min(left(), Clock::Duration(accessibilityLimit));
    }
    // Though it comes late, since the main thread was busy with its window, it has its turn.
    [[nodiscard]] Clock::Duration forHighlight() const {
        return std::max(left(), Clock::Duration(captureLimit - accessibilityLimit));
    }

  private:
    Clock* m_clock;
    Clock::Duration m_begin;
};

struct TextCaptureService::Reading {
    QString text;
    std::optional<AXCapture> capture;
    // Whether accessibility said that nothing is selected, or that a password has the focus.
    bool isNothingSelected = false;
    bool isPassword = false;
    // Where text was read that may be columns of several lines.
    QStringList lines;
    std::optional<PrimarySelection::Highlight> highlight;
};

TextCaptureService::TextCaptureService(const Services& services)
    : m_services(services),
      m_excluded(services.settings),
      m_thread(services.clock),
      m_primaryThread(services.clock) {}

TextCaptureService::~TextCaptureService() = default;

bool TextCaptureService::isTrusted() const {
    return m_services.accessibility.isTrusted();
}

std::optional<ProcessId> TextCaptureService::frontmostForeignProcess() const {
    const auto process = m_services.workspace.frontmostProcess();
    return process == QCoreApplication::applicationPid() ? std::nullopt : process;
}

QString TextCaptureService::applicationName(ProcessId process) const {
    const auto application = m_services.workspace.application(process);
    return application ? application->name : QString();
}

void TextCaptureService::log(const QString& line) {
    m_services.log.appendCaptureDebug(line);
}

bool TextCaptureService::isReadable(std::optional<ProcessId> source) const {
    return source || m_services.workspace.knowsAllApplications();
}

QString TextCaptureService::identifierOf(std::optional<ProcessId> process) const {
    const auto application = process ? m_services.workspace.application(*process) : std::nullopt;
    return application ? application->identifier : QString();
}

bool TextCaptureService::isFinderSource(std::optional<ProcessId> source) const {
    return isFinderBundleID(identifierOf(source));
}

bool TextCaptureService::isHotKeyCopyFallbackSource(std::optional<ProcessId> source) const {
    const auto process = source ? source : m_services.workspace.frontmostProcess();
    return isHotKeyCopyFallbackBundleID(identifierOf(process));
}

bool TextCaptureService::isColumnEditor(std::optional<ProcessId> source) const {
    const auto process = source ? source : m_services.workspace.frontmostProcess();
    return isLinuxApplication(ApplicationKind::ColumnEditor, identifierOf(process));
}

std::optional<ProcessId> TextCaptureService::settled(std::optional<ProcessId> source) const {
    return source || m_excluded.isEmpty() ? source : frontmostForeignProcess();
}

bool TextCaptureService::isExcluded(std::optional<ProcessId> source) const {
    return source ? m_excluded.contains(identifierOf(source)) : !m_excluded.isEmpty();
}

Clock::Duration TextCaptureService::headStartOf(ProcessId process) const {
    return showsWebPages(identifierOf(process)) ? accessibilityLimit : headStart;
}

// Browsers keep what they handed out after a deselect, and may tell accessibility nothing of it.
bool TextCaptureService::isStale(const std::optional<PrimarySelection::Highlight>& highlight,
                                 ProcessId process) const {
    return highlight && highlight->mayBeUndone && showsWebPages(identifierOf(process));
}

bool TextCaptureService::wasCaptured(const PrimarySelection::Highlight& highlight) const {
    const std::uint64_t showing = m_services.surroundings.panelShowing();
    // Some owners do not tell one act of highlighting from the next.
    return showing != 0 && showing == m_capturedInShowing && highlight == m_captured;
}

QCoro::Task<TextCaptureService::Reading>
TextCaptureService::readAccessibility(std::optional<ProcessId> source, Read read,
                                      Clock::Duration limit, std::stop_token stop) {
    const auto reading = std::make_shared<Reading>();
    Accessibility& accessibility = m_services.accessibility;
    CaptureThread::Job job = [&accessibility, source, reading,
                              read = std::move(read)](std::stop_token running) {
        const CaptureSource from{
            .accessibility = accessibility, .process = source, .stop = std::move(running)};
        read(from, *reading);
    };
    const bool isInTime = co_await m_thread.run(std::move(job), limit, std::move(stop));
    Reading result;
    // Until it has come to its end, it still belongs to the other thread.
    if (isInTime) result = std::move(*reading);
    co_return result;
}

QCoro::Task<std::optional<PrimarySelection::Highlight>>
TextCaptureService::readPrimary(std::optional<ProcessId> source, Budget budget,
                                std::stop_token headStartEnd, std::stop_token stop) {
    const QPointer<TextCaptureService> self(this);
    std::optional<PrimarySelection::Highlight> result;
    const auto process = source ? source : frontmostForeignProcess();
    if (!process) co_return result;
    co_await sleepFor(m_services.clock, headStartOf(*process), std::move(headStartEnd));
    if (!self || stop.stop_requested()) co_return result;
    const auto highlight = std::make_shared<std::optional<PrimarySelection::Highlight>>();
    PrimarySelection& primary = m_services.primary;
    CaptureThread::Job job = [&primary, process, highlight](std::stop_token running) {
        *highlight = primary.highlightOf(*process, std::move(running));
    };
    const Clock::Duration limit = budget.forHighlight();
    const bool isInTime = co_await m_primaryThread.run(std::move(job), limit, std::move(stop));
    if (self && isInTime && !isStale(*highlight, *process)) result = std::move(*highlight);
    co_return result;
}

QCoro::Task<TextCaptureService::Reading>
TextCaptureService::readBoth(std::optional<ProcessId> source, Budget budget, Read read,
                             IsEnough isEnough, std::stop_token stop) {
    std::stop_source headStartEnd;
    std::stop_source highlightStop;
    const std::stop_callback onStop(stop, [highlightStop, headStartEnd] {
        highlightStop.request_stop();
        headStartEnd.request_stop();
    });
    QCoro::Task<std::optional<PrimarySelection::Highlight>> highlighting =
        readPrimary(source, budget, headStartEnd.get_token(), highlightStop.get_token());
    const Clock::Duration limit = budget.forAccessibility();
    Reading reading = co_await readAccessibility(source, std::move(read), limit, stop);
    if (reading.isPassword || reading.isNothingSelected || isEnough(reading))
        highlightStop.request_stop();
    headStartEnd.request_stop();
    reading.highlight = co_await highlighting;
    if (highlightStop.stop_requested()) reading.highlight.reset();
    if (reading.highlight && isCutOfColumns(reading.lines, reading.highlight->text))
        reading.text = textOf(reading.highlight);
    // What is returned is moved from.
    Reading result = std::move(reading);
    co_return result;
}

QCoro::Task<CapturedText>
TextCaptureService::captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                                 std::stop_token stop) {
    const QPointer<TextCaptureService> self(this);
    const CapturedText nothing;
    source = settled(source);
    if (!isTrusted() || !isReadable(source) || isExcluded(source)) co_return nothing;
    const Budget budget(m_services.clock);
    const bool selectsColumns = isColumnEditor(source);
    Read read = [selectsColumns](const CaptureSource& from, Reading& reading) {
        for (int look = 0; look < looksAtFocus; ++look) {
            reading.text = captureSelectedTextFromFocusedElement(from);
            if (selectsColumns && reading.text.contains(u'\n')) reading.lines = selectedLines(from);
            if (!reading.text.isEmpty()) return;
            reading.isPassword = isPasswordFocused(from);
            reading.isNothingSelected = !reading.isPassword && tellsThatNothingIsSelected(from);
            if (!reading.isNothingSelected) return;
        }
    };
    IsEnough isEnough = [](const Reading& reading) {
        return !reading.text.isEmpty() && reading.lines.isEmpty();
    };
    const Reading reading =
        co_await readBoth(source, budget, std::move(read), std::move(isEnough), stop);
    if (!self || stop.stop_requested()) co_return nothing;
    if (reading.isPassword) co_return nothing;
    if (!reading.text.isEmpty()) co_return CapturedText::told(reading.text);
    const QString highlighted = textOf(reading.highlight);
    if (reading.highlight && !highlighted.isEmpty() && !wasCaptured(*reading.highlight)) {
        m_captured = *reading.highlight;
        m_capturedInShowing = m_services.surroundings.panelShowing();
        co_return CapturedText::found(highlighted);
    }
    if (!isHotKeyCopyFallbackSource(source)) co_return nothing;
    const QString copied =
        co_await m_services.copyShortcut.captureFromCopyShortcutFast(source, stop);
    co_return stop.stop_requested() ? nothing : CapturedText::found(copied);
}

QCoro::Task<CapturedText>
TextCaptureService::captureSelectedTextForNoteSave(std::optional<ProcessId> source,
                                                   std::stop_token stop) {
    const QPointer<TextCaptureService> self(this);
    const CapturedText nothing;
    source = settled(source);
    if (!isTrusted() || !isReadable(source) || isExcluded(source)) co_return nothing;
    const Budget budget(m_services.clock);
    const bool selectsColumns = isColumnEditor(source);
    Read read = [selectsColumns](const CaptureSource& from, Reading& reading) {
        reading.isPassword = isPasswordFocused(from);
        if (reading.isPassword) return;
        reading.text = captureSelectedTextAXOnly(from);
        if (selectsColumns && reading.text.contains(u'\n')) reading.lines = selectedLines(from);
        reading.isNothingSelected = reading.text.isEmpty() && tellsThatNothingIsSelected(from);
    };
    const bool isFinder = isFinderSource(source);
    IsEnough isEnough = [isFinder](const Reading& reading) {
        return isFinder || (!reading.text.isEmpty() && reading.lines.isEmpty());
    };
    const Reading reading =
        co_await readBoth(source, budget, std::move(read), std::move(isEnough), stop);
    if (!self || stop.stop_requested()) co_return nothing;
    if (reading.isPassword) co_return nothing;
    QString ax = reading.text;
    if (ax.isEmpty() && isFinder) co_return nothing;
    if (ax.isEmpty()) ax = textOf(reading.highlight);
    const QString copied =
        co_await m_services.copyShortcut.captureFromCopyShortcutFast(source, stop);
    if (stop.stop_requested()) co_return nothing;
    const QString longer = longerSelectedText(ax, copied);
    co_return longer == reading.text ? CapturedText::told(longer) : CapturedText::found(longer);
}

QCoro::Task<SelectionSnapshot>
TextCaptureService::captureSelection(std::optional<ProcessId> source,
                                     std::optional<QPointF> mousePoint, bool useScreenGeometry,
                                     std::stop_token stop) {
    const QPointer<TextCaptureService> self(this);
    const QPointF mouse = mousePoint ? *mousePoint : m_services.surroundings.mouseLocation();
    SelectionSnapshot anchored{.text = {},
                               .exactText = {},
                               .screenFrame = mouseAnchor(mouse),
                               .clickPoint = mouse,
                               .sourcePID = source,
                               .selectedRange = {}};
    if (!isTrusted()) {
        m_services.log.placeDbg(QStringLiteral("capture: not trusted"));
        co_return anchored;
    }
    source = settled(source);
    if (!isReadable(source) || isExcluded(source)) co_return anchored;
    const Budget budget(m_services.clock);
    Read read = [](const CaptureSource& from, Reading& reading) {
        reading.isPassword = isPasswordFocused(from);
        if (reading.isPassword) return;
        reading.capture = captureFromFocusedAccessibilityElement(from);
        reading.isNothingSelected = !reading.capture && tellsThatNothingIsSelected(from);
    };
    const ScreenLayout screens = m_services.surroundings.screens();
    const auto directly = [source, screens](const Reading& reading) {
        return reading.capture ? snapshotFromAX(*reading.capture, source, screens) : std::nullopt;
    };
    IsEnough isEnough = [directly](const Reading& reading) {
        return directly(reading).has_value();
    };
    const Reading reading =
        co_await readBoth(source, budget, std::move(read), std::move(isEnough), stop);
    if (!self || stop.stop_requested()) co_return anchored;
    if (reading.isPassword) co_return anchored;
    const auto direct = directly(reading);
    if (direct) {
        m_services.log.placeDbg(QStringLiteral("capture: AX-direct frame=%1 mouse=%2")
                                    .arg(logged(direct->screenFrame), logged(mouse)));
        co_return *direct;
    }
    QString highlighted = textOf(reading.highlight);
    const Clock::Duration left = budget.left();
    const SelectionSnapshot snapshot = co_await captureByCopy(source, mouse, useScreenGeometry,
                                                              std::move(highlighted), left, stop);
    co_return snapshot;
}

QCoro::Task<SelectionSnapshot>
TextCaptureService::captureByCopy(std::optional<ProcessId> source, QPointF mouse,
                                  bool useScreenGeometry, QString highlighted,
                                  Clock::Duration limit, std::stop_token stop) {
    const QPointer<TextCaptureService> self(this);
    SelectionSnapshot snapshot{.text = {},
                               .exactText = {},
                               .screenFrame = mouseAnchor(mouse),
                               .clickPoint = mouse,
                               .sourcePID = source,
                               .selectedRange = {}};
    QString copied = highlighted;
    if (copied.isEmpty()) {
        copied = co_await m_services.copyShortcut.captureFromCopyShortcutFast(source, stop);
        if (!self || stop.stop_requested()) co_return snapshot;
    }
    Read read = [](const CaptureSource& from, Reading& reading) {
        reading.isPassword = isPasswordFocused(from);
        if (!reading.isPassword) reading.capture = captureFromFocusedAccessibilityElement(from);
    };
    const Reading reading = co_await readAccessibility(source, std::move(read), limit, stop);
    if (!self || stop.stop_requested() || reading.isPassword) co_return snapshot;
    auto afterCopy = snapshotAfterCopy(reading, copied, source, mouse);
    const bool isTold = afterCopy && afterCopy->text == trimmed(afterCopy->exactText);
    snapshot.isHeldBack =
        (isTold ? CapturedText::told(copied) : CapturedText::found(copied)).isHeldBack;
    if (afterCopy) {
        afterCopy->isHeldBack = snapshot.isHeldBack;
        co_return *afterCopy;
    }
    snapshot.text = copied;
    snapshot.exactText = copied;
    if (useScreenGeometry && !copied.isEmpty()) {
        const auto seen =
            co_await m_services.surroundings.highlightPlacementFromScreenshot(source, mouse, stop);
        if (!self || stop.stop_requested()) co_return snapshot;
        if (seen) {
            m_services.log.placeDbg(QStringLiteral("capture: screenshot frame=%1 mouse=%2")
                                        .arg(logged(seen->screenFrame), logged(mouse)));
            snapshot.screenFrame = seen->screenFrame;
            snapshot.clickPoint = seen->clickPoint;
            snapshot.hasReliablePlacement = true;
            co_return snapshot;
        }
    }
    const auto truth = [](bool is) {
        return is ? QStringLiteral("true") : QStringLiteral("false");
    };
    m_services.log.placeDbg(
        QStringLiteral("capture: FALLBACK to mouse anchor %1 copiedEmpty=%2 screenGeometry=%3")
            .arg(logged(snapshot.screenFrame), truth(copied.isEmpty()), truth(useScreenGeometry)));
    co_return snapshot;
}

std::optional<SelectionSnapshot>
TextCaptureService::snapshotAfterCopy(const Reading& reading, const QString& copied,
                                      std::optional<ProcessId> source, QPointF mouse) const {
    if (!reading.capture) return std::nullopt;
    const ScreenLayout screens = m_services.surroundings.screens();
    const auto frame = placementFrame(*reading.capture, screens);
    if (!frame) return std::nullopt;
    const QString& exact = reading.capture->text;
    const auto& raw = reading.capture->rawAXFrame;
    m_services.log.placeDbg(
        QStringLiteral("capture: AX-after-copy frame=%1 rawAX=%2 mouse=%3")
            .arg(logged(*frame), raw ? logged(*raw) : QStringLiteral("nil"), logged(mouse)));
    return SelectionSnapshot{.text = copied.isEmpty() ? trimmed(exact).toString() : copied,
                             .exactText = exact.isEmpty() ? copied : exact,
                             .screenFrame = *frame,
                             .clickPoint = placementPoint(*reading.capture, *frame, screens),
                             .sourcePID = source,
                             .selectedRange = reading.capture->selectedRange,
                             .hasReliablePlacement = true,
                             .isHeldBack = false};
}

} // namespace vorq
