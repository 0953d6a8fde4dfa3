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
    /// In accessibility coordinates.
    QRectF searchArea;
    /// In screen coordinates.
    QPointF mouse;
    ScreenLayout screens;
    std::vector<TintColor> colors;
};

struct Sighting {
    std::optional<VisualHighlight> highlight;
    /// Lines for the log of places.
    QStringList log;
};

/// Takes a picture of the largest window of the process and looks for the tint of a selection, from
/// the mouse outwards, in the area first and then in the whole window. Blocks; see ScreenCapture
/// for the thread.
[[nodiscard]] Sighting sightSelection(ScreenCapture& capture, const SightingQuery& query,
                                      const std::stop_token& stop);

} // namespace vorq
