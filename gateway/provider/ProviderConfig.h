#pragma once

#include <chrono>
#include <map>
#include <string>

namespace vorq::gateway {

/// How to reach an OpenAI-compatible provider.
struct ProviderConfig {
    /// The whole address of its chat completions endpoint.
    std::string endpoint;
    /// Sent as bearer token unless empty. Never logged.
    std::string key;
    /// Used where the client names no model, or one that `models` does not know.
    std::string model;
    /// From the client's model ids to the provider's.
    std::map<std::string, std::string> models;
    /// Certificates of an own authority, or empty.
    std::string caFile;
    std::chrono::milliseconds connectTimeout{10'000};
    /// Until the first byte of the answer.
    std::chrono::milliseconds replyTimeout{60'000};
    /// Between two pieces of the answer.
    std::chrono::milliseconds idleTimeout{45'000};
};

/// The endpoint behind an address as people write it: with or without "/v1", with or without
/// "/chat/completions". Throws std::runtime_error unless it is http or https.
[[nodiscard]] std::string chatEndpoint(std::string address);

/// The model to ask for; may be empty, which leaves it to the provider.
[[nodiscard]] std::string providerModel(const ProviderConfig& config, const std::string& wanted);

} // namespace vorq::gateway
