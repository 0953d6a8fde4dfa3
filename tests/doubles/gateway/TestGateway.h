#pragma once

#include "auth/AccountService.h"
#include "doubles/gateway/ManualClock.h"
#include "doubles/gateway/TemporaryFolder.h"
#include "doubles/gateway/TestState.h"
#include "engine/EngineSwitch.h"
#include "engine/embedded/EmbeddedEngine.h"
#include "http/AiRoutes.h"
#include "http/AuthRoutes.h"
#include "http/GatewayServer.h"
#include "http/RequestRouter.h"
#include "web/Site.h"

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace vorq::gateway::testing {

struct Answer {
    int status = 0;
    nlohmann::json body;
    std::string text;
    httplib::Headers headers;
};

/// A whole gateway on a free port of this computer.
class TestGateway {
  public:
    /// Without an engine it has the embedded one, and without a state a file of its own.
    explicit TestGateway(std::unique_ptr<Engine> engine = nullptr, int wrongPasswordsPerMinute = 10,
                         std::shared_ptr<TestState> state = nullptr,
                         std::optional<PublicUrl> publicUrl = std::nullopt);
    ~TestGateway();
    TestGateway(const TestGateway&) = delete;
    TestGateway& operator=(const TestGateway&) = delete;

    /// Exchanges a fresh code and keeps the tokens.
    void signIn();
    Answer get(const std::string& path);
    Answer post(const std::string& path, const nlohmann::json& body);
    Answer postRaw(const std::string& path, const std::string& body,
                   const httplib::Headers& headers = {},
                   const std::string& contentType = "application/json");
    /// The payloads of a streamed answer.
    std::vector<nlohmann::json> stream(const std::string& path, nlohmann::json body);
    [[nodiscard]] httplib::Client client() const;
    void stop();

    ManualClock clock;
    std::shared_ptr<TestState> state;
    TemporaryFolder& folder;
    AccountService accounts;
    WebAccounts web;
    PasswordReset resets;
    std::shared_ptr<EngineSwitch> engine;
    ProviderDesk provider;
    /// What the administrator was told.
    std::vector<PasswordReset::Code> toldResets;
    Site site;
    RequestRouter router;
    GatewayServer server;
    int port = 0;
    std::string token;
    std::string refreshToken;

  private:
    std::thread m_thread;
};

/// The payloads of the "data:" lines of an event stream.
[[nodiscard]] std::vector<nlohmann::json> payloadsOf(const std::string& eventStream);

} // namespace vorq::gateway::testing
