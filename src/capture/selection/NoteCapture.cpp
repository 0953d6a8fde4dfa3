#include "capture/selection/NoteCapture.h"

#include "capture/selection/ColumnSelection.h"
#include "capture/selection/CopyShortcut.h"
#include "capture/selection/SelectionReader.h"
#include "capture/source/CaptureGate.h"
#include "capture/source/LinuxApplications.h"
#include "capture/source/SourceApplication.h"

#include <QPointer>

namespace vorq {
namespace {

SelectionReader::Ask askAnyElement(bool selectsColumns) {
    return [selectsColumns](const CaptureSource& from, SelectionReading& reading) {
        reading.isPassword = isPasswordFocused(from);
        if (reading.isPassword) return;
        reading.text = captureSelectedTextAXOnly(from);
        if (selectsColumns && reading.text.contains(u'\n')) reading.lines = selectedLines(from);
        reading.isNothingSelected = reading.text.isEmpty() && tellsThatNothingIsSelected(from);
    };
}

} // namespace

QCoro::Task<CapturedText>
NoteCapture::captureSelectedTextForNoteSave(std::optional<ProcessId> source, std::stop_token stop) {
    const QPointer<NoteCapture> self(this);
    const CapturedText nothing;
    const CaptureGate& gate = m_services.gate;
    source = gate.settled(source);
    if (!gate.admits(source)) co_return nothing;
    const CaptureBudget budget = m_services.reader.beginBudget();
    const bool selectsColumns =
        isLinuxApplication(ApplicationKind::ColumnEditor, gate.identifierOfSource(source));
    const bool isFinder = isFinderBundleID(gate.identifierOf(source));
    SelectionReader::IsEnough isEnough = [isFinder](const SelectionReading& reading) {
        return isFinder || (!reading.text.isEmpty() && reading.lines.isEmpty());
    };
    const SelectionReading reading = co_await m_services.reader.read(
        source, budget, askAnyElement(selectsColumns), std::move(isEnough), stop);
    if (!self || stop.stop_requested() || reading.isPassword) co_return nothing;
    QString ax = reading.text;
    if (ax.isEmpty() && isFinder) co_return nothing;
    if (ax.isEmpty()) ax = reading.highlightedText();
    const QString copied =
        co_await m_services.copyShortcut.captureFromCopyShortcutFast(source, stop);
    if (stop.stop_requested()) co_return nothing;
    const QString longer = longerSelectedText(ax, copied);
    co_return longer == reading.text ? CapturedText::told(longer) : CapturedText::found(longer);
}

} // namespace vorq
