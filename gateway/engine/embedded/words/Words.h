#pragma once

#include "engine/embedded/words/Language.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// One word of a text: where it stands and the form under which it is counted.
struct FoundWord {
    std::size_t offset = 0;
    std::size_t length = 0;
    /// Lower-cased and stemmed, so that "store", "stores" and "stored" meet. Numbers stay.
    std::string key;
    /// Carries content: no grammar word and no bare number.
    bool isContent = false;
    /// A content word that many texts use and none is about.
    bool isPale = false;
    bool isNumber = false;
    bool isCapitalised = false;
    /// Nothing but blanks stands between it and the word before.
    bool followsDirectly = false;
    /// An article, a preposition or the like, behind which a noun stands.
    bool precedesNoun = false;
    /// Stands for a person or a thing that was named before.
    bool isPersonal = false;
};

/// Finds the words of texts in one language. Chinese, Japanese and Thai, which are written without
/// blanks, are cut by dictionary. For one thread.
class WordReader {
  public:
    explicit WordReader(Language language);
    ~WordReader();
    WordReader(const WordReader&) = delete;
    WordReader& operator=(const WordReader&) = delete;

    /// `text`, which must be valid UTF-8 and outlive the reading, is read from its beginning.
    void begin(std::string_view text);
    /// The next word; false at the end. `word` keeps its memory from one call to the next.
    [[nodiscard]] bool next(FoundWord& word);

  private:
    struct Tools;

    [[nodiscard]] std::size_t endOfLetters(std::size_t begin) const;
    [[nodiscard]] std::size_t endOfUnspaced();
    void fill(FoundWord& word, std::size_t end, bool isUnspaced);

    std::unique_ptr<Tools> m_tools;
    std::string_view m_text;
    std::size_t m_at = 0;
    bool m_direct = false;
};

/// Without the "'s" that makes it a possessive.
[[nodiscard]] std::string_view withoutPossessive(std::string_view word);

/// All words of `text`.
[[nodiscard]] std::vector<FoundWord> wordsOf(std::string_view text,
                                             Language language = Language::English);

} // namespace vorq::gateway
