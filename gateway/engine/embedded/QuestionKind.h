#pragma once

#include "engine/embedded/Words.h"

#include <string_view>
#include <vector>

namespace vorq::gateway {

/// What sort of sentence would answer a question.
enum class QuestionKind { Other, Time, Quantity, Reason, Person, Definition };

[[nodiscard]] QuestionKind questionKind(std::string_view question);

/// Whether the sentence holds what the kind asks for, whatever it is about; only Time and Quantity
/// can be told.
[[nodiscard]] bool holds(QuestionKind kind, std::string_view sentence,
                         const std::vector<Word>& words);

/// From 1 upwards: how well the sentence looks like an answer of that kind.
[[nodiscard]] double fit(QuestionKind kind, std::string_view sentence,
                         const std::vector<Word>& words);

} // namespace vorq::gateway
