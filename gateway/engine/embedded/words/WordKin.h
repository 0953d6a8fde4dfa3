#pragma once

#include "engine/embedded/words/Language.h"
#include "engine/embedded/words/Words.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vorq::gateway {

/// Which words of a text may stand for a word of a question, though their stems differ: "went" for
/// "go", "purchase" for "buy", "zog … ein" for "einziehen". All words are keys, as `WordReader`
/// gives them.
class WordKin {
  public:
    explicit WordKin(Language language);

    struct Relative {
        std::string key;
        /// A form of the same word; else one that means about the same.
        bool isForm = false;
    };
    /// Empty if none is known.
    [[nodiscard]] const std::vector<Relative>& of(std::string_view key) const;

    /// The key without a prefix that parts from its verb and without the "ge" of a participle;
    /// what is left names the verb and may stand alone in the text. The key itself if it has none.
    [[nodiscard]] std::string_view withoutPrefix(std::string_view key) const;

  private:
    void readForms(std::string_view groups, WordReader& reader);
    void readSynonyms(std::string_view groups, WordReader& reader);
    void relate(const std::string& key, const std::string& relative, bool isForm);

    std::vector<std::string_view> m_prefixes;
    std::unordered_map<std::string, std::vector<Relative>> m_relatives;
};

/// Lives as long as the program. Thread-safe.
[[nodiscard]] const WordKin& kinOf(Language language);

} // namespace vorq::gateway
