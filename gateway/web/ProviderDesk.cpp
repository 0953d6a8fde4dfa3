#include "web/ProviderDesk.h"

#include "settings/SettingsFile.h"
#include "support/ApiError.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <array>
#include <stdexcept>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr std::array kProviderVariables = {"VORQ_PROVIDER_URL", "VORQ_PROVIDER_KEY",
                                           "VORQ_PROVIDER_KEY_HEADER", "VORQ_PROVIDER_MODEL"};

/// The section of the provider, an empty one where there is none.
json sectionOf(const json& document) {
    const auto section = document.find("provider");
    return section != document.end() && section->is_object() ? *section : json::object();
}

std::string sectionText(const json& section, const char* key) {
    const auto value = section.find(key);
    return value != section.end() && value->is_string() ? value->get<std::string>() : "";
}

/// Where an address leads; empty for none that leads anywhere.
std::string siteOfAddress(const std::string& address) {
    try {
        return siteOf(chatEndpoint(address));
    } catch (const std::runtime_error&) {
        return {};
    }
}

void setOrErase(json& section, const char* key, const std::string& value) {
    if (value.empty()) {
        section.erase(key);
    } else {
        section[key] = value;
    }
}

} // namespace

ProviderDesk::ProviderDesk(std::filesystem::path file, Environment environment, Use use)
    : m_file(std::move(file)), m_environment(std::move(environment)), m_use(std::move(use)) {}

json ProviderDesk::read() const {
    try {
        return readSettingsFile(m_file);
    } catch (const std::runtime_error& error) {
        throw ApiError(409, error.what());
    }
}

ProviderEntry ProviderDesk::saved() {
    const json section = sectionOf(read());
    ProviderEntry entry{.url = sectionText(section, "url"),
                        .key = {},
                        .keyHeader = sectionText(section, "keyHeader"),
                        .model = sectionText(section, "model"),
                        .models = {}};
    const auto models = section.find("models");
    if (models == section.end() || !models->is_object()) return entry;
    for (const auto& [id, model] : models->items())
        if (model.is_string()) entry.models.emplace(id, model.get<std::string>());
    return entry;
}

bool ProviderDesk::hasKey() {
    return !sectionText(sectionOf(read()), "key").empty();
}

std::vector<std::string> ProviderDesk::overriding() const {
    std::vector<std::string> names;
    for (const char* name : kProviderVariables) {
        const auto value = m_environment(name);
        if (value && !trimmed(*value).empty()) names.emplace_back(name);
    }
    return names;
}

json ProviderDesk::documentWith(const ProviderEntry& entry) const {
    json document = read();
    json section = sectionOf(document);
    const std::string url(trimmed(entry.url));
    const std::string key(trimmed(entry.key));
    const std::string savedUrl = sectionText(section, "url");
    const bool keepsKey = key.empty() && !entry.removesKey && !sectionText(section, "key").empty();
    if (keepsKey && !url.empty() && siteOfAddress(url) != siteOfAddress(savedUrl)) {
        throw ApiError(400,
                       "The saved key belongs to another address. Enter the key for this one, or "
                       "remove it.",
                       "key");
    }
    setOrErase(section, "url", url);
    if (!keepsKey) setOrErase(section, "key", key);
    setOrErase(section, "keyHeader", std::string(trimmed(entry.keyHeader)));
    setOrErase(section, "model", std::string(trimmed(entry.model)));
    section.erase("models");
    if (!entry.models.empty()) section["models"] = entry.models;
    document["provider"] = std::move(section);
    return document;
}

std::optional<ProviderConfig> ProviderDesk::checked(const json& document) const {
    try {
        return readProvider(document, m_environment);
    } catch (const std::runtime_error& error) {
        const std::string sentence = error.what();
        const bool isAboutHeader = sentence.contains("keyHeader");
        const bool isAboutKey = sentence.contains("key holds");
        throw ApiError(400, sentence, isAboutHeader ? "keyHeader" : isAboutKey ? "key" : "url");
    }
}

std::optional<ProviderConfig> ProviderDesk::configOf(const ProviderEntry& entry) {
    return checked(documentWith(entry));
}

void ProviderDesk::save(const ProviderEntry& entry) {
    const std::scoped_lock lock(m_saving);
    const json document = documentWith(entry);
    const std::optional<ProviderConfig> config = checked(document);
    try {
        writeSettingsFile(m_file, document);
    } catch (const std::runtime_error& error) {
        throw ApiError(503, error.what());
    }
    m_use(config);
}

} // namespace vorq::gateway
