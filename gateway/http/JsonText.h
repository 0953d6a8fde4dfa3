#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace vorq::gateway {

/// JSON on one line by every reader's notion of a line. Invalid UTF-8 becomes U+FFFD.
[[nodiscard]] std::string oneLineJson(const nlohmann::json& value);

/// {"error": sentence}
[[nodiscard]] nlohmann::json errorDocument(const std::string& sentence);

} // namespace vorq::gateway
