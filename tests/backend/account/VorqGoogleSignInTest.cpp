#include "backend/account/VorqGoogleSignIn.h"

#include "doubles/backend/AccountFixture.h"
#include "doubles/backend/ScriptedLoopbackServer.h"
#include "platform/testing/ScriptedUrlOpener.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString noSession = u"Sign-in did not return a session. Try again."_s;

class VorqGoogleSignInTest : public AccountFixture {
  protected:
    VorqGoogleSignInTest() {
        signIn = std::make_unique<VorqGoogleSignIn>(VorqGoogleSignIn::Ports{
            api, clock, opener, [this] { return loopback.make(); }, u"com.vorq.desk"_s});
    }
    [[nodiscard]] Outcome<Session> attempt(std::stop_token stop = {}) {
        Outcome outcome(signIn->signInInBrowser(u"sign-in"_s, std::move(stop)));
        clock.settle();
        return outcome;
    }
    void comeBack(const QString& tail) {
        loopback.complete(QUrl(u"http://127.0.0.1:18742/callback"_s + tail));
        clock.settle();
    }

    ScriptedUrlOpener opener;
    ScriptedLoopback loopback;
    std::unique_ptr<VorqGoogleSignIn> signIn;
};

TEST_F(VorqGoogleSignInTest, TheListenerIsUpBeforeThePageOpensInFront) {
    Outcome outcome(signIn->signInInBrowser(u"create"_s, {}));
    EXPECT_TRUE(loopback.isUp());
    EXPECT_TRUE(signIn->isPending());
    EXPECT_THAT(opener.inFront, IsEmpty());
    clock.settle();
    EXPECT_THAT(opener.inFront,
                ElementsAre(QUrl("http://h:1/signin.html?mode=sign-up&client=macos&next=/auth/"
                                 "mac-handoff.html")));
    EXPECT_THAT(opener.plain, IsEmpty());
    EXPECT_FALSE(outcome.ended());
}

