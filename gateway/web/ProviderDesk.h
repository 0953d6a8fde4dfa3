#pragma once

#include "provider/ProviderConfig.h"
#include "settings/Settings.h"

#include <nlohmann/json_fwd.hpp>

#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vorq::gateway {

/// The provider as the administrator types it.
struct ProviderEntry {
    std::string url;
    std::string key; ///< empty to keep the one that is saved
    bool removesKey = false;
    std::string keyHeader;
    std::string model;
    /// From the client's model ids to the provider's.
    std::map<std::string, std::string> models;
};

/// Shows, tries and saves the provider of the settings file. Thread-safe. Refusals are ApiError
/// with the name of the field.
class ProviderDesk {
  public:
    /// Takes the provider that is used from now on, or none.
    using Use = std::function<void(const std::optional<ProviderConfig>& provider)>;

    ProviderDesk(std::filesystem::path file, Environment environment, Use use);

    /// What the file says, without the key.
    [[nodiscard]] ProviderEntry saved();
    [[nodiscard]] bool hasKey();
    /// Variables of the environment that win over the file.
    [[nodiscard]] std::vector<std::string> overriding() const;
    /// What would be used if the entry were saved; nothing without an address.
    [[nodiscard]] std::optional<ProviderConfig> configOf(const ProviderEntry& entry);
    /// Saves the entry, and uses it at once.
    void save(const ProviderEntry& entry);
    [[nodiscard]] const std::filesystem::path& file() const { return m_file; }

  private:
    [[nodiscard]] nlohmann::json read() const;
    [[nodiscard]] nlohmann::json documentWith(const ProviderEntry& entry) const;
    [[nodiscard]] std::optional<ProviderConfig> checked(const nlohmann::json& document) const;

    std::filesystem::path m_file;
    Environment m_environment;
    Use m_use;
    std::mutex m_saving;
};

} // namespace vorq::gateway
