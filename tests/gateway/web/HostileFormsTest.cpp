#include "doubles/gateway/BrowserDouble.h"
#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/TestGateway.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace vorq::gateway::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr auto kPassword = "open sesame";

/// A browser that somebody has signed up in.
class HostileFormsTest : public ::testing::TestWithParam<StateKind> {
  protected:
    HostileFormsTest() { signUp(browser, "ada@example.org"); }

    static void signUp(BrowserDouble& with, const std::string& email) {
        const ShownPage page = with.get("/signin.html?mode=sign-up");
        EXPECT_EQ(
            with.submit(page, "/signin.html", {{"email", email}, {"password", kPassword}}).status,
            303);
    }
    ShownPage signIn(BrowserDouble& with, const std::string& password) {
        const ShownPage page = with.get("/signin.html");
        return with.submit(page, "/signin.html",
                           {{"email", "ada@example.org"}, {"password", password}});
    }

    TestGateway gateway{nullptr, 3, std::make_shared<TestState>(GetParam())};
    BrowserDouble browser{gateway.port};
};

INSTANTIATE_TEST_SUITE_P(States, HostileFormsTest, kBothStates, nameOfState);

/// What only a file can meet with.
class HostileFormsOnFileTest : public HostileFormsTest {};
INSTANTIATE_TEST_SUITE_P(States, HostileFormsOnFileTest, ::testing::Values(StateKind::File),
                         nameOfState);

TEST_P(HostileFormsTest, SqlAndScriptsInEveryFieldAreTexts) {
    const std::string hostile = R"('; DROP TABLE accounts; --"><script>alert(1)</script>&amp;)";
    const std::string escaped = "&#39;; DROP TABLE accounts; --&quot;&gt;&lt;script&gt;alert(1)"
                                "&lt;/script&gt;&amp;amp;";
    for (const char* field : {"firstName", "lastName", "useCase"}) {
        const ShownPage account = browser.get("/account.html");
        EXPECT_EQ(browser.submit(account, "/account/profile", {{field, hostile}}).status, 303);
        const ShownPage saved = browser.get("/account.html");
        EXPECT_THAT(saved.html, HasSubstr("value=\"" + escaped + "\"")) << field;
        EXPECT_THAT(saved.html, Not(HasSubstr("<script"))) << field;
    }
    const ShownPage account = browser.get("/account.html");
    const ShownPage refused = browser.submit(account, "/account/profile", {{"username", hostile}});
    EXPECT_EQ(refused.status, 400);
    EXPECT_THAT(refused.html, HasSubstr(escaped));
    BrowserDouble other(gateway.port);
    const ShownPage page = other.get("/signin.html");
    for (const std::string& email :
         {hostile, std::string("a@b' OR '1'='1"), std::string("x@<script>")}) {
        const ShownPage shown =
            other.submit(page, "/signin.html", {{"email", email}, {"password", hostile}});
        EXPECT_THAT(shown.status, ::testing::AnyOf(400, 403));
        EXPECT_THAT(shown.html, Not(HasSubstr("<script")));
    }
    EXPECT_EQ(browser.get("/account.html").status, 200) << "the accounts are still there";
}

TEST_P(HostileFormsTest, ScriptsInAddressesAndHeadersAreTexts) {
    BrowserDouble other(gateway.port);
    other.additional = {{"User-Agent", "<script>alert(1)</script>"}};
    EXPECT_EQ(signIn(other, kPassword).status, 303);
    EXPECT_THAT(other.get("/account.html").html, Not(HasSubstr("<script>")));
    const ShownPage missing = other.get("/%3Cscript%3E");
    EXPECT_EQ(missing.status, 404);
    EXPECT_THAT(missing.html, Not(HasSubstr("<script")));
    EXPECT_THAT(other.get("/signin.html?mode=<script>&client=\"><script>&next=<script>").html,
                Not(HasSubstr("<script")));
}

TEST_P(HostileFormsTest, AFormWithoutItsTokenOrWithThatOfAnotherBrowserIsRefused) {
    BrowserDouble other(gateway.port);
    signUp(other, "eve@example.org");
    const std::string foreign = other.get("/account.html").hidden("token");
    for (const char* action : {"/account/profile", "/account/privacy", "/account/end-sign-in",
                               "/account/end-others", "/account/sign-out"}) {
        EXPECT_EQ(browser.post(action, {}).status, 403) << action;
        EXPECT_EQ(browser.post(action, {{"token", foreign}}).status, 403) << action;
        EXPECT_EQ(
            browser.post(action, {{"token", browser.get("/signin.html").hidden("token")}}).status,
            403)
            << action << " with the token of a form that anybody gets";
    }
    for (const char* action :
         {"/signin.html", "/auth/this-computer", "/forgot.html", "/reset.html", "/admin.html"}) {
        EXPECT_EQ(browser.post(action, {{"token", foreign}}).status, 403) << action;
    }
    EXPECT_EQ(browser.get("/account.html").status, 200);
}

