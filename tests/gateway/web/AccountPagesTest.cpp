#include "doubles/gateway/BrowserDouble.h"
#include "doubles/gateway/TestGateway.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

namespace vorq::gateway::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class AccountPagesTest : public ::testing::TestWithParam<StateKind> {
  protected:
    AccountPagesTest() { enter(browser, "sign-up"); }

    static void enter(BrowserDouble& with, const std::string& mode,
                      const std::string& password = "open sesame") {
        const ShownPage page = with.get("/signin.html?mode=" + mode);
        EXPECT_EQ(with.submit(page, "/signin.html",
                              {{"email", "ada@example.org"}, {"password", password}})
                      .location,
                  "/account.html");
    }
    ShownPage submit(const std::string& action, const BrowserDouble::Form& fields) {
        return browser.submit(browser.get("/account.html"), action, fields);
    }
    bool isSignedIn(BrowserDouble& with) { return with.get("/account.html").status == 200; }

    TestGateway gateway{nullptr, 10, std::make_shared<TestState>(GetParam())};
    BrowserDouble browser{gateway.port};
};

INSTANTIATE_TEST_SUITE_P(States, AccountPagesTest, kBothStates, nameOfState);

TEST_P(AccountPagesTest, TheProfileIsSavedAndSaid) {
    const ShownPage answer =
        submit("/account/profile", {{"firstName", "Ada"}, {"username", "@Countess"}});
    EXPECT_EQ(answer.location, "/account.html?saved=profile");
    const ShownPage page = browser.get(answer.location);
    EXPECT_THAT(page.html, HasSubstr("Your profile is saved."));
    EXPECT_THAT(page.html, HasSubstr("value=\"countess\""));
}

TEST_P(AccountPagesTest, AnImpossibleProfileStaysToBePutRight) {
    const ShownPage page =
        submit("/account/profile", {{"firstName", "Ada"}, {"username", "two words"}});
    EXPECT_EQ(page.status, 400);
    EXPECT_THAT(page.html, HasSubstr("value=\"two words\""));
    EXPECT_THAT(page.html, HasSubstr("value=\"Ada\""));
    EXPECT_THAT(page.html, HasSubstr("aria-describedby=\"username-wrong\""));
}

TEST_P(AccountPagesTest, EmailAndPasswordNeedTheCurrentOne) {
    const BrowserDouble::Form wanted = {{"email", "new@example.org"},
                                        {"newPassword", "another one"}};
    BrowserDouble::Form fields = wanted;
    fields["currentPassword"] = "wrong";
    const ShownPage refused = submit("/account/privacy", fields);
    EXPECT_EQ(refused.status, 403);
    EXPECT_THAT(refused.html, HasSubstr("aria-describedby=\"currentPassword-wrong\""));
    fields["currentPassword"] = "open sesame";
    EXPECT_EQ(submit("/account/privacy", fields).location, "/account.html?saved=privacy");
    EXPECT_THAT(browser.get("/account.html").html, HasSubstr("new@example.org"));
    BrowserDouble other(gateway.port);
    const ShownPage page = other.get("/signin.html");
    EXPECT_EQ(other
                  .submit(page, "/signin.html",
                          {{"email", "new@example.org"}, {"password", "another one"}})
                  .status,
              303);
}

TEST_P(AccountPagesTest, AnAddressOfThisComputerIsForItsOwnUser) {
    const ShownPage refused = submit(
        "/account/privacy", {{"email", "somebody@localhost"}, {"currentPassword", "open sesame"}});
    EXPECT_EQ(refused.status, 400);
    EXPECT_THAT(refused.html, HasSubstr("aria-describedby=\"email-wrong\""));
    EXPECT_THAT(browser.get("/account.html").html, HasSubstr("ada@example.org"));
}

TEST_P(AccountPagesTest, ANewPasswordEndsTheOtherSignIns) {
    BrowserDouble other(gateway.port);
    enter(other, "sign-in");
    const std::string page = other.get("/auth/mac-handoff.html").html;
    const std::string code = page.substr(page.find("handoff=") + 8, 43);
    EXPECT_EQ(submit("/account/privacy", {{"email", "ada@example.org"},
                                          {"currentPassword", "open sesame"},
                                          {"newPassword", "another one"}})
                  .status,
              303);
    EXPECT_TRUE(isSignedIn(browser));
    EXPECT_FALSE(isSignedIn(other));
    EXPECT_EQ(gateway.post("/auth/mac-handoff/exchange", {{"code", code}}).status, 400)
        << "nor is a code of before worth anything";
}

