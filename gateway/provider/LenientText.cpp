#include "provider/LenientText.h"

#include "provider/UnicodeEscape.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr std::array<std::pair<char, char>, 10> kEscapes = {{{'n', '\n'},
                                                             {'t', '\t'},
                                                             {'r', '\r'},
                                                             {'b', '\b'},
                                                             {'f', '\f'},
                                                             {'"', '"'},
                                                             {'\'', '\''},
                                                             {'\\', '\\'},
                                                             {'/', '/'},
                                                             {'\n', '\n'}}};

std::size_t appendUnit(std::string& out, std::string_view text, char32_t unit) {
    const std::optional<char32_t> next =
        isLeadingHalf(unit) ? escapedUnit(text.substr(kUnicodeEscapeLength)) : std::nullopt;
    if (next && isTrailingHalf(next)) {
        appendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (*next - 0xDC00));
        return 2 * kUnicodeEscapeLength;
    }
    const bool isHalf = isLeadingHalf(unit) || isTrailingHalf(unit);
    appendUtf8(out, isHalf ? kReplacement : unit);
    return kUnicodeEscapeLength;
}

template<typename Number>
std::optional<Number> wholeNumber(std::string_view word) {
    Number value{};
    const auto result = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool isWhole = result.ec == std::errc() && result.ptr == word.data() + word.size();
    return isWhole ? std::optional(value) : std::nullopt;
}

} // namespace

std::size_t appendUnescaped(std::string& out, std::string_view text) {
    if (const std::optional<char32_t> unit = escapedUnit(text)) return appendUnit(out, text, *unit);
    if (text.size() < 2) return 1;
    const auto known = std::ranges::find(kEscapes, text[1], &std::pair<char, char>::first);
    if (known == kEscapes.end()) {
        out += text.front();
        return 1;
    }
    out += known->second;
    return 2;
}

json bareValue(std::string_view word) {
    const std::string lower = lowered(word);
    if (lower == "true") return true;
    if (lower == "false") return false;
    for (const char* nothing : {"null", "none", "nil", "undefined", "nan"}) {
        if (lower == nothing) return nullptr;
    }
    const bool mayBeNumber = word.find_first_not_of("0123456789+-.eE") == std::string_view::npos;
    const std::string_view digits = word.starts_with('+') ? word.substr(1) : word;
    if (mayBeNumber) {
        if (const auto integer = wholeNumber<std::int64_t>(digits)) return *integer;
        if (const auto number = wholeNumber<double>(digits)) return *number;
    }
    return std::string(word);
}

} // namespace vorq::gateway
