#pragma once

#include "capture/selection/AccessibleSelection.h"

#include <QStringList>
#include <QStringView>

namespace vorq {

/// Some editors can select columns of several lines, but tell accessibility of all that lies
/// between the ends of such a selection. What they hand out as PRIMARY are the columns.

/// The whole lines that the selection of the focused element touches, without their breaks; empty
/// if there is none. Blocks while it reads; see Accessibility for the thread.
[[nodiscard]] QStringList selectedLines(const CaptureSource& source);

/// Whether the text is cut out of columns of these lines: it has a piece of each of them, and is no
/// run from one place to another.
[[nodiscard]] bool isCutOfColumns(const QStringList& lines, QStringView text);

} // namespace vorq
