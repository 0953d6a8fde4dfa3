#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace vorq {

/// Character sets of the product's text rules, and what trims and splits by them.
///
/// These functions look at code points. Rules that speak of user-perceived characters are in
/// Graphemes.h and Characters.h. Any text is fine, lone surrogates included. Results of type
/// QStringView point into the argument.

/// White space within a line: the general category Zs, and the tab.
[[nodiscard]] constexpr bool isBlank(char32_t codePoint) {
    if (codePoint < 0x80) return codePoint == U' ' || codePoint == U'\t';
    return codePoint == U'\u00A0' || codePoint == U'\u1680' ||
           (codePoint >= U'\u2000' && codePoint <= U'\u200A') || codePoint == U'\u202F' ||
           codePoint == U'\u205F' || codePoint == U'\u3000';
}

/// A line break: U+000A to U+000D, U+0085, U+2028, U+2029.
[[nodiscard]] constexpr bool isNewline(char32_t codePoint) {
    return (codePoint >= U'\n' && codePoint <= U'\r') || codePoint == char32_t{0x85} ||
           codePoint == U'\u2028' || codePoint == U'\u2029';
}

/// White space of either kind: the general categories Z*, the tab, U+000A to U+000D and U+0085.
[[nodiscard]] constexpr bool isWhitespaceOrNewline(char32_t codePoint) {
    return isBlank(codePoint) || isNewline(codePoint);
}

/// The text without what `Member` holds of at both ends. Every member is a single code unit.
template<bool (*Member)(char32_t)>
[[nodiscard]] constexpr QStringView trimmedOf(QStringView text) {
    const char16_t* begin = text.utf16();
    const char16_t* end = begin + text.size();
    while (begin != end && Member(*begin))
        ++begin;
    while (begin != end && Member(end[-1]))
        --end;
    return {begin, end};
}

/// The text without white space and newlines at both ends.
[[nodiscard]] inline QStringView trimmed(QStringView text) {
    return trimmedOf<isWhitespaceOrNewline>(text);
}

/// The text without blanks at both ends; newlines stay.
[[nodiscard]] inline QStringView trimmedBlanks(QStringView text) {
    return trimmedOf<isBlank>(text);
}

/// The text with each run of white space and newlines made one blank.
[[nodiscard]] QString withSingleBlanks(QStringView text);

/// The pieces between line breaks, empty pieces included; at least one piece. A carriage return
/// and the line feed after it are two breaks.
[[nodiscard]] std::vector<QStringView> splitAtNewlines(QStringView text);

/// The first piece between line breaks that is not empty, or an empty text.
[[nodiscard]] QStringView firstLine(QStringView text);

/// The text with each carriage return and line feed made one line feed, and then each backslash
/// followed by the letter n made a line feed, which heals replies that were escaped twice.
[[nodiscard]] QString withHealedLineBreaks(QStringView text);

} // namespace vorq
