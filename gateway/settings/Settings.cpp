#include "settings/Settings.h"

#include "provider/LocalAddress.h"
#include "settings/SettingNames.h"
#include "settings/SettingsFile.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace vorq::gateway {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr double kLongestTimeoutSeconds = 3600;

fs::path homeFolder(const Environment& environment) {
    if (const auto home = environment("HOME"); home && !home->empty()) return *home;
    const passwd* entry = getpwuid(getuid());
    if (entry == nullptr) throw std::runtime_error("Your home folder could not be found.");
    return entry->pw_dir;
}

/// An XDG base folder; a relative value counts as none.
fs::path baseFolder(const Environment& environment, const char* variable, const char* fallback) {
    const auto value = environment(variable);
    if (value && value->starts_with('/')) return *value;
    return homeFolder(environment) / fallback;
}

/// Whether anyone but the owner may read the file.
bool isOpenToOthers(const fs::path& file) {
    constexpr fs::perms others = fs::perms::group_read | fs::perms::others_read;
    std::error_code error;
    const fs::perms permissions = fs::status(file, error).permissions();
    return !error && (permissions & others) != fs::perms::none;
}

template<typename T>
T valueOr(const json& object, const char* key, T fallback) {
    const auto entry = object.find(key);
    if (entry == object.end() || entry->is_null()) return fallback;
    try {
        return entry->get<T>();
    } catch (const json::exception&) {
        throw std::runtime_error(filled("\"{}\" in the settings has the wrong type.", key));
    }
}

std::chrono::milliseconds secondsOr(const json& object, const char* key,
                                    std::chrono::milliseconds fallback) {
    const double seconds = valueOr(object, key, static_cast<double>(fallback.count()) / 1000.0);
    if (!(seconds > 0 && seconds <= kLongestTimeoutSeconds)) {
        throw std::runtime_error(
            filled("\"{}\" in the settings must lie between 0 and 3600 seconds.", key));
    }
    return std::chrono::milliseconds(static_cast<long long>(seconds * 1000.0));
}

std::string checkedKey(const std::string& key) {
    const std::string text(trimmed(key));
    const bool plain = std::ranges::all_of(text, [](char c) { return c > 0x20 && c < 0x7F; });
    if (!plain) {
        throw std::runtime_error("The provider's key holds characters that no key can have.");
    }
    return text;
}

/// The name of a header, as RFC 9110 allows it, or empty.
std::string checkedHeader(const std::string& name) {
    const bool plain = std::ranges::all_of(name, [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
               std::string_view("!#$%&'*+-.^_`|~").contains(c);
    });
    if (!plain) throw std::runtime_error("\"keyHeader\" in the settings is no name of a header.");
    // What everybody sends in this one is a bearer token.
    return lowered(name) == "authorization" ? std::string() : name;
}

std::vector<IpRange> rangesOf(const char* key, const std::vector<std::string>& texts) {
    std::vector<IpRange> ranges;
    for (const std::string& text : texts) {
        try {
            ranges.emplace_back(text);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(filled("Entry {} of \"{}\" in the settings {}",
                                            ranges.size() + 1, key, error.what()));
        }
    }
    return ranges;
}

} // namespace

std::optional<std::string> processEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::optional<ProviderConfig> readProvider(const json& document, const Environment& environment) {
    const json section = valueOr(document, "provider", json::object());
    if (!section.is_object()) {
        throw std::runtime_error("\"provider\" in the settings must be an object.");
    }
    const auto text = [&](const char* key, const char* variable) {
        const std::string stored = valueOr(section, key, std::string());
        const auto value = environment(variable);
        return std::string(trimmed(value && !trimmed(*value).empty() ? *value : stored));
    };
    const std::string address = text("url", "VORQ_PROVIDER_URL");
    if (address.empty()) return std::nullopt;
    ProviderConfig config;
    config.endpoint = chatEndpoint(address);
    config.key = checkedKey(text("key", "VORQ_PROVIDER_KEY"));
    config.keyHeader = checkedHeader(text("keyHeader", "VORQ_PROVIDER_KEY_HEADER"));
    config.model = text("model", "VORQ_PROVIDER_MODEL");
    config.models = valueOr(section, "models", config.models);
    // Whoever runs the models is asked for nothing by those that others choose.
    config.offersModels = valueOr(section, "offersModels", leadsToThisComputer(config.endpoint));
    config.caFile = valueOr(section, "caFile", std::string());
    config.connectTimeout = secondsOr(section, "connectTimeoutSeconds", config.connectTimeout);
    config.replyTimeout = secondsOr(section, "replyTimeoutSeconds", config.replyTimeout);
    config.idleTimeout = secondsOr(section, "idleTimeoutSeconds", config.idleTimeout);
    return config;
}

Settings readSettings(const fs::path& file, const Environment& environment) {
    const json document = readSettingsFile(file);
    Settings settings;
    settings.provider = readProvider(document, environment);
    settings.notices = unknownSettings(document);
    settings.openSignUp = valueOr(document, "openSignUp", settings.openSignUp);
    settings.trustedProxies =
        rangesOf("trustedProxies", valueOr(document, "trustedProxies", std::vector<std::string>()));
    settings.database = valueOr(document, "database", settings.database);
    settings.publicUrl = valueOr(document, "publicUrl", settings.publicUrl);
    if (const auto value = environment("VORQ_DATABASE"); value && !trimmed(*value).empty())
        settings.database = trimmed(*value);
    settings.wrongPasswordsPerMinute =
        valueOr(document, "wrongPasswordsPerMinute", settings.wrongPasswordsPerMinute);
    if (settings.wrongPasswordsPerMinute < 1) {
        throw std::runtime_error("\"wrongPasswordsPerMinute\" in the settings must be at least 1.");
    }
    const auto provider = document.find("provider");
    const bool holdsKey = provider != document.end() && provider->is_object() &&
                          !valueOr(*provider, "key", std::string()).empty();
    const bool holdsDatabase = !valueOr(document, "database", std::string()).empty();
    if ((holdsKey || holdsDatabase) && isOpenToOthers(file)) {
        settings.notices.push_back(filled(
            "Others on this computer can read {}, which holds the {}. Make it your own: chmod 600.",
            file.string(), holdsKey ? "provider's key" : "database's address"));
    }
    return settings;
}

fs::path defaultSettingsFile(const Environment& environment) {
    return baseFolder(environment, "XDG_CONFIG_HOME", ".config") / "Vorq" / "gateway.json";
}

fs::path defaultDataFolder(const Environment& environment) {
    return baseFolder(environment, "XDG_DATA_HOME", ".local/share") / "Vorq";
}

} // namespace vorq::gateway
