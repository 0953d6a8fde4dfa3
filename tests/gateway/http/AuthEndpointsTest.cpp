#include "doubles/gateway/TestGateway.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>
#include <vector>

namespace vorq::gateway::testing {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;

class AuthEndpointsTest : public ::testing::TestWithParam<StateKind> {
  protected:
    TestGateway gateway{nullptr, 10, std::make_shared<TestState>(GetParam())};
};

INSTANTIATE_TEST_SUITE_P(States, AuthEndpointsTest, kBothStates, nameOfState);

TEST_P(AuthEndpointsTest, ExchangeAnswersASession) {
    const json body = {{"code", " " + gateway.accounts.createHandoff("ada") + "\n"}};
    const Answer answer = gateway.post("/auth/mac-handoff/exchange", body);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body.at("signedIn"), true);
    EXPECT_EQ(answer.body.at("email"), "ada@localhost");
    EXPECT_TRUE(answer.body.at("token").is_string());
    EXPECT_TRUE(answer.body.at("refreshToken").is_string());
    EXPECT_TRUE(answer.body.at("firstName").is_string());
    EXPECT_EQ(gateway.post("/auth/mac-handoff/exchange", body).status, 400);
}

TEST_P(AuthEndpointsTest, RefreshRotates) {
    gateway.signIn();
    const json body = {{"refreshToken", gateway.refreshToken}};
    const Answer answer = gateway.post("/auth/refresh", body);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body.at("signedIn"), true);
    EXPECT_NE(answer.body.at("refreshToken"), gateway.refreshToken);
    const Answer reused = gateway.post("/auth/refresh", body);
    EXPECT_EQ(reused.status, 409);
    EXPECT_TRUE(reused.body.at("error").is_string());
    const auto wait = reused.headers.find("Retry-After");
    ASSERT_NE(wait, reused.headers.end());
    EXPECT_EQ(wait->second, "10");
}

TEST_P(AuthEndpointsTest, SignOutTakesNoBodyAndEndsTheToken) {
    gateway.signIn();
    const Answer answer = gateway.postRaw("/auth/sign-out", "");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body.at("signedIn"), false);
    EXPECT_EQ(gateway.postRaw("/auth/sign-out", "").status, 401);
}

TEST_P(AuthEndpointsTest, ProfileStoresNamesAndModel) {
    gateway.signIn();
    const Answer names = gateway.post(
        "/auth/profile", {{"firstName", "Ada"}, {"lastName", "L"}, {"username", "ada.l"}});
    EXPECT_EQ(names.status, 200);
    EXPECT_EQ(names.body.at("username"), "ada.l");
    const Answer model = gateway.post("/auth/profile", {{"preferredModel", "x/y"}});
    EXPECT_EQ(model.body.at("preferredModel"), "x/y");
    EXPECT_EQ(model.body.at("firstName"), "Ada");
    EXPECT_EQ(model.body.at("token"), gateway.token);
}

TEST_P(AuthEndpointsTest, PrivacyAnswersASessionOrARefusalThatIsNo401) {
    gateway.signIn();
    const json first = {{"email", "a@b.c"}, {"currentPassword", "x"}, {"newPassword", "12345678"}};
    const Answer answer = gateway.post("/auth/privacy", first);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body.at("email"), "a@b.c");
    const Answer refused = gateway.post("/auth/privacy", first);
    EXPECT_EQ(refused.status, 403);
    EXPECT_EQ(refused.body.value("field", ""), "currentPassword");
}

TEST_P(AuthEndpointsTest, EveryEndpointButTheTwoEntrancesNeedsAToken) {
    for (const char* path : {"/auth/sign-out", "/auth/profile", "/auth/privacy"}) {
        EXPECT_EQ(gateway.post(path, json::object()).status, 401) << path;
    }
    EXPECT_EQ(gateway.post("/auth/refresh", json::object()).status, 400);
    EXPECT_EQ(gateway.post("/auth/mac-handoff/exchange", json::object()).status, 400);
}

TEST_P(AuthEndpointsTest, IllTypedKeysAreNamed) {
    const Answer answer = gateway.post("/auth/refresh", {{"refreshToken", 7}});
    EXPECT_EQ(answer.status, 400);
    EXPECT_NE(answer.body.at("error").get<std::string>().find("refreshToken"), std::string::npos);
}

TEST_P(AuthEndpointsTest, JunkOfOthersKeepsNobodyFromSigningIn) {
    gateway.signIn();
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(gateway.post("/auth/refresh", {{"refreshToken", "junk"}}).status, 401);
        ASSERT_EQ(gateway.post("/auth/mac-handoff/exchange", {{"code", "junk"}}).status, 400);
    }
    EXPECT_EQ(gateway.post("/auth/refresh", {{"refreshToken", gateway.refreshToken}}).status, 200);
    EXPECT_EQ(
        gateway
            .post("/auth/mac-handoff/exchange", {{"code", gateway.accounts.createHandoff("ada")}})
            .status,
        200);
}

