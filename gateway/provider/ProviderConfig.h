#pragma once

#include <chrono>
#include <map>
#include <string>

namespace vorq::gateway {

/// How to reach an OpenAI-compatible provider.
struct ProviderConfig {
    /// The whole address of its chat completions endpoint.
    std::string endpoint;
    /// Never logged; empty where the provider wants none.
    std::string key;
    /// The header that carries the key as it is; empty for the usual bearer token.
    std::string keyHeader;
    /// Used where the client names no model, or one that `models` does not know.
    std::string model;
    /// From the client's model ids to the provider's.
    std::map<std::string, std::string> models;
    /// Whether a client is told what models the provider has, and may name any of them.
    bool offersModels = false;
    /// Certificates of an own authority, or empty.
    std::string caFile;
    std::chrono::milliseconds connectTimeout{10'000};
    /// Longest silence until the model writes or thinks.
    std::chrono::milliseconds replyTimeout{60'000};
    /// Longest silence from then on.
    std::chrono::milliseconds idleTimeout{45'000};
};

/// The endpoint behind an address as people write it: "/v1" is added only where the address has no
/// path, "/chat/completions" only where it does not end so. A query stays. Throws
/// std::runtime_error unless it is a URL of http or https.
[[nodiscard]] std::string chatEndpoint(const std::string& address);

/// The endpoint beside it that lists the provider's models.
[[nodiscard]] std::string modelsEndpoint(const std::string& chatEndpoint);

/// Scheme, host and port of a URL, without a user name or password in it.
[[nodiscard]] std::string siteOf(const std::string& url);

/// The model to ask for; may be empty, which leaves it to the provider.
[[nodiscard]] std::string providerModel(const ProviderConfig& config, const std::string& wanted);

} // namespace vorq::gateway
