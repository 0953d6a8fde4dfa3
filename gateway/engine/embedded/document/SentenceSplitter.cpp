#include "engine/embedded/document/SentenceSplitter.h"

#include "engine/embedded/words/Lexicon.h"
#include "support/Utf8.h"

#include <unicode/brkiter.h>
#include <unicode/filteredbrk.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLongestSentence = 1000; // bytes; longer ones are cut at a blank
constexpr std::size_t kLongestWordBefore = 24; // bytes

bool isDigitIn(std::string_view text, std::size_t at) {
    return at < text.size() && text[at] >= '0' && text[at] <= '9';
}

/// The word that ends right before `end`, lower-cased.
std::string wordBefore(std::string_view text, std::size_t end) {
    const std::size_t from = end > kLongestWordBefore ? end - kLongestWordBefore : 0;
    std::string_view word = text.substr(from, end - from);
    const std::size_t blank = word.find_last_of(" (\"[");
    if (blank != std::string_view::npos) word.remove_prefix(blank + 1);
    return lowered(word);
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    while (!text.empty() && isBlank(decodeAt(text, 0).value))
        text.remove_prefix(decodeAt(text, 0).length);
    return text;
}

std::string_view firstWordIn(std::string_view text) {
    std::size_t end = 0;
    while (end < text.size() && isWordCharacter(decodeAt(text, end).value))
        end += decodeAt(text, end).length;
    return text.substr(0, end);
}

/// The end without brackets and quotation marks that open what comes next, which ICU counts to the
/// sentence before them where no blank stands between.
std::size_t withoutOpeners(std::string_view paragraph, std::size_t begin, std::size_t end) {
    static constexpr std::u32string_view openers = U"「『（《〈【“‘„«([¿¡";
    while (end > begin) {
        std::size_t last = end - 1;
        while (last > begin && (static_cast<unsigned char>(paragraph[last]) & 0xC0U) == 0x80U)
            --last;
        if (!openers.contains(decodeAt(paragraph, last).value)) break;
        end = last;
    }
    return end;
}

/// "Do you play?" she asked.
bool closesSpeech(std::string_view text) {
    static constexpr auto marks =
        std::to_array<std::string_view>({"\"", "\u201D", "\u201C", "\u2019", "\u00BB", "\u00AB"});
    return std::ranges::any_of(marks, [&](std::string_view mark) { return text.ends_with(mark); });
}

bool isLowerCase(char32_t c) {
    return u_islower(static_cast<UChar32>(c)) != 0;
}

void addPieces(std::string_view sentence, const std::function<void(std::string_view)>& found) {
    sentence = trimmed(sentence);
    while (sentence.size() > kLongestSentence) {
        std::size_t end = sentence.substr(0, kLongestSentence).find_last_of(' ');
        if (end == std::string_view::npos || end < kLongestSentence / 2) {
            end = kLongestSentence;
            while ((static_cast<unsigned char>(sentence[end]) & 0xC0U) == 0x80U)
                --end;
        }
        found(trimmed(sentence.substr(0, end)));
        sentence.remove_prefix(end);
        while (sentence.starts_with(' '))
            sentence.remove_prefix(1);
    }
    if (!sentence.empty()) found(sentence);
}

} // namespace

/// ICU's sentence boundaries, and what it knows of the locale's abbreviations.
struct SentenceSplitter::Breaks {
    explicit Breaks(Language language) {
        const icu::Locale locale(std::string(dataOf(language).locale).c_str());
        UErrorCode status = U_ZERO_ERROR;
        all.reset(icu::BreakIterator::createSentenceInstance(locale, status));
        if (U_FAILURE(status)) throw std::runtime_error("ICU finds no sentences.");
        // There are none for some languages, Chinese among them.
        std::unique_ptr<icu::FilteredBreakIteratorBuilder> filter(
            icu::FilteredBreakIteratorBuilder::createInstance(locale, status));
        if (U_FAILURE(status)) return;
        filtered.reset(filter->wrapIteratorWithFilter(all->clone(), status));
        if (U_FAILURE(status)) filtered.reset();
    }
    ~Breaks() { utext_close(&text); }
    Breaks(const Breaks&) = delete;
    Breaks& operator=(const Breaks&) = delete;

    void find(std::string_view paragraph, std::vector<std::size_t>& ends) {
        UErrorCode status = U_ZERO_ERROR;
        utext_openUTF8(&text, paragraph.data(), static_cast<std::int64_t>(paragraph.size()),
                       &status);
        all->setText(&text, status);
        if (U_FAILURE(status)) throw std::runtime_error("ICU cannot read a text.");
        hasFilteredText = false;
        ends.clear();
        all->first();
        for (std::int32_t end = all->next(); end != icu::BreakIterator::DONE; end = all->next())
            ends.push_back(static_cast<std::size_t>(end));
    }

    /// Whether the locale has an abbreviation that ends at `end`.
    bool isAbbreviation(std::size_t end) {
        if (!filtered) return false;
        UErrorCode status = U_ZERO_ERROR;
        if (!hasFilteredText) filtered->setText(&text, status);
        hasFilteredText = U_SUCCESS(status);
        return hasFilteredText && filtered->isBoundary(static_cast<std::int32_t>(end)) == 0;
    }

