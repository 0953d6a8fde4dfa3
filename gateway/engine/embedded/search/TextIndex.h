#pragma once

#include "engine/embedded/document/Document.h"
#include "engine/embedded/words/KeyTable.h"
#include "engine/embedded/words/Lexicon.h"
#include "engine/embedded/words/Words.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// One word of a sentence, as small as may be: a text of megabytes has very many.
struct Word {
    std::uint32_t key = 0;
    std::uint16_t offset = 0;
    std::uint16_t length = 0;
    bool isContent : 1 = false;
    bool isPale : 1 = false;
    bool isNumber : 1 = false;
    bool isCapitalised : 1 = false;
    bool followsDirectly : 1 = false;
    bool precedesNoun : 1 = false;
    bool isPersonal : 1 = false;
    /// Part of what only says who speaks and when.
    bool isLabel : 1 = false;
};

/// The words of a document, counted, so that its sentences can be ranked. Building it and each
/// ranking take time about linear in the text.
class TextIndex {
  public:
    explicit TextIndex(Document document);

    [[nodiscard]] Language language() const { return m_document.language; }
    [[nodiscard]] const Lexicon& lexicon() const { return lexiconOf(m_document.language); }
    [[nodiscard]] const std::vector<std::string>& headings() const { return m_document.headings; }
    [[nodiscard]] const std::vector<Sentence>& sentences() const { return m_document.sentences; }
    [[nodiscard]] std::string_view text(std::size_t sentence) const {
        return m_document.textOf(m_document.sentences[sentence]);
    }
    [[nodiscard]] std::span<const Word> wordsIn(std::size_t sentence) const;
    [[nodiscard]] std::string_view surface(std::size_t sentence, const Word& word) const {
        return text(sentence).substr(word.offset, word.length);
    }
    [[nodiscard]] const KeyTable& keys() const { return m_keys; }
    /// In how many sentences the key occurs.
    [[nodiscard]] std::size_t sentencesWith(std::uint32_t key) const;
    [[nodiscard]] std::size_t wordCount() const { return m_words.size(); }
    /// How much a word matters to the text; 0 for words that carry no content.
    [[nodiscard]] double weight(const Word& word) const;

    /// The `count` sentences that say most, without repeating each other, in the text's order.
    [[nodiscard]] std::vector<std::size_t> keySentences(std::size_t count) const;

  private:
    struct TermStatistics {
        std::uint32_t occurrences = 0;
        std::uint32_t sentences = 0;
        std::uint32_t lastSentence = 0;
        bool isInHeading = false;
    };
    void read(std::size_t sentence, WordReader& reader, FoundWord& found);
    void markHeadings(WordReader& reader);
    [[nodiscard]] double keyScore(std::size_t sentence) const;
    [[nodiscard]] bool leansOnContext(std::size_t sentence) const;
    [[nodiscard]] double overlap(std::size_t first, std::size_t second) const;

    Document m_document;
    KeyTable m_keys;
    std::vector<TermStatistics> m_terms;
    std::vector<Word> m_words;
    /// Where the words of each sentence end.
    std::vector<std::uint32_t> m_ends;
};

/// Indices by falling score; equal scores keep their order, so that results never vary.
[[nodiscard]] std::vector<std::size_t> rankedBest(const std::vector<double>& scores,
                                                  std::size_t count);

} // namespace vorq::gateway
