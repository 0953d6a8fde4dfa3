#pragma once

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>

namespace vorq::gateway {

/// Typed reads out of a request's JSON object. A wrong type, or a required key that is missing,
/// is an ApiError with status 400 that names the key. A key with null counts as missing.

[[nodiscard]] std::string requiredText(const nlohmann::json& body, const char* key);
[[nodiscard]] std::optional<std::string> optionalText(const nlohmann::json& body, const char* key);
[[nodiscard]] bool flag(const nlohmann::json& body, const char* key);

/// The body as a JSON object. Refuses invalid JSON, other values, and nesting or numbers
/// of values beyond any use.
[[nodiscard]] nlohmann::json parseBody(const std::string& body);

} // namespace vorq::gateway
