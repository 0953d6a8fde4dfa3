#pragma once

#include <string_view>

namespace vorq::gateway {

/// Whether a lower-cased word carries grammar rather than content, in the larger European
/// languages.
[[nodiscard]] bool isStopWord(std::string_view word);

} // namespace vorq::gateway
