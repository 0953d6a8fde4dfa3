#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string_view>

namespace vorq::gateway {

/// Reads the JSON of one chunk. Bytes that are no UTF-8, halves of a surrogate pair and raw control
/// characters are replaced, since they come from a character that was cut in two between chunks
/// and spoil no more than themselves. Discarded if it is no JSON all the same.
[[nodiscard]] nlohmann::json parseChunk(std::string_view text);

} // namespace vorq::gateway