TEST_P(AccountPagesTest, AnAccountWithoutAPasswordGetsItsFirst) {
    BrowserDouble local(gateway.port);
    static_cast<void>(local.submit(local.get("/signin.html"), "/auth/this-computer", {}));
    const ShownPage account = local.get("/account.html");
    EXPECT_THAT(account.html, Not(HasSubstr("currentPassword")));
    EXPECT_EQ(local
                  .submit(account, "/account/privacy",
                          {{"email", "ada@localhost"}, {"newPassword", "the first one"}})
                  .location,
              "/account.html?saved=privacy");
    EXPECT_THAT(local.get("/account.html").html, HasSubstr("currentPassword"));
}

TEST_P(AccountPagesTest, SignInsAreListedAndEndOneByOne) {
    BrowserDouble other(gateway.port);
    other.additional = {{"User-Agent", "Mozilla/5.0 (X11; Linux x86_64) Firefox/140.0"}};
    enter(other, "sign-in");
    const ShownPage page = browser.get("/account.html");
    EXPECT_THAT(page.html, HasSubstr("Firefox on Linux"));
    EXPECT_THAT(page.html, HasSubstr("(this browser)"));
    const std::string family = page.hidden("signIn");
    ASSERT_FALSE(family.empty());
    EXPECT_EQ(browser.submit(page, "/account/end-sign-in", {{"signIn", family}}).status, 303);
    EXPECT_TRUE(isSignedIn(browser));
    EXPECT_FALSE(isSignedIn(other));
}

TEST_P(AccountPagesTest, TheSignInOfTheProgramIsListedAndEndsItsTokens) {
    const std::string html = browser.get("/auth/mac-handoff.html").html;
    const Answer session = gateway.post("/auth/mac-handoff/exchange",
                                        {{"code", html.substr(html.find("handoff=") + 8, 43)}});
    gateway.token = session.body.value("token", "");
    ASSERT_EQ(gateway.post("/auth/profile", {{"firstName", "Ada"}}).status, 200);
    const ShownPage page = browser.get("/account.html");
    EXPECT_THAT(page.html, HasSubstr("<strong>Vorq</strong>"));
    EXPECT_EQ(browser.submit(page, "/account/end-others", {}).location,
              "/account.html?saved=others");
    EXPECT_EQ(gateway.post("/auth/profile", {{"firstName", "Ada"}}).status, 401);
    EXPECT_EQ(
        gateway.post("/auth/refresh", {{"refreshToken", session.body.value("refreshToken", "")}})
            .status,
        401);
    EXPECT_TRUE(isSignedIn(browser));
}

TEST_P(AccountPagesTest, NobodyEndsTheSignInOfAnother) {
    BrowserDouble eve(gateway.port);
    const ShownPage signUp = eve.get("/signin.html?mode=sign-up");
    static_cast<void>(eve.submit(signUp, "/signin.html",
                                 {{"email", "eve@example.org"}, {"password", "open sesame"}}));
    const ShownPage page = eve.get("/account.html");
    for (int family = 0; family < 10; ++family) {
        if (std::to_string(family) == "2") continue; // her own
        static_cast<void>(
            eve.submit(page, "/account/end-sign-in", {{"signIn", std::to_string(family)}}));
    }
    EXPECT_TRUE(isSignedIn(browser));
    EXPECT_EQ(eve.submit(page, "/account/end-sign-in", {{"signIn", "1 OR 1=1"}}).status, 400);
}

TEST_P(AccountPagesTest, SignOutEndsThisBrowserOnly) {
    BrowserDouble other(gateway.port);
    enter(other, "sign-in");
    const std::string former = browser.cookies["vorq_session"];
    EXPECT_EQ(submit("/account/sign-out", {}).location, "/signin.html?done=out");
    EXPECT_EQ(browser.cookies.count("vorq_session"), 0U);
    browser.cookies["vorq_session"] = former;
    EXPECT_FALSE(isSignedIn(browser));
    EXPECT_TRUE(isSignedIn(other));
}

