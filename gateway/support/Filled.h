#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// `pattern` with each "{}" replaced by the next value; the C++ library at hand has no std::format.
[[nodiscard]] std::string filledWith(std::string_view pattern,
                                     const std::vector<std::string>& values);

[[nodiscard]] inline std::string asText(std::string_view text) {
    return std::string(text);
}
[[nodiscard]] inline std::string asText(std::integral auto number) {
    return std::to_string(number);
}

template<typename... Values>
[[nodiscard]] std::string filled(std::string_view pattern, const Values&... values) {
    return filledWith(pattern, {asText(values)...});
}

} // namespace vorq::gateway
