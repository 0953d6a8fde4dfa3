#include "engine/embedded/TextIndex.h"

#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <unordered_set>

namespace vorq::gateway {
namespace {

constexpr std::size_t kNever = static_cast<std::size_t>(-1);
constexpr double kHeadingBonus = 1.5;

/// Whether a sentence that begins with this word reads badly without the one before it, or is mere
/// courtesy.
bool leansOnContext(std::string_view word) {
    static constexpr auto openings = std::to_array<std::string_view>(
        {"it",     "they",  "this", "these", "those", "that",  "he",    "she",       "however",
         "but",    "and",   "so",   "also",  "thus",  "then",  "there", "therefore", "such",
         "thanks", "thank", "hi",   "hello", "dear",  "best",  "kind",  "cheers",    "regards",
         "see",    "dabei", "er",   "sie",   "es",    "dies",  "diese", "dieser",    "dadurch",
         "danke",  "hallo", "il",   "elle",  "ils",   "elles", "cela",  "merci",     "bonjour"});
    return std::ranges::find(openings, word) != openings.end();
}

/// Indices by falling score; equal scores keep their order, so that results never vary.
std::vector<std::size_t> ranked(const std::vector<double>& scores, std::size_t count) {
    std::vector<std::size_t> order(scores.size());
    std::iota(order.begin(), order.end(), 0);
    count = std::min(count, order.size());
    std::partial_sort(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(count),
                      order.end(), [&](std::size_t a, std::size_t b) {
                          return scores[a] != scores[b] ? scores[a] > scores[b] : a < b;
                      });
    order.resize(count);
    return order;
}

} // namespace

TextIndex::TextIndex(Document document) : document_(std::move(document)) {
    words_.reserve(sentences().size());
    for (std::size_t i = 0; i < sentences().size(); ++i) {
        words_.push_back(wordsOf(sentences()[i].text));
        count(i);
    }
    for (const std::string& heading : headings()) {
        for (const Word& word : wordsOf(heading)) {
            if (const auto term = terms_.find(word.key); term != terms_.end()) {
                term->second.isInHeading = true;
            }
        }
    }
}

void TextIndex::count(std::size_t sentence) {
    for (const Word& word : words_[sentence]) {
        ++wordCount_;
        if (!word.isContent && !word.isNumber) continue;
        TermStatistics& term =
            terms_.try_emplace(word.key, TermStatistics{.lastSentence = kNever}).first->second;
        ++term.occurrences;
        if (term.lastSentence != sentence) ++term.sentences;
        term.lastSentence = sentence;
    }
}

std::string_view TextIndex::surface(std::size_t sentence, const Word& word) const {
    return std::string_view(sentences()[sentence].text).substr(word.offset, word.length);
}

double TextIndex::weight(const Word& word) const {
    if (!word.isContent) return 0;
    const auto term = terms_.find(word.key);
    if (term == terms_.end()) return 0;
    const double base = std::log2(1.0 + static_cast<double>(term->second.occurrences));
    return term->second.isInHeading ? base * kHeadingBonus : base;
}

double TextIndex::keyScore(std::size_t sentence) const {
    const std::vector<Word>& words = words_[sentence];
    std::unordered_set<std::string_view> seen;
    double sum = 0;
    for (const Word& word : words) {
        if (word.isContent && seen.insert(word.key).second) sum += weight(word);
    }
    double score = sum / std::pow(static_cast<double>(words.size()) + 3.0, 0.65);
    score *= 1.0 + 0.5 / (1.0 + static_cast<double>(sentence));
    if (sentences()[sentence].startsBlock) score *= 1.12;
    if (words.size() < 5) score *= 0.5;
    if (!words.empty() && leansOnContext(lowered(surface(sentence, words.front())))) score *= 0.75;
    if (words.size() > 60) score *= 0.6;
    if (sentences()[sentence].text.ends_with('?')) score *= 0.6;
    return score;
}

double TextIndex::overlap(std::size_t first, std::size_t second) const {
    std::unordered_set<std::string_view> a;
    for (const Word& word : words_[first]) {
        if (word.isContent) a.insert(word.key);
    }
    std::unordered_set<std::string_view> both;
    std::unordered_set<std::string_view> b;
    for (const Word& word : words_[second]) {
        if (!word.isContent) continue;
        b.insert(word.key);
        if (a.contains(word.key)) both.insert(word.key);
    }
    const std::size_t smaller = std::min(a.size(), b.size());
    return smaller == 0 ? 0 : static_cast<double>(both.size()) / static_cast<double>(smaller);
}

std::vector<std::size_t> TextIndex::keySentences(std::size_t count) const {
    std::vector<double> scores(sentences().size());
    for (std::size_t i = 0; i < scores.size(); ++i)
        scores[i] = keyScore(i);
    const std::vector<std::size_t> candidates = ranked(scores, count * 6);
    std::vector<std::size_t> chosen;
    std::vector<double> penalty(candidates.size(), 0.0);
    std::vector<bool> taken(candidates.size(), false);
    while (chosen.size() < std::min(count, candidates.size())) {
        std::size_t best = kNever;
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            const auto value = [&](std::size_t k) {
                return scores[candidates[k]] * (1.0 - 0.9 * penalty[k]);
            };
            if (!taken[i] && (best == kNever || value(i) > value(best))) best = i;
        }
        taken[best] = true;
        chosen.push_back(candidates[best]);
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            if (!taken[i]) {
                penalty[i] = std::max(penalty[i], overlap(candidates[best], candidates[i]));
            }
        }
    }
    std::ranges::sort(chosen);
    return chosen;
}

