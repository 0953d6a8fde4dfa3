#pragma once

#include <QString>

namespace vorq {

/// Asks for other words for single ones of the selection, so many at most. The selection is not in
/// it: it travels beside.
[[nodiscard]] QString promptForWordAlternatives(qsizetype most);

} // namespace vorq
