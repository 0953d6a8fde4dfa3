#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

namespace vorq::gateway {

/// The message inside a provider's error document, in any of the usual forms; empty if there is
/// none.
[[nodiscard]] std::string errorMessageIn(std::string_view document);
/// The same for the value of an "error" key.
[[nodiscard]] std::string errorMessage(const nlohmann::json& error);

} // namespace vorq::gateway
