#include "capture/placement/SelectionSnapshot.h"

#include "capture/selection/CapturedText.h"
#include "support/text/Text.h"

namespace vorq {

std::optional<QRectF> placementFrame(const AXCapture& capture, const ScreenLayout& screens) {
    const auto frame = highlightPlacementFrame(capture.rawAXFrame, screens);
    return frame ? frame : compactElementPlacementFrame(capture.elementAXFrame, screens);
}

QPointF placementPoint(const AXCapture& capture, const QRectF& frame, const ScreenLayout& screens) {
    return capture.rawAXFrame ? cocoaRect(*capture.rawAXFrame, screens).center() : frame.center();
}

std::optional<SelectionSnapshot> snapshotFromAX(const AXCapture& capture,
                                                std::optional<std::int32_t> sourcePID,
                                                const ScreenLayout& screens) {
    if (capture.text.isEmpty()) return std::nullopt;
    const auto frame = placementFrame(capture, screens);
    if (!frame) return std::nullopt;
    return SelectionSnapshot{.text = trimmed(capture.text).toString(),
                             .exactText = capture.text,
                             .screenFrame = *frame,
                             .clickPoint = placementPoint(capture, *frame, screens),
                             .sourcePID = sourcePID,
                             .selectedRange = capture.selectedRange,
                             .hasReliablePlacement = true,
                             .isHeldBack = CapturedText::told(capture.text).isHeldBack};
}

QRectF mouseAnchor(QPointF mouse) {
    return {mouse.x() - 20, mouse.y() - 7, 40, 14};
}

} // namespace vorq
