#include "provider/UnicodeEscape.h"

#include <charconv>
#include <cstdint>

namespace vorq::gateway {

std::optional<char32_t> escapedUnit(std::string_view text) {
    if (text.size() < kUnicodeEscapeLength || !text.starts_with("\\u")) return std::nullopt;
    std::uint32_t value = 0;
    const char* const end = text.data() + kUnicodeEscapeLength;
    const auto result = std::from_chars(text.data() + 2, end, value, 16);
    return result.ptr == end ? std::optional<char32_t>(value) : std::nullopt;
}

} // namespace vorq::gateway
