#include "engine/embedded/search/KeyTerms.h"

#include "support/Utf8.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLongestTerm = 60; // bytes

struct Candidate {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    std::string surface;
    std::size_t occurrences = 0;
    std::size_t names = 0;
    std::size_t firstSeen = 0;
    double weight = 0;
    double score = 0;

    [[nodiscard]] bool isPair() const { return first != last; }
};

/// Words and pairs of neighbouring words with their counts.
class Candidates {
  public:
    void add(std::uint32_t first, std::uint32_t last, std::string_view surface, bool isName,
             double weight) {
        const std::uint64_t id = (static_cast<std::uint64_t>(first) << 32U) | last;
        const auto [entry, isNew] = m_entries.try_emplace(id);
        Candidate& candidate = entry->second;
        if (isNew) {
            candidate.first = first;
            candidate.last = last;
            candidate.firstSeen = m_entries.size();
            candidate.surface = surface;
            candidate.weight = weight;
        } else if (surface.starts_with("ال") && !candidate.surface.starts_with("ال")) {
            candidate.surface = surface; // The Arabic article, where there is no "her" or "its".
        } else if (lowered(surface) == surface && !candidate.surface.starts_with("ال")) {
            // Written small somewhere, it is no name; a shorter form is likely the plain one.
            const bool isCapital = lowered(candidate.surface) != candidate.surface;
            if (isCapital || surface.size() < candidate.surface.size()) candidate.surface = surface;
        }
        ++candidate.occurrences;
        if (isName) ++candidate.names;
    }

    std::vector<Candidate> best(std::size_t count) {
        std::vector<Candidate> list;
        for (auto& [id, entry] : m_entries) {
            const bool isOftenName = entry.names * 2 > entry.occurrences;
            if (entry.isPair() && entry.occurrences < 2 && !isOftenName) continue;
            entry.score = scoreOf(entry);
            list.push_back(entry);
        }
        count = std::min(count, list.size());
        std::partial_sort(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(count),
                          list.end(), [](const Candidate& a, const Candidate& b) {
                              return a.score != b.score ? a.score > b.score
                                                        : a.firstSeen < b.firstSeen;
                          });
        list.resize(count);
        return list;
    }

  private:
    static double scoreOf(const Candidate& entry) {
        const auto count = static_cast<double>(entry.occurrences);
        const double length =
            std::sqrt(static_cast<double>(std::min<std::size_t>(entry.surface.size(), 16)));
        const bool isName = entry.names * 2 > entry.occurrences;
        return count * length * entry.weight *
               (entry.isPair() && entry.occurrences > 1 ? 2.2 : 1.0) * (isName ? 1.2 : 1.0);
    }

    std::unordered_map<std::uint64_t, Candidate> m_entries;
};

bool sharesWord(const Candidate& a, const Candidate& b) {
    const std::string first = lowered(a.surface);
    const std::string second = lowered(b.surface);
    return first.contains(second) || second.contains(first) || a.first == b.last ||
           a.last == b.first || a.first == b.first || a.last == b.last;
}

/// "caves breathe" is a noun and its verb; a noun in front of another stands in the singular.
bool isClause(std::string_view first, std::string_view second) {
    return first.ends_with('s') && !first.ends_with("ss") && !second.ends_with('s');
}

/// Collects what may be a term of one sentence.
void collect(const TextIndex& index, const WordClasses& classes, std::size_t sentence,
             Candidates& candidates) {
    const std::span<const Word> words = index.wordsIn(sentence);
    const bool hasBlanks = index.lexicon().data.hasBlanks;
    for (std::size_t k = 0; k < words.size(); ++k) {
        const Word& word = words[k];
        if (!word.isContent || word.isPale || !classes.isThing(word.key)) continue;
        const bool isName = classes.of(word.key) == WordClass::Name;
        const double weight = index.weight(word) > 1.5 ? 1.2 : 1;
        candidates.add(word.key, word.key, index.surface(sentence, word), isName, weight);
        if (k == 0 || !word.followsDirectly) continue;
        const Word& before = words[k - 1];
        if (!before.isContent || before.isPale || before.isNumber || word.isNumber) continue;
        const std::size_t length = static_cast<std::size_t>(word.offset) + word.length;
        const bool isNamePair =
            isName && before.isCapitalised && classes.of(before.key) != WordClass::Other;
        if (index.language() == Language::English &&
            isClause(index.surface(sentence, before), index.surface(sentence, word))) {
            continue;
        }
        // Chinese and Japanese compounds that a dictionary does not have.
        if (!hasBlanks && length - before.offset > kLongestTerm) continue;
        candidates.add(before.key, word.key,
                       index.text(sentence).substr(before.offset, length - before.offset),
                       isNamePair, weight);
        if (k < 2 || !before.followsDirectly) continue;
        // "strong east wind"
        const Word& first = words[k - 2];
        if (!first.isContent || first.isPale || first.isNumber) continue;
        candidates.add(first.key, word.key,
                       index.text(sentence).substr(first.offset, length - first.offset), false,
                       weight);
    }
}

} // namespace

std::vector<KeyTerm> keyTerms(const TextIndex& index, const WordClasses& classes,
                              std::size_t count) {
    Candidates candidates;
    for (std::size_t i = 0; i < index.sentences().size(); ++i) {
        collect(index, classes, i, candidates);
    }
    std::vector<Candidate> chosen;
    std::vector<Candidate> best = candidates.best(count * 4);
    for (Candidate& candidate : best) {
        if (chosen.size() == count) break;
        const auto shares = [&](const Candidate& other) { return sharesWord(candidate, other); };
        if (std::ranges::none_of(chosen, shares)) chosen.push_back(std::move(candidate));
    }
    std::vector<KeyTerm> terms;
    for (const Candidate& candidate : chosen) {
        terms.push_back({.text = clipped(candidate.surface, kLongestTerm),
                         .occurrences = candidate.occurrences});
    }
    return terms;
}

} // namespace vorq::gateway
