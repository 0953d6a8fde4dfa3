#include "doubles/backend/AccountFixture.h"

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Kind = ServiceError::Kind;

class SessionTokensTest : public AccountFixture {
  protected:
    // Calls the backend with the token it is given, as the turns of a conversation do.
    Outcome<Session> call() {
        return Outcome(account->tokens().withFreshSessionToken(
            [this](const QString& token) {
                return api.updateProfile(token, "f", "l", "u", stop.get_token());
            },
            stop.get_token()));
    }
    [[nodiscard]] QByteArray bearer(std::size_t index) const {
        return transport.at(index).header("Authorization");
    }

    std::stop_source stop;
};

TEST_F(SessionTokensTest, AMissingRefreshTokenIsFailureWithoutACall) {
    EXPECT_EQ(Outcome(account->tokens().refreshAccessTokenIfNeeded()).value(), false);
    storeSession("t1", "");
    EXPECT_EQ(Outcome(account->tokens().refreshAccessTokenIfNeeded()).value(), false);
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(SessionTokensTest, NewTokensAreApplied) {
    signIn();
    const Outcome outcome(account->tokens().refreshAccessTokenIfNeeded());
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(account->sessionToken(), u"t2");
    EXPECT_EQ(stored("token"), u"t2");
    EXPECT_EQ(stored("refreshToken"), u"r2");
}

TEST_F(SessionTokensTest, AnyErrorIsFailureAndChangesNothing) {
    signIn();
    for (int round = 0; round < 3; ++round) {
        const Outcome outcome(account->tokens().refreshAccessTokenIfNeeded());
        if (round == 0) transport.last().fail("refused");
        if (round == 1) transport.last().respond(401, "{}");
        if (round == 2) transport.last().respond(200, "<html>");
        clock.settle();
        EXPECT_FALSE(outcome.value()) << round;
        EXPECT_EQ(account->sessionToken(), u"t1");
        EXPECT_EQ(stored("refreshToken"), u"r1");
    }
}

TEST_F(SessionTokensTest, ASessionThatIsNotLiveIsFailure) {
    signIn();
    for (const char* body : {R"({"signedIn":false,"email":"e","token":"t2"})",
                             R"({"signedIn":true,"email":"e","token":""})"}) {
        const Outcome outcome(account->tokens().refreshAccessTokenIfNeeded());
        answerLast(200, body);
        EXPECT_FALSE(outcome.value()) << body;
        EXPECT_EQ(account->sessionToken(), u"t1");
    }
}

TEST_F(SessionTokensTest, ATokenThatCouldNotBeReplacedIsNotSpent) {
    signIn();
    defaults.fixed = "Permission denied";
    const auto refused = call();
    answerLast(401, "{}");
    EXPECT_EQ(refused.message(),
              u"Vorq cannot write its settings (Permission denied), so it could not renew your "
              "session. You stay signed in.");
    EXPECT_EQ(transport.count(), 1u) << "no refresh";
    EXPECT_TRUE(account->signedIn());
    EXPECT_EQ(stored("refreshToken"), u"r1");

    defaults.fixed.reset();
    const auto renewed = call();
    answerLast(401, "{}");
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    EXPECT_EQ(bearer(3), "Bearer t2");
}

TEST_F(SessionTokensTest, AResponseWithoutARefreshTokenErasesTheStoredOne) {
    signIn();
    const Outcome outcome(account->tokens().refreshAccessTokenIfNeeded());
    answerLast(200, sessionJson("t2"));
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(stored("refreshToken"), u"");

    const auto next = call();
    answerLast(401, "{}");
    EXPECT_EQ(next.serviceError(), Kind::NotSignedIn);
    EXPECT_FALSE(account->signedIn());
    EXPECT_EQ(starting->authError(), u"Your session expired. Sign in again.");
}

TEST_F(SessionTokensTest, OverlappingRefreshesShareOneCall) {
    signIn();
    const Outcome first(account->tokens().refreshAccessTokenIfNeeded());
    const Outcome second(account->tokens().refreshAccessTokenIfNeeded());
    EXPECT_EQ(transport.count(), 1u) << "a refresh token may be good for one call only";
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    EXPECT_TRUE(first.value());
    EXPECT_TRUE(second.value());
    const Outcome third(account->tokens().refreshAccessTokenIfNeeded());
    EXPECT_EQ(transport.last().json().value("refreshToken"), u"r2"_s);
}

TEST_F(SessionTokensTest, StoppingAWaitLosesNoTokens) {
    signIn();
    const Outcome stopped(account->tokens().refreshAccessTokenIfNeeded(stop.get_token()));
    stop.request_stop();
    clock.settle();
    EXPECT_FALSE(stopped.value());
    EXPECT_FALSE(transport.last().isAbandoned());
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    EXPECT_EQ(stored("refreshToken"), u"r2");
    EXPECT_EQ(account->sessionToken(), u"t2");
}

TEST_F(SessionTokensTest, SettlesWhenTheRefreshHasEnded) {
    EXPECT_TRUE(Outcome(account->tokens().refreshSettled()).ended());
    storeSession("t1", "r1");
    account->restoreSession();
    clock.settle();
    const Outcome settled(account->tokens().refreshSettled());
    clock.settle();
    EXPECT_FALSE(settled.ended());
    answerLast(200, sessionJson("t2"));
    EXPECT_TRUE(settled.ended());
}

TEST_F(SessionTokensTest, ARefreshOfTheLaunchDoesNotBeginAsTheProgramEnds) {
    storeSession("t1", "r1");
    account->restoreSession();
    EXPECT_TRUE(Outcome(account->tokens().refreshSettled()).ended());
    clock.settle();
    EXPECT_EQ(transport.count(), 0u);
    EXPECT_EQ(stored("refreshToken"), u"r1");
}

TEST_F(SessionTokensTest, SigningOutDropsARefreshThatIsUnderWay) {
    signIn();
    const Outcome outcome(account->tokens().refreshAccessTokenIfNeeded());
    account->signOut();
    transport.at(0).respond(200, sessionJson("t2"));
    clock.settle();
    EXPECT_FALSE(outcome.value());
    EXPECT_FALSE(account->signedIn());
    EXPECT_EQ(stored("token"), u"(none)");
}

TEST_F(SessionTokensTest, TokensThatAnotherProgramRefreshedAreTaken) {
    signIn();
    const Outcome outcome(account->tokens().refreshAccessTokenIfNeeded());
    storeSession("t9", "r9");
    answerLast(401, "{}");
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(account->sessionToken(), u"t9");
    EXPECT_EQ(stored("refreshToken"), u"r9");
}

TEST_F(SessionTokensTest, DestroyingTheAccountEndsARefresh) {
    signIn();
    const Outcome outcome(account->tokens().refreshAccessTokenIfNeeded());
    const Outcome settled(account->tokens().refreshSettled());
    destroyAccount();
    EXPECT_TRUE(transport.last().isAbandoned());
    clock.settle();
    EXPECT_FALSE(outcome.value());
    EXPECT_TRUE(settled.ended());
    EXPECT_EQ(stored("token"), u"t1");
}

TEST_F(SessionTokensTest, ACallThatSucceedsIsMadeOnce) {
    signIn();
    const auto outcome = call();
    EXPECT_EQ(bearer(0), "Bearer t1");
    answerLast(200, sessionJson("x"));
    EXPECT_EQ(outcome.value().token, u"x");
    EXPECT_EQ(transport.count(), 1u);
}

TEST_F(SessionTokensTest, AnotherFailureOfACallIsGivenOn) {
    signIn();
    const auto outcome = call();
    answerLast(500, R"({"error":"Down."})");
    EXPECT_EQ(outcome.message(), u"Down.");
    EXPECT_TRUE(account->signedIn());
    EXPECT_EQ(transport.count(), 1u);
}

TEST_F(SessionTokensTest, ARefusedCallIsRepeatedWithANewToken) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    EXPECT_EQ(transport.last().path(), u"/auth/refresh");
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    EXPECT_EQ(bearer(2), "Bearer t2");
    answerLast(200, sessionJson("x"));
    EXPECT_EQ(outcome.value().token, u"x");
}

