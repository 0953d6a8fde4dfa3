#include "doubles/gateway/BrowserDouble.h"
#include "doubles/gateway/ListeningPort.h"
#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/TestGateway.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

constexpr auto kForProgram = "/signin.html?mode=sign-in&client=macos&next=/auth/mac-handoff.html";

class SignInPagesTest : public ::testing::TestWithParam<StateKind> {
  protected:
    ShownPage signUp(BrowserDouble& with, const std::string& email = "ada@example.org") {
        const ShownPage page = with.get("/signin.html?mode=sign-up");
        return with.submit(page, "/signin.html", {{"email", email}, {"password", "open sesame"}});
    }
    ShownPage signIn(BrowserDouble& with, const std::string& email, const std::string& password) {
        const ShownPage page = with.get("/signin.html");
        return with.submit(page, "/signin.html", {{"email", email}, {"password", password}});
    }
    static std::string codeIn(const std::string& text) {
        const std::size_t start = text.find("handoff=");
        return start == std::string::npos ? std::string() : text.substr(start + 8, 43);
    }

    TestGateway gateway{nullptr, 10, std::make_shared<TestState>(GetParam())};
    BrowserDouble browser{gateway.port};
};

INSTANTIATE_TEST_SUITE_P(States, SignInPagesTest, kBothStates, nameOfState);

TEST_P(SignInPagesTest, SignUpLeadsToTheAccount) {
    const ShownPage answer = signUp(browser);
    EXPECT_EQ(answer.status, 303);
    EXPECT_EQ(answer.location, "/account.html");
    const ShownPage account = browser.get(answer.location);
    EXPECT_EQ(account.status, 200);
    EXPECT_THAT(account.html, HasSubstr("ada@example.org"));
}

TEST_P(SignInPagesTest, WithTheSameAddressAndPasswordOneSignsInElsewhere) {
    static_cast<void>(signUp(browser));
    BrowserDouble other(gateway.port);
    EXPECT_EQ(signIn(other, " ADA@example.org", "open sesame").location, "/account.html");
}

TEST_P(SignInPagesTest, AWrongPasswordAndAnAddressOfNobodyAreAnsweredAlike) {
    static_cast<void>(signUp(browser));
    BrowserDouble other(gateway.port);
    const auto answerTo = [&](const std::string& email) {
        ShownPage page = signIn(other, email, "wrong password");
        EXPECT_EQ(page.status, 403);
        page.html.replace(page.html.find(email), email.size(), "…");
        return page.html;
    };
    EXPECT_EQ(answerTo("ada@example.org"), answerTo("eve@example.org"));
}

TEST_P(SignInPagesTest, AProblemIsTiedToItsField) {
    const ShownPage page = signIn(browser, "ada@example.org", "wrong password");
    EXPECT_THAT(page.html, HasSubstr("aria-invalid=\"true\""));
    EXPECT_THAT(page.html, HasSubstr("aria-describedby=\"password-wrong\""));
    EXPECT_THAT(page.html, HasSubstr("id=\"password-wrong\""));
    EXPECT_THAT(page.html, HasSubstr("value=\"ada@example.org\""));
    EXPECT_THAT(page.html, Not(HasSubstr("wrong password")));
}

TEST_P(SignInPagesTest, AShortPasswordAndATakenAddressAreRefused) {
    const ShownPage page = browser.get("/signin.html?mode=sign-up");
    const ShownPage isShort =
        browser.submit(page, "/signin.html", {{"email", "a@b.c"}, {"password", "7 chars"}});
    EXPECT_EQ(isShort.status, 400);
    EXPECT_THAT(isShort.html, HasSubstr("at least 8 characters"));
    static_cast<void>(signUp(browser));
    BrowserDouble other(gateway.port);
    const ShownPage taken = signUp(other);
    EXPECT_EQ(taken.status, 409);
    EXPECT_EQ(other.cookies.count("vorq_session"), 0U);
}

TEST_P(SignInPagesTest, AnAddressOfThisComputerIsForItsOwnUser) {
    const ShownPage refused = signUp(browser, "Somebody@LocalHost");
    EXPECT_EQ(refused.status, 400);
    EXPECT_THAT(refused.html, HasSubstr("for the user of this computer"));
    EXPECT_EQ(browser.cookies.count("vorq_session"), 0U);
}

