#include "PlainSearch.h"

#include <cmath>
#include <map>
#include <sstream>
#include <vector>

namespace vorq::evaluation {
namespace {

using Counts = std::map<std::string, double>;

std::vector<std::string> sentencesOf(std::string_view text) {
    std::vector<std::string> sentences(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isLineEnd = text[i] == '\n';
        if (!isLineEnd) sentences.back() += text[i];
        bool ends = isLineEnd;
        for (std::string_view mark : {". ", "! ", "? "})
            ends = ends || text.substr(i).starts_with(mark);
        for (std::string_view mark : {"。", "！", "？"}) {
            ends = ends || (i + 1 >= mark.size() && text.substr(0, i + 1).ends_with(mark));
        }
        if (ends && !sentences.back().empty()) sentences.emplace_back();
    }
    return sentences;
}

Counts wordsIn(const std::string& sentence) {
    Counts counts;
    std::istringstream words(sentence);
    for (std::string word; words >> word;)
        counts[word] += 1;
    return counts;
}

} // namespace

std::string plainAnswer(std::string_view text, std::string_view question) {
    const std::vector<std::string> sentences = sentencesOf(text);
    std::vector<Counts> bags;
    Counts containing;
    double words = 0;
    for (const std::string& sentence : sentences) {
        bags.push_back(wordsIn(sentence));
        for (const auto& [word, count] : bags.back()) {
            containing[word] += 1;
            words += count;
        }
    }
    const auto total = static_cast<double>(sentences.size());
    std::string best;
    double most = 0;
    for (std::size_t i = 0; i < bags.size(); ++i) {
        constexpr double k1 = 1.2;
        constexpr double b = 0.75;
        double length = 0;
        for (const auto& [word, count] : bags[i])
            length += count;
        double score = 0;
        for (const auto& [word, asked] : wordsIn(std::string(question))) {
            const auto hit = bags[i].find(word);
            if (hit == bags[i].end()) continue;
            const double rarity =
                std::log(1 + (total - containing[word] + 0.5) / (containing[word] + 0.5));
            score += rarity * hit->second * (k1 + 1) /
                     (hit->second + k1 * (1 - b + b * length * total / words));
        }
        if (score > most) most = score, best = sentences[i];
    }
    return best;
}

} // namespace vorq::evaluation
