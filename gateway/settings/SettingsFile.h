#pragma once

#include <nlohmann/json_fwd.hpp>

#include <filesystem>

namespace vorq::gateway {

/// The settings as they stand in the file, an empty object where there is none. Throws
/// std::runtime_error with a sentence that names what is wrong, but never a value.
[[nodiscard]] nlohmann::json readSettingsFile(const std::filesystem::path& file);

/// Replaces the file in one step by one that its owner alone can read. One with comments, which
/// JSON cannot carry, stays beside it as FILE.bak. Throws std::runtime_error with a sentence.
void writeSettingsFile(const std::filesystem::path& file, const nlohmann::json& document);

} // namespace vorq::gateway
