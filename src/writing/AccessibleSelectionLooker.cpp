#include "writing/AccessibleSelectionLooker.h"

#include "capture/placement/SelectionSnapshot.h"
#include "capture/selection/CapturedText.h"
#include "capture/selection/SelectionReader.h"
#include "capture/source/CaptureGate.h"
#include "platform/Screens.h"
#include "support/text/Text.h"

#include <utility>

namespace vorq {
namespace {

// The focus may move while the selection is read, so what has it is asked before and afterwards.
void askForCapture(const CaptureSource& from, SelectionReading& reading) {
    reading.isPassword = isPasswordFocused(from);
    if (reading.isPassword) return;
    std::optional<AXCapture> capture = captureFromFocusedAccessibilityElement(from);
    if (!capture) reading.isNothingSelected = tellsThatNothingIsSelected(from);
    reading.isPassword = isPasswordFocused(from);
    if (!reading.isPassword && !from.stop.stop_requested()) reading.capture = std::move(capture);
}

} // namespace

QCoro::Task<std::optional<SelectionSight>>
AccessibleSelectionLooker::look(std::optional<ProcessId> source, QPointF /*seed*/,
                                std::stop_token stop) {
    std::optional<SelectionSight> result;
    const Services services = m_services;
    if (!source || !services.gate.admits(source)) co_return result;
    const SelectionReading reading =
        co_await services.reader.readInBackground(source, askForCapture, readLimit, stop);
    if (stop.stop_requested() || reading.isPassword) co_return result;
    if (!reading.capture) {
        if (reading.isNothingSelected) result = SelectionSight{};
        co_return result;
    }
    const QString text = reading.capture->text;
    const bool isHidden = CapturedText::told(trimmed(text).toString()).isHeldBack;
    if (isHidden || trimmed(text).isEmpty()) co_return result;
    SelectionSight sight{.text = text, .placement = std::nullopt};
    if (const auto snapshot =
            snapshotFromAX(*reading.capture, source, screenLayout(services.screens)))
        sight.placement = TrackedPlacement{.screenFrame = snapshot->screenFrame,
                                           .clickPoint = snapshot->clickPoint};
    result = std::move(sight);
    co_return result;
}

} // namespace vorq
