#include "engine/embedded/rewriting/Shortening.h"

#include "engine/embedded/rewriting/Repairs.h"
#include "engine/embedded/rewriting/Shelter.h"
#include "engine/embedded/rewriting/TextPieces.h"
#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <vector>

namespace vorq::gateway {
namespace {

/// Words with single blanks, and what says the same.
struct Filler {
    std::string_view words;
    std::string_view instead;
};

constexpr auto kFillerEnglish = std::to_array<Filler>({
    {"really", ""},
    {"very", ""},
    {"quite", ""},
    {"just", ""},
    {"actually", ""},
    {"basically", ""},
    {"simply", ""},
    {"literally", ""},
    {"essentially", ""},
    {"in order to", "to"},
    {"so as to", "to"},
    {"due to the fact that", "because"},
    {"owing to the fact that", "because"},
    {"despite the fact that", "although"},
    {"in spite of the fact that", "although"},
    {"in the event that", "if"},
    {"at this point in time", "now"},
    {"at the present time", "now"},
    {"in the near future", "soon"},
    {"a large number of", "many"},
    {"the majority of the", "most of the"},
    {"the majority of these", "most of these"},
    {"the majority of those", "most of those"},
    {"the majority of them", "most of them"},
    {"the majority of us", "most of us"},
    {"the majority of our", "most of our"},
    {"the majority of their", "most of their"},
    {"the majority of his", "most of his"},
    {"the majority of her", "most of her"},
    {"the majority of its", "most of its"},
    {"the majority of my", "most of my"},
    {"the majority of your", "most of your"},
    {"the majority of", "most"},
    {"has the ability to", "can"},
    {"have the ability to", "can"},
    {"is able to", "can"},
    {"are able to", "can"},
    {"for the purpose of", "for"},
    {"with regard to", "about"},
    {"it is important to note that", ""},
    {"it should be noted that", ""},
    {"it is worth noting that", ""},
    {"please note that", ""},
    {"needless to say", ""},
    {"as a matter of fact", ""},
    {"the fact of the matter is that", ""},
    {"for all intents and purposes", ""},
});
constexpr auto kFillerGerman = std::to_array<Filler>({
    {"eigentlich", ""},
    {"wirklich", ""},
    {"sehr", ""},
    {"ziemlich", ""},
    {"quasi", ""},
    {"sozusagen", ""},
    {"gewissermaßen", ""},
    {"irgendwie", ""},
    {"aufgrund der tatsache, dass", "weil"},
    {"zum jetzigen zeitpunkt", "jetzt"},
});
constexpr auto kFillerFrench = std::to_array<Filler>({
    {"vraiment", ""},
    {"réellement", ""},
    {"tout simplement", ""},
    {"en quelque sorte", ""},
    {"afin de", "pour"},
    {"dans le but de", "pour"},
    {"en raison du fait que", "parce que"},
});
constexpr auto kFillerSpanish = std::to_array<Filler>({
    {"realmente", ""},
    {"verdaderamente", ""},
    {"básicamente", ""},
    {"simplemente", ""},
    {"con el fin de", "para"},
    {"debido al hecho de que", "porque"},
    {"en este momento", "ahora"},
});

/// What a filler belongs to if it stands before it.
constexpr auto kHoldersBefore = std::to_array<std::string_view>(
    {"not",     "no",     "the",    "this",  "that",  "so",     "too",   "how",
     "as",      "only",   "but",    "never", "nicht", "kein",   "keine", "zu",
     "wie",     "ja",     "pas",    "plus",  "más",   "isn't",  "don't", "didn't",
     "doesn't", "wasn't", "aren't", "won't", "can't", "cannot", "could"});
/// What it belongs to if that stands behind it.
constexpr auto kHoldersBehind =
    std::to_array<std::string_view>({"a", "an", "as", "in", "about", "like", "because", "put",
                                     "much", "geehrte", "geehrter", "cause", "and", "or", "viel"});

std::span<const Filler> fillersOf(Language language) {
    switch (language) {
    case Language::English:
        return kFillerEnglish;
    case Language::German:
        return kFillerGerman;
    case Language::French:
        return kFillerFrench;
    case Language::Spanish:
        return kFillerSpanish;
    default:
        return {};
    }
}

bool isVowel(std::string_view word) {
    return !word.empty() && std::string_view("aeiou").contains(word.front());
}

/// Whether what stands between two parentheses only adds to what is said anyway; not a short form,
/// a number, the end of a word or a condition.
bool isAside(std::string_view content) {
    constexpr std::size_t shortest = 3;
    const bool isNumeral = content.find_first_not_of("ivxlcdm") == std::string_view::npos;
    if (isNumeral || content.find_first_of("<>=+*/\\{}|_&") != std::string_view::npos) return false;
    const bool hasSmallLetter =
        std::ranges::any_of(content, [](char c) { return c >= 'a' && c <= 'z'; });
    const bool isBeyondAscii =
        std::ranges::any_of(content, [](char c) { return (c & '\x80') != 0; });
    return content.size() >= shortest && (hasSmallLetter || isBeyondAscii);
}

/// The end of the parenthesis that begins at `open`; nothing if it does not end soon.
std::optional<std::size_t> closingOf(std::string_view line, std::size_t open) {
    constexpr std::size_t longest = 400; // bytes
    line = line.substr(0, open + longest);
    int depth = 0;
    for (std::size_t at = open; at < line.size(); ++at) {
        if (line[at] == '(') ++depth;
        if (line[at] == ')' && --depth == 0) return at + 1;
    }
    return std::nullopt;
}

std::string withoutParentheses(std::string_view line) {
    std::string result;
    for (std::size_t at = 0; at < line.size();) {
        const bool opens = line[at] == '(' && result.ends_with(' ');
        const auto end = opens ? closingOf(line, at) : std::nullopt;
        if (end && isAside(line.substr(at + 1, *end - at - 2))) {
            result.pop_back();
            at = *end;
            continue;
        }
        result += line[at++];
    }
    return result;
}

bool isDigitAt(std::string_view text, std::size_t at) {
    return at < text.size() && text[at] >= '0' && text[at] <= '9';
}

/// Whether what stands between two dashes is said beside the rest, which are no ranges and no list.
bool isDashedAside(std::string_view content, bool isBesideNumber) {
    constexpr std::size_t longest = 100; // bytes
    const bool isRange = isBesideNumber || isDigitAt(content, 0) ||
                         isDigitAt(content, content.empty() ? 0 : content.size() - 1);
    return !isRange && content.size() <= longest && content.contains(' ') &&
           content.find_first_of(".!?") == std::string_view::npos;
}

/// Without the aside between the two dashes of a line; a line with more or fewer stays.
std::string withoutDashes(std::string_view line) {
    for (const std::string_view dash : {" — ", " – "}) {
        const std::size_t open = line.find(dash);
        if (open == std::string_view::npos) continue;
        const std::size_t begin = open + dash.size();
        const std::size_t close = line.find(dash, begin);
        if (close == std::string_view::npos) continue;
        const std::size_t end = close + dash.size();
        const bool isPair = line.find(dash, end) == std::string_view::npos;
        const bool isBesideNumber = (open > 0 && isDigitAt(line, open - 1)) || isDigitAt(line, end);
        if (isPair && isDashedAside(line.substr(begin, close - begin), isBesideNumber))
            return std::string(line.substr(0, open)).append(" ").append(line.substr(end));
    }
    return std::string(line);
}

/// Leaves filler out of one line.
class Trimmer {
  public:
    Trimmer(std::string_view line, Language language)
        : m_language(language), m_pieces(piecesOf(line)) {}

