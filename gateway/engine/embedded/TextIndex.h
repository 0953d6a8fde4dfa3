#pragma once

#include "engine/embedded/Document.h"
#include "engine/embedded/QuestionKind.h"
#include "engine/embedded/Words.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vorq::gateway {

/// The words of a document, counted, so that its sentences can be ranked. Building it and each
/// ranking take time about linear in the text.
class TextIndex {
  public:
    explicit TextIndex(Document document);

    [[nodiscard]] const std::vector<Sentence>& sentences() const { return document_.sentences; }
    [[nodiscard]] const std::vector<std::string>& headings() const { return document_.headings; }
    [[nodiscard]] const std::vector<Word>& wordsIn(std::size_t sentence) const {
        return words_[sentence];
    }
    [[nodiscard]] std::string_view surface(std::size_t sentence, const Word& word) const;
    /// How much a word matters to the text; 0 for words that carry no content.
    [[nodiscard]] double weight(const Word& word) const;

    /// The `count` sentences that say most, without repeating each other, in the text's order.
    [[nodiscard]] std::vector<std::size_t> keySentences(std::size_t count) const;
    /// The sentences that answer `query` best, best first; none if no content word of it occurs.
    [[nodiscard]] std::vector<std::size_t> matching(std::string_view query,
                                                    std::size_t count) const;
    [[nodiscard]] std::vector<std::size_t> matching(std::string_view query, QuestionKind kind,
                                                    std::size_t count) const;
    /// The first sentences that hold what the kind asks for, in the text's order.
    [[nodiscard]] std::vector<std::size_t> holding(QuestionKind kind, std::size_t count) const;
    /// The words and pairs of words that the text is about, most important first.
    [[nodiscard]] std::vector<std::string> keyTerms(std::size_t count) const;

  private:
    struct TermStatistics {
        std::size_t occurrences = 0;
        std::size_t sentences = 0;
        std::size_t lastSentence = 0;
        bool isInHeading = false;
    };
    void count(std::size_t sentence);
    [[nodiscard]] double keyScore(std::size_t sentence) const;
    [[nodiscard]] double overlap(std::size_t first, std::size_t second) const;
    [[nodiscard]] bool beginsWithPronoun(std::size_t sentence) const;
    [[nodiscard]] double matchScore(std::size_t sentence,
                                    const std::unordered_map<std::string, double>& query,
                                    double averageLength) const;

    Document document_;
    std::vector<std::vector<Word>> words_;
    std::unordered_map<std::string, TermStatistics> terms_;
    std::size_t wordCount_ = 0;
};

} // namespace vorq::gateway
