#pragma once

#include "engine/embedded/words/LanguageData.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace vorq::gateway {

using WordSet = std::unordered_set<std::string_view>;

/// What one word is, of which it may be more than one.
struct WordRole {
    bool isStop : 1 = false;
    bool isCalendar : 1 = false;
    bool isPale : 1 = false;
    bool isDeterminer : 1 = false;
    bool isPreposition : 1 = false;
    bool isPersonal : 1 = false;
};

/// The words of one language, ready to be looked up. All are lower-cased.
struct Lexicon {
    explicit Lexicon(const LanguageData& languageData);

    [[nodiscard]] WordRole roleOf(std::string_view word) const;
    [[nodiscard]] bool isStop(std::string_view word) const { return roleOf(word).isStop; }

    const LanguageData& data;
    std::unordered_map<std::string_view, WordRole> roles;
    WordSet pronouns;
    WordSet placePrepositions;
    WordSet abbreviations;
    WordSet requestWords;
};

/// Lives as long as the program. Thread-safe.
[[nodiscard]] const Lexicon& lexiconOf(Language language);

} // namespace vorq::gateway
