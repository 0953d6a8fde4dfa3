#include "doubles/gateway/BrowserDouble.h"
#include "doubles/gateway/ChildProcess.h"
#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/Samples.h"
#include "doubles/gateway/ScriptedProvider.h"
#include "doubles/gateway/TemporaryFolder.h"
#include "storage/sqlite/StateFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <httplib.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <thread>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

class ProcessTest : public ::testing::Test {
  protected:
    using Variables = std::vector<std::pair<std::string, std::string>>;

    ChildProcess run(std::vector<std::string> arguments, Variables variables = {}) {
        variables.emplace_back("HOME", folder.path().string());
        variables.emplace_back("XDG_DATA_HOME", "");
        return ChildProcess(VORQ_GATEWAY_PROGRAM, std::move(arguments), variables);
    }
    /// Starts a server on a free port and reads that port from its first line.
    ChildProcess serve(std::vector<std::string> extra = {}, Variables variables = {}) {
        std::vector<std::string> arguments = {"serve", "--port", "0"};
        arguments.insert(arguments.end(), extra.begin(), extra.end());
        ChildProcess child = run(arguments, std::move(variables));
        const std::string line = child.readLine();
        const std::string start = "vorq-gateway listening on http://127.0.0.1:";
        EXPECT_THAT(line, StartsWith(start));
        port = line.size() > start.size() ? std::stoi(line.substr(start.size())) : 0;
        return child;
    }
    std::string handoffCode() {
        ChildProcess child = run({"handoff"});
        const std::string line = child.readLine();
        EXPECT_EQ(child.wait(), 0);
        EXPECT_THAT(line, MatchesRegex("vorq://auth/callback\\?handoff=[A-Za-z0-9_-]{43}"));
        return line.substr(line.find('=') + 1);
    }
    json post(const std::string& path, const json& body, const std::string& token = "") {
        httplib::Client client("127.0.0.1", port);
        httplib::Headers headers;
        if (!token.empty()) headers.emplace("Authorization", "Bearer " + token);
        const httplib::Result result = client.Post(path, headers, body.dump(), "application/json");
        return result ? json::parse(result->body, nullptr, false) : json();
    }
    std::string signIn() {
        return post("/auth/mac-handoff/exchange", {{"code", handoffCode()}}).value("token", "");
    }
    std::filesystem::path dataFolder() const { return folder.path() / ".local/share/Vorq"; }
    void expectWholeDatabase() {
        std::vector<std::string> notices;
        SqliteDatabase database =
            openState(dataFolder(), [&](const std::string& notice) { notices.push_back(notice); });
        Statement check = database.prepare("PRAGMA integrity_check");
        ASSERT_TRUE(check.step());
        EXPECT_EQ(check.text(0), "ok");
        EXPECT_TRUE(notices.empty());
    }

    TemporaryFolder folder;
    int port = 0;
};

TEST_F(ProcessTest, SaysItsVersionAndItsUse) {
    ChildProcess version = run({"--version"});
    EXPECT_THAT(version.readLine(), MatchesRegex("vorq-gateway [0-9]+\\.[0-9]+\\.[0-9]+"));
    EXPECT_EQ(version.wait(), 0);
    ChildProcess help = run({"--help"});
    EXPECT_THAT(help.readAll(), HasSubstr("serve"));
    EXPECT_EQ(help.wait(), 0);
}

TEST_F(ProcessTest, WhatItDoesNotKnowEndsWithTwo) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"dance"}, {"serve", "--dance"}, {}}) {
        ChildProcess child = run(arguments);
        EXPECT_THAT(child.readErrors(), StartsWith("vorq-gateway: "));
        EXPECT_EQ(child.wait(), 2);
    }
}

TEST_F(ProcessTest, APortInUseEndsWithOneAndASentence) {
    const ChildProcess first = serve();
    ChildProcess second = run({"serve", "--port", std::to_string(port)});
    EXPECT_THAT(second.readErrors(), HasSubstr("using that port"));
    EXPECT_EQ(second.wait(), 1);
}

