#include "engine/embedded/Words.h"

#include "engine/embedded/StopWords.h"
#include "support/Utf8.h"

#include <algorithm>
#include <array>

namespace vorq::gateway {
namespace {

// Neither Chinese nor Japanese puts blanks between words. In Japanese a run of Han characters is
// mostly one word; in Chinese it is cut at the characters that only carry grammar, and then evenly.
constexpr std::size_t kLongestChineseRun = 4;
constexpr std::size_t kLongestJapaneseRun = 8;
constexpr std::u32string_view kChineseGrammar =
    U"的了是在和与或也而及把被让这那它他她我你们吗呢吧着很其从对由";
constexpr std::size_t kLongestWord = 120; // bytes; whatever is longer is no word to ask about

enum class Script { None, Letters, Han, Katakana, Hiragana };

Script scriptOf(char32_t c) {
    if (c < 0x80) return isWordCharacter(c) ? Script::Letters : Script::None;
    if (isHan(c)) return Script::Han;
    if (isKatakana(c)) return Script::Katakana;
    if (isHiragana(c)) return Script::Hiragana;
    return isWordCharacter(c) ? Script::Letters : Script::None;
}

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool endsLikeOneOf(std::string_view word, std::initializer_list<std::string_view> endings) {
    return std::ranges::any_of(endings, [&](std::string_view e) { return word.ends_with(e); });
}

std::string stemmed(std::string word) {
    if (!isAscii(word)) return word;
    const auto cut = [&](std::string_view ending, std::size_t least) {
        const bool fits = word.ends_with(ending) && word.size() >= least + ending.size();
        if (fits) word.resize(word.size() - ending.size());
        return fits;
    };
    cut("'s", 1);
    if (cut("ies", 2)) {
        word += 'y';
    } else if (endsLikeOneOf(word, {"sses", "xes", "ches", "shes", "zes"})) {
        cut("es", 2);
    } else if (!endsLikeOneOf(word, {"ss", "us", "is"})) {
        cut("s", 3);
    }
    const bool shortened = cut("ing", 3) || cut("ed", 3);
    const std::size_t n = word.size();
    if (shortened && n > 3 && word[n - 1] == word[n - 2] && word[n - 1] != 'l') word.pop_back();
    cut("e", 3);
    return word;
}

bool isNumeric(std::string_view word) {
    return std::ranges::all_of(word, [](char c) { return c >= '0' && c <= '9'; });
}

bool joinsWord(std::string_view text, std::size_t at) {
    const char c = text[at];
    if (c != '\'' && c != '-' && c != '.' && c != ',') {
        return text.substr(at).starts_with("\u2019");
    }
    return true;
}

bool isDigitAt(std::string_view text, std::size_t at) {
    return at < text.size() && text[at] >= '0' && text[at] <= '9';
}

/// The apostrophe at `at` ends an article or the like, as in "l'eau" and "qu'il".
bool isElision(std::string_view text, std::size_t begin, std::size_t at) {
    if (text[at] != '\'' && !text.substr(at).starts_with("\u2019")) return false;
    static constexpr auto elided = std::to_array<std::string_view>(
        {"l", "d", "j", "c", "n", "s", "m", "t", "qu", "dell", "all", "un", "lorsqu", "puisqu"});
    return std::ranges::find(elided, lowered(text.substr(begin, at - begin))) != elided.end();
}

/// The end of the run of letters that begins at `begin`: a hyphen or an apostrophe inside a word
/// and a point or comma inside a number belong to it.
std::size_t endOfLetters(std::string_view text, std::size_t begin) {
    std::size_t i = begin;
    while (i < text.size()) {
        const CodePoint c = decodeAt(text, i);
        if (scriptOf(c.value) == Script::Letters) {
            i += c.length;
            continue;
        }
        if (i == begin || !joinsWord(text, i) || isElision(text, begin, i)) break;
        const std::size_t next = i + c.length;
        const bool inNumber = text[i] == '.' || text[i] == ',';
        if (inNumber && !(isDigitAt(text, i - 1) && isDigitAt(text, next))) break;
        if (next >= text.size() || scriptOf(decodeAt(text, next).value) != Script::Letters) break;
        i = next;
    }
    return i;
}

std::size_t endOfRun(std::string_view text, std::size_t begin, Script script, bool isJapanese) {
    if (script == Script::Letters) return endOfLetters(text, begin);
    const std::size_t longestHan = isJapanese ? kLongestJapaneseRun : kLongestChineseRun;
    const std::size_t most = script == Script::Han ? longestHan : text.size();
    std::size_t i = begin;
    for (std::size_t count = 0; i < text.size() && count < most; ++count) {
        const CodePoint c = decodeAt(text, i);
        if (scriptOf(c.value) != script) break;
        if (!isJapanese && kChineseGrammar.contains(c.value)) return count == 0 ? i + c.length : i;
        i += c.length;
    }
    return i;
}

bool hasKana(std::string_view text) {
    for (std::size_t at = text.find('\xE3'); at != std::string_view::npos;
         at = text.find('\xE3', at + 1)) {
        const char32_t c = decodeAt(text, at).value;
        if (isHiragana(c) || isKatakana(c)) return true;
    }
    return false;
}

Word wordAt(std::string_view text, std::size_t begin, std::size_t end, Script script) {
    const std::string_view surface = text.substr(begin, end - begin);
    Word word;
    word.offset = begin;
    word.length = surface.size();
    const std::string lower = lowered(clipped(surface, kLongestWord));
    word.isNumber = isDigitAt(text, begin);
    word.isCapitalised = script == Script::Letters && isUpperCase(decodeAt(text, begin).value);
    const bool longEnough = script == Script::Letters ? lower.size() >= 3 : lower.size() >= 6;
    word.isContent = longEnough && surface.size() <= kLongestWord && !isNumeric(lower) &&
                     script != Script::Hiragana && !isStopWord(lower);
    word.key = script == Script::Letters ? stemmed(lower) : lower;
    return word;
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

std::vector<Word> wordsOf(std::string_view text) {
    std::vector<Word> words;
    bool direct = false;
    const bool isJapanese = hasKana(text);
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint c = decodeAt(text, i);
        const Script script = scriptOf(c.value);
        if (script == Script::None) {
            direct = direct && isBlank(c.value);
            i += c.length;
            continue;
        }
        if (const std::size_t end = endOfAddress(text, i); end > i) {
            // No word to ask about or to count.
            direct = false;
            i = end;
            continue;
        }
        const std::size_t end = endOfRun(text, i, script, isJapanese);
        words.push_back(wordAt(text, i, end, script));
        words.back().followsDirectly = direct;
        direct = true;
        i = end;
    }
    return words;
}

} // namespace vorq::gateway
