#include "engine/embedded/words/PhraseList.h"

#include "support/Utf8.h"

namespace vorq::gateway {
namespace {

/// Chinese and Japanese put no blanks between words.
bool isOfUnspacedScript(char32_t c) {
    return isHan(c) || isHiragana(c) || isKatakana(c);
}

char32_t before(std::string_view text, std::size_t at) {
    std::size_t begin = at - 1;
    while (begin > 0 && (static_cast<unsigned char>(text[begin]) & 0xC0U) == 0x80U)
        --begin;
    return decodeAt(text, begin).value;
}

bool isEdge(std::string_view text, std::size_t at) {
    if (at == 0 || at >= text.size()) return true;
    return !isWordCharacter(before(text, at)) || !isWordCharacter(decodeAt(text, at).value);
}

std::size_t findPhrase(std::string_view text, std::string_view phrase) {
    const bool anywhere = isOfUnspacedScript(decodeAt(phrase, 0).value);
    for (std::size_t at = text.find(phrase); at != std::string_view::npos;
         at = text.find(phrase, at + 1)) {
        if (anywhere || (isEdge(text, at) && isEdge(text, at + phrase.size()))) return at;
    }
    return std::string_view::npos;
}

} // namespace

bool hasPhrase(std::string_view text, std::string_view list) {
    return anyPhrase(list, [&](std::string_view phrase) {
        return !phrase.empty() && findPhrase(text, phrase) != std::string_view::npos;
    });
}

std::optional<PhrasePlace> firstPhrase(std::string_view text, std::string_view list) {
    std::optional<PhrasePlace> first;
    anyPhrase(list, [&](std::string_view phrase) {
        const std::size_t at = phrase.empty() ? phrase.npos : findPhrase(text, phrase);
        if (at == std::string_view::npos) return false;
        const bool isBetter =
            !first || at < first->offset || (at == first->offset && phrase.size() > first->length);
        if (isBetter) first = PhrasePlace{.offset = at, .length = phrase.size()};
        return false;
    });
    return first;
}

} // namespace vorq::gateway
