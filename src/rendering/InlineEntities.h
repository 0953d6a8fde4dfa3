#pragma once

#include <QString>

namespace vorq {

/// The text with character references ("&amp;", "&#8212;") replaced by what they stand for. A
/// reference that is not known stays as typed. Any thread.
[[nodiscard]] QString decodedEntities(const QString& text);

} // namespace vorq
