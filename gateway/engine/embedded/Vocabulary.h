#pragma once

#include "engine/embedded/TextIndex.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace vorq::gateway {

/// A word of the material as it may be asked for or offered as a wrong answer.
struct VocabularyWord {
    std::string key;
    std::string surface;
    double weight = 0;
    bool isNumber = false;
    bool isContent = false;
};

/// The distinct words of a text, weightiest first.
class Vocabulary {
  public:
    explicit Vocabulary(const TextIndex& index);

    [[nodiscard]] const std::vector<VocabularyWord>& words() const { return words_; }
    /// Must be a key of the text.
    [[nodiscard]] const VocabularyWord& word(const std::string& key) const;

  private:
    std::vector<VocabularyWord> words_;
    std::unordered_map<std::string, std::size_t> byKey_;
};

/// The word as it stands in the sentence, or as it is written elsewhere if only its capital
/// differs.
[[nodiscard]] std::string answerFor(const TextIndex& index, const Vocabulary& vocabulary,
                                    std::size_t sentence, const std::string& key);

/// The sentence with each word of that key replaced by a gap.
[[nodiscard]] std::string withGap(const TextIndex& index, std::size_t sentence,
                                  const std::string& key);

} // namespace vorq::gateway
