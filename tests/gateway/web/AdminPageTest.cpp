#include "doubles/gateway/BrowserDouble.h"
#include "doubles/gateway/ScriptedProvider.h"
#include "doubles/gateway/TestGateway.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;

class AdminPageTest : public ::testing::Test {
  protected:
    ShownPage submit(const std::string& action, BrowserDouble::Form fields) {
        fields["action"] = action;
        return browser.submit(browser.get("/admin.html"), "/admin.html", fields);
    }
    json saved() const { return json::parse(readFile(gateway.provider.file())); }

    TestGateway gateway;
    BrowserDouble browser{gateway.port};
    ScriptedProvider provider{[](ProviderPeer& peer) {
        peer.answer(200, R"({"choices":[{"message":{"content":"OK."}}]})");
    }};
};

TEST_F(AdminPageTest, ATestThatSucceedsSaysSoAndSavesNothing) {
    const ShownPage page = submit("test", {{"url", provider.address()}, {"key", "sk-secret"}});
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.html, HasSubstr("The connection works."));
    EXPECT_THAT(page.html, HasSubstr("value=\"" + provider.address() + "\""));
    EXPECT_THAT(page.html, Not(HasSubstr("sk-secret")));
    EXPECT_THAT(provider.lastRequest(), HasSubstr("Bearer sk-secret"));
    EXPECT_FALSE(std::filesystem::exists(gateway.provider.file()));
    EXPECT_EQ(page.headers.count("Content-Security-Policy"), 1U);
}

TEST_F(AdminPageTest, ATestThatFailsSaysWhatWentWrong) {
    const std::string closed = "http://127.0.0.1:" + std::to_string(closedPort());
    const ShownPage page = submit("test", {{"url", closed}});
    EXPECT_THAT(page.html, HasSubstr(closed));
    EXPECT_THAT(page.html, HasSubstr("role=\"alert\""));
    ScriptedProvider refusing(
        [](ProviderPeer& peer) { peer.answer(401, R"({"error":"no such key sk-secret"})"); });
    const ShownPage refused = submit("test", {{"url", refusing.address()}, {"key", "sk-secret"}});
    EXPECT_THAT(refused.html, HasSubstr("no such key …"));
    EXPECT_THAT(submit("test", {{"url", "ftp://x"}}).html, HasSubstr("must begin with http://"));
    EXPECT_EQ(submit("test", {{"url", ""}}).status, 400);
}

TEST_F(AdminPageTest, WhatIsSavedIsPrivateAndUsedAtOnce) {
    gateway.signIn();
    const ShownPage answer = submit("save", {{"url", provider.address()},
                                             {"key", "sk-secret"},
                                             {"model", "m"},
                                             {"models", "a/b = c\r\nd/e=f\r\n"}});
    EXPECT_EQ(answer.location, "/admin.html?saved=yes");
    EXPECT_EQ(std::filesystem::status(gateway.provider.file()).permissions(),
              std::filesystem::perms(0600));
    EXPECT_EQ(saved().at("provider"), json({{"url", provider.address()},
                                            {"key", "sk-secret"},
                                            {"model", "m"},
                                            {"models", {{"a/b", "c"}, {"d/e", "f"}}}}));
    EXPECT_EQ(gateway.post("/ai/prompt", {{"prompt", "hello"}}).body.value("summary", ""), "OK.");
    const ShownPage page = browser.get("/admin.html");
    EXPECT_THAT(page.html, HasSubstr("a/b = c\nd/e = f"));
    EXPECT_THAT(page.html, Not(HasSubstr("sk-secret")));
}

TEST_F(AdminPageTest, OtherSettingsAndTheKeyStay) {
    writeFile(gateway.provider.file(), R"({"wrongPasswordsPerMinute": 7, "provider":
        {"url": "http://127.0.0.1:9", "key": "sk-secret", "idleTimeoutSeconds": 5}})");
    EXPECT_EQ(submit("save", {{"url", "http://127.0.0.1:9/v1"}, {"model", "m"}}).status, 303);
    EXPECT_EQ(saved().at("wrongPasswordsPerMinute"), 7);
    EXPECT_EQ(saved().at("provider").at("key"), "sk-secret");
    EXPECT_EQ(saved().at("provider").at("idleTimeoutSeconds"), 5);
    EXPECT_EQ(submit("save", {{"url", "http://127.0.0.1:9"}, {"removeKey", "yes"}}).status, 303);
    EXPECT_FALSE(saved().at("provider").contains("key"));
}

TEST_F(AdminPageTest, TheSavedKeyGoesToNoOtherAddress) {
    writeFile(gateway.provider.file(),
              R"({"provider": {"url": "http://127.0.0.1:9", "key": "sk-secret"}})");
    for (const char* action : {"test", "save"}) {
        const ShownPage page = submit(action, {{"url", provider.address()}});
        EXPECT_EQ(page.status, 400) << action;
        EXPECT_THAT(page.html, HasSubstr("aria-describedby=\"key-wrong key-hint\""));
    }
    EXPECT_EQ(provider.lastRequest(), "");
}

TEST_F(AdminPageTest, CommentsOfTheFileStayBesideIt) {
    const std::string former = "{\n// mine\n\"wrongPasswordsPerMinute\": 7}";
    writeFile(gateway.provider.file(), former);
    EXPECT_EQ(submit("save", {{"url", "http://127.0.0.1:9"}}).status, 303);
    EXPECT_EQ(saved().at("wrongPasswordsPerMinute"), 7);
    EXPECT_EQ(readFile(gateway.provider.file().string() + ".bak"), former);
}

TEST_F(AdminPageTest, AFileThatCannotBeReadIsLeftAlone) {
    writeFile(gateway.provider.file(), "{ \"provider\": ");
    EXPECT_EQ(browser.get("/admin.html").status, 409);
    EXPECT_EQ(readFile(gateway.provider.file()), "{ \"provider\": ");
}

TEST_F(AdminPageTest, ImpossibleEntriesAreTiedToTheirFields) {
    const auto html = [&](const BrowserDouble::Form& fields) {
        return submit("save", fields).html;
    };
    const std::string url = "http://127.0.0.1:9";
    EXPECT_THAT(html({{"url", "nonsense"}}), HasSubstr("id=\"url-wrong\""));
    EXPECT_THAT(html({{"url", url}, {"key", "a b"}}), HasSubstr("id=\"key-wrong\""));
    EXPECT_THAT(html({{"url", url}, {"keyHeader", "a:b"}}), HasSubstr("id=\"keyHeader-wrong\""));
    for (const char* models : {"alone", "= b", "a =", "a=b\na=c"})
        EXPECT_THAT(html({{"url", url}, {"models", models}}), HasSubstr("id=\"models-wrong\""));
    EXPECT_FALSE(std::filesystem::exists(gateway.provider.file()));
}

TEST_F(AdminPageTest, OtherComputersAreNotShownIt) {
    const ShownPage page = browser.get("/admin.html");
    browser.additional = {{"X-Forwarded-For", "203.0.113.9"}};
    EXPECT_EQ(browser.get("/admin.html").status, 403);
    EXPECT_EQ(browser.submit(page, "/admin.html", {{"action", "save"}}).status, 403);
    EXPECT_FALSE(std::filesystem::exists(gateway.provider.file()));
}

} // namespace
} // namespace vorq::gateway::testing
