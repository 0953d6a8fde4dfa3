#include "engine/embedded/search/TextIndex.h"

#include "support/Utf8.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_set>

namespace vorq::gateway {
namespace {

constexpr std::size_t kNoSentence = static_cast<std::size_t>(-1);
constexpr std::uint32_t kNeverSeen = static_cast<std::uint32_t>(-1);
constexpr double kHeadingBonus = 1.5;
constexpr double kPaleShare = 0.35;

} // namespace

std::vector<std::size_t> rankedBest(const std::vector<double>& scores, std::size_t count) {
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

TextIndex::TextIndex(Document document) : m_document(std::move(document)) {
    WordReader reader(m_document.language);
    FoundWord found;
    m_ends.reserve(sentences().size());
    for (std::size_t i = 0; i < sentences().size(); ++i)
        read(i, reader, found);
    m_words.shrink_to_fit();
    markHeadings(reader);
}

void TextIndex::read(std::size_t sentence, WordReader& reader, FoundWord& found) {
    reader.begin(text(sentence));
    while (reader.next(found)) {
        Word word;
        word.key = m_keys.add(found.key);
        word.offset = static_cast<std::uint16_t>(found.offset);
        word.length = static_cast<std::uint16_t>(found.length);
        word.isLabel = found.offset < sentences()[sentence].label;
        word.isContent = found.isContent && !word.isLabel;
        word.isPale = found.isPale;
        word.isNumber = found.isNumber && !word.isLabel;
        word.isCapitalised = found.isCapitalised;
        word.followsDirectly = found.followsDirectly;
        word.precedesNoun = found.precedesNoun;
        word.isPersonal = found.isPersonal;
        m_words.push_back(word);
        if (m_terms.size() < m_keys.size()) m_terms.push_back({.lastSentence = kNeverSeen});
        TermStatistics& term = m_terms[word.key];
        ++term.occurrences;
        if (term.lastSentence != sentence) ++term.sentences;
        term.lastSentence = static_cast<std::uint32_t>(sentence);
    }
    m_ends.push_back(static_cast<std::uint32_t>(m_words.size()));
}

void TextIndex::markHeadings(WordReader& reader) {
    FoundWord found;
    for (const std::string& heading : headings()) {
        reader.begin(heading);
        while (reader.next(found)) {
            const std::uint32_t key = m_keys.find(found.key);
            if (key != KeyTable::kNone && found.isContent) m_terms[key].isInHeading = true;
        }
    }
}

std::span<const Word> TextIndex::wordsIn(std::size_t sentence) const {
    const std::size_t begin = sentence == 0 ? 0 : m_ends[sentence - 1];
    return std::span(m_words).subspan(begin, m_ends[sentence] - begin);
}

std::size_t TextIndex::sentencesWith(std::uint32_t key) const {
    return key < m_terms.size() ? m_terms[key].sentences : 0;
}

double TextIndex::weight(const Word& word) const {
    if (!word.isContent) return 0;
    const TermStatistics& term = m_terms[word.key];
    const double base = std::log2(1.0 + static_cast<double>(term.occurrences));
    return base * (term.isInHeading ? kHeadingBonus : 1) * (word.isPale ? kPaleShare : 1);
}

/// Whether the sentence begins with a word that points back to the one before it.
bool TextIndex::leansOnContext(std::size_t sentence) const {
    const std::span<const Word> words = wordsIn(sentence);
    return !words.empty() && lexicon().pronouns.contains(lowered(surface(sentence, words.front())));
}

double TextIndex::keyScore(std::size_t sentence) const {
    const std::span<const Word> words = wordsIn(sentence);
    std::unordered_set<std::uint32_t> seen;
    double sum = 0;
    for (const Word& word : words) {
        if (word.isContent && seen.insert(word.key).second) sum += weight(word);
    }
    double score = sum / std::pow(static_cast<double>(words.size()) + 3.0, 0.65);
    score *= 1.0 + 0.5 / (1.0 + static_cast<double>(sentence));
    if (sentences()[sentence].startsBlock) score *= 1.12;
    if (words.size() < 5) score *= 0.5;
    if (leansOnContext(sentence)) score *= 0.75;
    if (words.size() > 60) score *= 0.6;
    if (sentences()[sentence].isQuestion) score *= 0.15;
    return score;
}

double TextIndex::overlap(std::size_t first, std::size_t second) const {
    std::unordered_set<std::uint32_t> a;
    for (const Word& word : wordsIn(first)) {
        if (word.isContent) a.insert(word.key);
    }
    std::size_t both = 0;
    std::unordered_set<std::uint32_t> b;
    for (const Word& word : wordsIn(second)) {
        if (word.isContent && b.insert(word.key).second && a.contains(word.key)) ++both;
    }
    const std::size_t smaller = std::min(a.size(), b.size());
    return smaller == 0 ? 0 : static_cast<double>(both) / static_cast<double>(smaller);
}

std::vector<std::size_t> TextIndex::keySentences(std::size_t count) const {
    std::vector<double> scores(sentences().size());
    for (std::size_t i = 0; i < scores.size(); ++i)
        scores[i] = keyScore(i);
    const std::vector<std::size_t> candidates = rankedBest(scores, count * 6);
    std::vector<std::size_t> chosen;
    std::vector<double> penalty(candidates.size(), 0.0);
    std::vector<bool> taken(candidates.size(), false);
    while (chosen.size() < std::min(count, candidates.size())) {
        std::size_t best = kNoSentence;
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            const auto value = [&](std::size_t k) {
                return scores[candidates[k]] * (1.0 - 0.9 * penalty[k]);
            };
            if (!taken[i] && (best == kNoSentence || value(i) > value(best))) best = i;
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

} // namespace vorq::gateway
