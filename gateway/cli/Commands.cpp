#include "cli/Commands.h"

#include "auth/AccountService.h"
#include "engine/EngineSwitch.h"
#include "engine/embedded/EmbeddedEngine.h"
#include "http/AiRoutes.h"
#include "http/AuthRoutes.h"
#include "http/GatewayServer.h"
#include "provider/ProviderEngine.h"
#include "settings/Settings.h"
#include "storage/postgres/PostgresPool.h"
#include "storage/sqlite/SharedStateFile.h"
#include "storage/sqlite/StateFile.h"
#include "support/Filled.h"
#include "support/ProcessLimits.h"
#include "support/PublicUrl.h"
#include "support/Secrets.h"
#include "web/Site.h"

#include <pthread.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <future>
#include <memory>
#include <string>
#include <thread>

namespace vorq::gateway {
namespace {

void say(std::FILE* stream, const std::string& line) {
    std::fprintf(stream, "%s\n", line.c_str());
    std::fflush(stream);
}

SqliteDatabase openFile(const CommandLine& line) {
    return openState(line.dataFolder.value_or(defaultDataFolder(processEnvironment)),
                     [](const std::string& notice) { say(stderr, "vorq-gateway: " + notice); });
}

/// After the file was removed, or another one put in its place, under the running server.
SqliteDatabase reopenFile(const CommandLine& line) {
    say(stderr, "vorq-gateway: The state file was removed or replaced. What stands in its place is "
                "used from now on; where nothing does, a new one was started: sign in again.");
    return openFile(line);
}

/// `line` outlives it.
std::unique_ptr<SharedDatabase> openDatabase(const CommandLine& line, const Settings& settings) {
    initSecrets();
    const std::string& address = line.database.empty() ? settings.database : line.database;
    if (!address.empty()) return std::make_unique<PostgresPool>(address);
    return std::make_unique<SharedStateFile>(openFile(line), [&line] { return reopenFile(line); });
}

std::filesystem::path settingsFileOf(const CommandLine& line) {
    return line.configFile.value_or(defaultSettingsFile(processEnvironment));
}

std::optional<PublicUrl> publicUrlOf(const CommandLine& line, const Settings& settings) {
    const std::string& address = line.publicUrl.empty() ? settings.publicUrl : line.publicUrl;
    if (address.empty()) return std::nullopt;
    return PublicUrl(address);
}

std::string loginName() {
    const passwd* entry = getpwuid(getuid());
    return entry == nullptr ? "user" : entry->pw_name;
}

sigset_t stopSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

/// Runs the server in a thread of its own until a signal says stop. A request that cannot be
/// brought to an end within the grace does not keep the program alive. Throws what `run` throws.
void serveUntilSignal(GatewayServer& server, const sigset_t& signals) {
    constexpr std::chrono::seconds grace{5};
    std::packaged_task<void()> serving([&] { server.run(); });
    std::future<void> hasEnded = serving.get_future();
    std::thread thread([&] {
        serving();
        // Wakes the wait below if the server ended by itself.
        kill(getpid(), SIGTERM);
    });
    int received = 0;
    sigwait(&signals, &received);
    server.stop();
    if (hasEnded.wait_for(grace) == std::future_status::timeout) {
        say(stderr, "vorq-gateway: a request did not end in time and was dropped.");
        std::_Exit(0); // The database is whole at any moment.
    }
    thread.join();
    hasEnded.get();
}

/// Each reply may take a connection to the client and one to the provider.
std::size_t mostConnections() {
    constexpr std::size_t ownFiles = 64;
    const std::size_t files = raiseFileLimit();
    return std::clamp<std::size_t>((files - std::min(files, ownFiles)) / 2, 16,
                                   GatewayServer::kMostConnections);
}

std::shared_ptr<Engine> makeEngine(const std::optional<ProviderConfig>& provider,
                                   const CommandLine& line) {
    if (provider) return std::make_shared<ProviderEngine>(*provider);
    return std::make_shared<EmbeddedEngine>(line.streamDelay);
}

std::string siteAddress(const std::string& host, int port) {
    return filled("http://{}:{}", host.contains(':') ? "[" + host + "]" : host, port);
}

std::string resetAddress(const std::string& site, const PasswordReset::Code& code) {
    return filled("{}/reset.html?code={}", site, code.secret);
}

} // namespace

int runServe(const CommandLine& line) {
    const sigset_t signals = stopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    boundHeap();
    const std::filesystem::path settingsFile = settingsFileOf(line);
    const Settings settings = readSettings(settingsFile, processEnvironment);
    for (const std::string& notice : settings.notices)
        say(stderr, "vorq-gateway: " + notice);
    const SystemClock clock;
    const std::optional<PublicUrl> publicUrl = publicUrlOf(line, settings);
    AccountService accounts(openDatabase(line, settings), clock,
                            {.wrongPasswordsPerMinute = settings.wrongPasswordsPerMinute});
    EngineSwitch engine(makeEngine(settings.provider, line));
    RequestRouter router(accounts, RequestGuard(line.host, settings.trustedProxies, publicUrl));
    addAuthRoutes(router, accounts);
    addAiRoutes(router, engine);
    WebAccounts web(accounts, clock);
    PasswordReset resets(accounts, clock);
    ProviderDesk provider(settingsFile, processEnvironment,
                          [&](const auto& config) { engine.use(makeEngine(config, line)); });
    std::string address;
    const Site site{.accounts = accounts,
                    .web = web,
                    .resets = resets,
                    .provider = provider,
                    .loginName = loginName(),
                    .isSignUpOpen = settings.openSignUp,
                    .tellReset = [&address](const PasswordReset::Code& code) {
                        say(stdout, filled("To set a new password for {}: {}", code.email,
                                           resetAddress(address, code)));
                    }};
    addPages(router, site);
    GatewayServer server(router, mostConnections());
    const std::string here = siteAddress(line.host, server.bind(line.host, line.port));
    address = publicUrl ? publicUrl->origin() : here;
    say(stdout, "vorq-gateway listening on " + here);
    serveUntilSignal(server, signals);
    return 0;
}

int runHandoff(const CommandLine& line) {
    const SystemClock clock;
    const Settings settings = readSettings(settingsFileOf(line), processEnvironment);
    AccountService accounts(openDatabase(line, settings), clock);
    say(stdout, "vorq://auth/callback?handoff=" + accounts.createHandoff(loginName()));
    return 0;
}

int runResetLink(const CommandLine& line) {
    const SystemClock clock;
    const Settings settings = readSettings(settingsFileOf(line), processEnvironment);
    const std::optional<PublicUrl> publicUrl = publicUrlOf(line, settings);
    AccountService accounts(openDatabase(line, settings), clock);
    PasswordReset resets(accounts, clock);
    const PasswordReset::Code code = resets.createFor(line.email, loginName());
    const std::string site = publicUrl ? publicUrl->origin() : siteAddress(line.host, line.port);
    say(stdout, resetAddress(site, code));
    return 0;
}

} // namespace vorq::gateway
