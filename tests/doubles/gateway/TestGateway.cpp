#include "doubles/gateway/TestGateway.h"

#include "provider/ProviderEngine.h"
#include <csignal>
#include <sstream>

namespace vorq::gateway::testing {

TestGateway::TestGateway(std::unique_ptr<Engine> given, int wrongPasswordsPerMinute,
                         std::shared_ptr<TestState> givenState, std::optional<PublicUrl> publicUrl)
    : state(givenState ? std::move(givenState) : std::make_shared<TestState>(StateKind::File)),
      folder(state->folder),
      accounts(state->open(), clock, {.wrongPasswordsPerMinute = wrongPasswordsPerMinute}),
      web(accounts, clock),
      resets(accounts, clock),
      engine(std::make_shared<EngineSwitch>(
          given ? std::shared_ptr<Engine>(std::move(given))
                : std::make_shared<EmbeddedEngine>(std::chrono::milliseconds(0)))),
      provider(
          folder.path() / "gateway.json", [](const char*) { return std::nullopt; },
          [this](const std::optional<ProviderConfig>& config) {
              if (config) engine->use(std::make_shared<ProviderEngine>(*config));
          }),
      site{.accounts = accounts,
           .web = web,
           .resets = resets,
           .provider = provider,
           .loginName = "ada",
           .tellReset = [this](const PasswordReset::Code& code) { toldResets.push_back(code); }},
      router(accounts, RequestGuard("127.0.0.1", {IpRange("127.0.0.1")}, std::move(publicUrl))),
      server(router) {
    // As in the program: a server that refuses a body may close while it is still being sent.
    std::signal(SIGPIPE, SIG_IGN);
    addAuthRoutes(router, accounts);
    addAiRoutes(router, *engine);
    addPages(router, site);
    port = server.bind("127.0.0.1", 0);
    m_thread = std::thread([this] { server.run(); });
}

TestGateway::~TestGateway() {
    stop();
}

void TestGateway::stop() {
    server.stop();
    if (m_thread.joinable()) m_thread.join();
}

httplib::Client TestGateway::client() const {
    httplib::Client client("127.0.0.1", port);
    client.set_read_timeout(30);
    client.set_write_timeout(30);
    return client;
}

void TestGateway::signIn() {
    const Session session = accounts.exchangeHandoff(accounts.createHandoff("ada"));
    token = session.token;
    refreshToken = session.refreshToken;
}

namespace {

Answer answerOf(const httplib::Result& result) {
    if (!result) return {};
    return {.status = result->status,
            .body = nlohmann::json::parse(result->body, nullptr, false),
            .text = result->body,
            .headers = result->headers};
}

} // namespace

Answer TestGateway::get(const std::string& path) {
    return answerOf(client().Get(path, {{"Authorization", "Bearer " + token}}));
}

Answer TestGateway::postRaw(const std::string& path, const std::string& body,
                            const httplib::Headers& headers, const std::string& contentType) {
    httplib::Headers all = headers;
    if (!token.empty()) all.emplace("Authorization", "Bearer " + token);
    return answerOf(client().Post(path, all, body, contentType));
}

Answer TestGateway::post(const std::string& path, const nlohmann::json& body) {
    return postRaw(path, body.dump());
}

std::vector<nlohmann::json> TestGateway::stream(const std::string& path, nlohmann::json body) {
    body["stream"] = true;
    return payloadsOf(post(path, body).text);
}

std::vector<nlohmann::json> payloadsOf(const std::string& eventStream) {
    std::vector<nlohmann::json> payloads;
    std::istringstream lines(eventStream);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("data:")) payloads.push_back(nlohmann::json::parse(line.substr(5)));
    }
    return payloads;
}

} // namespace vorq::gateway::testing
