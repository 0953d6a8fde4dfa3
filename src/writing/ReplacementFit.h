#pragma once

#include <QString>

namespace vorq {

/// A suggestion as it is to stand in the place of the original: with the original's white space at
/// both ends and its newlines, and without a final full stop if the original has none.
[[nodiscard]] QString replacementFor(const QString& original, const QString& suggestion);

} // namespace vorq