TEST_P(AccountPagesTest, ASignInThatIsUsedIsNotedNowAndThen) {
    gateway.clock.advanceSeconds(3600);
    static_cast<void>(browser.get("/account.html"));
    const std::string html = browser.get("/account.html").html;
    const std::regex times("datetime=\"([^\"]*)\"");
    std::smatch used;
    ASSERT_TRUE(std::regex_search(html, used, times));
    std::smatch begun;
    const std::string rest = used.suffix();
    ASSERT_TRUE(std::regex_search(rest, begun, times));
    EXPECT_GT(used[1].str(), begun[1].str());
}

/// Somebody who forgot the password.
class ResetPagesTest : public AccountPagesTest {
  protected:
    ShownPage ask(const std::string& email) {
        return stranger.submit(stranger.get("/forgot.html"), "/forgot.html", {{"email", email}});
    }
    ShownPage replace(const std::string& code, const std::string& password) {
        const ShownPage page = stranger.get("/reset.html?code=" + code);
        return stranger.submit(page, "/reset.html", {{"newPassword", password}});
    }

    BrowserDouble stranger{gateway.port};
};

INSTANTIATE_TEST_SUITE_P(States, ResetPagesTest, kBothStates, nameOfState);

TEST_P(ResetPagesTest, ALinkSetsANewPasswordOnceAndEndsAllSignIns) {
    EXPECT_EQ(ask("ADA@example.org").status, 200);
    ASSERT_EQ(gateway.toldResets.size(), 1U);
    EXPECT_EQ(gateway.toldResets[0].email, "ada@example.org");
    const std::string code = gateway.toldResets[0].secret;
    EXPECT_EQ(replace(code, "short").status, 400);
    EXPECT_EQ(replace(code, "a new password").location, "/signin.html?done=reset");
    EXPECT_FALSE(isSignedIn(browser));
    EXPECT_EQ(stranger.get("/reset.html?code=" + code).status, 400);
    EXPECT_EQ(stranger
                  .submit(stranger.get("/forgot.html"), "/reset.html",
                          {{"code", code}, {"newPassword", "one more password"}})
                  .status,
              400);
    enter(stranger, "sign-in", "a new password");
}

TEST_P(ResetPagesTest, AnAddressOfNobodyIsAnsweredAlike) {
    const ShownPage known = ask("ada@example.org");
    const ShownPage unknown = ask("nobody@example.org");
    EXPECT_EQ(known.status, unknown.status);
    EXPECT_EQ(known.html, unknown.html);
    EXPECT_THAT(known.html, Not(HasSubstr("code=")));
    EXPECT_EQ(gateway.toldResets.size(), 1U);
}

TEST_P(ResetPagesTest, ALinkHoldsForAnHourByAnyClock) {
    static_cast<void>(ask("ada@example.org"));
    const std::string code = gateway.toldResets.at(0).secret;
    gateway.clock.advanceSeconds(3599);
    EXPECT_EQ(stranger.get("/reset.html?code=" + code).status, 200);
    gateway.clock.setTimeOfDay(-7200);
    EXPECT_EQ(stranger.get("/reset.html?code=" + code).status, 400);
    gateway.clock.setTimeOfDay(7200);
    gateway.clock.advanceSeconds(1);
    EXPECT_EQ(stranger.get("/reset.html?code=" + code).status, 400);
}

TEST_P(ResetPagesTest, AskingAgainAndAgainHasToWait) {
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ask("ada@example.org").status, 200);
    EXPECT_EQ(ask("ada@example.org").status, 429);
    EXPECT_EQ(gateway.toldResets.size(), 3U);
}

TEST_P(ResetPagesTest, AnUnknownCodeIsRefused) {
    for (const char* code : {"", "made-up", "'; --"})
        EXPECT_EQ(stranger.get(std::string("/reset.html?code=") + code).status, 400) << code;
}

} // namespace
} // namespace vorq::gateway::testing
