#include "doubles/gateway/BrowserDouble.h"
#include "doubles/gateway/TestGateway.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr auto kProxyPassword = "open sesame";

/// Two gateways of a team, reached through a proxy that ends TLS.
class BehindProxyTest : public ::testing::Test {
  protected:
    BehindProxyTest() {
        static_cast<void>(gateway.web.signUp({"ada@example.org", kProxyPassword}, {}));
        browser.additional = throughProxy();
        other.additional = throughProxy();
    }

    static httplib::Headers throughProxy() {
        return {{"Host", "vorq.example.org"},
                {"X-Forwarded-For", "203.0.113.9"},
                {"Origin", "https://vorq.example.org"}};
    }
    static ShownPage signIn(BrowserDouble& with) {
        const ShownPage page = with.get("/signin.html");
        return with.submit(page, "/signin.html",
                           {{"email", "ada@example.org"}, {"password", kProxyPassword}});
    }
    static std::string cookieOf(const ShownPage& page) {
        const auto entry = page.headers.find("Set-Cookie");
        return entry == page.headers.end() ? std::string() : entry->second;
    }

    std::shared_ptr<TestState> state = std::make_shared<TestState>(StateKind::Server);
    PublicUrl url{"https://vorq.example.org"};
    TestGateway gateway{nullptr, 10, state, url};
    TestGateway second{nullptr, 10, state, url};
    BrowserDouble browser{gateway.port};
    BrowserDouble other{second.port};
};

TEST_F(BehindProxyTest, CookiesGoByTlsAlone) {
    const ShownPage answer = signIn(browser);
    EXPECT_EQ(answer.status, 303);
    EXPECT_THAT(cookieOf(answer), AllOf(StartsWith("__Host-vorq_session="), HasSubstr("; Secure"),
                                        HasSubstr("; HttpOnly"), HasSubstr("; SameSite=Strict"),
                                        HasSubstr("; Path=/"), Not(HasSubstr("Domain"))));
    EXPECT_EQ(browser.get("/account.html").status, 200);
}

TEST_F(BehindProxyTest, ACookieOfAnotherHostOfTheDomainIsNotTaken) {
    ASSERT_EQ(signIn(browser).status, 303);
    browser.cookies["vorq_session"] = browser.cookies.at("__Host-vorq_session");
    browser.cookies.erase("__Host-vorq_session");
    EXPECT_EQ(browser.get("/account.html").status, 303);
}

TEST_F(BehindProxyTest, WithoutTheProxyTheyAreThoseOfThisComputer) {
    browser.additional = {};
    const ShownPage answer = signIn(browser);
    EXPECT_THAT(cookieOf(answer), AllOf(StartsWith("vorq_session="), Not(HasSubstr("Secure"))));
}

TEST_F(BehindProxyTest, FormsOfOtherOriginsAreRefused) {
    const ShownPage page = browser.get("/signin.html");
    for (const char* origin : {"http://vorq.example.org", "https://evil.example", "null"}) {
        browser.additional = {{"Host", "vorq.example.org"}, {"Origin", origin}};
        EXPECT_EQ(browser.submit(page, "/signin.html", {}).status, 403) << origin;
    }
}

TEST_F(BehindProxyTest, WhoeverRunsTheGatewayIsNotTakenToSitBehindIt) {
    EXPECT_THAT(browser.get("/signin.html").html, Not(HasSubstr("/auth/this-computer")));
    EXPECT_EQ(browser.get("/admin.html").status, 403);
}

TEST_F(BehindProxyTest, AFormOfOneGatewayIsTakenByTheOther) {
    const ShownPage page = browser.get("/signin.html");
    other.cookies = browser.cookies;
    const ShownPage answer = other.submit(
        page, "/signin.html", {{"email", "ada@example.org"}, {"password", kProxyPassword}});
    EXPECT_EQ(answer.status, 303);
    browser.cookies = other.cookies;
    const ShownPage account = browser.get("/account.html");
    EXPECT_EQ(account.status, 200);
    EXPECT_THAT(account.html, HasSubstr("203.0.113.9")) << "as the proxy says";
    EXPECT_EQ(other.submit(account, "/account/sign-out", {}).status, 303);
    EXPECT_EQ(browser.get("/account.html").status, 303) << "signed out on both";
}

TEST_F(BehindProxyTest, AProgramIsSignedInThroughAnyOfThem) {
    ASSERT_EQ(signIn(browser).status, 303);
    const std::string html = browser.get("/auth/mac-handoff.html?client=macos").html;
    const std::string code = html.substr(html.find("handoff=") + 8, 43);
    const Answer answer = second.post("/auth/mac-handoff/exchange", {{"code", code}});
    EXPECT_EQ(answer.status, 200);
    gateway.token = answer.body.value("token", "");
    EXPECT_EQ(gateway.post("/auth/profile", {{"firstName", "Ada"}}).status, 200);
    EXPECT_EQ(gateway.post("/auth/mac-handoff/exchange", {{"code", code}}).status, 400);
}

} // namespace
} // namespace vorq::gateway::testing
