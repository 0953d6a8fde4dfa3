#pragma once

#include <QStringView>

#include <vector>

namespace vorq {

/// User-perceived characters: the extended grapheme clusters of Unicode (UAX #29), by the character
/// properties of the ICU the program is linked with.
///
/// A carriage return with the line feed after it is one character, and so is an emoji sequence. A
/// lone surrogate is a character of its own. Results of type QStringView point into the argument.

/// The lowest code unit that can belong to one character with a neighbour; below it, only a line
/// feed after a carriage return does.
inline constexpr char16_t lowestJoiner = 0x300;

/// End of the character that starts at `start`, which is below the size of the text.
[[nodiscard]] qsizetype graphemeEnd(QStringView text, qsizetype start);

/// The number of characters. Linear in the text.
[[nodiscard]] qsizetype graphemeCount(QStringView text);

/// Whether there are at least `count` characters. Reads no further than it must.
[[nodiscard]] bool graphemeCountAtLeast(QStringView text, qsizetype count);

/// The first `count` characters, or the whole text if it has fewer.
[[nodiscard]] QStringView graphemePrefix(QStringView text, qsizetype count);

/// The characters one by one.
[[nodiscard]] std::vector<QStringView> splitGraphemes(QStringView text);

/// Whether the code point at `index` joins the character before it, whatever that is, unless it is
/// a line break: combining marks, variation selectors, joiners.
[[nodiscard]] bool extendsCharacterBefore(QStringView text, qsizetype index);

/// Whether the code point that ends before `index` takes what follows into its character, unless
/// that is a line break.
[[nodiscard]] bool takesCharacterAfter(QStringView text, qsizetype index);

} // namespace vorq
