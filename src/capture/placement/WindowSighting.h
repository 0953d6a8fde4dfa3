#pragma once

#include "capture/placement/HighlightSearch.h"
#include "capture/placement/SelectionPlacement.h"
#include "capture/placement/TintSearch.h"

#include <QStringList>

#include <vector>

namespace vorq {

class ScreenCapture;

/// What to look for, and where.
struct SightingQuery {
    /// Without a process, any other than our own.
    std::optional<ProcessId> source;
    ProcessId own = 0;
    /// In accessibility coordinates. Without one, the whole window.
    std::optional<QRectF> searchArea;
    /// In screen coordinates.
    QPointF mouse;
    ScreenLayout screens;
    std::vector<TintColor> colors;
};

/// Whether an area is large enough to look for a selection in it.
[[nodiscard]] bool isSearchArea(const QRectF& area);

/// The line for the log of places that says that there is none.
[[nodiscard]] QString noSearchArea(const std::optional<QRectF>& area);

struct Sighting {
    std::optional<VisualHighlight> highlight;
    /// Lines for the log of places.
    QStringList log;
};

/// Takes a picture of the largest window of the process and looks for the tint of a selection, from
/// the mouse outwards, in the area first and then in the whole window. What is near the mouse is
/// looked at alone before, since a window may have more of the tint than is ever counted. Blocks;
/// see ScreenCapture for the thread.
[[nodiscard]] Sighting sightSelection(ScreenCapture& capture, const SightingQuery& query,
                                      const std::stop_token& stop);

} // namespace vorq