    std::string run() {
        while (m_at < m_pieces.size()) {
            if (m_pieces[m_at].isWord && leaveOut()) continue;
            add(m_pieces[m_at].text, m_pieces[m_at].isWord);
            ++m_at;
        }
        return std::move(m_result);
    }

  private:
    [[nodiscard]] std::string_view textAt(std::size_t at) const {
        return at < m_pieces.size() ? m_pieces[at].text : std::string_view();
    }

    void add(std::string_view text, bool isWord) {
        m_tail.add(text);
        if (isWord) {
            m_lastWord = lowered(text);
            m_result += m_isRaised ? withCapital(text) : std::string(text);
            m_isRaised = false;
        } else {
            m_result += text;
            if (!trimmed(text).empty()) m_lastWord.clear();
        }
    }

    /// The piece behind the words, if they stand here.
    [[nodiscard]] std::optional<std::size_t> behind(std::string_view words) const {
        std::size_t at = m_at;
        while (true) {
            const std::string text = lowered(textAt(at));
            if (text.empty() || !words.starts_with(text)) return std::nullopt;
            words.remove_prefix(text.size());
            ++at;
            if (words.empty()) break;
        }
        // Not the beginning of a longer word.
        return m_pieces[at - 1].isWord ? std::optional(at) : std::nullopt;
    }