TEST_F(SessionTokensTest, ARefusedCallWithoutRefreshExpiresTheSession) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    answerLast(401, "{}");
    EXPECT_EQ(outcome.serviceError(), Kind::NotSignedIn);
    EXPECT_FALSE(account->signedIn());
    EXPECT_EQ(starting->authError(), u"Your session expired. Sign in again.");
    EXPECT_EQ(transport.count(), 2u);
}

TEST_F(SessionTokensTest, APassingFailureOfTheRefreshKeepsTheSessionAndSaysItsSentence) {
    signIn();
    const auto refusals = {std::pair{429, u"Too many attempts."_s}, std::pair{503, u"Busy."_s},
                           std::pair{500, u"Broken."_s}, std::pair{403, u"Not from here."_s}};
    for (const auto& [status, sentence] : refusals) {
        const auto outcome = call();
        answerLast(401, "{}");
        answerLast(status, "{\"error\":\"" + sentence.toUtf8() + "\"}");
        EXPECT_EQ(outcome.serviceError(), Kind::RequestFailed) << status;
        EXPECT_EQ(outcome.message(), sentence);
        EXPECT_TRUE(account->signedIn()) << status;
        EXPECT_EQ(stored("refreshToken"), u"r1") << status;
        EXPECT_EQ(starting->authError(), u"") << status;
    }
}

