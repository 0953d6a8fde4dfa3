#include "engine/embedded/rewriting/TextPieces.h"

#include "support/Utf8.h"

#include <algorithm>
#include <array>

namespace vorq::gateway {
namespace {

bool isWordAt(std::string_view text, std::size_t at) {
    if (at >= text.size()) return false;
    const char32_t value = decodeAt(text, at).value;
    return isWordCharacter(value) && !isBlank(value);
}

bool isJoiner(char32_t c) {
    return c == U'\'' || c == U'’' || c == U'.' || c == U'@' || c == U'/' || c == U'_' ||
           c == U':' || c == U',';
}

/// Whether a mark between two letters or digits joins them to one word.
bool joins(std::string_view text, std::size_t at, CodePoint c) {
    if (!isJoiner(c.value) || !isWordAt(text, at + c.length)) return false;
    if (c.value != U',' && c.value != U':') return true;
    const char next = text[at + c.length];
    return next >= '0' && next <= '9';
}

std::string_view withoutClosers(std::string_view text) {
    static constexpr auto closers =
        std::to_array<std::string_view>({"\"", "'", "”", "’", "»", ")", "]", "」", "*", "_"});
    const auto endsIn = [&text](std::string_view closer) { return text.ends_with(closer); };
    while (true) {
        const auto* const closer = std::ranges::find_if(closers, endsIn);
        if (closer == closers.end()) return text;
        text.remove_suffix(closer->size());
    }
}

bool endsInMark(std::string_view text) {
    static constexpr auto marks =
        std::to_array<std::string_view>({".", "!", "?", "…", "。", "！", "？", "؟", "۔", "।", ":"});
    return std::ranges::any_of(marks,
                               [text](std::string_view mark) { return text.ends_with(mark); });
}

} // namespace

std::vector<TextPiece> piecesOf(std::string_view text) {
    std::vector<TextPiece> pieces;
    std::size_t begin = 0;
    bool isWord = false;
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint c = decodeAt(text, at);
        const bool belongs = isWordAt(text, at) || (isWord && joins(text, at, c));
        if (belongs != isWord && at > begin) {
            pieces.push_back({.text = text.substr(begin, at - begin), .isWord = isWord});
            begin = at;
        }
        isWord = belongs;
        at += c.length;
    }
    if (begin < text.size()) pieces.push_back({.text = text.substr(begin), .isWord = isWord});
    return pieces;
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (true) {
        const std::size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return lines;
        text.remove_prefix(end + 1);
    }
}

std::string withCapital(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && !isWordAt(text, at))
        at += decodeAt(text, at).length;
    std::string result(text);
    if (at == text.size()) return result;
    const CodePoint first = decodeAt(text, at);
    const std::size_t next = at + first.length;
    if (next < text.size() && isUpperCase(decodeAt(text, next).value)) return result;
    return result.replace(at, first.length, raised(text.substr(at, first.length)));
}

bool closesSentence(std::string_view text) {
    return endsInMark(withoutClosers(trimmed(text)));
}

void SentenceTail::add(std::string_view text) {
    const std::string_view core = trimmed(text);
    if (core.empty()) {
        m_endsInBlank = m_endsInBlank || !text.empty();
        return;
    }
    const bool isApart = m_endsInBlank || core.data() != text.data();
    const std::string_view rest = withoutClosers(core);
    // Quotes and parentheses that follow at once are part of what they close.
    if (!rest.empty() || isApart) m_closes = endsInMark(rest);
    m_endsInBlank = core.data() + core.size() != text.data() + text.size();
    m_isEmpty = false;
}

std::size_t listMarkerLength(std::string_view line, std::string_view before) {
    const std::size_t begin = std::min(line.find_first_not_of(" \t"), line.size());
    const std::string_view rest = line.substr(begin);
    for (const std::string_view marker : {"- ", "* ", "+ ", "• ", "– ", "‣ "})
        if (rest.starts_with(marker)) return begin + marker.size();
    const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    const bool isNumber = digits > 0 && digits <= 3 && digits + 1 < rest.size() &&
                          (rest[digits] == '.' || rest[digits] == ')') && rest[digits + 1] == ' ';
    if (!isNumber) return 0;
    const bool isWrapped = !trimmed(before).empty() && listMarkerLength(before) == 0 &&
                           !closesSentence(before) && rest.substr(0, digits) != "1";
    return isWrapped ? 0 : begin + digits + 2;
}

bool isOneOf(std::string_view word, std::span<const std::string_view> words) {
    return std::ranges::find(words, word) != words.end();
}

} // namespace vorq::gateway
