#pragma once

#include "capture/placement/SelectionPlacement.h"
#include "capture/selection/AccessibleSelection.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstdint>
#include <optional>

namespace vorq {

/// A selection and where it is. Places are in screen coordinates: points, origin at the bottom left
/// of the primary screen, y upwards.
struct SelectionSnapshot {
    /// Trimmed at both ends.
    QString text;
    /// Untrimmed where accessibility gave it.
    QString exactText;
    /// The strip to set something beside the selection.
    QRectF screenFrame;
    /// The centre of the selection, or the mouse.
    QPointF clickPoint;
    std::optional<std::int32_t> sourcePID;
    std::optional<TextRange> selectedRange;
    /// False if the place is merely that of the mouse.
    bool hasReliablePlacement = false;
    /// As in CapturedText: the user is asked first.
    bool isHeldBack = false;

    bool operator==(const SelectionSnapshot&) const = default;
};

/// A place for what was captured: by the bounds of the selection, else by its element if that is
/// small. Nothing if neither tells.
[[nodiscard]] std::optional<QRectF> placementFrame(const AXCapture& capture,
                                                   const ScreenLayout& screens);

/// The centre of the selection's bounds, or of the frame if there are none.
[[nodiscard]] QPointF placementPoint(const AXCapture& capture, const QRectF& frame,
                                     const ScreenLayout& screens);

/// The capture with its place; nothing without a place.
[[nodiscard]] std::optional<SelectionSnapshot> snapshotFromAX(const AXCapture& capture,
                                                              std::optional<std::int32_t> sourcePID,
                                                              const ScreenLayout& screens);

/// A rectangle around the mouse for want of anything better.
[[nodiscard]] QRectF mouseAnchor(QPointF mouse);

} // namespace vorq