TEST_F(VorqGoogleSignInTest, ACodeIsExchangedForTheSession) {
    const auto outcome = attempt();
    comeBack("?handoff=a%20b");
    EXPECT_EQ(transport.last().path(), "/auth/mac-handoff/exchange");
    EXPECT_EQ(transport.last().json()["code"], "a b");
    answerLast(200, sessionJson("t1"));
    EXPECT_EQ(outcome.value().token, "t1");
    EXPECT_FALSE(signIn->isPending());
    EXPECT_FALSE(loopback.isUp());
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(VorqGoogleSignInTest, ARefreshTokenIsRefreshed) {
    const auto outcome = attempt();
    comeBack("?handoff=&refresh_token=r1");
    EXPECT_EQ(transport.last().path(), "/auth/refresh");
    EXPECT_EQ(transport.last().json()["refreshToken"], "r1");
    answerLast(200, sessionJson("t1"));
    EXPECT_EQ(outcome.value().token, "t1");
}

TEST_F(VorqGoogleSignInTest, ValuesInTheFragmentCountAsWell) {
    const auto outcome = attempt();
    comeBack("#handoff=abc");
    EXPECT_EQ(transport.last().json()["code"], "abc");
    answerLast(200, sessionJson("t1"));
    EXPECT_TRUE(outcome.succeeded());
}

TEST_F(VorqGoogleSignInTest, AnErrorComesBeforeTheCode) {
    const auto outcome = attempt();
    comeBack("?error_description=No+way%2C+sorry&error=denied&handoff=abc");
    EXPECT_EQ(outcome.message(), "No way, sorry");
    EXPECT_TRUE(outcome.holds<SignInError>());
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(VorqGoogleSignInTest, AnErrorWithoutADescriptionIsTold) {
    for (const QString& tail :
         {u"?error=access+denied"_s, u"#error_description=&error=access+denied"_s}) {
        const auto outcome = attempt();
        comeBack(tail);
        EXPECT_EQ(outcome.message(), "access denied");
    }
}

TEST_F(VorqGoogleSignInTest, ACallbackWithoutASessionSaysSo) {
    for (const char* tail : {"", "?handoff=", "?error=&refresh_token=", "?other=1"}) {
        const auto outcome = attempt();
        comeBack(tail);
        EXPECT_EQ(outcome.message(), noSession) << tail;
    }
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(VorqGoogleSignInTest, ARefusedCodeIsTheBackendsError) {
    const auto outcome = attempt();
    comeBack("?handoff=used");
    answerLast(400, R"({"error":"Used."})");
    EXPECT_EQ(outcome.message(), "Used.");
}

TEST_F(VorqGoogleSignInTest, FiveMinutesAreTheLimit) {
    const auto outcome = attempt();
    clock.advance(300s - 1ms);
    EXPECT_FALSE(outcome.ended());
    clock.advance(1ms);
    EXPECT_EQ(outcome.message(), "Vorq sign-in timed out. Try again.");
    EXPECT_FALSE(loopback.isUp());
    EXPECT_FALSE(signIn->isPending());
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(VorqGoogleSignInTest, TheLimitOfAnAttemptThatEndedDoesNotEndTheNext) {
    const auto first = attempt();
    clock.advance(200s);
    comeBack("?error=no");
    const auto second = attempt();
    clock.advance(200s);
    EXPECT_FALSE(second.ended());
    EXPECT_TRUE(loopback.isUp());
}

TEST_F(VorqGoogleSignInTest, ANewAttemptEndsTheOldOneAsCancelled) {
    const auto first = attempt();
    const auto second = attempt();
    EXPECT_EQ(first.message(), "Sign-in was cancelled.");
    EXPECT_FALSE(second.ended());
    EXPECT_EQ(loopback.made(), 2);
    comeBack("?handoff=abc");
    answerLast(200, sessionJson("t1"));
    EXPECT_TRUE(second.succeeded());
}

TEST_F(VorqGoogleSignInTest, AStopEndsTheAttempt) {
    std::stop_source stop;
    const auto outcome = attempt(stop.get_token());
    stop.request_stop();
    clock.settle();
    EXPECT_EQ(outcome.message(), "Sign-in was cancelled.");
    EXPECT_FALSE(loopback.isUp());
}

TEST_F(VorqGoogleSignInTest, AStopOfTheOldAttemptLeavesTheNewOneAlone) {
    std::stop_source stop;
    const auto first = attempt(stop.get_token());
    const Outcome second(signIn->signInInBrowser(u"sign-in"_s, {}));
    stop.request_stop();
    clock.settle();
    EXPECT_TRUE(first.ended());
    EXPECT_FALSE(second.ended());
    EXPECT_TRUE(signIn->isPending());
}

TEST_F(VorqGoogleSignInTest, DestroyingItEndsTheAttempt) {
    const auto outcome = attempt();
    signIn.reset();
    EXPECT_FALSE(loopback.isUp());
    clock.settle();
    EXPECT_EQ(outcome.message(), "Sign-in was cancelled.");
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(VorqGoogleSignInTest, WithoutAListenerNoBrowserOpens) {
    loopback.startFailure = SignInError::failed("Could not start local sign-in listener.");
    const auto outcome = attempt();
    EXPECT_EQ(outcome.message(), "Could not start local sign-in listener.");
    EXPECT_THAT(opener.inFront, IsEmpty());
    EXPECT_FALSE(signIn->isPending());
}

TEST_F(VorqGoogleSignInTest, AListenerThatFailsLaterEndsTheAttempt) {
    const auto outcome = attempt();
    loopback.complete(std::unexpected(SignInError::failed("Out of sockets.")));
    clock.settle();
    EXPECT_EQ(outcome.message(), "Out of sockets.");
}

TEST_F(VorqGoogleSignInTest, ABrowserThatDoesNotComeToTheFrontIsHandedThePage) {
    opener.opened = std::unexpected(u"no such program"_s);
    const auto outcome = attempt();
    EXPECT_EQ(opener.plain, opener.inFront);
    EXPECT_FALSE(outcome.ended());
    clock.advance(400ms);
    EXPECT_FALSE(outcome.ended());
    comeBack("?handoff=abc");
    EXPECT_EQ(signIn->takeBrowserApplication(), std::nullopt);
}

TEST_F(VorqGoogleSignInTest, WithoutABrowserItSaysSo) {
    opener.opened = std::unexpected(u"no such program"_s);
    opener.opens = false;
    const auto outcome = attempt();
    EXPECT_EQ(outcome.message(), "Could not open your browser for Vorq sign-in.");
    EXPECT_FALSE(loopback.isUp());
}

TEST_F(VorqGoogleSignInTest, TheLabelNamesTheSignIn) {
    opener.opened = std::unexpected(u"no such program"_s);
    opener.opens = false;
    const Outcome closed(
        signIn->openBrowserAndAwaitLoopback(QUrl("https://h.example"), u"Guild"_s, {}));
    clock.settle();
    EXPECT_EQ(closed.message(), "Could not open your browser for Guild sign-in.");
    opener.opened = std::nullopt;
    const Outcome late(
        signIn->openBrowserAndAwaitLoopback(QUrl("https://h.example"), u"Guild"_s, {}));
    clock.advance(300s);
    EXPECT_EQ(late.message(), "Guild sign-in timed out. Try again.");
}

TEST_F(VorqGoogleSignInTest, TheBrowserIsRememberedOnce) {
    const RunningApplication browser{9, u"firefox-esr"_s, u"Firefox"_s};
    opener.opened = browser;
    const auto outcome = attempt();
    comeBack("?handoff=abc");
    EXPECT_EQ(signIn->takeBrowserApplication(), browser);
    EXPECT_EQ(signIn->takeBrowserApplication(), std::nullopt);
}

TEST_F(VorqGoogleSignInTest, VorqItselfIsNoBrowser) {
    opener.opened = RunningApplication{1, u"com.vorq.desk"_s, u"Vorq"_s};
    const auto outcome = attempt();
    comeBack("?handoff=abc");
    EXPECT_EQ(signIn->takeBrowserApplication(), std::nullopt);
}

TEST_F(VorqGoogleSignInTest, AFailureForgetsTheBrowser) {
    opener.opened = RunningApplication{9, u"firefox-esr"_s, u"Firefox"_s};
    const auto outcome = attempt();
    clock.advance(300s);
    EXPECT_EQ(signIn->takeBrowserApplication(), std::nullopt);
}

TEST_F(VorqGoogleSignInTest, ABrowserThatComesAfterTheEndIsNotRemembered) {
    opener.opened = RunningApplication{9, u"firefox-esr"_s, u"Firefox"_s};
    opener.holdBack();
    const auto outcome = attempt();
    comeBack("?handoff=abc");
    opener.answer();
    clock.settle();
    EXPECT_EQ(signIn->takeBrowserApplication(), std::nullopt);
}

TEST_F(VorqGoogleSignInTest, ALinkOfTheSchemeIsASecondWayBack) {
    const auto outcome = attempt();
    signIn->finish(QUrl("vorq://auth/callback?handoff=abc"));
    clock.settle();
    EXPECT_EQ(transport.last().json()["code"], "abc");
    answerLast(200, sessionJson("t1"));
    EXPECT_TRUE(outcome.succeeded());
    signIn->finish(QUrl("vorq://auth/callback?handoff=abc"));
    EXPECT_EQ(transport.count(), 1u) << "nobody waits any more";
}

TEST_F(VorqGoogleSignInTest, TheAccountSignsInByIt) {
    starting->setBrowserSignIn(signIn.get());
    starting->signInInBrowser("sign-in");
    clock.settle();
    comeBack("?handoff=abc");
    answerLast(200, sessionJson("t1"));
    clock.advance(200ms);
    EXPECT_TRUE(account->signedIn());
    EXPECT_FALSE(starting->isSigningIn());
}

TEST_F(VorqGoogleSignInTest, WhoNoLongerWaitsEndsItAndCanBeginAgain) {
    starting->setBrowserSignIn(signIn.get());
    starting->signInInBrowser("sign-in");
    clock.settle();
    starting->cancelBrowserSignIn();
    EXPECT_FALSE(starting->isSigningIn());
    EXPECT_FALSE(loopback.isUp());
    clock.settle();
    EXPECT_EQ(starting->authError(), "");
    starting->signInInBrowser("sign-in");
    clock.settle();
    EXPECT_TRUE(starting->isSigningIn());
    EXPECT_TRUE(loopback.isUp());
}

} // namespace
} // namespace vorq
