#include "capture/selection/NoteCapture.h"

#include "capture/selection/CopyShortcut.h"
#include "capture/selection/SecretText.h"
#include "capture/selection/SelectionReader.h"
#include "capture/source/CaptureGate.h"
#include "capture/source/SourceApplication.h"

#include <QPointer>

namespace vorq {
namespace {

void askAnyElement(const CaptureSource& from, SelectionReading& reading) {
    reading.isPassword = isPasswordFocused(from);
    if (reading.isPassword) return;
    reading.text = captureSelectedTextAXOnly(from);
    reading.isNothingSelected = reading.text.isEmpty() && tellsThatNothingIsSelected(from);
}

} // namespace

QCoro::Task<CapturedText>
NoteCapture::captureSelectedTextForNoteSave(std::optional<ProcessId> source, std::stop_token stop) {
    const QPointer<NoteCapture> self(this);
    const CaptureGate& gate = m_services.gate;
    const bool isFinder = isFinderBundleID(gate.identifierOf(gate.settled(source)));
    SelectionReader::IsEnough isEnough = [isFinder](const SelectionReading& reading) {
        return isFinder || reading.tellsWholeText();
    };
    const std::expected<SelectionReading, CaptureMiss> reading =
        co_await m_services.reader.readForKey(source, askAnyElement, std::move(isEnough), stop);
    if (!self) co_return CapturedText();
    if (!reading) co_return CapturedText::none(reading.error());
    const CapturedText nothing = CapturedText::none(reading->miss());
    QString ax = reading->text;
    if (ax.isEmpty() && isFinder) co_return nothing;
    if (ax.isEmpty()) ax = reading->highlightedText();
    const QString copied =
        co_await m_services.copyShortcut.captureFromCopyShortcutFast(reading->source, stop);
    if (stop.stop_requested()) co_return nothing;
    const QString longer = longerSelectedText(ax, copied);
    if (longer.isEmpty()) co_return nothing;
    if (longer == reading->text) co_return CapturedText::told(longer);
    CapturedText found = CapturedText::found(longer);
    // Of a field for passwords browsers hand out PRIMARY in clear, but never copy.
    const bool isDoubtful = copied.isEmpty() && canBePassword(longer) &&
                            showsWebPages(m_services.gate.identifierOfSource(reading->source)) &&
                            m_services.copyShortcut.canCopyFrom(reading->source);
    found.isHeldBack = found.isHeldBack || isDoubtful;
    co_return found;
}

} // namespace vorq
