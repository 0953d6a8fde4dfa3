#pragma once

#include <QString>

namespace vorq {

// What the titles of notes share. For source files only.

/// The text without the bullets and white space it begins with, if it begins with a bullet.
[[nodiscard]] QStringView withoutLeadingBullets(QStringView text);

/// The text, or if it has more than this many characters that many of them and "…".
[[nodiscard]] QString shortened(QStringView text, qsizetype longest);

inline constexpr qsizetype longestNoteTitle = 72;

} // namespace vorq