TEST_P(SignInPagesTest, ForTheProgramItLeadsToItsListenerWithACodeThatSignsIn) {
    const ListeningPort listener;
    gateway.site.clientPort = listener.port();
    const ShownPage page = browser.get(kForProgram);
    const ShownPage answer = browser.submit(
        page, "/signin.html",
        {{"mode", "sign-up"}, {"email", "ada@example.org"}, {"password", "open sesame"}});
    EXPECT_EQ(answer.location, "/auth/mac-handoff.html?client=macos");
    const ShownPage handoff = browser.get(answer.location);
    EXPECT_EQ(handoff.status, 303);
    EXPECT_THAT(handoff.location, StartsWith("http://127.0.0.1:" + std::to_string(listener.port()) +
                                             "/callback?handoff="));
    const json body = {{"code", codeIn(handoff.location)}};
    EXPECT_EQ(gateway.post("/auth/mac-handoff/exchange", body).body.value("email", ""),
              "ada@example.org");
    EXPECT_EQ(gateway.post("/auth/mac-handoff/exchange", body).status, 400) << "a second time";
}

TEST_P(SignInPagesTest, WithoutAListenerOfTheSameUserThePageShowsTheLink) {
    {
        const ListeningPort closed;
        gateway.site.clientPort = closed.port();
    }
    static_cast<void>(signUp(browser));
    const ShownPage page = browser.get("/auth/mac-handoff.html?client=macos");
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.html, HasSubstr("href=\"vorq://auth/callback?handoff="));
    EXPECT_THAT(page.html, Not(HasSubstr("http-equiv"))) << "it leads nowhere by itself";
    const json body = {{"code", codeIn(page.html)}};
    EXPECT_EQ(gateway.post("/auth/mac-handoff/exchange", body).status, 200);
}

TEST_P(SignInPagesTest, ABrowserOfAnotherComputerGoesByItselfAndHasTheLink) {
    static_cast<void>(signUp(browser));
    browser.additional = {{"X-Forwarded-For", "203.0.113.9"}};
    const ShownPage page = browser.get("/auth/mac-handoff.html?client=macos");
    EXPECT_THAT(page.html, HasSubstr("content=\"0; url=http://127.0.0.1:18742/callback?handoff="));
    EXPECT_THAT(page.html, HasSubstr("href=\"vorq://auth/callback?handoff="));
}

TEST_P(SignInPagesTest, CancelLeadsBackWithTheError) {
    const ListeningPort listener;
    gateway.site.clientPort = listener.port();
    EXPECT_THAT(browser.get(kForProgram).html, HasSubstr("Cancel"));
    EXPECT_EQ(browser.get("/auth/mac-cancel.html?client=macos").location,
              "http://127.0.0.1:" + std::to_string(listener.port()) +
                  "/callback?error=access_denied&error_description=Sign-in+was+cancelled.");
}

TEST_P(SignInPagesTest, ThisComputersUserContinuesWithoutAPassword) {
    const ShownPage page = browser.get("/signin.html");
    ASSERT_THAT(page.html, HasSubstr("Continue on this computer"));
    EXPECT_EQ(browser.submit(page, "/auth/this-computer", {}).location, "/account.html");
    EXPECT_THAT(browser.get("/account.html").html, HasSubstr("ada@localhost"));
}

TEST_P(SignInPagesTest, NobodyElseContinuesWithoutAPassword) {
    for (const httplib::Headers& headers :
         {httplib::Headers{{"X-Forwarded-For", "203.0.113.9"}},
          httplib::Headers{{"X-Real-IP", "127.0.0.1"}}, httplib::Headers{{"Via", "1.1 proxy"}},
          httplib::Headers{{"Forwarded", "for=127.0.0.1"}}}) {
        BrowserDouble other(gateway.port);
        other.additional = headers;
        const ShownPage page = other.get("/signin.html");
        EXPECT_THAT(page.html, Not(HasSubstr("Continue on this computer")));
        EXPECT_EQ(other.submit(page, "/auth/this-computer", {}).status, 403);
    }
}

TEST_P(SignInPagesTest, OthersSignUpOnlyWhereThatIsOpen) {
    browser.additional = {{"X-Forwarded-For", "203.0.113.9"}};
    const ShownPage refused = signUp(browser);
    EXPECT_EQ(refused.status, 403);
    EXPECT_THAT(refused.html, HasSubstr("New accounts are made by the user who runs"));
    gateway.site.isSignUpOpen = true;
    EXPECT_EQ(signUp(browser).status, 303);
}

TEST_P(SignInPagesTest, ItLeadsToKnownPagesOnly) {
    for (const char* next : {"https://evil.example/", "//evil.example", "/\\evil.example",
                             "/account.html/../../evil", "javascript:alert(1)", "/ai/prompt"}) {
        BrowserDouble fresh(gateway.port);
        const ShownPage page = fresh.get(std::string("/signin.html?next=") + next);
        EXPECT_EQ(fresh.submit(page, "/auth/this-computer", {{"next", next}}).location,
                  "/account.html")
            << next;
    }
}

