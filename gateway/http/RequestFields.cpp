#include "http/RequestFields.h"

#include "http/ApiError.h"
#include "support/Filled.h"

#include <nlohmann/json.hpp>

#include <string_view>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr int kDeepest = 32;

const json* find(const json& body, const char* key) {
    const auto entry = body.find(key);
    return entry == body.end() || entry->is_null() ? nullptr : &*entry;
}

bool nestsTooDeeply(std::string_view text) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') ++i;
            if (c == '"') inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > kDeepest) return true;
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return false;
}

} // namespace

std::optional<std::string> optionalText(const json& body, const char* key) {
    const json* value = find(body, key);
    if (value == nullptr) return std::nullopt;
    if (!value->is_string()) throw ApiError(400, filled("\"{}\" must be a string.", key));
    return value->get<std::string>();
}

std::string requiredText(const json& body, const char* key) {
    std::optional<std::string> text = optionalText(body, key);
    if (!text) throw ApiError(400, filled("\"{}\" is missing.", key));
    return *text;
}

bool flag(const json& body, const char* key) {
    const json* value = find(body, key);
    if (value == nullptr) return false;
    if (!value->is_boolean()) {
        throw ApiError(400, filled("\"{}\" must be true or false.", key));
    }
    return value->get<bool>();
}

json parseBody(const std::string& body) {
    if (nestsTooDeeply(body)) throw ApiError(400, "The request's JSON is nested too deeply.");
    json parsed = json::parse(body, nullptr, false);
    if (parsed.is_discarded()) throw ApiError(400, "The request is not valid JSON.");
    if (!parsed.is_object()) throw ApiError(400, "The request must be a JSON object.");
    return parsed;
}

} // namespace vorq::gateway
