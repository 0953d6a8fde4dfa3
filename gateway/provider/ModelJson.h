#pragma once

#include "engine/Analysis.h"

#include <string_view>
#include <vector>

namespace vorq::gateway {

/// JSON as models write it: inside code fences, with talk around it, with keys by other names,
/// broken or cut.

struct ParsedReply {
    Analysis analysis;
    /// The model stopped in the midst of a text.
    bool breaksOff = false;
};

/// A reply that was asked for in parts; a reply without any JSON is a summary as it stands.
[[nodiscard]] ParsedReply readWholeReply(std::string_view reply);
/// The usable cards; none if there is not one.
[[nodiscard]] std::vector<Flashcard> readFlashcards(std::string_view reply);
/// The usable questions; none if there is not one.
[[nodiscard]] Quiz readQuiz(std::string_view reply);

} // namespace vorq::gateway