    bool leaveOut() {
        const std::string first = lowered(textAt(m_at));
        for (const Filler& filler : fillersOf(m_language)) {
            if (!filler.words.starts_with(first)) continue;
            const auto end = behind(filler.words);
            if (!end) continue;
            if (filler.instead.empty() ? drop(*end) : replace(*end, filler.instead)) return true;
        }
        return false;
    }

    bool replace(std::size_t end, std::string_view instead) {
        const bool isCapital = decodeIsUpper(textAt(m_at));
        add(isCapital ? withCapital(instead) : std::string(instead), true);
        m_at = end;
        return true;
    }

    bool drop(std::size_t end) {
        const bool isSentenceStart = m_tail.isEmpty() || m_tail.closes();
        // The order of words depends on what a German sentence begins with.
        if (isSentenceStart && m_language != Language::English) return false;
        const std::string_view space = textAt(end);
        const std::string next = lowered(textAt(end + 1));
        if (isOneOf(m_lastWord, kHoldersBefore) || next.empty()) return false;
        if (space == ", " && isSentenceStart) return skip(end + 1, true);
        if (space == ", " && m_result.ends_with(", ")) {
            m_result.resize(m_result.size() - 2);
            m_result += ' ';
            return skip(end + 1, false);
        }
        if (space != " " || isOneOf(next, kHoldersBehind)) return false;
        const bool isAfterArticle = m_lastWord == "a" || m_lastWord == "an";
        if (isAfterArticle && lowered(textAt(m_at)) == "just") return false; // "a just society"
        if (isAfterArticle && isVowel(lowered(textAt(m_at))) != isVowel(next)) return false;
        return skip(end + 1, isSentenceStart && decodeIsUpper(textAt(m_at)));
    }

    bool skip(std::size_t to, bool isRaised) {
        m_at = to;
        m_isRaised = m_isRaised || isRaised;
        return true;
    }

    static bool decodeIsUpper(std::string_view word) {
        return !word.empty() && isUpperCase(decodeAt(word, 0).value);
    }

    Language m_language;
    std::vector<TextPiece> m_pieces;
    std::size_t m_at = 0;
    std::string m_result;
    SentenceTail m_tail;     // of the result, with the commas that were around filler
    std::string m_lastWord;  // in lower case, while only blanks follow it
    bool m_isRaised = false; // the next word begins a sentence now
};

} // namespace

std::string shortened(std::string_view text, Language language) {
    const Shelter shelter(text);
    std::string result;
    for (const std::string_view line : linesOf(shelter.text())) {
        if (line.data() != shelter.text().data()) result += '\n';
        const std::string plain = withoutDashes(withoutParentheses(line));
        const std::string trimmedLine = Trimmer(plain, language).run();
        const bool isChanged = trimmedLine != line;
        result += isChanged ? withRepairedBlanks(trimmedLine, language) : trimmedLine;
    }
    return shelter.restored(result);
}

} // namespace vorq::gateway