TEST_F(ProcessTest, ABrokenSettingsFileEndsWithOneAndASentence) {
    writeFile(folder.path() / "bad.json", "{");
    ChildProcess child = run({"serve", "--config", (folder.path() / "bad.json").string()});
    EXPECT_THAT(child.readErrors(), HasSubstr("bad.json"));
    EXPECT_EQ(child.wait(), 1);
}

TEST_F(ProcessTest, AHandoffWorksBeforeAndWhileTheServerRuns) {
    const std::string early = handoffCode();
    ChildProcess server = serve();
    EXPECT_EQ(post("/auth/mac-handoff/exchange", {{"code", early}}).value("signedIn", false), true);
    EXPECT_FALSE(signIn().empty());
}

TEST_F(ProcessTest, ALinkForAForgottenPasswordIsPrinted) {
    const ChildProcess server = serve();
    static_cast<void>(handoffCode());
    ChildProcess child = run({"reset-link", "--port", std::to_string(port)});
    const std::string link = child.readLine();
    EXPECT_EQ(child.wait(), 0);
    const std::string site = "http://127.0.0.1:" + std::to_string(port);
    ASSERT_THAT(link, StartsWith(site + "/reset.html?code="));
    BrowserDouble browser(port);
    const ShownPage page = browser.get(link.substr(site.size()));
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(browser.submit(page, "/reset.html", {{"newPassword", "open sesame"}}).location,
              "/signin.html?done=reset");
    ChildProcess unknown = run({"reset-link", "--email", "nobody@example.org"});
    EXPECT_THAT(unknown.readErrors(), HasSubstr("nobody@example.org"));
    EXPECT_EQ(unknown.wait(), 1);
}

TEST_F(ProcessTest, ALinkThatIsAskedForInABrowserIsPrintedByTheServerOnly) {
    ChildProcess server = serve();
    BrowserDouble browser(port);
    const ShownPage signUp = browser.get("/signin.html?mode=sign-up");
    EXPECT_EQ(browser
                  .submit(signUp, "/signin.html",
                          {{"email", "ada@example.org"}, {"password", "open sesame"}})
                  .status,
              303);
    const ShownPage answer =
        browser.submit(browser.get("/forgot.html"), "/forgot.html", {{"email", "ada@example.org"}});
    EXPECT_EQ(answer.html.find("code="), std::string::npos);
    const std::string line = server.readLine();
    EXPECT_THAT(line, StartsWith("To set a new password for ada@example.org: http://127.0.0.1:"));
    EXPECT_EQ(browser.get(line.substr(line.find("/reset.html"))).status, 200);
}

