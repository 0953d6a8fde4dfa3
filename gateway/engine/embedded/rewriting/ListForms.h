#pragma once

#include "engine/embedded/words/Language.h"

#include <string>
#include <string_view>

namespace vorq::gateway {

/// A bullet for each sentence, and for each item of a list that is there already.
[[nodiscard]] std::string toBullets(std::string_view text, Language language);

/// The items of lists as sentences of a paragraph; a text without any list as one paragraph.
[[nodiscard]] std::string toSentences(std::string_view text, Language language);

} // namespace vorq::gateway
