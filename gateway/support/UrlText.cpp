#include "support/UrlText.h"

#include "support/ApiError.h"
#include "support/Utf8.h"

#include <cctype>
#include <charconv>
#include <optional>

namespace vorq::gateway {
namespace {

constexpr std::size_t kMostFields = 64;

/// Nothing unless an escape of two digits stands at `offset`.
std::optional<char> escapeAt(std::string_view text, std::size_t offset) {
    const std::string_view digits = text.substr(offset + 1, 2);
    unsigned value = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc() || digits.size() != 2 || end != digits.data() + 2) return std::nullopt;
    return static_cast<char>(value);
}

std::string unescaped(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            out += text[i] == '+' ? ' ' : text[i];
            continue;
        }
        const std::optional<char> character = escapeAt(text, i);
        if (!character) throw ApiError(400, "The form could not be read.");
        out += *character;
        i += 2;
    }
    for (std::size_t i = 0; i < out.size();) {
        const CodePoint c = decodeAt(out, i);
        const bool isInvalid = c.value == kReplacement && c.length == 1;
        if (isInvalid || c.value == 0) throw ApiError(400, "The form is not valid text.");
        i += c.length;
    }
    return out;
}

} // namespace

Fields parseFields(std::string_view text) {
    Fields fields;
    while (!text.empty()) {
        const std::string_view pair = text.substr(0, text.find('&'));
        text.remove_prefix(pair.size() == text.size() ? pair.size() : pair.size() + 1);
        if (pair.empty()) continue;
        const std::size_t equals = pair.find('=');
        const std::string_view value =
            equals == std::string_view::npos ? std::string_view() : pair.substr(equals + 1);
        const bool isNew =
            fields.emplace(unescaped(pair.substr(0, equals)), unescaped(value)).second;
        if (!isNew) throw ApiError(400, "The form has a field twice.");
        if (fields.size() > kMostFields) throw ApiError(400, "The form has too many fields.");
    }
    return fields;
}

std::string fieldIn(const Fields& fields, std::string_view name) {
    const auto entry = fields.find(name);
    return entry == fields.end() ? std::string() : entry->second;
}

std::string urlEscaped(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view plain = "-._~";
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80 && (std::isalnum(byte) != 0 || plain.contains(c))) {
            out += c;
        } else {
            out += '%';
            out += digits[byte / 16];
            out += digits[byte % 16];
        }
    }
    return out;
}

} // namespace vorq::gateway
