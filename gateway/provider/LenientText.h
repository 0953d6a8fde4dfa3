#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

namespace vorq::gateway {

/// What an escape such as "\n" stands for is appended to `out`; an escape that JSON does not know
/// stays as it is written. Gives its length. `text` begins with the backslash.
std::size_t appendUnescaped(std::string& out, std::string_view text);

/// The value that a word without quotes stands for: a literal, a number, or else its own text.
[[nodiscard]] nlohmann::json bareValue(std::string_view word);

} // namespace vorq::gateway
