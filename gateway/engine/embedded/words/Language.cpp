#include "engine/embedded/words/Language.h"

#include "engine/embedded/words/Lexicon.h"
#include "support/Utf8.h"

#include <cld2/public/compact_lang_det.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLooked = 20'000;   // bytes of a text by which its language is told
constexpr std::size_t kShortText = 150;   // bytes; statistics of letters say little of fewer
constexpr std::size_t kLongRequest = 400; // bytes of a request that are looked at

struct ScriptCounts {
    std::size_t han = 0;
    std::size_t kana = 0;
    std::size_t arabic = 0;
    std::size_t cyrillic = 0;
    std::size_t latin = 0;
};

ScriptCounts scriptsIn(std::string_view text) {
    ScriptCounts counts;
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint c = decodeAt(text, i);
        i += c.length;
        if (isHan(c.value)) ++counts.han;
        if (isHiragana(c.value) || isKatakana(c.value)) ++counts.kana;
        if (c.value >= 0x620 && c.value <= 0x64A) ++counts.arabic;
        if (c.value >= 0x400 && c.value <= 0x52F) ++counts.cyrillic;
        if (c.value < 0x250 && isWordCharacter(c.value) && !(c.value >= '0' && c.value <= '9')) {
            ++counts.latin;
        }
    }
    return counts;
}

/// A script that only one of the known languages is written in, by far.
std::optional<Language> byScript(const ScriptCounts& counts) {
    const std::size_t others =
        counts.latin / 3; // A Chinese character says as much as three letters.
    if (counts.kana * 8 > counts.han && counts.kana + counts.han > others && counts.kana > 0) {
        return Language::Japanese;
    }
    if (counts.han > others && counts.han > 0) return Language::Chinese;
    return std::nullopt;
}

/// How many words of `text` are grammar words of the language.
std::size_t grammarWords(std::string_view text, Language language) {
    const Lexicon& lexicon = lexiconOf(language);
    std::size_t found = 0;
    std::size_t begin = 0;
    const std::string lower = lowered(text);
    for (std::size_t i = 0; i <= lower.size();) {
        const CodePoint c = i < lower.size() ? decodeAt(lower, i) : CodePoint{U' ', 1};
        if (!isWordCharacter(c.value)) {
            const std::string_view word = std::string_view(lower).substr(begin, i - begin);
            if (lexicon.isStop(word)) ++found;
            begin = i + c.length;
        }
        i += c.length;
    }
    return found;
}

constexpr std::array kSpaced{Language::English, Language::German,  Language::French,
                             Language::Spanish, Language::Italian, Language::Portuguese,
                             Language::Dutch,   Language::Russian, Language::Arabic};

/// The language with most grammar words; `likely` among equals.
Language byGrammarWords(std::string_view text, Language likely) {
    Language best = likely;
    std::size_t most = grammarWords(text, likely);
    for (const Language language : kSpaced) {
        const std::size_t found = grammarWords(text, language);
        if (found > most) best = language, most = found;
    }
    return best;
}

std::optional<Language> known(CLD2::Language language) {
    switch (language) {
    case CLD2::ENGLISH:
        return Language::English;
    case CLD2::GERMAN:
        return Language::German;
    case CLD2::FRENCH:
        return Language::French;
    case CLD2::SPANISH:
        return Language::Spanish;
    case CLD2::PORTUGUESE:
        return Language::Portuguese;
    case CLD2::ITALIAN:
        return Language::Italian;
    case CLD2::DUTCH:
        return Language::Dutch;
    case CLD2::RUSSIAN:
        return Language::Russian;
    case CLD2::ARABIC:
        return Language::Arabic;
    case CLD2::CHINESE:
    case CLD2::CHINESE_T:
        return Language::Chinese;
    case CLD2::JAPANESE:
        return Language::Japanese;
    default:
        return std::nullopt;
    }
}

std::string_view beginning(std::string_view text, std::size_t most) {
    if (text.size() <= most) return text;
    while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80U)
        --most;
    return text.substr(0, most);
}

} // namespace

Language languageOf(std::string_view text) {
    text = beginning(text, kLooked);
    const ScriptCounts counts = scriptsIn(text);
    if (const std::optional<Language> language = byScript(counts)) return *language;
    const Language fallback = counts.arabic > counts.latin     ? Language::Arabic
                              : counts.cyrillic > counts.latin ? Language::Russian
                                                               : Language::English;
    const Language byWords = byGrammarWords(text, fallback);
    if (text.size() < kShortText) return byWords;
    bool isReliable = false;
    const CLD2::Language detected =
        CLD2::DetectLanguage(text.data(), static_cast<int>(text.size()), true, &isReliable);
    if (const std::optional<Language> language = known(detected)) return *language;
    return isReliable ? Language::Other : byWords;
}

Language languageOfRequest(std::string_view request, Language likely) {
    request = beginning(request, kLongRequest);
    if (const std::optional<Language> language = byScript(scriptsIn(request))) {
        const bool isHanOnly = *language == Language::Chinese && likely == Language::Japanese;
        return isHanOnly ? likely : *language;
    }
    const bool isUnspaced = likely == Language::Chinese || likely == Language::Japanese;
    return byGrammarWords(request,
                          isUnspaced || likely == Language::Other ? Language::English : likely);
}

} // namespace vorq::gateway
