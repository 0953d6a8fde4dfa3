#include "provider/ChunkJson.h"

#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <optional>
#include <string>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr std::string_view kReplacementEscape = "\\ufffd";
constexpr std::size_t kEscapeLength = 6;

/// The value of "\uXXXX" at the start of the text.
std::optional<unsigned> escapedUnit(std::string_view text) {
    if (text.size() < kEscapeLength || !text.starts_with("\\u")) return std::nullopt;
    unsigned value = 0;
    const char* const end = text.data() + kEscapeLength;
    const auto result = std::from_chars(text.data() + 2, end, value, 16);
    return result.ptr == end ? std::optional(value) : std::nullopt;
}

bool isLeading(std::optional<unsigned> unit) {
    return unit && *unit >= 0xD800 && *unit < 0xDC00;
}

bool isTrailing(std::optional<unsigned> unit) {
    return unit && *unit >= 0xDC00 && *unit < 0xE000;
}

/// Appends the escape at the start of the text, mended, and gives its length.
std::size_t appendEscape(std::string& out, std::string_view text) {
    const std::optional<unsigned> unit = escapedUnit(text);
    std::size_t length = unit ? kEscapeLength : std::min<std::size_t>(2, text.size());
    if (isLeading(unit) && isTrailing(escapedUnit(text.substr(length)))) {
        length += kEscapeLength;
    } else if (isLeading(unit) || isTrailing(unit)) {
        out += kReplacementEscape;
        return length;
    }
    out += text.substr(0, length);
    return length;
}

std::string mended(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '\\') {
            at += appendEscape(out, text.substr(at));
            continue;
        }
        const CodePoint point = decodeAt(text, at);
        appendUtf8(out, point.value < 0x20 ? U' ' : point.value);
        at += point.length;
    }
    return out;
}

} // namespace

json parseChunk(std::string_view text) {
    json parsed = json::parse(text, nullptr, false);
    return parsed.is_discarded() ? json::parse(mended(text), nullptr, false) : parsed;
}

} // namespace vorq::gateway
