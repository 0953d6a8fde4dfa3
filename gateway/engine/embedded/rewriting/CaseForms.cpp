#include "engine/embedded/rewriting/CaseForms.h"

#include "engine/embedded/rewriting/TextPieces.h"
#include "engine/embedded/words/Lexicon.h"
#include "support/Utf8.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <vector>

namespace vorq::gateway {
namespace {

constexpr auto kSmallWords = std::to_array<std::string_view>(
    {"a",   "an", "the", "and", "but", "or",   "nor", "as",   "at",   "by",
     "for", "in", "of",  "on",  "to",  "with", "vs",  "from", "into", "per"});

/// Short forms whose point ends no sentence, beside those of one or two letters.
constexpr auto kShortForms = std::to_array<std::string_view>(
    {"etc", "approx", "dept", "est", "incl", "max", "min", "resp", "bzw", "usw", "evtl",
     "ggf", "inkl",   "art",  "fig", "vol",  "cap", "eds", "ibid", "pág", "núm", "env",
     "tel", "nos",    "prof", "mrs", "pag",  "ref", "sec", "std",  "mio", "mrd", "inc"});

/// What the rest of a sentence begins with.
constexpr auto kContinuations = std::to_array<std::string_view>(
    {"and",  "or",      "but",  "nor",  "because", "which", "who",  "whose", "und",  "oder",
     "aber", "sondern", "weil", "dass", "et",      "ou",    "mais", "y",     "pero", "sino"});

/// Whether a sentence begins behind a word and what stands behind that.
bool isBreak(std::string_view word, std::string_view space, Language language) {
    constexpr std::size_t shortest = 3;
    if (space == "? ") return true;
    if (space != ". " || word.size() < shortest || word.contains('.')) return false;
    const std::string lower = lowered(word);
    return !isOneOf(lower, kShortForms) && !lexiconOf(language).abbreviations.contains(lower);
}

bool continues(std::string_view line) {
    for (const TextPiece& piece : piecesOf(line))
        if (piece.isWord) return isOneOf(piece.text, kContinuations);
    return false;
}

/// A line with a capital for each sentence that begins inside it, and for its first word if told.
std::string withCapitalsInside(std::string_view line, Language language, bool isFirstRaised) {
    std::string result;
    bool isRaised = isFirstRaised;
    std::string_view word;
    for (const TextPiece& piece : piecesOf(line)) {
        if (piece.isWord) {
            result += isRaised ? withCapital(piece.text) : std::string(piece.text);
            isRaised = false;
            word = piece.text;
        } else {
            result += piece.text;
            isRaised = isRaised || (!word.empty() && isBreak(word, piece.text, language));
        }
    }
    return result;
}

} // namespace

bool isSmallI(std::string_view word) {
    return word == "i" || word.starts_with("i'") || word.starts_with("i’");
}

std::string inUpperCase(std::string_view text) {
    std::string result;
    icu::UnicodeString::fromUTF8(text).toUpper(icu::Locale::getRoot()).toUTF8String(result);
    return result;
}

std::string inLowerCase(std::string_view text) {
    std::string result;
    icu::UnicodeString::fromUTF8(text).toLower(icu::Locale::getRoot()).toUTF8String(result);
    return result;
}

std::string inTitleCase(std::string_view text, Language language) {
    std::string result;
    for (const std::string_view line : linesOf(text)) {
        if (line.data() != text.data()) result += '\n';
        const std::vector<TextPiece> pieces = piecesOf(line);
        const auto isWord = [](const TextPiece& piece) { return piece.isWord; };
        const auto first = std::ranges::find_if(pieces, isWord);
        const auto last = std::find_if(pieces.rbegin(), pieces.rend(), isWord);
        for (auto piece = pieces.begin(); piece != pieces.end(); ++piece) {
            const bool isInside = piece != first && piece != std::prev(last.base());
            const bool isSmall =
                language == Language::English && isInside &&
                std::ranges::find(kSmallWords, lowered(piece->text)) != kSmallWords.end();
            if (!piece->isWord) {
                result += piece->text;
            } else {
                result += isSmall ? lowered(piece->text) : withCapital(piece->text);
            }
        }
    }
    return result;
}

std::string inSentenceCase(std::string_view text, Language language) {
    const std::string lower = inLowerCase(text);
    std::string result;
    for (const TextPiece& piece : piecesOf(lower)) {
        const bool isI = language == Language::English && piece.isWord && isSmallI(piece.text);
        result += isI ? withCapital(piece.text) : std::string(piece.text);
    }
    return withSentenceCapitals(result, language, true);
}

std::string withSentenceCapitals(std::string_view text, Language language, bool areFragmentsToo) {
    const std::vector<std::string_view> lines = linesOf(text);
    // From the end, since what a block begins with depends on what it ends with.
    std::vector<bool> closes(lines.size() + 1);
    for (std::size_t i = lines.size(); i-- > 0;) {
        const bool isLast = i + 1 == lines.size() || trimmed(lines[i + 1]).empty() ||
                            listMarkerLength(lines[i + 1], lines[i]) > 0;
        closes[i] = isLast ? closesSentence(lines[i]) : closes[i + 1];
    }
    std::string result;
    bool isStart = true;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t marker =
            listMarkerLength(lines[i], i > 0 ? lines[i - 1] : std::string_view());
        const bool isFirst = isStart || marker > 0;
        if (i > 0) result += '\n';
        result += lines[i].substr(0, marker);
        const std::string_view content = lines[i].substr(marker);
        const bool isWhole = closes[i] && (marker > 0 || i > 0 || !continues(content));
        result += withCapitalsInside(content, language, isFirst && (areFragmentsToo || isWhole));
        isStart = trimmed(lines[i]).empty() || closesSentence(lines[i]);
    }
    return result;
}

} // namespace vorq::gateway
