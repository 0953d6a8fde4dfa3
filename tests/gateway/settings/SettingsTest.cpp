#include "settings/Settings.h"
#include "doubles/gateway/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <map>

namespace vorq::gateway::testing {
namespace {

class SettingsTest : public ::testing::Test {
  protected:
    Settings read(const std::string& document) {
        writeFile(file, document);
        return readSettings(file, environment());
    }
    Environment environment() {
        return [this](const char* name) -> std::optional<std::string> {
            const auto entry = variables.find(name);
            return entry == variables.end() ? std::nullopt : std::optional(entry->second);
        };
    }
    std::string failureOf(const std::string& document) {
        try {
            static_cast<void>(read(document));
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return {};
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "gateway.json";
    std::map<std::string, std::string> variables;
};

TEST_F(SettingsTest, WithoutAFileThereIsNoProvider) {
    const Settings settings = readSettings(file, environment());
    EXPECT_FALSE(settings.provider.has_value());
    EXPECT_EQ(settings.wrongPasswordsPerMinute, 10);
    EXPECT_FALSE(settings.openSignUp);
}

TEST_F(SettingsTest, TheFileNamesAProvider) {
    const Settings settings = read(R"({
        // Comments are allowed.
        "wrongPasswordsPerMinute": 5, "openSignUp": true,
        "provider": {"url": "http://localhost:11434", "key": "k", "model": "m",
                     "models": {"a": "b"}, "idleTimeoutSeconds": 1.5}})");
    ASSERT_TRUE(settings.provider.has_value());
    EXPECT_EQ(settings.provider->endpoint, "http://localhost:11434/v1/chat/completions");
    EXPECT_EQ(settings.provider->key, "k");
    EXPECT_EQ(settings.provider->model, "m");
    EXPECT_EQ(settings.provider->models.at("a"), "b");
    EXPECT_EQ(settings.provider->idleTimeout, std::chrono::milliseconds(1500));
    EXPECT_EQ(settings.wrongPasswordsPerMinute, 5);
    EXPECT_TRUE(settings.openSignUp);
}

TEST_F(SettingsTest, TheModelsOfThisComputerAreOfferedAndOthersIfTheUserSays) {
    const auto offers = [this](const std::string& rest) {
        return read(R"({"provider": {)" + rest + "}}").provider->offersModels;
    };
    EXPECT_TRUE(offers(R"("url": "http://localhost:11434")"));
    EXPECT_FALSE(offers(R"("url": "https://models.example")"));
    EXPECT_TRUE(offers(R"("url": "https://models.example", "offersModels": true)"));
    EXPECT_FALSE(offers(R"("url": "http://localhost:11434", "offersModels": false)"));
}

TEST_F(SettingsTest, TheHeaderOfTheKeyCanBeNamed) {
    const auto header = [this](const std::string& name) {
        return read(R"({"provider": {"url": "http://x", "keyHeader": ")" + name + "\"}}")
            .provider->keyHeader;
    };
    EXPECT_EQ(header("api-key"), "api-key");
    EXPECT_EQ(header("authorization"), "");
    EXPECT_THROW(static_cast<void>(header("api key")), std::runtime_error);
    EXPECT_THROW(static_cast<void>(header("a: b\\r\\nc")), std::runtime_error);
    variables = {{"VORQ_PROVIDER_KEY_HEADER", "x-api-key"}};
    EXPECT_EQ(header("api-key"), "x-api-key");
}

TEST_F(SettingsTest, AKeyThatOthersCanReadIsPointedOut) {
    namespace fs = std::filesystem;
    const std::string document = R"({"provider": {"url": "http://x", "key": "secret"}})";
    static_cast<void>(read(document));
    fs::permissions(file, fs::perms(0644));
    ASSERT_EQ(readSettings(file, environment()).notices.size(), 1U);
    EXPECT_EQ(readSettings(file, environment()).notices.front().find("secret"), std::string::npos);
    fs::permissions(file, fs::perms(0600));
    EXPECT_TRUE(readSettings(file, environment()).notices.empty());
    static_cast<void>(read(R"({"provider": {"url": "http://x"}})"));
    fs::permissions(file, fs::perms(0644));
    EXPECT_TRUE(readSettings(file, environment()).notices.empty());
}

TEST_F(SettingsTest, KeysThatMeanNothingAreSaidWithWhatWasMeant) {
    EXPECT_EQ(read(R"({"provdier": {"url": "http://x"}})").notices,
              (std::vector<std::string>{
                  R"("provdier" in the settings means nothing to vorq-gateway. Is it "provider" )"
                  R"(that you mean?)"}));
    EXPECT_EQ(read(R"({"provider": {"URL": "http://x", "prompt": "p"}})").notices,
              (std::vector<std::string>{
                  R"("URL" in the settings means nothing to vorq-gateway. Is it "url" that you )"
                  R"(mean?)",
                  R"("prompt" in the settings means nothing to vorq-gateway.)"}));
}

TEST_F(SettingsTest, TrustedProxiesAreAList) {
    const auto proxies =
        read(R"({"trustedProxies": ["192.0.2.1", "::1", "10.0.0.0/8"]})").trustedProxies;
    ASSERT_EQ(proxies.size(), 3U);
    EXPECT_TRUE(proxies[0].contains("192.0.2.1"));
    EXPECT_TRUE(proxies[1].contains("::1"));
    EXPECT_TRUE(proxies[2].contains("10.9.8.7"));
    EXPECT_NE(failureOf(R"({"trustedProxies": "10.0.0.1"})").find("trustedProxies"),
              std::string::npos);
}

TEST_F(SettingsTest, ATrustedProxyThatIsNoAddressIsNamed) {
    EXPECT_EQ(failureOf(R"({"trustedProxies": ["10.0.0.1", "proxy.example.org"]})"),
              R"(Entry 2 of "trustedProxies" in the settings is neither an address nor a range of )"
              "addresses such as 10.0.0.0/8 or fd00::/8.");
    EXPECT_EQ(failureOf(R"({"trustedProxies": ["10.0.0.1/8"]})"),
              R"(Entry 1 of "trustedProxies" in the settings begins in the midst of its range. )"
              "Write the first address, such as 10.0.0.0/8, or a single one without a slash.");
}

TEST_F(SettingsTest, ATeamHasADatabaseAndAPublicAddress) {
    const std::string team =
        R"({"database": "postgresql://db/vorq", "publicUrl": "https://vorq.example.org"})";
    EXPECT_EQ(read(team).database, "postgresql://db/vorq");
    EXPECT_EQ(read(team).publicUrl, "https://vorq.example.org");
    EXPECT_TRUE(read("{}").database.empty());
    EXPECT_NE(failureOf(R"({"database": 1})").find("database"), std::string::npos);
    variables = {{"VORQ_DATABASE", " postgresql://other/vorq "}};
    EXPECT_EQ(read(team).database, "postgresql://other/vorq");
}

TEST_F(SettingsTest, AFolderInPlaceOfTheFileIsSaid) {
    std::filesystem::create_directory(file);
    try {
        static_cast<void>(readSettings(file, environment()));
        FAIL() << "read a folder";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(std::string(error.what()), "Could not read " + file.string() + ".");
    }
}

TEST_F(SettingsTest, ASyntaxErrorIsLocatedButNotQuoted) {
    const std::string failure = failureOf("{\n\"provider\": {\n  \"key\": \"secret\" oops\n}}");
    EXPECT_NE(failure.find("line 3"), std::string::npos) << failure;
    EXPECT_EQ(failure.find("secret"), std::string::npos) << failure;
}

TEST_F(SettingsTest, TheEnvironmentWins) {
    variables = {{"VORQ_PROVIDER_URL", "http://other/v1"},
                 {"VORQ_PROVIDER_KEY", "k2"},
                 {"VORQ_PROVIDER_MODEL", "m2"}};
    const Settings settings =
        read(R"({"provider": {"url": "http://one", "key": "k", "model": "m"}})");
    EXPECT_EQ(settings.provider->endpoint, "http://other/v1/chat/completions");
    EXPECT_EQ(settings.provider->key, "k2");
    EXPECT_EQ(settings.provider->model, "m2");
}

TEST_F(SettingsTest, AnEmptyVariableCountsAsNone) {
    variables = {{"VORQ_PROVIDER_URL", " "}};
    EXPECT_EQ(read(R"({"provider": {"url": "http://one"}})").provider->endpoint,
              "http://one/v1/chat/completions");
    EXPECT_FALSE(read("{}").provider.has_value());
}

TEST_F(SettingsTest, WhatIsWrongIsNamedButNoValueIs) {
    EXPECT_NE(failureOf("{").find("gateway.json"), std::string::npos);
    EXPECT_NE(failureOf(R"({"provider": 1})").find("provider"), std::string::npos);
    EXPECT_NE(failureOf(R"({"provider": {"url": 1}})").find("url"), std::string::npos);
    EXPECT_NE(failureOf(R"({"provider": {"url": "http://a", "models": {"a": 1}}})").find("models"),
              std::string::npos);
    EXPECT_NE(failureOf(R"({"provider": {"url": "http://a", "idleTimeoutSeconds": 0}})")
                  .find("idleTimeoutSeconds"),
              std::string::npos);
    EXPECT_NE(failureOf(R"({"wrongPasswordsPerMinute": 0})").find("wrongPasswordsPerMinute"),
              std::string::npos);
    const std::string badKey =
        failureOf(R"({"provider": {"url": "http://a", "key": "sec\r\nret: x"}})");
    EXPECT_NE(badKey.find("key"), std::string::npos);
    EXPECT_EQ(badKey.find("ret: x"), std::string::npos);
}

TEST_F(SettingsTest, FoldersFollowTheEnvironment) {
    variables = {{"HOME", "/home/ada"}};
    EXPECT_EQ(defaultDataFolder(environment()), "/home/ada/.local/share/Vorq");
    EXPECT_EQ(defaultSettingsFile(environment()), "/home/ada/.config/Vorq/gateway.json");
    variables["XDG_DATA_HOME"] = "/data";
    variables["XDG_CONFIG_HOME"] = "relative";
    EXPECT_EQ(defaultDataFolder(environment()), "/data/Vorq");
    EXPECT_EQ(defaultSettingsFile(environment()), "/home/ada/.config/Vorq/gateway.json");
}

} // namespace
} // namespace vorq::gateway::testing
