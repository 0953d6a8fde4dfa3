#include "engine/embedded/words/Words.h"

#include "engine/embedded/words/KeyTable.h"
#include "engine/embedded/words/Lexicon.h"
#include "support/Utf8.h"

#include <libstemmer.h>
#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLongestWord = 120; // bytes; whatever is longer is no word to ask about
constexpr std::size_t kCutByDictionary = 300'000; // bytes of unspaced text
constexpr std::size_t kLongestKnownWord = 5;      // characters
constexpr std::size_t kLongestRun = 3000;         // bytes of unspaced text that are cut at a time

/// Written without blanks between words.
bool isUnspaced(char32_t c) {
    return isHan(c) || isKatakana(c) || isHiragana(c) || (c >= 0x0E00 && c <= 0x0EFF) ||
           (c >= 0x1780 && c <= 0x17FF) || (c >= 0x1000 && c <= 0x109F);
}

bool isDigitAt(std::string_view text, std::size_t at) {
    return at < text.size() && text[at] >= '0' && text[at] <= '9';
}

bool isApostrophe(std::string_view text, std::size_t at) {
    return text[at] == '\'' || text.substr(at).starts_with("\u2019");
}

/// The apostrophe at `at` ends an article or the like, as in "l'eau" and "qu'il".
bool isElision(std::string_view text, std::size_t begin, std::size_t at) {
    constexpr std::size_t longest = 7; // bytes of "lorsqu"
    if (!isApostrophe(text, at) || at - begin > longest) return false;
    static constexpr auto elided =
        std::to_array<std::string_view>({"l", "d", "j", "c", "n", "s", "m", "t", "qu", "dell",
                                         "all", "nell", "sull", "un", "jusqu", "lorsqu", "puisqu"});
    return std::ranges::find(elided, lowered(text.substr(begin, at - begin))) != elided.end();
}

/// Whether the mark at `at` stands inside a word: a hyphen, an apostrophe, or in a number a point,
/// a comma or a colon.
bool joinsWord(std::string_view text, std::size_t at, std::size_t next) {
    const char c = text[at];
    if (c == '.' || c == ',' || c == ':') return isDigitAt(text, at - 1) && isDigitAt(text, next);
    return c == '-' || isApostrophe(text, at);
}

bool isNumeric(std::string_view word) {
    return std::ranges::all_of(
        word, [](char c) { return (c >= '0' && c <= '9') || c == '.' || c == ',' || c == ':'; });
}

/// Hiragana alone is mostly grammar.
bool isHiraganaOnly(std::string_view word) {
    for (std::size_t i = 0; i < word.size(); i += decodeAt(word, i).length) {
        if (!isHiragana(decodeAt(word, i).value)) return false;
    }
    return true;
}

bool beginsWithNumeral(std::string_view word) {
    static constexpr std::u32string_view numerals = U"一二三四五六七八九十百千万亿億两";
    return numerals.contains(decodeAt(word, 0).value);
}

/// The end of the web address that begins at `begin`, or `begin` if there is none.
std::size_t endOfAddress(std::string_view text, std::size_t begin) {
    const std::string_view rest = text.substr(begin);
    if (!rest.starts_with("http://") && !rest.starts_with("https://") &&
        !rest.starts_with("www.")) {
        return begin;
    }
    return begin + std::min(rest.find_first_of(" \t\n\"<>)"), rest.size());
}

} // namespace

/// What a word is wherever it stands.
struct KnownForm {
    std::string key;
    bool isContent = false;
    bool isPale = false;
    bool isNumber = false;
    bool isCapitalised = false;
    bool precedesNoun = false;
    bool isPersonal = false;
};

struct WordReader::Tools {
    explicit Tools(const Lexicon& ofLanguage) : lexicon(ofLanguage), locale(lexicon.data.locale) {
        if (lexicon.data.stemmer.empty()) return;
        stemmer = sb_stemmer_new(std::string(lexicon.data.stemmer).c_str(), nullptr);
        if (stemmer == nullptr) throw std::runtime_error("Snowball lacks a language.");
    }
    ~Tools() {
        sb_stemmer_delete(stemmer);
        utext_close(&text);
    }
    Tools(const Tools&) = delete;
    Tools& operator=(const Tools&) = delete;

