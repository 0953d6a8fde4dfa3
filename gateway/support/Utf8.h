#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorq::gateway {

constexpr char32_t kReplacement = 0xFFFD;

/// One decoded code point and the bytes it took (at least 1; an invalid byte gives kReplacement).
struct CodePoint {
    char32_t value = kReplacement;
    std::size_t length = 1;
};

/// The code point at `offset`, which must lie inside `text`.
[[nodiscard]] CodePoint decodeAt(std::string_view text, std::size_t offset);

void appendUtf8(std::string& out, char32_t codePoint);

/// `text` as valid UTF-8 without control characters other than tab and newline; "\r\n" and "\r"
/// become "\n".
[[nodiscard]] std::string sanitized(std::string_view text);

/// In lower case, letter by letter, with each in its place: one whose small form takes other bytes
/// stays.
[[nodiscard]] std::string lowered(std::string_view text);

/// The capital of one letter, as a word begins with it.
[[nodiscard]] std::string raised(std::string_view letter);

/// Without white space at both ends, ASCII and no-break and ideographic blanks alike.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// At most `maxBytes` bytes of `text`, cut at a word where one is near, and "…" if it was cut.
[[nodiscard]] std::string clipped(std::string_view text, std::size_t maxBytes);

/// How many code points `text` has.
[[nodiscard]] std::size_t characterCount(std::string_view text);

[[nodiscard]] bool isBlank(char32_t codePoint);
[[nodiscard]] bool isHan(char32_t codePoint);
[[nodiscard]] bool isKatakana(char32_t codePoint);
[[nodiscard]] bool isHiragana(char32_t codePoint);
[[nodiscard]] bool isUpperCase(char32_t codePoint);
/// A letter or digit of any script, as far as splitting text into words goes.
[[nodiscard]] bool isWordCharacter(char32_t codePoint);

} // namespace vorq::gateway
