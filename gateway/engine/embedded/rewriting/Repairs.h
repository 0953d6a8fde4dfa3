#pragma once

#include "engine/embedded/words/Language.h"

#include <string>
#include <string_view>

namespace vorq::gateway {

/// The text with its spacing, doubled words, capitals and quotes put right: what can be told to be
/// wrong without knowing what it means. Code between fences stays as it is.
[[nodiscard]] std::string repaired(std::string_view text, Language language);

/// One line with single blanks, none at its end nor before a mark that ends something; what it
/// begins with stays.
[[nodiscard]] std::string withRepairedBlanks(std::string_view line, Language language);

} // namespace vorq::gateway
