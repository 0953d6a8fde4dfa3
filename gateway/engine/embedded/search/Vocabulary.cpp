#include "engine/embedded/search/Vocabulary.h"

#include "support/Utf8.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

constexpr std::size_t kMostWords = 3000;
constexpr std::size_t kLongestSurface = 80; // bytes

} // namespace

Vocabulary::Vocabulary(const TextIndex& index, const WordClasses& classes) {
    struct Seen {
        double weight = 0;
        std::uint32_t sentence = 0;
        std::uint32_t word = 0;
        bool isSmall = false;
    };
    std::unordered_map<std::uint32_t, std::size_t> byKey;
    std::vector<std::pair<std::uint32_t, Seen>> seen;
    for (std::size_t i = 0; i < index.sentences().size(); ++i) {
        const std::span<const Word> words = index.wordsIn(i);
        for (std::size_t k = 0; k < words.size(); ++k) {
            const Word& word = words[k];
            if (word.isLabel) continue;
            const Seen here{.weight = index.weight(word),
                            .sentence = static_cast<std::uint32_t>(i),
                            .word = static_cast<std::uint32_t>(k),
                            .isSmall = !word.isCapitalised};
            const auto [entry, isNew] = byKey.try_emplace(word.key, seen.size());
            if (isNew) {
                seen.emplace_back(word.key, here);
            } else if (here.isSmall && !seen[entry->second].second.isSmall) {
                seen[entry->second].second = here;
            }
        }
    }
    byKey.clear();
    // The first of equals stays first, so that the order is the same every time.
    std::ranges::sort(seen, [](const auto& a, const auto& b) {
        return std::pair(-a.second.weight, a.first) < std::pair(-b.second.weight, b.first);
    });
    seen.resize(std::min(seen.size(), kMostWords));
    for (const auto& [key, place] : seen) {
        const Word& word = index.wordsIn(place.sentence)[place.word];
        m_words.push_back(
            {.key = key,
             .surface =
                 clipped(withoutPossessive(index.surface(place.sentence, word)), kLongestSurface),
             .weight = place.weight,
             .wordClass = classes.of(key),
             .isContent = word.isContent});
    }
}

std::string answerFor(const TextIndex& index, const WordClasses& classes, std::size_t sentence,
                      std::uint32_t key) {
    std::size_t place = 0;
    for (const Word& word : index.wordsIn(sentence)) {
        if (word.isLabel) continue;
        const bool isFirst = place++ == 0;
        if (word.key != key) continue;
        const std::string surface = clipped(index.surface(sentence, word), kLongestSurface);
        return isFirst && classes.isWrittenSmall(key) ? lowered(surface) : surface;
    }
    return {};
}

bool continuesNumeral(const TextIndex& index, std::size_t sentence, const Word& word) {
    static constexpr std::u32string_view numerals = U"一二三四五六七八九十百千万億亿两";
    constexpr std::size_t character = 3; // bytes of each
    if (index.lexicon().data.hasBlanks || word.offset < character) return false;
    return numerals.contains(decodeAt(index.text(sentence), word.offset - character).value);
}

std::string withGap(const TextIndex& index, std::size_t sentence, std::uint32_t key) {
    const std::string_view text = index.text(sentence);
    std::string out;
    std::size_t copied = index.sentences()[sentence].label;
    for (const Word& word : index.wordsIn(sentence)) {
        if (word.key != key || word.isLabel) continue;
        out += text.substr(copied, word.offset - copied);
        out += "_____";
        copied = static_cast<std::size_t>(word.offset) + word.length;
    }
    out += text.substr(copied);
    return out;
}

} // namespace vorq::gateway
