#pragma once

#include "engine/embedded/search/QueryTerms.h"
#include "engine/embedded/search/QuestionKind.h"
#include "engine/embedded/search/TextIndex.h"

#include <cstddef>

namespace vorq::gateway {

/// Whether the sentence holds a date or time, or a number, whatever it is about.
[[nodiscard]] bool holdsTime(const TextIndex& index, std::size_t sentence);
[[nodiscard]] bool holdsNumber(const TextIndex& index, std::size_t sentence);

/// How well the sentence looks like an answer of the kind that is asked for; 1 for neither well nor
/// badly. A name that `asked` holds answers no question for a person.
[[nodiscard]] double fit(const Expectation& expected, const TextIndex& index, std::size_t sentence,
                         const QueryTerms& asked);

} // namespace vorq::gateway
