#pragma once

#include "provider/ProviderConfig.h"
#include "support/IpRange.h"

#include <nlohmann/json_fwd.hpp>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vorq::gateway {

/// The value of an environment variable, if it is set.
using Environment = std::function<std::optional<std::string>(const char* name)>;

[[nodiscard]] std::optional<std::string> processEnvironment(const char* name);

struct Settings {
    /// Absent without a provider: replies then come from the embedded engine.
    std::optional<ProviderConfig> provider;
    int wrongPasswordsPerMinute = 10;
    /// Whether anybody who reaches the gateway can make an account.
    bool openSignUp = false;
    /// Addresses of proxies whose word on where a request came from is taken.
    std::vector<IpRange> trustedProxies;
    /// Address of a PostgreSQL database, in place of the state file; empty for none.
    std::string database;
    /// Where the gateway is reached through a proxy; empty where it is reached directly.
    std::string publicUrl;
    /// What the user ought to change, as sentences.
    std::vector<std::string> notices;
};

/// The provider in a settings document and in the environment over it. Throws like `readSettings`.
[[nodiscard]] std::optional<ProviderConfig> readProvider(const nlohmann::json& document,
                                                         const Environment& environment);

/// Reads the settings file, if `file` exists, and the environment over it. Throws
/// std::runtime_error with a sentence that names what is wrong, but never a value.
[[nodiscard]] Settings readSettings(const std::filesystem::path& file,
                                    const Environment& environment);

[[nodiscard]] std::filesystem::path defaultSettingsFile(const Environment& environment);
[[nodiscard]] std::filesystem::path defaultDataFolder(const Environment& environment);

} // namespace vorq::gateway