    /// Looks a form up once; most words of a text come again and again.
    const KnownForm& form(std::string_view surface, bool isUnspacedRun) {
        constexpr std::size_t mostKnown = 50'000;
        if (forms.size() >= mostKnown) {
            surfaces = {};
            forms.clear();
        }
        const std::uint32_t number = surfaces.add(surface);
        if (number == forms.size()) forms.push_back(read(surface, isUnspacedRun));
        return forms[number];
    }

    [[nodiscard]] KnownForm read(std::string_view surface, bool isUnspacedRun) const {
        KnownForm form;
        form.key = lowered(clipped(surface, kLongestWord));
        const bool isPossessive = withoutPossessive(form.key).size() < form.key.size();
        form.key.resize(withoutPossessive(form.key).size());
        form.isNumber = isDigitAt(surface, 0);
        form.isCapitalised = !isUnspacedRun && isUpperCase(decodeAt(surface, 0).value);
        const WordRole role = lexicon.roleOf(form.key);
        form.precedesNoun = role.isDeterminer || role.isPreposition;
        form.isPersonal = role.isPersonal;
        const bool isLetter = decodeAt(surface, 0).length == surface.size();
        form.isContent = (isUnspacedRun || !isLetter) && surface.size() <= kLongestWord &&
                         !isNumeric(form.key) && !role.isStop &&
                         !(isUnspacedRun && isHiraganaOnly(surface));
        form.isPale = form.isContent && (role.isPale || role.isCalendar || isPossessive ||
                                         (isUnspacedRun && beginsWithNumeral(surface)));
        if (!isUnspacedRun && !form.isNumber) stem(form.key);
        return form;
    }

    void stem(std::string& word) const {
        if (stemmer == nullptr) return;
        const auto* letters = reinterpret_cast<const sb_symbol*>(word.data());
        const sb_symbol* stem = sb_stemmer_stem(stemmer, letters, static_cast<int>(word.size()));
        if (stem == nullptr) return;
        const auto length = static_cast<std::size_t>(sb_stemmer_length(stemmer));
        if (length > 0) word.assign(reinterpret_cast<const char*>(stem), length);
    }

    /// The end of the longest word at `begin` that has come before, else of one character.
    [[nodiscard]] std::size_t endOfKnown(std::string_view whole, std::size_t begin) const {
        std::size_t end = begin + decodeAt(whole, begin).length;
        std::size_t known = end;
        for (std::size_t count = 1; count < kLongestKnownWord && end < whole.size(); ++count) {
            const CodePoint c = decodeAt(whole, end);
            if (!isUnspaced(c.value)) break;
            end += c.length;
            if (surfaces.find(whole.substr(begin, end - begin)) != KeyTable::kNone) known = end;
        }
        return known;
    }

    /// Cuts the run of unspaced characters from `begin` to `end` into words.
    void cut(std::string_view whole, std::size_t begin, std::size_t end) {
        UErrorCode status = U_ZERO_ERROR;
        if (!words) {
            words.reset(
                icu::BreakIterator::createWordInstance(icu::Locale(locale.c_str()), status));
        }
        cutBytes += end - begin;
        utext_openUTF8(&text, whole.data() + begin, static_cast<std::int64_t>(end - begin),
                       &status);
        if (U_FAILURE(status)) throw std::runtime_error("ICU finds no words.");
        words->setText(&text, status);
        ends.clear();
        words->first();
        for (std::int32_t at = words->next(); at != icu::BreakIterator::DONE; at = words->next())
            ends.push_back(begin + static_cast<std::size_t>(at));
        std::ranges::reverse(ends);
    }

    const Lexicon& lexicon;
    std::string locale;
    KeyTable surfaces;
    std::vector<KnownForm> forms;
    sb_stemmer* stemmer = nullptr;
    std::unique_ptr<icu::BreakIterator> words;
    std::size_t cutBytes = 0;
    UText text = UTEXT_INITIALIZER;
    /// The ends of the words still to come, the next one last.
    std::vector<std::size_t> ends;
};

