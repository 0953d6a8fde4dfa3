#include "engine/embedded/StopWords.h"
#include "engine/embedded/TextIndex.h"
#include "support/Utf8.h"

#include <algorithm>
#include <cmath>

namespace vorq::gateway {
namespace {

struct Candidate {
    std::string key;
    std::string surface;
    std::size_t occurrences = 0;
    std::size_t capitals = 0;
    std::size_t firstSeen = 0;
    bool isPair = false;
    double score = 0;
};

/// Words and pairs of neighbouring words with their counts, by key.
class Candidates {
  public:
    void add(const std::string& key, std::string_view surface, bool isPair, bool isName) {
        Candidate& entry = entries_[key];
        if (entry.occurrences == 0) {
            entry.firstSeen = entries_.size();
            entry.key = key;
            entry.surface = surface;
            entry.isPair = isPair;
        } else if (lowered(surface) == surface) {
            entry.surface = surface; // A lower-case form shows that the word is no name.
        }
        ++entry.occurrences;
        if (isName) ++entry.capitals;
    }

    std::vector<Candidate> best(std::size_t count) {
        std::vector<Candidate> list;
        for (auto& [key, entry] : entries_) {
            if (entry.isPair && entry.occurrences < 2) continue;
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
        const bool isName = entry.capitals * 2 > entry.occurrences;
        const std::string lower = lowered(entry.surface);
        // A month, or "rapidly", tells little of what a text is about.
        const bool isPale = isCalendarWord(lower) || lower.ends_with("ly") ||
                            (entry.surface[0] >= '0' && entry.surface[0] <= '9');
        return count * length * (entry.isPair ? 2.2 : 1.0) * (isName ? 1.3 : 1.0) *
               (isPale ? 0.3 : 1.0);
    }

    std::unordered_map<std::string, Candidate> entries_;
};

std::string_view firstWord(const Candidate& entry) {
    return std::string_view(entry.key).substr(0, entry.key.find(' '));
}

std::string_view lastWord(const Candidate& entry) {
    return std::string_view(entry.key).substr(entry.key.rfind(' ') + 1);
}

bool sharesWord(const Candidate& a, const Candidate& b) {
    const std::string first = lowered(a.surface);
    const std::string second = lowered(b.surface);
    return first.contains(second) || second.contains(first) || firstWord(a) == lastWord(b) ||
           lastWord(a) == firstWord(b) || firstWord(a) == firstWord(b) ||
           lastWord(a) == lastWord(b);
}

/// "strong east" and "east wind" that come equally often are one "strong east wind".
void joinOverlapping(std::vector<Candidate>& list) {
    for (Candidate& first : list) {
        for (const Candidate& second : list) {
            if (!first.isPair || !second.isPair || first.occurrences != second.occurrences ||
                lastWord(first) != firstWord(second) || &first == &second) {
                continue;
            }
            const std::size_t blank = second.surface.find(' ');
            if (blank == std::string::npos) continue;
            first.surface += second.surface.substr(blank);
            first.key += second.key.substr(second.key.find(' '));
            break;
        }
    }
}

} // namespace

std::vector<std::string> TextIndex::keyTerms(std::size_t count) const {
    Candidates candidates;
    for (std::size_t i = 0; i < sentences().size(); ++i) {
        const std::vector<Word>& words = words_[i];
        for (std::size_t k = 0; k < words.size(); ++k) {
            const Word& word = words[k];
            if (!word.isContent) continue;
            const bool isName = word.isCapitalised && k > 0;
            candidates.add(word.key, surface(i, word), false, isName);
            if (k == 0 || !word.followsDirectly || !words[k - 1].isContent) continue;
            const Word& before = words[k - 1];
            const std::size_t end = word.offset + word.length;
            candidates.add(
                before.key + ' ' + word.key,
                std::string_view(sentences()[i].text).substr(before.offset, end - before.offset),
                true, isName && before.isCapitalised);
        }
    }
    std::vector<Candidate> chosen;
    std::vector<Candidate> best = candidates.best(count * 4);
    joinOverlapping(best);
    for (Candidate& candidate : best) {
        if (chosen.size() == count) break;
        const auto shares = [&](const Candidate& other) { return sharesWord(candidate, other); };
        if (std::ranges::none_of(chosen, shares)) chosen.push_back(std::move(candidate));
    }
    std::vector<std::string> terms;
    for (Candidate& candidate : chosen)
        terms.push_back(std::move(candidate.surface));
    return terms;
}

} // namespace vorq::gateway
