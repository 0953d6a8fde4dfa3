#pragma once

#include "engine/embedded/search/TextIndex.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vorq::gateway {

/// The words of a question as they are looked for in a text: each with its rarity, and with the
/// words of the text that are most likely forms of it or made with it.
class QueryTerms {
  public:
    QueryTerms(const TextIndex& index, std::string_view query);

    /// Whether none of them occurs in the text.
    [[nodiscard]] bool empty() const { return m_terms.empty(); }
    /// Whether a key of the text stands for one of them.
    [[nodiscard]] bool has(std::uint32_t key) const { return m_forms.contains(key); }
    /// How often each term occurs; a form of it counts for a part.
    using Hits = std::vector<double>;
    [[nodiscard]] Hits hitsIn(std::size_t sentence) const;
    [[nodiscard]] Hits hitsIn(std::string_view heading) const;
    /// BM25 of a text with these hits, more for one that has more of the terms. `relativeLength` is
    /// its length in that of the average sentence.
    [[nodiscard]] double score(const Hits& hits, double relativeLength) const;

  private:
    struct Term {
        std::string key;
        /// A part of a run without blanks, which is looked for letter by letter.
        bool isPart = false;
        double rarity = 0;
    };
    struct Meaning {
        std::size_t term = 0;
        double share = 1;
    };

    [[nodiscard]] bool knows(std::string_view key) const;
    void readWords(std::string_view query);
    void addPart(std::string_view part);
    void readParts(std::string_view query);
    void addForm(std::uint32_t key, std::size_t term, double share);
    void addKin(std::size_t term);
    void addForms();
    [[nodiscard]] double weightOfPart(std::size_t term, const std::vector<double>& with) const;
    void dropAbsent();

    const TextIndex& m_index;
    std::vector<Term> m_terms;
    /// Keys of the text by their number.
    std::unordered_map<std::uint32_t, Meaning> m_forms;
    bool m_hasParts = false;
};

} // namespace vorq::gateway
