#pragma once

#include "engine/embedded/search/WordClasses.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace vorq::gateway {

/// A word of the material as it may be asked for or offered as a wrong answer.
struct VocabularyWord {
    std::uint32_t key = 0;
    std::string surface;
    double weight = 0;
    WordClass wordClass = WordClass::Other;
    bool isContent = false;
};

/// The distinct words of a text, weightiest first, the most important of a long text only.
class Vocabulary {
  public:
    Vocabulary(const TextIndex& index, const WordClasses& classes);

    [[nodiscard]] const std::vector<VocabularyWord>& words() const { return m_words; }

  private:
    std::vector<VocabularyWord> m_words;
};

/// The word as it stands in the sentence, but small where only the sentence's beginning makes it
/// begin with a capital.
[[nodiscard]] std::string answerFor(const TextIndex& index, const WordClasses& classes,
                                    std::size_t sentence, std::uint32_t key);

/// Whether a numeral stands right before the word in a script without blanks, as in "四月末": a gap
/// between them would tear what is one word to the reader.
[[nodiscard]] bool continuesNumeral(const TextIndex& index, std::size_t sentence, const Word& word);

/// The sentence, without who says it, with each word of that key replaced by a gap.
[[nodiscard]] std::string withGap(const TextIndex& index, std::size_t sentence, std::uint32_t key);

} // namespace vorq::gateway
