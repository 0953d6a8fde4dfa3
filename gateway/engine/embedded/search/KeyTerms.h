#pragma once

#include "engine/embedded/search/WordClasses.h"

#include <string>
#include <vector>

namespace vorq::gateway {

struct KeyTerm {
    std::string text;
    std::size_t occurrences = 0;
};

/// The nouns, names and groups of words that the text is about, most important first.
[[nodiscard]] std::vector<KeyTerm> keyTerms(const TextIndex& index, const WordClasses& classes,
                                            std::size_t count);

} // namespace vorq::gateway
