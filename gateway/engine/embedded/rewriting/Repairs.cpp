#include "engine/embedded/rewriting/Repairs.h"

#include "engine/embedded/rewriting/CaseForms.h"
#include "engine/embedded/rewriting/Shelter.h"
#include "engine/embedded/rewriting/TextPieces.h"
#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <span>

namespace vorq::gateway {
namespace {

using Words = std::span<const std::string_view>;

constexpr auto kSingleEnglish = std::to_array<std::string_view>(
    {"a", "an", "the", "of", "to", "and", "for", "with", "at", "or", "we", "he", "she", "they",
     "from", "into", "my", "our", "your"});
constexpr auto kSingleGerman =
    std::to_array<std::string_view>({"und", "oder", "im", "den", "ein", "eine", "für", "wird"});
constexpr auto kSingleFrench =
    std::to_array<std::string_view>({"le", "la", "les", "des", "et", "un", "une", "avec"});
constexpr auto kSingleSpanish =
    std::to_array<std::string_view>({"el", "los", "las", "y", "un", "una", "con"});

/// Words that nobody writes twice in a row on purpose.
Words singleWords(Language language) {
    switch (language) {
    case Language::English:
        return kSingleEnglish;
    case Language::German:
        return kSingleGerman;
    case Language::French:
        return kSingleFrench;
    case Language::Spanish:
        return kSingleSpanish;
    default:
        return {};
    }
}

bool isAsciiBlank(char c) {
    return c == ' ' || c == '\t';
}

bool isBlankRun(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, isAsciiBlank);
}

/// Whether no blank belongs before the mark at `at`.
bool closesUp(std::string_view text, std::size_t at, Language language) {
    const char mark = text[at];
    if (mark == ')') return true;
    const bool isFrenchMark = mark == ';' || mark == ':' || mark == '!' || mark == '?';
    if (language == Language::French && isFrenchMark) return false;
    if (!isFrenchMark && mark != '.' && mark != ',') return false;
    // " :)", " .5", " ..." and the like are no ends of anything.
    return at + 1 == text.size() || isAsciiBlank(text[at + 1]);
}

/// Whether a comma between two words stands between two of a list; not in a path, and not between
/// two letters, as in "N,N-dimethyl".
bool isListed(const TextPiece& before, const TextPiece& behind) {
    return !before.text.contains('/') && (before.text.size() > 1 || behind.text.size() > 1);
}

/// Doubled words, the English "I", and commas without a blank behind them.
std::string withRepairedWords(std::string_view line, Language language) {
    const Words singles = singleWords(language);
    const std::vector<TextPiece> pieces = piecesOf(line);
    std::string result;
    std::string last;    // the word before, in lower case, while only blanks follow it
    std::size_t end = 0; // of that word
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const TextPiece& piece = pieces[i];
        if (!piece.isWord) {
            const bool isBare = (piece.text == "," || piece.text == ";") && i > 0 &&
                                i + 1 < pieces.size() && isListed(pieces[i - 1], pieces[i + 1]);
            if (!isBlankRun(piece.text)) last.clear();
            result.append(piece.text).append(isBare ? " " : "");
            continue;
        }
        const std::string lower = lowered(piece.text);
        if (lower == last && std::ranges::find(singles, lower) != singles.end()) {
            result.resize(end);
            continue;
        }
        const bool isNumeral =
            result.ends_with('(') && i + 1 < pieces.size() && pieces[i + 1].text.starts_with(')');
        const bool isI = language == Language::English && isSmallI(piece.text) && !isNumeral;
        result += isI ? withCapital(piece.text) : std::string(piece.text);
        last = lower;
        end = result.size();
    }
    return result;
}

/// Whether a quotation mark behind the text opens.
bool isOpeningPlace(std::string_view before) {
    static constexpr auto ends =
        std::to_array<std::string_view>({" ", "\t", "\n", "(", "[", "—", "–", "“", "‘", "\""});
    const auto isEnd = [before](std::string_view end) { return before.ends_with(end); };
    return before.empty() || std::ranges::any_of(ends, isEnd);
}

/// Whether the parenthesis that the text ends with is the mouth of a face.
bool endsWithFace(std::string_view text) {
    const auto isEnd = [text](std::string_view end) { return text.ends_with(end); };
    return std::ranges::any_of(std::to_array<std::string_view>({":(", ";(", "=(", ":-(", ":'("}),
                               isEnd);
}

/// Straight quotes as curly ones, in an English text that has such.
std::string withOneKindOfQuotes(std::string_view text) {
    const bool hasQuotes = text.contains("“") || text.contains("”");
    const bool hasApostrophes = text.contains("’");
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const bool isOpening = isOpeningPlace(text.substr(0, at));
        if (c == '"' && hasQuotes) {
            result += isOpening ? "“" : "”";
        } else if (c == '\'' && hasApostrophes && !isOpening) {
            result += "’";
        } else {
            result += c;
        }
    }
    return result;
}

std::string repairedLines(std::string_view text, Language language) {
    std::string result;
    for (const std::string_view line : linesOf(text)) {
        if (line.data() != text.data()) result += '\n';
        result += withRepairedWords(withRepairedBlanks(line, language), language);
    }
    // What ends no sentence may be part of one.
    result = withSentenceCapitals(result, language, false);
    return language == Language::English ? withOneKindOfQuotes(result) : result;
}

} // namespace

std::string withRepairedBlanks(std::string_view line, Language language) {
    const std::size_t marker = listMarkerLength(line);
    const std::size_t begin = std::min(line.find_first_not_of(" \t", marker), line.size());
    std::string result(line.substr(0, begin));
    if (begin == line.size()) result.resize(marker);
    for (std::size_t at = begin; at < line.size(); ++at) {
        if (!isAsciiBlank(line[at])) {
            result += line[at];
            continue;
        }
        const std::size_t next = std::min(line.find_first_not_of(" \t", at), line.size());
        const bool isDropped = next == line.size() || closesUp(line, next, language) ||
                               (result.ends_with('(') && !endsWithFace(result));
        if (!isDropped) result += ' ';
        at = next - 1;
    }
    return result;
}

std::string repaired(std::string_view text, Language language) {
    constexpr std::string_view fence = "```";
    std::string result;
    for (bool isCode = false;; isCode = !isCode) {
        const std::size_t end = text.find(fence);
        const std::string_view part = text.substr(0, end);
        const Shelter shelter(isCode ? std::string_view() : part);
        result +=
            isCode ? std::string(part) : shelter.restored(repairedLines(shelter.text(), language));
        if (end == std::string_view::npos) return result;
        result += fence;
        text.remove_prefix(end + fence.size());
    }
}

} // namespace vorq::gateway
