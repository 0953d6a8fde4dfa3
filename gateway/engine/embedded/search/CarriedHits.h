#pragma once

#include "engine/embedded/search/QueryTerms.h"

#include <cstddef>
#include <cstdint>

namespace vorq::gateway {

/// What each sentence of a text is about beyond its own words: its heading names it, or the
/// sentences before it do. "He set off on Sunday" is about Gordon if Gordon was named before. The
/// sentences are asked for in order.
class CarriedHits {
  public:
    CarriedHits(const TextIndex& index, const QueryTerms& terms) : m_index(index), m_terms(terms) {}

    struct Result {
        QueryTerms::Hits hits;
        /// Of the score of a sentence that names one of the terms itself: less if only a pronoun
        /// stands for it, and still less if nothing does.
        double share = 1;
    };
    /// The hits of the sentence with those that it takes over, each for a part.
    [[nodiscard]] Result next(std::size_t sentence);

  private:
    /// How a sentence points back to the ones before it.
    enum class Link { None, Dropped, Inside, Beginning };

    void openSection(std::size_t sentence);
    [[nodiscard]] Link linkOf(std::size_t sentence) const;
    [[nodiscard]] double share(std::size_t sentence, Link link) const;

    const TextIndex& m_index;
    const QueryTerms& m_terms;
    std::uint32_t m_heading = Sentence::kNoHeading;
    QueryTerms::Hits m_fromHeading;
    /// What is being spoken of; it fades with each sentence that does not name it.
    QueryTerms::Hits m_carried;
};

} // namespace vorq::gateway
