#pragma once

#include "engine/embedded/words/Language.h"

#include <string>
#include <string_view>

namespace vorq::gateway {

[[nodiscard]] std::string inUpperCase(std::string_view text);
[[nodiscard]] std::string inLowerCase(std::string_view text);
/// A capital for each word but the small ones inside; words of capitals stay.
[[nodiscard]] std::string inTitleCase(std::string_view text, Language language);
/// A capital for each sentence alone, and for the English "I".
[[nodiscard]] std::string inSentenceCase(std::string_view text, Language language);

/// The text with a capital for each sentence; nothing else is changed. Lines, items of lists and
/// what else ends no sentence begin with one only if told, and then also a sentence that begins in
/// its middle, with a word such as "and".
[[nodiscard]] std::string withSentenceCapitals(std::string_view text, Language language,
                                               bool areFragmentsToo);

/// Whether the word is the English "I", alone or with an apostrophe, in lower case.
[[nodiscard]] bool isSmallI(std::string_view word);

} // namespace vorq::gateway
