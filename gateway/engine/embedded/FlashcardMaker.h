#pragma once

#include "engine/Analysis.h"

#include <string_view>
#include <vector>

namespace vorq::gateway {

/// Cards from a text: its definitions as questions, then key sentences with a word left out. None
/// if the text has no sentence to ask about.
[[nodiscard]] std::vector<Flashcard> makeFlashcards(std::string_view text);

} // namespace vorq::gateway
