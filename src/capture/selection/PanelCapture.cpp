#include "capture/selection/PanelCapture.h"

#include "capture/selection/CaptureLog.h"
#include "capture/selection/CopyShortcut.h"
#include "capture/selection/SecretText.h"
#include "capture/selection/SelectionReader.h"
#include "capture/source/CaptureGate.h"
#include "capture/source/SourceApplication.h"

#include <QPointer>

namespace vorq {
namespace {

// Some programs build what they tell only when they are first asked, and say until then that
// nothing is selected.
constexpr int looksAtFocus = 2;

void askFocusedElement(const CaptureSource& from, SelectionReading& reading) {
    for (int look = 0; look < looksAtFocus; ++look) {
        reading.text = captureSelectedTextFromFocusedElement(from);
        if (!reading.text.isEmpty()) return;
        reading.isPassword = isPasswordFocused(from);
        reading.isNothingSelected = !reading.isPassword && tellsThatNothingIsSelected(from);
        if (!reading.isNothingSelected) return;
    }
}

} // namespace

bool PanelCapture::isTrusted() const {
    return m_services.gate.isTrusted();
}

std::optional<ProcessId> PanelCapture::frontmostForeignProcess() const {
    return m_services.gate.frontmostForeignProcess();
}

QString PanelCapture::applicationName(ProcessId process) const {
    return m_services.gate.applicationName(process);
}

void PanelCapture::log(const QString& line) {
    m_services.log.appendCaptureDebug(line);
}

bool PanelCapture::wasCaptured(const PrimarySelection::Highlight& highlight) const {
    const std::uint64_t showing = m_services.showings.current();
    // Some owners do not tell one act of highlighting from the next.
    return showing != 0 && showing == m_capturedInShowing && highlight == m_captured;
}

// Of a field for passwords browsers hand out PRIMARY in clear, but never copy.
QCoro::Task<CapturedText> PanelCapture::proved(std::optional<ProcessId> source, QString highlighted,
                                               std::stop_token stop) {
    CapturedText found = CapturedText::found(highlighted);
    const bool isDoubtful = canBePassword(highlighted) &&
                            showsWebPages(m_services.gate.identifierOfSource(source)) &&
                            m_services.copyShortcut.canCopyFrom(source);
    if (!found.isHeldBack && isDoubtful) {
        const QString copied =
            co_await m_services.copyShortcut.captureFromCopyShortcutFast(source, std::move(stop));
        found.isHeldBack = copied.isEmpty();
    }
    co_return found;
}

QCoro::Task<CapturedText>
PanelCapture::captureSelectedTextForHotKey(std::optional<ProcessId> source, std::stop_token stop) {
    const QPointer<PanelCapture> self(this);
    SelectionReader::IsEnough isEnough = &SelectionReading::tellsWholeText;
    const std::expected<SelectionReading, CaptureMiss> reading =
        co_await m_services.reader.readForKey(source, askFocusedElement, std::move(isEnough), stop);
    if (!self) co_return CapturedText();
    if (!reading) co_return CapturedText::none(reading.error());
    const CapturedText nothing = CapturedText::none(reading->miss());
    if (!reading->text.isEmpty()) co_return CapturedText::told(reading->text);
    const QString highlighted = reading->highlightedText();
    const std::optional<PrimarySelection::Highlight>& highlight = reading->highlight;
    if (highlight && !highlighted.isEmpty() && !wasCaptured(*highlight)) {
        m_captured = *highlight;
        m_capturedInShowing = m_services.showings.current();
        CapturedText found = co_await proved(reading->source, highlighted, stop);
        co_return stop.stop_requested() ? nothing : found;
    }
    if (!isHotKeyCopyFallbackBundleID(m_services.gate.identifierOfSource(reading->source)))
        co_return nothing;
    const QString copied =
        co_await m_services.copyShortcut.captureFromCopyShortcutFast(reading->source, stop);
    co_return stop.stop_requested() || copied.isEmpty() ? nothing : CapturedText::found(copied);
}

} // namespace vorq