TEST_F(SessionTokensTest, ARefreshThatDoesNotGetThroughKeepsTheSession) {
    signIn();
    for (const bool isTimeOut : {false, true}) {
        const auto outcome = call();
        answerLast(401, "{}");
        if (isTimeOut)
            clock.advance(30s);
        else
            transport.last().fail("no route");
        clock.settle();
        EXPECT_EQ(outcome.message(), u"Could not reach Vorq at http://h:1. Check your connection, "
                                     u"or set VORQ_API_BASE_URL."_s);
        EXPECT_TRUE(account->signedIn()) << isTimeOut;
        EXPECT_EQ(stored("refreshToken"), u"r1");
    }
}

TEST_F(SessionTokensTest, AWebPageInPlaceOfNewTokensKeepsTheSession) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    answerLast(200, "<html>Sign in to this wireless network</html>");
    EXPECT_TRUE(outcome.message().startsWith(u"Vorq reached a web page"))
        << qPrintable(outcome.message());
    EXPECT_TRUE(account->signedIn());
}

TEST_F(SessionTokensTest, ARefreshThatIsToBeTriedAgainIsUntilItSucceeds) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    const std::size_t first = transport.count();
    for (int second = 0; second < 10; second += 2) {
        answerLast(409, R"({"error":"Being renewed."})");
        EXPECT_FALSE(outcome.ended());
        clock.advance(2s);
    }
    EXPECT_EQ(transport.count(), first + 5);
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    EXPECT_EQ(bearer(transport.count() - 1), "Bearer t2");
    answerLast(200, sessionJson("x"));
    EXPECT_TRUE(outcome.succeeded());
}

TEST_F(SessionTokensTest, TryingAgainEndsWithTheSentenceAndKeepsTheSession) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    for (int round = 0; round < 100 && !outcome.ended(); ++round) {
        answerLast(409, R"({"error":"Being renewed."})");
        clock.advance(2s);
    }
    EXPECT_EQ(outcome.message(), u"Being renewed.");
    EXPECT_TRUE(account->signedIn());
    EXPECT_LT(clock.now(), 20s);
}

TEST_F(SessionTokensTest, AProgramThatEndsDoesNotWaitForTheNextTry) {
    signIn();
    const Outcome refresh(account->tokens().refreshAccessTokenIfNeeded());
    answerLast(409, "{}");
    const Outcome settled(account->tokens().refreshSettled());
    clock.settle();
    EXPECT_TRUE(settled.ended());
    EXPECT_FALSE(refresh.ended());
}

TEST_F(SessionTokensTest, ACallRefusedTwiceExpiresTheSession) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    answerLast(401, "{}");
    EXPECT_EQ(outcome.serviceError(), Kind::NotSignedIn);
    EXPECT_FALSE(account->signedIn());
    EXPECT_EQ(transport.count(), 3u);
}

TEST_F(SessionTokensTest, ASecondFailureOfAnotherKindIsGivenOn) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    answerLast(200, sessionJson("t2"));
    answerLast(500, "");
    EXPECT_EQ(outcome.message(), u"Request failed with status 500.");
    EXPECT_TRUE(account->signedIn());
}

TEST_F(SessionTokensTest, ACallWhileSignedOutAsksForSigningIn) {
    const Outcome outcome(account->tokens().withFreshSessionToken(
        [this](const QString& token) { return api.flashcards(token, "x", {}); }));
    clock.settle();
    EXPECT_EQ(outcome.serviceError(), Kind::NotSignedIn);
    EXPECT_EQ(starting->authError(), u"Your session expired. Sign in again.");
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(SessionTokensTest, ASessionBegunMeanwhileIsNotExpired) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    const Outcome handoff(starting->exchangeHandoff("c"));
    answerLast(200, sessionJson("t5", R"(,"refreshToken":"r5")"));
    EXPECT_TRUE(handoff.value());
    transport.at(1).respond(401, "{}");
    clock.settle();
    EXPECT_EQ(bearer(3), "Bearer t5");
    answerLast(200, sessionJson("x"));
    EXPECT_TRUE(outcome.succeeded());
    EXPECT_EQ(account->sessionToken(), u"t5");
    EXPECT_EQ(starting->authError(), u"");
}

