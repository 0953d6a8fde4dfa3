#include "doubles/backend/AccountFixture.h"
#include "doubles/backend/ScriptedBrowserSignIn.h"

#include <QSignalSpy>
#include <QStringList>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class AccountSignInTest : public AccountFixture {
  protected:
    AccountSignInTest() {
        starting->setBrowserSignIn(&browser);
        QObject::connect(starting.get(), &AccountSignIn::desktopRevealRequested,
                         [this] { events << "reveal"; });
        QObject::connect(starting.get(), &AccountSignIn::activationRequested,
                         [this] { events << "activate"; });
        QObject::connect(starting.get(), &AccountSignIn::statusMenuRequested,
                         [this] { events << "menu"; });
    }
    void finish() {
        browser.attempts.back().fire();
        clock.settle();
    }
    static Session live(const QString& token) {
        Session session;
        session.signedIn = true;
        session.email = u"ada@example.org"_s;
        session.token = token;
        return session;
    }

    ScriptedBrowserSignIn browser;
    QStringList events;
};

TEST_F(AccountSignInTest, ASignInAppliesTheSessionAndBringsTheProgramForward) {
    account->markSessionExpired();
    starting->signInInBrowser("sign-up");
    EXPECT_TRUE(starting->isSigningIn());
    EXPECT_EQ(starting->authError(), u"");
    clock.settle();
    EXPECT_EQ(browser.modes, QStringList("sign-up"));
    browser.session = live("t1");
    finish();
    EXPECT_TRUE(account->signedIn());
    EXPECT_EQ(account->sessionToken(), u"t1");
    EXPECT_EQ(events, QStringList({"reveal", "activate"}));
    EXPECT_TRUE(starting->isSigningIn());
    clock.advance(199ms);
    EXPECT_EQ(events.size(), 2);
    clock.advance(1ms);
    EXPECT_EQ(events, QStringList({"reveal", "activate", "menu"}));
    EXPECT_FALSE(starting->isSigningIn());
}

TEST_F(AccountSignInTest, AnErrorThatComesWhileTheProgramComesForwardStays) {
    starting->signInInBrowser("sign-in");
    clock.settle();
    browser.session = live("t1");
    finish();
    clock.advance(100ms);
    account->markSessionExpired();
    clock.advance(100ms);
    EXPECT_FALSE(starting->isSigningIn());
    EXPECT_EQ(starting->authError(), u"Your session expired. Sign in again.");
}

TEST_F(AccountSignInTest, ASecondSignInDuringTheFirstHasNoEffect) {
    starting->signInInBrowser("sign-in");
    clock.settle();
    starting->signInInBrowser("sign-up");
    clock.settle();
    EXPECT_EQ(browser.modes, QStringList("sign-in"));
    EXPECT_EQ(browser.cancels, 0);
}

TEST_F(AccountSignInTest, ASignInWithAProviderIsEndedFirst) {
    starting->setSigningInWithGoogle(true);
    starting->signInInBrowser("sign-in");
    EXPECT_EQ(browser.cancels, 1);
    EXPECT_TRUE(starting->isSigningIn());
}

