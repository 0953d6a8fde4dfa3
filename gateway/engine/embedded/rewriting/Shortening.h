#pragma once

#include "engine/embedded/words/Language.h"

#include <string>
#include <string_view>

namespace vorq::gateway {

/// The text without asides, in any language, and without filler, in those whose filler is known.
/// What has none of either stays as it is.
[[nodiscard]] std::string shortened(std::string_view text, Language language);

} // namespace vorq::gateway