TEST_F(SessionTokensTest, ACallIsNotRepeatedAsAnotherUser) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    const Outcome handoff(starting->exchangeHandoff("c"));
    answerLast(200,
               R"({"signedIn":true,"email":"bob@example.org","token":"t5","refreshToken":"r5"})");
    EXPECT_TRUE(handoff.value());
    transport.at(1).respond(401, "{}");
    clock.settle();
    EXPECT_EQ(outcome.serviceError(), Kind::NotSignedIn);
    EXPECT_EQ(transport.count(), 3U);
    EXPECT_EQ(account->sessionToken(), u"t5") << "which goes on";
}

TEST_F(SessionTokensTest, NothingOfTheFormerUserShowsForTheNext) {
    signIn();
    ASSERT_EQ(account->keepProfileImage("picture"), u"");
    account->applyProfile("Ada", "L", "@ada", "ada@example.org");
    const Outcome handoff(starting->exchangeHandoff("c"));
    answerLast(200, R"({"signedIn":true,"email":"bob@example.org","token":"t5"})");
    ASSERT_TRUE(handoff.value());
    EXPECT_EQ(account->profile().email, u"bob@example.org");
    EXPECT_EQ(account->profile().username, u"");
    EXPECT_TRUE(account->profile().image.isNull());
}

TEST_F(SessionTokensTest, SigningOutDuringARefreshIsNoExpiry) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    account->signOut();
    transport.at(1).respond(200, sessionJson("t2"));
    clock.settle();
    EXPECT_EQ(outcome.serviceError(), Kind::NotSignedIn);
    EXPECT_EQ(starting->authError(), u"");
    EXPECT_FALSE(account->signedIn());
}

TEST_F(SessionTokensTest, AStoppedCallIsNeitherRepeatedNorExpired) {
    signIn();
    const auto outcome = call();
    answerLast(401, "{}");
    stop.request_stop();
    clock.settle();
    EXPECT_TRUE(outcome.cancelled());
    answerLast(401, "{}");
    EXPECT_TRUE(account->signedIn());
    EXPECT_EQ(transport.count(), 2u);
}

TEST_F(SessionTokensTest, DestroyingTheAccountCancelsACall) {
    signIn();
    const auto refreshing = call();
    answerLast(401, "{}");
    const auto calling = call();
    destroyAccount();
    clock.settle();
    EXPECT_TRUE(refreshing.cancelled());
    answerLast(401, "{}");
    EXPECT_TRUE(calling.cancelled());
}

TEST_F(SessionTokensTest, ARefreshOfAFormerSessionIsNotShared) {
    signIn();
    const Outcome former(account->tokens().refreshAccessTokenIfNeeded());
    const Outcome handoff(starting->exchangeHandoff("c"));
    answerLast(200, sessionJson("t5", R"(,"refreshToken":"r5")"));
    const auto outcome = call();
    answerLast(401, "{}");
    ASSERT_EQ(transport.count(), 4u);
    EXPECT_EQ(transport.last().json().value("refreshToken"), u"r5"_s);
    answerLast(200, sessionJson("t6", R"(,"refreshToken":"r6")"));
    answerLast(200, sessionJson("x"));
    EXPECT_TRUE(outcome.succeeded());
    transport.at(0).respond(200, sessionJson("t2"));
    clock.settle();
    EXPECT_EQ(account->sessionToken(), u"t6");
}

TEST_F(SessionTokensTest, SigningOutWhileTheNewTokensAreAppliedIsNoExpiry) {
    signIn();
    const Outcome outcome(account->tokens().withFreshSessionToken(
        [this](const QString& token) { return api.flashcards(token, "text", stop.get_token()); },
        stop.get_token()));
    answerLast(401, "{}");
    // The waiter of the refresh hears of its end only on a later turn of the loop.
    QObject::connect(
        account.get(), &AccountSession::profileChanged, account.get(),
        [this] {
            QMetaObject::invokeMethod(account.get(), &AccountSession::signOut,
                                      Qt::QueuedConnection);
        },
        Qt::SingleShotConnection);
    transport.last().respond(200, R"({"signedIn":true,"email":"new@example.org","token":"t2"})");
    clock.settle();
    EXPECT_EQ(outcome.serviceError(), Kind::NotSignedIn);
    EXPECT_EQ(starting->authError(), u"");
    EXPECT_FALSE(account->signedIn());
}

} // namespace
} // namespace vorq