TEST_P(HostileFormsTest, FormsOfOtherSitesAreRefusedThoughTheyHaveTheToken) {
    const ShownPage account = browser.get("/account.html");
    const auto statusWith = [&](const httplib::Headers& headers) {
        browser.additional = headers;
        return browser.submit(account, "/account/profile", {{"firstName", "Eve"}}).status;
    };
    const std::string own = "http://127.0.0.1:" + std::to_string(gateway.port);
    EXPECT_EQ(statusWith({{"Origin", "https://evil.example"}}), 403);
    EXPECT_EQ(statusWith({{"Origin", "null"}}), 403);
    EXPECT_EQ(statusWith({{"Origin", "http://127.0.0.1:3000"}}), 403);
    EXPECT_EQ(statusWith({{"Sec-Fetch-Site", "cross-site"}}), 403);
    EXPECT_EQ(statusWith({{"Sec-Fetch-Site", "same-site"}}), 403);
    EXPECT_EQ(statusWith({{"Origin", own}, {"Sec-Fetch-Site", "same-origin"}}), 303);
}

TEST_P(HostileFormsTest, ANameThatWasMadeToLeadHereIsRefused) {
    for (const char* host : {"evil.example", "127.0.0.1.evil.example", "localhost.evil.example"}) {
        const std::string answer = rawExchange(
            gateway.port, std::string("GET /signin.html HTTP/1.1\r\nHost: ") + host + "\r\n\r\n");
        EXPECT_THAT(answer, StartsWith("HTTP/1.1 403")) << host;
    }
}

TEST_P(HostileFormsTest, DoubledHeadersAreRefused) {
    for (const char* line : {"Host: evil.example", "Cookie: vorq_session=x", "Origin: null",
                             "Content-Type: text/plain", "Authorization: Bearer x"}) {
        const std::string answer = rawExchange(
            gateway.port, std::string("GET /signin.html HTTP/1.1\r\n") + "Host: localhost\r\n" +
                              line + "\r\n" + line + "\r\n\r\n");
        EXPECT_THAT(answer, StartsWith("HTTP/1.1 400")) << line;
    }
}

