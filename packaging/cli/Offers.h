#pragma once

#include "CommandPages.h"

namespace vorq::packaging {

/// What a shell may offer behind some words: commands, or options of one.
struct Offer {
    std::string word;
    std::string brief; ///< "" where nothing is to be said
};

/// What may follow behind these words, which are no options.
struct Place {
    std::string words;   ///< "" directly behind the program's name
    bool isExact = true; ///< else more words may stand behind them
    std::vector<Offer> offers;
};

/// All places of a program, none twice.
[[nodiscard]] std::vector<Place> placesOf(const Program& program);

/// All options that take a value, none twice.
[[nodiscard]] std::vector<Option> valuedOptions(const Program& program);

/// As a shell reads it again, in single quotes.
[[nodiscard]] std::string quoted(const std::string& text);

/// With a blank between them.
[[nodiscard]] std::string joined(const std::vector<std::string>& words);

} // namespace vorq::packaging