TEST_F(AccountSignInTest, ASessionThatIsNotLiveShowsItsMessage) {
    browser.session = Session();
    browser.session->message = u"Confirm your address."_s;
    starting->signInInBrowser("sign-in");
    clock.settle();
    finish();
    EXPECT_EQ(starting->authError(), u"Confirm your address.");
    EXPECT_FALSE(starting->isSigningIn());
    EXPECT_FALSE(account->signedIn());
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(AccountSignInTest, ASessionThatIsNotLiveAndSaysNothingHasASentence) {
    browser.session = Session();
    starting->signInInBrowser("sign-in");
    clock.settle();
    finish();
    EXPECT_EQ(starting->authError(), u"Sign in failed. Try again.");
}

TEST_F(AccountSignInTest, ACancelledSignInEndsSilently) {
    browser.error = SignInError::cancelled();
    starting->signInInBrowser("sign-in");
    clock.settle();
    finish();
    EXPECT_EQ(starting->authError(), u"");
    EXPECT_FALSE(starting->isSigningIn());
}

TEST_F(AccountSignInTest, AFailedSignInShowsItsSentence) {
    for (const SignInError& error :
         {SignInError::timedOut("Vorq"), SignInError::failed("No."),
          SignInError::missingAuthorizeURL("Vorq"), SignInError::missingAuthCode("Vorq")}) {
        browser.error = error;
        starting->signInInBrowser("sign-in");
        clock.settle();
        finish();
        EXPECT_EQ(starting->authError(), error.message());
        EXPECT_FALSE(starting->isSigningIn());
    }
    browser.error.reset();
    starting->signInInBrowser("sign-in");
    clock.settle();
    finish();
    EXPECT_EQ(starting->authError(), u"Refused.");
}

TEST_F(AccountSignInTest, WhoNoLongerWaitsEndsItSilently) {
    starting->cancelBrowserSignIn();
    starting->signInInBrowser("sign-in");
    clock.settle();
    browser.session = live("t1");
    starting->cancelBrowserSignIn();
    EXPECT_FALSE(starting->isSigningIn());
    clock.settle();
    EXPECT_EQ(starting->authError(), u"");
    EXPECT_FALSE(account->signedIn());
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(AccountSignInTest, WithoutABrowserASignInSaysSo) {
    starting->setBrowserSignIn(nullptr);
    starting->signInInBrowser("sign-in");
    clock.settle();
    EXPECT_EQ(starting->authError(), u"Browser sign-in is not available here.");
    EXPECT_FALSE(starting->isSigningIn());
}

TEST_F(AccountSignInTest, ANewSignInAfterASignOutReplacesThePendingOne) {
    starting->signInInBrowser("sign-in");
    clock.settle();
    account->signOut();
    starting->signInInBrowser("sign-up");
    clock.settle();
    EXPECT_EQ(browser.modes.size(), 2);
    EXPECT_TRUE(starting->isSigningIn()) << "the end of the former must not clear the flag";
    browser.session = live("t2");
    finish();
    EXPECT_EQ(account->sessionToken(), u"t2");
}

TEST_F(AccountSignInTest, DestroyingTheAccountEndsASignIn) {
    starting->signInInBrowser("sign-in");
    clock.settle();
    destroyAccount();
    browser.session = live("t1");
    finish();
    EXPECT_EQ(stored("token"), u"(none)");
}

TEST_F(AccountSignInTest, AHandoffAppliesTheSessionAndBringsTheProgramForward) {
    starting->activateFromMacHandoff(" code\n");
    clock.settle();
    EXPECT_EQ(transport.last().json().value("code"), u"code"_s);
    answerLast(200, sessionJson("t1", R"(,"refreshToken":"r1")"));
    EXPECT_EQ(account->sessionToken(), u"t1");
    EXPECT_EQ(stored("refreshToken"), u"r1");
    EXPECT_EQ(events, QStringList({"reveal", "activate"}));
    clock.advance(200ms);
    EXPECT_EQ(events, QStringList({"reveal", "activate", "menu"}));
}

TEST_F(AccountSignInTest, AHandoffWithoutALiveSessionStillBringsTheProgramForward) {
    starting->activateFromMacHandoff("code");
    clock.settle();
    answerLast(200, R"({"signedIn":false,"email":"","token":""})");
    clock.advance(200ms);
    EXPECT_FALSE(account->signedIn());
    EXPECT_EQ(events.size(), 3);
}

TEST_F(AccountSignInTest, ABlankHandoffCodeIsIgnored) {
    starting->activateFromMacHandoff(" \n");
    clock.settle();
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(AccountSignInTest, ARefusedHandoffIsLoggedAlone) {
    starting->activateFromMacHandoff("code");
    clock.settle();
    testing::internal::CaptureStderr();
    answerLast(400, R"({"error":"Used."})");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Vorq mac handoff failed: Used.\n");
    clock.advance(1s);
    EXPECT_TRUE(events.isEmpty());
    EXPECT_EQ(starting->authError(), u"");
}

TEST_F(AccountSignInTest, AHandoffTellsWhatCameOfIt) {
    QStringList ended;
    QObject::connect(starting.get(), &AccountSignIn::macHandoffEnded,
                     [&ended](const QString& code, const QString& failure) {
                         ended += code + u": "_s + failure;
                     });
    const std::pair<int, QByteArray> answers[] = {
        {200, sessionJson("t1")},
        {200, R"({"signedIn":false,"email":"","token":""})"},
        {400, R"({"error":"Used."})"}};
    for (const auto& [status, body] : answers) {
        starting->activateFromMacHandoff(" code ");
        clock.settle();
        answerLast(status, body);
    }
    EXPECT_EQ(ended, QStringList({"code: ", "code: Sign in failed. Try again.", "code: Used."}));
}

TEST_F(AccountSignInTest, ACodeThatComesTwiceDoesNotStopItsFirstExchange) {
    starting->activateFromMacHandoff("code");
    clock.settle();
    starting->activateFromMacHandoff("code");
    clock.settle();
    transport.at(1).respond(400, R"({"error":"Used."})");
    transport.at(0).respond(200, sessionJson("t1"));
    clock.settle();
    EXPECT_EQ(account->sessionToken(), u"t1");
}

TEST_F(AccountSignInTest, AnAwaitedHandoffTellsItsOutcome) {
    const Outcome good(starting->exchangeHandoff("a"));
    answerLast(200, sessionJson("t1"));
    EXPECT_TRUE(good.value());
    const Outcome dead(starting->exchangeHandoff("b"));
    answerLast(200, R"({"signedIn":false,"email":"","token":""})");
    EXPECT_FALSE(dead.value());
    const Outcome refused(starting->exchangeHandoff("c"));
    answerLast(400, R"({"error":"Used."})");
    EXPECT_EQ(refused.message(), u"Used.");
    const Outcome blank(starting->exchangeHandoff(" "));
    EXPECT_EQ(blank.message(), u"Sign-in did not return a session.");
    EXPECT_EQ(account->sessionToken(), u"t1");
}

TEST_F(AccountSignInTest, DestroyingTheAccountEndsAHandoff) {
    starting->activateFromMacHandoff("code");
    clock.settle();
    const Outcome awaited(starting->exchangeHandoff("other"));
    destroyAccount();
    transport.at(0).respond(200, sessionJson("t1"));
    transport.at(1).respond(200, sessionJson("t1"));
    clock.settle();
    EXPECT_TRUE(awaited.cancelled());
    EXPECT_TRUE(events.isEmpty());
    EXPECT_EQ(stored("token"), u"(none)");
}

TEST_F(AccountSignInTest, DestroyingTheAccountBeforeTheMenuOpensIsSafe) {
    starting->activateFromMacHandoff("code");
    clock.settle();
    answerLast(200, sessionJson("t1"));
    destroyAccount();
    clock.advance(1s);
    EXPECT_EQ(events, QStringList({"reveal", "activate"}));
}

} // namespace
} // namespace vorq
