#pragma once

#include "writing/difference/WordDifference.h"

#include <QColor>
#include <QString>

namespace vorq {

/// The colours of what was removed and what was added.
struct DifferenceColors {
    QColor removed;
    QColor added;
};

/// A text for a Text of the styled format, which shows it as it is.
[[nodiscard]] QString styledText(const QString& plain);

/// The difference for such a Text: what was removed is struck through, what was added underlined,
/// each in its colour.
[[nodiscard]] QString differenceMarkup(const std::vector<DifferencePart>& parts,
                                       const DifferenceColors& colors);

} // namespace vorq