TEST_P(HostileFormsTest, AMegabyteIsRefusedUnread) {
    const ShownPage page = browser.get("/signin.html");
    const ShownPage answer =
        browser.submit(page, "/signin.html", {{"email", std::string(1024 * 1024, 'x')}});
    EXPECT_EQ(answer.status, 413);
    EXPECT_THAT(answer.html, HasSubstr("64 KB"));
    BrowserDouble other(gateway.port);
    other.cookies = {{"vorq_session", std::string(60'000, 'x')}};
    EXPECT_EQ(other.get("/account.html").status, 303);
    other.cookies = {{"vorq_session", std::string(70'000, 'x')}};
    EXPECT_EQ(other.get("/account.html").status, 431);
}

TEST_P(HostileFormsTest, FormsThatNoBrowserWritesAreRefused) {
    httplib::Client client("127.0.0.1", gateway.port);
    const std::string type = "application/x-www-form-urlencoded";
    for (const std::string& body :
         {std::string("a=%"), std::string("a=%4"), std::string("a=%zz"), std::string("a=1&a=2"),
          std::string("a=%FF%FE"), std::string("a=%00"), std::string(100, '&') + "a=%G0"}) {
        EXPECT_EQ(client.Post("/signin.html", body, type)->status, 400) << body;
    }
    std::string many = "a0=1";
    for (int i = 1; i < 100; ++i)
        many += "&a" + std::to_string(i) + "=1";
    EXPECT_EQ(client.Post("/signin.html", many, type)->status, 400);
    EXPECT_EQ(client.Post("/signin.html", "{}", "application/json")->status, 415);
    EXPECT_EQ(client.Post("/signin.html", "a=1", "text/plain")->status, 415);
    EXPECT_EQ(client.Post("/signin.html", "a=1", "multipart/form-data; boundary=b")->status, 415);
}

TEST_P(HostileFormsTest, PathsLeadNowhereElse) {
    for (const char* path :
         {"/account.html/", "//account.html", "/pages/../account.html", "/%61ccount.html",
          "/pages/style.css%00", "/pages/..%2f..%2fetc/passwd", "/ACCOUNT.HTML"}) {
        EXPECT_EQ(browser.get(path).status, 404) << path;
    }
    const std::string answer =
        rawExchange(gateway.port, "DELETE /account.html HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 405"));
    EXPECT_THAT(answer, HasSubstr("Allow: GET, HEAD\r\n"));
}

TEST_P(HostileFormsTest, GuessesHaveToWaitWhetherOrNotThereIsAnAccount) {
    for (const char* email : {"ada@example.org", "nobody@example.org"}) {
        BrowserDouble guesser(gateway.port);
        guesser.additional = {{"X-Forwarded-For", "203.0.113.9"}};
        const auto guess = [&] {
            const ShownPage page = guesser.get("/signin.html");
            return guesser.submit(page, "/signin.html",
                                  {{"email", email}, {"password", "a guess"}});
        };
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(guess().status, 403) << email;
        const ShownPage locked = guess();
        EXPECT_EQ(locked.status, 429) << email;
        EXPECT_EQ(locked.headers.count("Retry-After"), 1U);
        EXPECT_THAT(locked.html, HasSubstr("Too many wrong passwords"));
    }
    BrowserDouble owner(gateway.port);
    EXPECT_EQ(signIn(owner, kPassword).status, 303) << "from another address";
}

TEST_P(HostileFormsTest, OneAddressThatTriesManyAccountsHasToWait) {
    BrowserDouble guesser(gateway.port);
    guesser.additional = {{"X-Forwarded-For", "203.0.113.9"}};
    const ShownPage page = guesser.get("/signin.html");
    const auto guess = [&](int number) {
        return guesser
            .submit(page, "/signin.html",
                    {{"email", "user" + std::to_string(number) + "@example.org"},
                     {"password", "a guess"}})
            .status;
    };
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(guess(i), 403);
    EXPECT_EQ(guess(99), 429);
}

TEST_P(HostileFormsTest, ARightPasswordIsNotTakenWhileTheAddressHasToWait) {
    BrowserDouble guesser(gateway.port);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(signIn(guesser, "a guess").status, 403);
    EXPECT_EQ(signIn(guesser, kPassword).status, 429);
    gateway.clock.setTimeOfDay(-7200);
    EXPECT_EQ(signIn(guesser, kPassword).status, 429) << "whatever the time of day";
    gateway.clock.advanceSeconds(20);
    EXPECT_EQ(signIn(guesser, kPassword).status, 303);
}

TEST_P(HostileFormsTest, ManyAccountsFromOneAddressHaveToWait) {
    BrowserDouble other(gateway.port);
    const ShownPage page = other.get("/signin.html?mode=sign-up");
    int status = 303;
    for (int i = 0; i < 6 && status == 303; ++i) {
        status =
            other
                .submit(page, "/signin.html",
                        {{"email", std::to_string(i) + "@example.org"}, {"password", kPassword}})
                .status;
    }
    EXPECT_EQ(status, 429);
}

TEST_P(HostileFormsTest, AClockThatIsSetBackGivesNoCodeASecondLife) {
    const std::string page = browser.get("/auth/mac-handoff.html").html;
    const std::string code = page.substr(page.find("handoff=") + 8, 43);
    gateway.clock.setTimeOfDay(-3600);
    EXPECT_EQ(gateway.post("/auth/mac-handoff/exchange", {{"code", code}}).status, 400);
    EXPECT_EQ(browser.get("/account.html").status, 200) << "and signs nobody out";
}

TEST_P(HostileFormsOnFileTest, AStateFileThatIsHeldIsSaidOnAPage) {
    const ShownPage page = browser.get("/signin.html");
    SqliteDatabase other(stateFile(gateway.folder.path() / "state"));
    const Transaction transaction(other);
    const ShownPage answer = browser.submit(
        page, "/signin.html", {{"email", "ada@example.org"}, {"password", kPassword}});
    EXPECT_EQ(answer.status, 503);
    EXPECT_THAT(answer.html, HasSubstr("busy"));
    EXPECT_EQ(browser.get("/account.html").status, 200) << "reading goes on";
}

TEST_P(HostileFormsOnFileTest, AFullStateFileIsSaidOnAPage) {
    gateway.accounts.database().write().database().execute("PRAGMA max_page_count = 1");
    BrowserDouble other(gateway.port);
    other.additional = {{"User-Agent", std::string(300, 'x')}};
    ShownPage answer;
    // What is free in the last page takes some more.
    for (int i = 0; i < 40 && answer.status != 503; ++i) {
        gateway.clock.advanceSeconds(60);
        answer = signIn(other, kPassword);
        other.cookies.clear();
    }
    EXPECT_EQ(answer.status, 503);
    EXPECT_THAT(answer.html, HasSubstr("disk is full"));
}

TEST_P(HostileFormsTest, PagesGoOnWhilePasswordsAreHashed) {
    const auto begin = std::chrono::steady_clock::now();
    std::vector<std::thread> guessers;
    for (int i = 0; i < 3; ++i) {
        guessers.emplace_back([this, i] {
            BrowserDouble guesser(gateway.port);
            guesser.additional = {{"X-Forwarded-For", "203.0.113." + std::to_string(i)}};
            static_cast<void>(signIn(guesser, "a guess"));
        });
    }
    EXPECT_EQ(browser.get("/account.html").status, 200);
    const auto took = std::chrono::steady_clock::now() - begin;
    for (std::thread& guesser : guessers)
        guesser.join();
    EXPECT_LT(took, std::chrono::steady_clock::now() - begin);
}

} // namespace
} // namespace vorq::gateway::testing