class WrongPasswordsTest : public ::testing::TestWithParam<StateKind> {
  protected:
    WrongPasswordsTest() {
        gateway.signIn();
        static_cast<void>(change("none yet", "127.0.0.1"));
    }
    Answer change(const std::string& currentPassword, const std::string& from) {
        const json body = {{"currentPassword", currentPassword}, {"newPassword", "the right one"}};
        return gateway.postRaw("/auth/privacy", body.dump(), {{"X-Forwarded-For", from}});
    }

    TestGateway gateway{nullptr, 3, std::make_shared<TestState>(GetParam())};
};

INSTANTIATE_TEST_SUITE_P(States, WrongPasswordsTest, kBothStates, nameOfState);

TEST_P(WrongPasswordsTest, HaveToWaitAndThenTheRightOneIsTaken) {
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(change("wrong", "127.0.0.1").status, 403);
    const Answer refused = change("the right one", "127.0.0.1");
    EXPECT_EQ(refused.status, 429);
    EXPECT_TRUE(refused.body.at("error").is_string());
    const auto wait = refused.headers.find("Retry-After");
    ASSERT_NE(wait, refused.headers.end());
    EXPECT_EQ(wait->second, "20");
    gateway.clock.advanceSeconds(20);
    EXPECT_EQ(change("the right one", "127.0.0.1").status, 200);
}

TEST_P(WrongPasswordsTest, RightOnesAreNotCounted) {
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(change("the right one", "127.0.0.1").status, 200);
}

TEST_P(WrongPasswordsTest, OfOneAddressBehindAProxyDoNotShutOutAnother) {
    for (int i = 0; i < 4; ++i)
        static_cast<void>(change("wrong", "203.0.113.9"));
    EXPECT_EQ(change("the right one", "203.0.113.9").status, 429);
    EXPECT_EQ(change("the right one", "198.51.100.7").status, 200);
}

// Whoever has one of them has all of its network.
TEST_P(WrongPasswordsTest, OfOneNetworkOfIPv6AreCountedTogether) {
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(change("wrong", "2001:db8:0:1::" + std::to_string(i)).status, 403);
    EXPECT_EQ(change("the right one", "[2001:DB8:0:1:ffff::4]:4711").status, 429);
    EXPECT_EQ(change("the right one", "2001:db8:0:2::1").status, 200);
}

TEST_P(WrongPasswordsTest, OfManyAddressesAreBoundedByTheAccount) {
    for (int i = 0; i < 15; ++i)
        EXPECT_EQ(change("wrong", "203.0.113." + std::to_string(i)).status, 403);
    EXPECT_EQ(change("wrong", "203.0.113.99").status, 429);
}

TEST_P(AuthEndpointsTest, AnExpiredAccessTokenIsA401WithASentence) {
    gateway.signIn();
    gateway.clock.advanceSeconds(3601);
    const Answer answer = gateway.post("/auth/profile", {{"firstName", "A"}});
    EXPECT_EQ(answer.status, 401);
    EXPECT_EQ(answer.body.at("error"), "Your session expired. Sign in again.");
}

TEST(AuthOnAFileTest, AStateFileThatIsBusyIsSaidAndTheTokenStaysGood) {
    TestGateway gateway;
    gateway.signIn();
    {
        SqliteDatabase other(stateFile(gateway.folder.path() / "state"));
        const Transaction transaction(other);
        const auto begin = std::chrono::steady_clock::now();
        const auto refresh = [&gateway] {
            return gateway.post("/auth/refresh", {{"refreshToken", gateway.refreshToken}});
        };
        std::vector<std::future<Answer>> waiting;
        waiting.reserve(3);
        for (int i = 0; i < 3; ++i)
            waiting.push_back(std::async(std::launch::async, refresh));
        std::this_thread::sleep_for(200ms);
        EXPECT_EQ(gateway.post("/ai/prompt", {{"prompt", "hello"}}).status, 200);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 4s) << "a prompt waits for none";
        for (std::future<Answer>& each : waiting)
            EXPECT_EQ(each.get().status, 503);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 9s) << "each waits for itself";
        const Answer answer =
            gateway.post("/auth/refresh", {{"refreshToken", gateway.refreshToken}});
        EXPECT_EQ(answer.status, 503);
        EXPECT_EQ(answer.headers.count("Retry-After"), 1U);
        EXPECT_NE(answer.text.find("busy"), std::string::npos) << answer.text;
    }
    EXPECT_EQ(gateway.post("/auth/refresh", {{"refreshToken", gateway.refreshToken}}).status, 200);
}

} // namespace
} // namespace vorq::gateway::testing
