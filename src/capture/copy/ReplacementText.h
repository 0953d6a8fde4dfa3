#pragma once

#include <QString>

namespace vorq {

/// A text that takes the place of an original: with the white space that the original has at both
/// ends, whatever it has itself there, and with the newlines of the original ("\r\n", "\r" or
/// "\n"), if that has any. An original of nothing but white space leaves the text's own ends.
[[nodiscard]] QString fittedTo(const QString& original, const QString& replacement);

} // namespace vorq
