#pragma once

#include "platform/Accessibility.h"

#include <QRectF>

#include <optional>

namespace vorq {

/// Where a selection is, in accessibility coordinates (points, origin at the top left). What an
/// application cannot tell, or tells as a rectangle of no size, yields nothing. These functions
/// read the element and may block; see Accessibility for the thread.

/// The frame of an element that is at least one point wide and high.
[[nodiscard]] std::optional<QRectF> elementAXFrame(const AccessibleElement& element);

/// The bounds of a range of text: as the application gives them, or the union of the bounds of
/// some single characters, whichever is larger. Characters outside the element's frame, if that is
/// given, do not count.
[[nodiscard]] std::optional<QRectF> selectionAXBounds(TextRange range,
                                                      const AccessibleElement& element,
                                                      const std::optional<QRectF>& elementFrame);

/// The bounds of the selection by its markers.
[[nodiscard]] std::optional<QRectF> textMarkerSelectionBounds(const AccessibleElement& element);

} // namespace vorq
