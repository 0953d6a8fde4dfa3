#include "provider/ChunkJson.h"

#include "provider/UnicodeEscape.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <string>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr std::string_view kReplacementEscape = "\\ufffd";

/// Appends the escape at the start of the text, mended, and gives its length.
std::size_t appendEscape(std::string& out, std::string_view text) {
    const std::optional<char32_t> unit = escapedUnit(text);
    std::size_t length = unit ? kUnicodeEscapeLength : std::min<std::size_t>(2, text.size());
    if (isLeadingHalf(unit) && isTrailingHalf(escapedUnit(text.substr(length)))) {
        length += kUnicodeEscapeLength;
    } else if (isLeadingHalf(unit) || isTrailingHalf(unit)) {
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
