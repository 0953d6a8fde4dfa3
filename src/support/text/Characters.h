#pragma once

#include "support/text/Graphemes.h"

#include <QStringView>

namespace vorq {

/// What the text rules ask of user-perceived characters, and search by whole characters.
///
/// A pattern is found only where it stands between character boundaries: "-" with a combining mark
/// after it is another character and is not found by "-". Patterns are of ASCII characters or
/// other characters that stand alone, and not empty; they hold no line break except a whole
/// "\r\n". Texts begin and end at a boundary, as a text on its own does.

/// Whether the code units of `text` from `index` to `end`, which are whole characters when they
/// stand on their own, are so between their neighbours.
[[nodiscard]] bool standsApart(QStringView text, qsizetype index, qsizetype end);

/// Whether `pattern` stands at `index`, as whole characters.
[[nodiscard]] inline bool isCharactersAt(QStringView text, qsizetype index, QStringView pattern) {
    const qsizetype end = index + pattern.size();
    if (end > text.size()) return false;
    const char16_t* const units = text.utf16();
    for (qsizetype at = 0; at < pattern.size(); ++at) {
        if (units[index + at] != pattern.utf16()[at]) return false;
    }
    return ((index == 0 || units[index - 1] < lowestJoiner) &&
            (end == text.size() || units[end] < lowestJoiner)) ||
           standsApart(text, index, end);
}

/// Index of the first `pattern` at or after `from`, or -1.
[[nodiscard]] qsizetype indexOfCharacters(QStringView text, QStringView pattern,
                                          qsizetype from = 0);

[[nodiscard]] bool containsCharacters(QStringView text, QStringView pattern);

[[nodiscard]] inline bool startsWithCharacters(QStringView text, QStringView pattern) {
    return isCharactersAt(text, 0, pattern);
}

[[nodiscard]] inline bool endsWithCharacters(QStringView text, QStringView pattern) {
    return text.size() >= pattern.size() &&
           isCharactersAt(text, text.size() - pattern.size(), pattern);
}

/// Whether the first code point of the character is white space or a newline.
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