    UText text = UTEXT_INITIALIZER;
    std::unique_ptr<icu::BreakIterator> all;
    std::unique_ptr<icu::BreakIterator> filtered;
    bool hasFilteredText = false;
};

SentenceSplitter::SentenceSplitter(Language language)
    : m_language(language), m_breaks(std::make_unique<Breaks>(language)) {}

SentenceSplitter::~SentenceSplitter() = default;

/// A grammar word with a capital, as in "p.m. Then", opens a sentence.
bool SentenceSplitter::opensSentence(std::string_view next) const {
    const std::string_view word = firstWordIn(next);
    const bool isInitial = next.substr(word.size()).starts_with('.');
    return !word.empty() && !isInitial && isUpperCase(decodeAt(word, 0).value) && word != "I" &&
           lexiconOf(m_language).isStop(lowered(word));
}

/// "am 1. September", "das 2. Quartal": in German the point makes an ordinal.
bool SentenceSplitter::isOrdinal(std::string_view paragraph, std::size_t point,
                                 std::string_view next) const {
    if (m_language != Language::German || !isDigitIn(paragraph, point - 1)) return false;
    std::size_t begin = point;
    while (begin > 0 && isDigitIn(paragraph, begin - 1))
        --begin;
    if (point - begin > 2) return false;
    const Lexicon& lexicon = lexiconOf(m_language);
    if (lexicon.roleOf(lowered(firstWordIn(next))).isCalendar) return true;
    if (begin < 2 || opensSentence(next)) return false;
    static constexpr std::string_view before = "seit|ab|bis|und|als|oder|vor|nach|von|alle|jeden";
    const std::string word = wordBefore(paragraph, begin - 1);
    return lexicon.roleOf(word).isDeterminer ||
           ("|" + std::string(before) + "|").contains("|" + word + "|");
}

/// Whether the point behind `word` belongs to it: "Dr.", "e.g.", the "J." of a name.
bool SentenceSplitter::isShortened(std::string_view word, bool isCapital, std::size_t end) const {
    constexpr std::size_t longest = 6; // bytes of what ICU's lists are asked for
    if (word.empty() || isDigitIn(word, word.size() - 1)) return false;
    const bool isLetter = decodeAt(word, 0).length == word.size() && !isDigitIn(word, 0);
    if (isLetter) return isCapital && word != "i";
    if (lexiconOf(m_language).abbreviations.contains(word)) return true;
    // They match any word that ends like an abbreviation, so that only likely ones are asked for.
    const WordRole role = lexiconOf(m_language).roleOf(word);
    if (role.isPale || role.isStop || role.isCalendar) return false; // a whole word: "19 Uhr."
    const bool isLikely = (isCapital && word.size() <= longest) || word.contains('.');
    return isLikely && m_breaks->isAbbreviation(end);
}

/// Whether what ICU takes for the end of a sentence at `end` is none.
bool SentenceSplitter::continuesBehind(std::string_view paragraph, std::size_t end) const {
    const std::string_view next = withoutLeadingBlanks(paragraph.substr(end));
    std::size_t last = end;
    while (last > 0 && paragraph[last - 1] == ' ')
        --last;
    if (next.empty() || last < 2 || last == end) return false;
    const bool goesOn = isLowerCase(decodeAt(next, 0).value);
    if (goesOn && closesSpeech(paragraph.substr(0, last))) return true;
    if (paragraph[last - 1] != '.') return false;
    const std::size_t point = last - 1;
    if (isOrdinal(paragraph, point, next)) return true;
    // An abbreviation may also end a sentence: "at 9 p.m. Then …", "in the U.S. She …".
    if (opensSentence(next)) return false;
    const std::string word = wordBefore(paragraph, point);
    if (word == "no" && !isDigitIn(next, 0)) return false;
    const bool isCapital =
        word.size() <= point && isUpperCase(decodeAt(paragraph, point - word.size()).value);
    return isShortened(word, isCapital, end);
}

void SentenceSplitter::split(std::string_view paragraph,
                             const std::function<void(std::string_view)>& found) {
    paragraph = trimmed(paragraph);
    if (paragraph.empty()) return;
    m_breaks->find(paragraph, m_ends);
    std::size_t begin = 0;
    for (const std::size_t end : m_ends) {
        if (end < paragraph.size() && continuesBehind(paragraph, end)) continue;
        const std::size_t closed = withoutOpeners(paragraph, begin, end);
        addPieces(paragraph.substr(begin, closed - begin), found);
        begin = closed;
    }
    if (begin < paragraph.size()) addPieces(paragraph.substr(begin), found);
}

std::vector<std::string> splitSentences(std::string_view paragraph, Language language) {
    std::vector<std::string> sentences;
    SentenceSplitter(language).split(
        paragraph, [&](std::string_view sentence) { sentences.emplace_back(sentence); });
    return sentences;
}

} // namespace vorq::gateway
