#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace vorq::gateway {

/// JSON on one line by every reader's notion of a line. Invalid UTF-8 becomes U+FFFD.
[[nodiscard]] std::string oneLineJson(const nlohmann::json& value);

/// {"error": sentence}, and "field" where it is about one of what was sent.
[[nodiscard]] nlohmann::json errorDocument(const std::string& sentence,
                                           const std::string& field = {});

} // namespace vorq::gateway
