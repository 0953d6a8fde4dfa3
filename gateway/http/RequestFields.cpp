#include "http/RequestFields.h"

#include "support/ApiError.h"
#include "support/Filled.h"

#include <nlohmann/json.hpp>

#include <string_view>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr int kDeepest = 32;
constexpr std::size_t kMostMarks = 20'000;

const json* find(const json& body, const char* key) {
    const auto entry = body.find(key);
    return entry == body.end() || entry->is_null() ? nullptr : &*entry;
}

/// Refuses what would take far more memory than it has bytes. Every value behind the first has a
/// comma, colon or bracket in front of it, so these are counted, and nothing is built.
void checkShape(std::string_view text) {
    int depth = 0;
    std::size_t marks = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') ++i;
            if (c == '"') inString = false;
            continue;
        }
        if (c == '"') inString = true;
        if (c == '[' || c == '{') ++depth;
        if (c == ']' || c == '}') --depth;
        if (c == '[' || c == '{' || c == ',' || c == ':') ++marks;
        if (depth > kDeepest) throw ApiError(400, "The request's JSON is nested too deeply.");
        if (marks > kMostMarks) throw ApiError(400, "The request's JSON holds too many values.");
    }
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
    checkShape(body);
    json parsed = json::parse(body, nullptr, false);
    if (parsed.is_discarded()) throw ApiError(400, "The request is not valid JSON.");
    if (!parsed.is_object()) throw ApiError(400, "The request must be a JSON object.");
    return parsed;
}

} // namespace vorq::gateway
