#pragma once

#include <string>
#include <string_view>

namespace vorq::evaluation {

/// The sentence that plain BM25 puts first: sentences end at their marks and at line ends, words at
/// blanks, and all words count as they stand. Empty if no word of the question occurs.
[[nodiscard]] std::string plainAnswer(std::string_view text, std::string_view question);

} // namespace vorq::evaluation
