#pragma once

#include "engine/embedded/search/QuestionKind.h"
#include "engine/embedded/search/TextIndex.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// What is looked for in a text.
struct SearchQuery {
    /// The words that say what about.
    std::string_view subject;
    Expectation expected;
    /// The words of the user as they stand; a sentence that is nothing else answers nothing.
    std::string_view request;
};

/// The sentences that answer best, best first; none if no content word of the subject occurs. They
/// are ranked by BM25 over stems, and the best of them by how they look as answers: questions stand
/// back, and what stands behind a fitting question comes forward. Linear in the text.
[[nodiscard]] std::vector<std::size_t> findSentences(const TextIndex& index,
                                                     const SearchQuery& query, std::size_t count);

/// The same for a request in the language of the text.
[[nodiscard]] std::vector<std::size_t> findSentences(const TextIndex& index,
                                                     std::string_view request, std::size_t count);

/// The first sentences that hold a time, or a number, in the text's order; none for other kinds.
[[nodiscard]] std::vector<std::size_t> sentencesHolding(const TextIndex& index, QuestionKind kind,
                                                        std::size_t count);

} // namespace vorq::gateway
