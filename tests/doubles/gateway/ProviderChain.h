#pragma once

#include "doubles/gateway/ScriptedProvider.h"
#include "doubles/gateway/TestGateway.h"
#include "provider/ProviderEngine.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vorq::gateway::testing {

constexpr auto kProviderKey = "sk-very-secret-key";

inline ProviderConfig configFor(const std::string& address) {
    ProviderConfig config;
    config.endpoint = chatEndpoint(address);
    config.key = kProviderKey;
    config.model = "standard";
    config.models = {{"openai/o3-mini", "local-reasoner"}};
    return config;
}

/// A gateway in front of a provider that follows a script.
struct ProviderChain {
    using Change = std::function<void(ProviderConfig&)>;

    explicit ProviderChain(
        ScriptedProvider::Script script, const Change& change = [](ProviderConfig&) {},
        ReadingPause pause = {})
        : provider(std::move(script), pause) {
        ProviderConfig config = configFor(provider.address());
        config.replyTimeout = config.idleTimeout = std::chrono::seconds(10);
        change(config);
        gateway = std::make_unique<TestGateway>(std::make_unique<ProviderEngine>(config));
        gateway->signIn();
    }
    /// With the same patience before and within the answer.
    ProviderChain(ScriptedProvider::Script script, std::chrono::milliseconds patience)
        : ProviderChain(std::move(script), [patience](ProviderConfig& config) {
              config.replyTimeout = config.idleTimeout = patience;
          }) {}

    std::vector<nlohmann::json> ask() {
        return gateway->stream("/ai/prompt", {{"prompt", "hello"}});
    }
    Answer askWhole() { return gateway->post("/ai/prompt", {{"prompt", "hello"}}); }
    Answer askRaw() { return gateway->post("/ai/prompt", {{"prompt", "hello"}, {"stream", true}}); }

    /// What the user reads in the end: the reply, or the sentence of the failure.
    std::string finalWords() {
        const Answer answer = askRaw();
        const std::vector<nlohmann::json> events = payloadsOf(answer.text);
        const nlohmann::json last = events.empty() ? answer.body : events.back();
        if (!last.is_object()) return "no answer";
        return last.contains("error") ? last.value("error", "") : last.value("summary", "");
    }

    ScriptedProvider provider;
    std::unique_ptr<TestGateway> gateway;
};

} // namespace vorq::gateway::testing