double TextIndex::matchScore(std::size_t sentence,
                             const std::unordered_map<std::string, double>& query,
                             double averageLength) const {
    constexpr double k1 = 1.2;
    constexpr double b = 0.6;
    std::unordered_map<std::string_view, double> hits;
    for (const Word& word : words_[sentence]) {
        if (query.contains(word.key)) hits[word.key] += 1;
    }
    if (hits.empty()) return 0;
    const double length = static_cast<double>(words_[sentence].size()) / averageLength;
    double score = 0;
    for (const auto& [key, inverseFrequency] : query) {
        const auto hit = hits.find(key);
        if (hit == hits.end()) continue;
        score +=
            inverseFrequency * hit->second * (k1 + 1) / (hit->second + k1 * (1 - b + b * length));
    }
    const double covered = static_cast<double>(hits.size()) / static_cast<double>(query.size());
    return score * (0.5 + covered);
}

bool TextIndex::beginsWithPronoun(std::size_t sentence) const {
    if (words_[sentence].empty()) return false;
    static constexpr auto pronouns = std::to_array<std::string_view>(
        {"it", "they", "this", "these", "he", "she", "er", "sie", "es", "dies", "il", "elle", "ils",
         "elles", "ella", "ellos"});
    const std::string first = lowered(surface(sentence, words_[sentence].front()));
    return std::ranges::find(pronouns, first) != pronouns.end();
}

std::vector<std::size_t> TextIndex::matching(std::string_view query, std::size_t count) const {
    return matching(query, questionKind(query), count);
}

std::vector<std::size_t> TextIndex::holding(QuestionKind kind, std::size_t count) const {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < sentences().size() && found.size() < count; ++i) {
        if (holds(kind, sentences()[i].text, words_[i])) found.push_back(i);
    }
    return found;
}

std::vector<std::size_t> TextIndex::matching(std::string_view query, QuestionKind kind,
                                             std::size_t count) const {
    std::unordered_map<std::string, double> weights;
    const auto total = static_cast<double>(sentences().size());
    for (const Word& word : wordsOf(query)) {
        // "does" is no reason to quote Jane Doe.
        if (!word.isContent && !word.isNumber) continue;
        const auto term = terms_.find(word.key);
        if (term == terms_.end()) continue;
        const auto with = static_cast<double>(term->second.sentences);
        weights[word.key] = std::log(1.0 + (total - with + 0.5) / (with + 0.5));
    }
    if (weights.empty()) return {};
    const double average = std::max(1.0, static_cast<double>(wordCount_) / total);
    std::vector<double> scores(sentences().size());
    for (std::size_t i = 0; i < scores.size(); ++i) {
        scores[i] = matchScore(i, weights, average);
    }
    for (std::size_t i = scores.size(); i-- > 0;) {
        if (scores[i] <= 0) continue;
        // "It spread because …" speaks of what the sentence before it names.
        if (i > 0 && !sentences()[i].startsBlock && beginsWithPronoun(i)) {
            scores[i] += 0.4 * scores[i - 1];
        }
        scores[i] *= fit(kind, sentences()[i].text, words_[i]);
    }
    std::vector<std::size_t> best = ranked(scores, count);
    const double least = best.empty() ? 0 : scores[best.front()] * 0.4;
    std::erase_if(best, [&](std::size_t i) { return scores[i] <= 0 || scores[i] < least; });
    return best;
}

} // namespace vorq::gateway
