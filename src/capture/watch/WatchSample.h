#pragma once

#include "platform/ProcessId.h"

#include <QDateTime>
#include <QRectF>
#include <QString>

namespace vorq {

/// What the watch of the application in front saw at one moment.
struct WatchSample {
    QString appName;
    QString bundleID; ///< "" if unknown
    ProcessId pid = 0;
    QString windowTitle; ///< "" if unknown
    QString selection;   ///< "" if nothing is selected, trimmed otherwise
    /// Where the window was in its latest picture, in accessibility coordinates; null before the
    /// first.
    QRectF windowFrameAX;

    bool operator==(const WatchSample&) const = default;
};

} // namespace vorq