WordReader::WordReader(Language language) : m_tools(std::make_unique<Tools>(lexiconOf(language))) {}

WordReader::~WordReader() = default;

void WordReader::begin(std::string_view text) {
    m_text = text;
    m_at = 0;
    m_direct = false;
    m_tools->ends.clear();
}

std::size_t WordReader::endOfLetters(std::size_t begin) const {
    std::size_t i = begin;
    while (i < m_text.size()) {
        const CodePoint c = decodeAt(m_text, i);
        if (isWordCharacter(c.value) && !isUnspaced(c.value)) {
            i += c.length;
            continue;
        }
        const std::size_t next = i + c.length;
        if (i == begin || next >= m_text.size() || !joinsWord(m_text, i, next)) break;
        const char32_t following = decodeAt(m_text, next).value;
        if (!isWordCharacter(following) || isUnspaced(following) || isElision(m_text, begin, i)) {
            break;
        }
        i = next;
    }
    return i;
}

void WordReader::fill(FoundWord& word, std::size_t end, bool isUnspacedRun) {
    const std::string_view surface = m_text.substr(m_at, end - m_at);
    const KnownForm& form = m_tools->form(surface, isUnspacedRun);
    word.offset = m_at;
    word.length = surface.size();
    word.key = form.key;
    word.isContent = form.isContent;
    word.isPale = form.isPale;
    word.isNumber = form.isNumber;
    word.isCapitalised = form.isCapitalised;
    word.precedesNoun = form.precedesNoun;
    word.isPersonal = form.isPersonal;
    word.followsDirectly = m_direct;
    m_direct = true;
    m_at = end;
}

/// The end of the unspaced word at the place that is read: by dictionary, which takes its time, and
/// in a long text after a while by the words that the dictionary gave before.
std::size_t WordReader::endOfUnspaced() {
    std::vector<std::size_t>& ends = m_tools->ends;
    while (!ends.empty() && ends.back() <= m_at)
        ends.pop_back();
    const bool isByDictionary = !ends.empty() || m_tools->cutBytes < kCutByDictionary;
    if (ends.empty() && isByDictionary) {
        std::size_t last = std::min(m_text.size(), m_at + kLongestRun);
        while (last < m_text.size() && (static_cast<unsigned char>(m_text[last]) & 0xC0U) == 0x80U)
            --last;
        m_tools->cut(m_text, m_at, last);
    }
    std::size_t end = isByDictionary ? m_at : m_tools->endOfKnown(m_text, m_at);
    while (isByDictionary && end < ends.back() && isUnspaced(decodeAt(m_text, end).value))
        end += decodeAt(m_text, end).length;
    // A foreign word or a name in Katakana stays whole, whatever the dictionary knows of it.
    if (!isKatakana(decodeAt(m_text, m_at).value)) return end;
    while (end < m_text.size() && isKatakana(decodeAt(m_text, end).value))
        end += decodeAt(m_text, end).length;
    return end;
}

bool WordReader::next(FoundWord& word) {
    while (m_at < m_text.size()) {
        const CodePoint c = decodeAt(m_text, m_at);
        if (!isWordCharacter(c.value)) {
            m_direct = m_direct && isBlank(c.value);
            m_at += c.length;
            continue;
        }
        if (isUnspaced(c.value)) {
            fill(word, endOfUnspaced(), true);
            return true;
        }
        if (const std::size_t end = endOfAddress(m_text, m_at); end > m_at) {
            m_direct = false; // No word to ask about or to count.
            m_at = end;
            continue;
        }
        fill(word, endOfLetters(m_at), false);
        return true;
    }
    return false;
}

std::string_view withoutPossessive(std::string_view word) {
    for (std::string_view ending : {"'s", "\u2019s"}) {
        if (word.ends_with(ending)) return word.substr(0, word.size() - ending.size());
    }
    return word;
}

std::vector<FoundWord> wordsOf(std::string_view text, Language language) {
    std::vector<FoundWord> words;
    WordReader reader(language);
    reader.begin(text);
    for (FoundWord word; reader.next(word);)
        words.push_back(word);
    return words;
}

} // namespace vorq::gateway
