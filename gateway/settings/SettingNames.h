#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace vorq::gateway {

/// A sentence for each key of the settings that means nothing, with the one that was probably
/// meant.
[[nodiscard]] std::vector<std::string> unknownSettings(const nlohmann::json& document);

} // namespace vorq::gateway
