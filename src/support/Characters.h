#pragma once

#include <QStringView>

namespace vorq {

/// What the text rules ask of user-perceived characters, and search by whole characters.
///
/// A pattern is found only where it stands between character boundaries: "-" with a combining mark
/// after it is another character and is not found by "-". Patterns are of ASCII characters or
/// other characters that stand alone, and not empty; they hold no line break except a whole
/// "\r\n". Texts begin and end at a boundary, as a text on its own does.

/// Whether `pattern` stands at `index`, as whole characters.
[[nodiscard]] bool isCharactersAt(QStringView text, qsizetype index, QStringView pattern);

/// Index of the first `pattern` at or after `from`, or -1.
[[nodiscard]] qsizetype indexOfCharacters(QStringView text, QStringView pattern,
                                          qsizetype from = 0);

[[nodiscard]] bool containsCharacters(QStringView text, QStringView pattern);
[[nodiscard]] bool startsWithCharacters(QStringView text, QStringView pattern);
[[nodiscard]] bool endsWithCharacters(QStringView text, QStringView pattern);

/// Whether the code point is white space or a newline, a character is so by its first code point.
[[nodiscard]] bool isWhitespaceCharacter(QStringView character);

/// Whether the character is a number: its first code point has a numeric value in Unicode, as
/// digits of all scripts, Roman numerals, fractions and the Han numerals have.
[[nodiscard]] bool isNumberCharacter(QStringView character);

/// Whether the character is upper-case: the property of a single code point, else whether changing
/// the case of the whole to upper leaves it and to lower does not.
[[nodiscard]] bool isUppercaseCharacter(QStringView character);

/// The first character, or an empty text.
[[nodiscard]] QStringView firstCharacter(QStringView text);

} // namespace vorq