TEST_P(SignInPagesTest, ASignedInBrowserIsAskedFirst) {
    static_cast<void>(signUp(browser));
    const ShownPage page = browser.get(kForProgram);
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.html, HasSubstr("Continue as ada@example.org"));
}

TEST_P(SignInPagesTest, AnotherSiteThatLeadsTheBrowserToTheHandoffGetsNoCode) {
    static_cast<void>(signUp(browser));
    for (const char* site : {"cross-site", "same-site"}) {
        browser.additional = {{"Sec-Fetch-Site", site}};
        const ShownPage page = browser.get("/auth/mac-handoff.html?client=macos");
        EXPECT_EQ(page.status, 200);
        EXPECT_EQ(page.html.find("handoff="), std::string::npos);
        EXPECT_THAT(page.html, HasSubstr("Continue"));
    }
}

TEST_P(SignInPagesTest, WithoutASignInTheHandoffAsksForOne) {
    const std::string answer =
        rawExchange(gateway.port, "GET /auth/mac-handoff.html?client=macos HTTP/1.1\r\n"
                                  "Host: localhost\r\n\r\n");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 303"));
    EXPECT_THAT(answer, HasSubstr("Location: /signin.html?mode=sign-in&client=macos&next="
                                  "%2Fauth%2Fmac-handoff.html\r\n"));
}

TEST_P(SignInPagesTest, CookiesAreOutOfReachOfScriptsAndOtherSites) {
    const ShownPage page = browser.get("/signin.html");
    const ShownPage answer = browser.submit(page, "/auth/this-computer", {});
    for (const ShownPage& shown : {page, answer}) {
        const auto cookie = shown.headers.find("Set-Cookie");
        ASSERT_NE(cookie, shown.headers.end());
        EXPECT_THAT(cookie->second, MatchesRegex("vorq_[a-z]+=[A-Za-z0-9_-]{43}; Path=/; HttpOnly; "
                                                 "SameSite=Strict"));
    }
}

TEST_P(SignInPagesTest, PagesAllowNoScriptNoFrameAndNothingOfOthers) {
    for (const char* path : {"/signin.html", "/forgot.html", "/admin.html", "/nowhere"}) {
        const ShownPage page = browser.get(path);
        const auto header = [&](const char* name) {
            const auto entry = page.headers.find(name);
            return entry == page.headers.end() ? std::string() : entry->second;
        };
        EXPECT_THAT(header("Content-Security-Policy"), StartsWith("default-src 'none'; "));
        EXPECT_THAT(header("Content-Security-Policy"), HasSubstr("frame-ancestors 'none'"));
        EXPECT_EQ(header("X-Frame-Options"), "DENY");
        EXPECT_EQ(header("Cache-Control"), "no-store");
        EXPECT_EQ(header("X-Content-Type-Options"), "nosniff");
        EXPECT_EQ(header("Referrer-Policy"), "same-origin");
        EXPECT_EQ(header("Content-Type"), "text/html; charset=utf-8");
        EXPECT_EQ(page.html.find("<script"), std::string::npos);
        EXPECT_EQ(page.html.find("style=\""), std::string::npos);
        EXPECT_EQ(page.html.find("https://"), std::string::npos);
    }
}

TEST_P(SignInPagesTest, ANewSignInEndsTheFormerOneOfTheBrowser) {
    static_cast<void>(signUp(browser));
    const std::string former = browser.cookies["vorq_session"];
    EXPECT_EQ(signIn(browser, "ada@example.org", "open sesame").status, 303);
    EXPECT_NE(browser.cookies["vorq_session"], former);
    BrowserDouble thief(gateway.port);
    thief.cookies = {{"vorq_session", former}};
    EXPECT_EQ(thief.get("/account.html").status, 303);
}

TEST_P(SignInPagesTest, ABrowsersSignInExpiresAfterADay) {
    static_cast<void>(signUp(browser));
    gateway.clock.advanceSeconds(24L * 3600 - 1);
    EXPECT_EQ(browser.get("/account.html").status, 200);
    gateway.clock.advanceSeconds(1);
    EXPECT_EQ(browser.get("/account.html").status, 303);
}

TEST_P(SignInPagesTest, TheSecretOfABrowserIsNoTokenOfTheProgram) {
    static_cast<void>(signUp(browser));
    gateway.token = browser.cookies["vorq_session"];
    EXPECT_EQ(gateway.post("/ai/prompt", {{"prompt", "hello"}}).status, 401);
    gateway.signIn();
    BrowserDouble other(gateway.port);
    other.cookies = {{"vorq_session", gateway.token}};
    EXPECT_EQ(other.get("/account.html").status, 303);
}

} // namespace
} // namespace vorq::gateway::testing
