#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vorq::gateway {

/// The length of an escape such as "\u00e4" in JSON.
constexpr std::size_t kUnicodeEscapeLength = 6;

/// The UTF-16 unit that the escape at the start of the text stands for; nothing if there is none.
[[nodiscard]] std::optional<char32_t> escapedUnit(std::string_view text);

[[nodiscard]] constexpr bool isLeadingHalf(std::optional<char32_t> unit) {
    return unit && *unit >= 0xD800 && *unit < 0xDC00;
}
[[nodiscard]] constexpr bool isTrailingHalf(std::optional<char32_t> unit) {
    return unit && *unit >= 0xDC00 && *unit < 0xE000;
}

} // namespace vorq::gateway
