#include "engine/embedded/Vocabulary.h"

#include "support/Utf8.h"

#include <algorithm>

namespace vorq::gateway {

Vocabulary::Vocabulary(const TextIndex& index) {
    for (std::size_t i = 0; i < index.sentences().size(); ++i) {
        for (const Word& word : index.wordsIn(i)) {
            const std::string_view surface = index.surface(i, word);
            const auto [entry, isNew] = byKey_.try_emplace(word.key, words_.size());
            if (isNew) {
                words_.push_back({.key = word.key,
                                  .surface = clipped(surface, 80),
                                  .weight = index.weight(word),
                                  .isNumber = word.isNumber,
                                  .isContent = word.isContent});
            } else if (lowered(surface) == surface) {
                words_[entry->second].surface = clipped(surface, 80);
            }
        }
    }
    // The position breaks ties, so that the order is the same every time.
    std::vector<std::pair<double, std::size_t>> order;
    for (std::size_t i = 0; i < words_.size(); ++i)
        order.emplace_back(-words_[i].weight, i);
    std::ranges::sort(order);
    std::vector<VocabularyWord> sorted;
    for (const auto& [weight, i] : order)
        sorted.push_back(std::move(words_[i]));
    words_ = std::move(sorted);
    for (std::size_t i = 0; i < words_.size(); ++i)
        byKey_[words_[i].key] = i;
}

const VocabularyWord& Vocabulary::word(const std::string& key) const {
    return words_.at(byKey_.at(key));
}

std::string answerFor(const TextIndex& index, const Vocabulary& vocabulary, std::size_t sentence,
                      const std::string& key) {
    const std::string& usual = vocabulary.word(key).surface;
    for (const Word& word : index.wordsIn(sentence)) {
        if (word.key != key) continue;
        const std::string surface = clipped(index.surface(sentence, word), 80);
        return lowered(surface) == lowered(usual) ? usual : surface;
    }
    return usual;
}

std::string withGap(const TextIndex& index, std::size_t sentence, const std::string& key) {
    const std::string& text = index.sentences()[sentence].text;
    std::string out;
    std::size_t copied = 0;
    for (const Word& word : index.wordsIn(sentence)) {
        if (word.key != key) continue;
        out.append(text, copied, word.offset - copied);
        out += "_____";
        copied = word.offset + word.length;
    }
    return out.append(text, copied);
}

} // namespace vorq::gateway
