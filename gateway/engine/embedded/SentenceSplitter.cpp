#include "engine/embedded/Document.h"
#include "support/Utf8.h"

#include <algorithm>
#include <array>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLongestSentence = 1000; // bytes; longer ones are cut at a blank

constexpr auto kAbbreviations = std::to_array<std::string_view>({
    "abb",  "abs",  "al",   "approx", "art", "aufl", "bd",  "bspw", "bzw", "ca",  "cap", "cf",
    "ch",   "co",   "corp", "dept",   "dr",  "dra",  "ed",  "eds",  "eq",  "est", "etc", "ex",
    "fig",  "figs", "gen",  "ggf",    "gov", "hr",   "inc", "inkl", "jr",  "lt",  "ltd", "max",
    "min",  "mio",  "mlle", "mme",    "mr",  "mrs",  "ms",  "mt",   "nr",  "op",  "par", "pp",
    "prof", "ref",  "rep",  "resp",   "rev", "sec",  "sen", "sog",  "sr",  "sra", "st",  "str",
    "tab",  "tel",  "usw",  "vgl",    "viz", "vol",  "vs",
});

bool isAbbreviation(std::string_view word) {
    return std::ranges::find(kAbbreviations, word) != kAbbreviations.end();
}

bool isWideTerminator(char32_t c) {
    return c == 0x3002 || c == 0xFF01 || c == 0xFF1F || c == 0xFF0E || c == 0xFF61;
}

bool isTerminator(char32_t c) {
    return c == U'.' || c == U'!' || c == U'?' || c == 0x2026 || c == 0x061F || c == 0x0964 ||
           c == 0x06D4 || isWideTerminator(c);
}

bool isCloser(char32_t c) {
    return c == U'"' || c == U'\'' || c == U')' || c == U']' || c == 0x201D || c == 0x2019 ||
           c == 0x00BB || c == 0x201C || c == 0x300D || c == 0x300F || c == 0xFF09 || c == U'*' ||
           c == U'_';
}

bool isEndMark(char32_t c) {
    return isTerminator(c) || isCloser(c);
}

bool isLowerCaseLetter(char32_t c) {
    return (c >= U'a' && c <= U'z') || (c >= 0xDF && c <= 0xFF && c != 0xF7) ||
           (c >= 0x3B1 && c <= 0x3C9) || (c >= 0x430 && c <= 0x45F);
}

/// The word that ends right before `end`, without what is no letter, lower-cased.
std::string wordBefore(std::string_view text, std::size_t end) {
    constexpr std::size_t farthest = 16;
    const std::size_t from = end > farthest ? end - farthest : 0;
    std::string_view word = text.substr(from, end - from);
    if (const std::size_t blank = word.find_last_of(" ("); blank != std::string_view::npos) {
        word.remove_prefix(blank + 1);
    }
    return lowered(word);
}

/// A point behind an abbreviation, an initial ("J.") or inside one ("e.g.", "z.B.").
bool pointBelongsToWord(std::string_view text, std::size_t point) {
    const std::string word = wordBefore(text, point);
    if (word.empty()) return false;
    const bool single = decodeAt(word, 0).length == word.size();
    const bool isLetter = single && !(word[0] >= '0' && word[0] <= '9');
    if (isLetter && word != "i") return true;
    return isAbbreviation(word) || (word.size() <= 6 && word.find('.') != std::string::npos);
}

/// The offset behind the sentence end at `at`, or 0 if no sentence ends there.
std::size_t sentenceEnd(std::string_view text, std::size_t at) {
    const char32_t first = decodeAt(text, at).value;
    std::size_t i = at;
    bool wide = false;
    while (i < text.size()) {
        const CodePoint c = decodeAt(text, i);
        if (!isEndMark(c.value)) break;
        wide = wide || isWideTerminator(c.value);
        i += c.length;
    }
    if (i >= text.size() || wide) return i;
    if (!isBlank(decodeAt(text, i).value)) return 0;
    std::size_t next = i;
    while (next < text.size() && isBlank(decodeAt(text, next).value)) {
        next += decodeAt(text, next).length;
    }
    const bool isPoint = first == U'.' || first == 0x2026;
    if (isPoint && next < text.size() && isLowerCaseLetter(decodeAt(text, next).value)) return 0;
    if (first == U'.' && i == at + 1 && pointBelongsToWord(text, at)) return 0;
    return i;
}

void addPieces(std::vector<std::string>& out, std::string_view sentence) {
    sentence = trimmed(sentence);
    while (sentence.size() > kLongestSentence) {
        std::size_t end = sentence.substr(0, kLongestSentence).find_last_of(' ');
        if (end == std::string_view::npos || end < kLongestSentence / 2) {
            end = kLongestSentence;
            while ((static_cast<unsigned char>(sentence[end]) & 0xC0U) == 0x80U)
                --end;
        }
        out.emplace_back(trimmed(sentence.substr(0, end)));
        sentence.remove_prefix(end);
        while (sentence.starts_with(' '))
            sentence.remove_prefix(1);
    }
    if (!sentence.empty()) out.emplace_back(sentence);
}

} // namespace

std::vector<std::string> splitSentences(std::string_view paragraph) {
    std::vector<std::string> sentences;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < paragraph.size();) {
        const CodePoint c = decodeAt(paragraph, i);
        if (!isTerminator(c.value)) {
            i += c.length;
            continue;
        }
        const std::size_t end = sentenceEnd(paragraph, i);
        if (end == 0) {
            // The whole run was looked at; looking again at each of its marks would be quadratic.
            while (i < paragraph.size() && isEndMark(decodeAt(paragraph, i).value)) {
                i += decodeAt(paragraph, i).length;
            }
            continue;
        }
        addPieces(sentences, paragraph.substr(begin, end - begin));
        begin = i = end;
    }
    addPieces(sentences, paragraph.substr(begin));
    return sentences;
}

} // namespace vorq::gateway
