#include "provider/ErrorMessage.h"

#include "support/Utf8.h"

#include <nlohmann/json.hpp>

namespace vorq::gateway {
using nlohmann::json;

std::string errorMessage(const json& error) {
    if (error.is_string()) {
        const std::string text = sanitized(error.get_ref<const std::string&>());
        return std::string(trimmed(text));
    }
    if (!error.is_object()) return {};
    for (const char* key : {"message", "detail", "error"}) {
        const auto value = error.find(key);
        if (value != error.end() && value->is_string()) return errorMessage(*value);
    }
    return {};
}

std::string errorMessageIn(std::string_view document) {
    json parsed = json::parse(document, nullptr, false);
    if (parsed.is_array() && !parsed.empty()) parsed = json(parsed.front());
    if (!parsed.is_object()) return {};
    const auto error = parsed.find("error");
    return errorMessage(error != parsed.end() ? *error : parsed);
}

} // namespace vorq::gateway
