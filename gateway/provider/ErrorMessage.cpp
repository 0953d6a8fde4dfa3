#include "provider/ErrorMessage.h"

#include "support/Utf8.h"

#include <nlohmann/json.hpp>

namespace vorq::gateway {
using nlohmann::json;

namespace {

/// How deep a message may lie, in documents that wrap those of other servers.
constexpr int kDeepestMessage = 4;

std::string messageIn(const json& error, int depth) {
    if (error.is_string()) {
        const std::string text = sanitized(error.get_ref<const std::string&>());
        return std::string(trimmed(text));
    }
    if (depth == 0) return {};
    if (error.is_array() && !error.empty()) return messageIn(error.front(), depth - 1);
    if (!error.is_object()) return {};
    for (const char* key : {"message", "msg", "detail", "error"}) {
        const auto value = error.find(key);
        if (value == error.end()) continue;
        if (std::string text = messageIn(*value, depth - 1); !text.empty()) return text;
    }
    return {};
}

} // namespace

std::string errorMessage(const json& error) {
    return messageIn(error, kDeepestMessage);
}

std::string errorMessageIn(std::string_view document) {
    json parsed = json::parse(document, nullptr, false);
    if (parsed.is_array() && !parsed.empty()) parsed = json(parsed.front());
    if (!parsed.is_object()) return {};
    const auto error = parsed.find("error");
    return errorMessage(error != parsed.end() ? *error : parsed);
}

} // namespace vorq::gateway