TEST_F(ProcessTest, StateIsPrivateToTheUser) {
    static_cast<void>(handoffCode());
    namespace fs = std::filesystem;
    EXPECT_EQ(fs::status(dataFolder()).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(stateFile(dataFolder())).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(ProcessTest, ADamagedStateIsKeptBesideAndTheServerStarts) {
    std::filesystem::create_directories(dataFolder());
    writeFile(stateFile(dataFolder()), std::string(4096, 'x'));
    ChildProcess server = serve();
    EXPECT_FALSE(signIn().empty());
    EXPECT_EQ(readFile(stateFile(dataFolder()).string() + ".damaged-1"), std::string(4096, 'x'));
    server.signal(SIGTERM);
    EXPECT_EQ(server.wait(), 0);
    EXPECT_THAT(server.readErrors(), HasSubstr("damaged"));
}

TEST_F(ProcessTest, AStateFileRemovedWhileItRunsIsMadeAnewAndSaid) {
    ChildProcess server = serve();
    const std::string former = signIn();
    for (const auto& entry : std::filesystem::directory_iterator(dataFolder()))
        std::filesystem::remove(entry.path());
    const std::string token = signIn();
    EXPECT_FALSE(token.empty()) << "with the code of the new file";
    EXPECT_TRUE(std::filesystem::exists(stateFile(dataFolder())));
    EXPECT_EQ(post("/auth/profile", {{"firstName", "Ada"}}, token).value("firstName", ""), "Ada");
    EXPECT_EQ(post("/auth/profile", {{"firstName", "Ada"}}, former).count("signedIn"), 0U);
    std::filesystem::remove_all(dataFolder());
    EXPECT_EQ(post("/ai/prompt", {{"prompt", "hello"}}, token).count("error"), 1U);
    EXPECT_FALSE(signIn().empty());
    server.signal(SIGTERM);
    EXPECT_EQ(server.wait(), 0);
    EXPECT_THAT(server.readErrors(), HasSubstr("was removed or replaced"));
    expectWholeDatabase();
}

TEST_F(ProcessTest, TheModeOfAGivenFolderStays) {
    const std::filesystem::path given = folder.path() / "given";
    std::filesystem::create_directory(given);
    std::filesystem::permissions(given, std::filesystem::perms(0755));
    ChildProcess child = run({"handoff", "--data", given.string()});
    EXPECT_EQ(child.wait(), 0);
    EXPECT_EQ(std::filesystem::status(given).permissions(), std::filesystem::perms(0755));
}

TEST_F(ProcessTest, AMisspeltSettingIsSaid) {
    writeFile(folder.path() / "gateway.json", R"({"provdier": {"url": "http://127.0.0.1:9"}})");
    ChildProcess server = serve({"--config", (folder.path() / "gateway.json").string()});
    server.signal(SIGTERM);
    EXPECT_EQ(server.wait(), 0);
    EXPECT_THAT(server.readErrors(), HasSubstr("\"provdier\""));
}

TEST_F(ProcessTest, BothSignalsStopItCleanly) {
    for (const int signal : {SIGTERM, SIGINT}) {
        ChildProcess server = serve();
        EXPECT_FALSE(signIn().empty());
        server.signal(signal);
        EXPECT_EQ(server.wait(), 0);
        EXPECT_FALSE(std::filesystem::exists(stateFile(dataFolder()).string() + "-wal"));
    }
}

TEST_F(ProcessTest, SigtermDuringAStreamEndsTheStream) {
    ChildProcess server = serve({"--stream-delay", "60000"});
    const std::string token = signIn();
    const std::string body = json({{"text", kPlantText}, {"stream", true}}).dump();
    RawClient client(port);
    client.send("POST /ai/analyze HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
                "Authorization: Bearer " +
                token + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    EXPECT_THAT(client.receiveUntil("Photosynthesis"), HasSubstr("data: {\"text\""));
    server.signal(SIGTERM);
    const std::string rest = client.receiveAll();
    EXPECT_THAT(rest, HasSubstr("\"error\""));
    EXPECT_THAT(rest, HasSubstr("0\r\n\r\n"));
    EXPECT_EQ(server.wait(), 0);
    expectWholeDatabase();
}

TEST_F(ProcessTest, TheProviderOfTheEnvironmentIsUsedAndItsKeyNeverPrinted) {
    ScriptedProvider provider(
        [](ProviderPeer& peer) { peer.answer(500, R"({"error":"no: sk-environment-secret"})"); });
    ChildProcess server(VORQ_GATEWAY_PROGRAM, {"serve", "--port", "0"},
                        {{"HOME", folder.path().string()},
                         {"VORQ_PROVIDER_URL", provider.address()},
                         {"VORQ_PROVIDER_KEY", "sk-environment-secret"}});
    const std::string line = server.readLine();
    port = std::stoi(line.substr(line.rfind(':') + 1));
    const json answer = post("/ai/prompt", {{"prompt", "x"}}, signIn());
    EXPECT_THAT(provider.lastRequest(), HasSubstr("Bearer sk-environment-secret"));
    EXPECT_THAT(answer.value("error", ""), HasSubstr("no: …"));
    server.signal(SIGTERM);
    EXPECT_EQ(server.wait(), 0);
    EXPECT_EQ((line + server.readAll() + server.readErrors()).find("sk-environment"),
              std::string::npos);
}

TEST_F(ProcessTest, TheProxyOfTheEnvironmentIsNotUsedTowardsThisComputer) {
    ScriptedProvider proxy([](ProviderPeer& peer) { peer.answer(500, R"({"error":"a proxy"})"); });
    ScriptedProvider provider([](ProviderPeer& peer) {
        peer.answer(200, R"({"choices":[{"message":{"content":"Straight."}}]})");
    });
    const std::string providerPort = provider.address().substr(provider.address().rfind(':'));
    for (const char* host : {"127.0.0.1", "127.1", "LOCALHOST", "api.localhost", "0.0.0.0"}) {
        const ChildProcess server =
            serve({}, {{"http_proxy", proxy.address()},
                       {"no_proxy", ""},
                       {"VORQ_PROVIDER_URL", std::string("http://") + host + providerPort}});
        EXPECT_EQ(post("/ai/prompt", {{"prompt", "x"}}, signIn()).value("summary", ""), "Straight.")
            << host;
    }
    const ChildProcess server = serve({}, {{"http_proxy", proxy.address()},
                                           {"no_proxy", ""},
                                           {"VORQ_PROVIDER_URL", "http://provider.example"}});
    EXPECT_THAT(post("/ai/prompt", {{"prompt", "x"}}, signIn()).value("error", ""),
                HasSubstr("a proxy"));
}

TEST_F(ProcessTest, AProxyOfTheEnvironmentThatIsNotFoundIsNamed) {
    const ChildProcess server = serve({}, {{"http_proxy", "http://no-such-proxy.invalid:1"},
                                           {"no_proxy", ""},
                                           {"VORQ_PROVIDER_URL", "http://provider.example"}});
    EXPECT_THAT(post("/ai/prompt", {{"prompt", "x"}}, signIn()).value("error", ""),
                HasSubstr("http_proxy"));
}

TEST_F(ProcessTest, AModelThatLoadsAndThinksForLongKeepsItsClient) {
    ScriptedProvider provider([](ProviderPeer& peer) {
        peer.streamHead();
        std::this_thread::sleep_for(std::chrono::seconds(6)); // longer than the idle time-out
        for (int i = 0; i < 11; ++i) {
            peer.send("data: {\"choices\":[{\"delta\":{\"reasoning\":\"hm\"}}]}\n\n");
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
        }
        peer.delta("Thought through.");
        peer.send("data: [DONE]\n\n");
    });
    const std::filesystem::path file = folder.path() / "gateway.json";
    writeFile(file, json({{"provider",
                           {{"url", provider.address()},
                            {"replyTimeoutSeconds", 120},
                            {"idleTimeoutSeconds", 5}}}})
                        .dump());
    const ChildProcess server = serve({"--config", file.string()});
    const std::string body = R"({"prompt":"x","stream":true})";
    const std::string token = signIn();
    RawClient client(port);
    client.send("POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
                "Authorization: Bearer " +
                token + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    EXPECT_THAT(client.receiveUntil("\r\n\r\n"), StartsWith("HTTP/1.1 200 "));
    std::string answer;
    // Each of them ends after ten seconds of silence at the latest.
    for (int i = 0; i < 4 && !answer.contains("\"done\""); ++i)
        answer += client.receiveUntil("\"done\"");
    EXPECT_LT(answer.find("\n: "), answer.find("data:")) << "a comment in the meantime";
    EXPECT_THAT(answer, HasSubstr("Thought through."));
}

TEST_F(ProcessTest, KillingItWhileItWritesLeavesTheDatabaseWhole) {
    std::string lastRefresh;
    for (int round = 0; round < 6; ++round) {
        ChildProcess server = serve();
        std::string refresh =
            post("/auth/mac-handoff/exchange", {{"code", handoffCode()}}).value("refreshToken", "");
        ASSERT_FALSE(refresh.empty());
        std::thread killer([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(30 + 17 * round));
            server.signal(SIGKILL);
        });
        // Rotates as fast as it can until the server is gone in the midst of it.
        for (std::string next = refresh; !next.empty();) {
            refresh = next;
            const json answer = post("/auth/refresh", {{"refreshToken", refresh}});
            next = answer.is_object() ? answer.value("refreshToken", "") : "";
        }
        killer.join();
        EXPECT_EQ(server.wait(), 128 + SIGKILL);
        expectWholeDatabase();
        const ChildProcess restarted = serve();
        const json answer = post("/auth/refresh", {{"refreshToken", refresh}});
        EXPECT_TRUE(answer.value("signedIn", false)) << answer.dump();
    }
    ChildProcess server = serve();
    EXPECT_FALSE(signIn().empty());
}

} // namespace
} // namespace vorq::gateway::testing
