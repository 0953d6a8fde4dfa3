// Two programs of one user: two accounts over the same settings.

#include "doubles/backend/AccountFixture.h"

#include <QDir>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Kind = ServiceError::Kind;

class SharedSessionTest : public AccountFixture {
  protected:
    SharedSessionTest() {
        QDir().mkpath(paths.settingsFolder());
        storeAvatar("jpeg");
        storeSession("t1");
        other->restoreSession();
        signIn();
    }
    // Calls the backend with the token it is given, as the turns of a conversation do.
    Outcome<Session> callOf(AccountSession& session) {
        return Outcome(session.tokens().withFreshSessionToken([this](const QString& token) {
            return api.updateProfile(token, "f", "l", "u", stop.get_token());
        }));
    }
    [[nodiscard]] QByteArray bearer(std::size_t index) const {
        return transport.at(index).header("Authorization");
    }
    [[nodiscard]] bool hasAvatar() const {
        return QFile::exists(paths.applicationSupportFolder() + "/Vorq/profile-avatar.jpg");
    }

    std::stop_source stop;
    std::unique_ptr<AccountSession> other =
        std::make_unique<AccountSession>(api, defaults, paths, clock, model);
    std::unique_ptr<AccountSignIn> otherStarting =
        std::make_unique<AccountSignIn>(*other, api, clock);
};

TEST_F(SharedSessionTest, TheSecondWaitsForTheRefreshOfTheFirstAndTakesItsTokens) {
    const auto first = callOf(*account);
    const auto second = callOf(*other);
    transport.at(0).respond(401, "{}");
    transport.at(1).respond(401, "{}");
    clock.settle();
    ASSERT_EQ(transport.count(), 3u) << "one of them refreshes";
    clock.advance(2s);
    ASSERT_EQ(transport.count(), 3u);
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    clock.advance(1s);
    ASSERT_EQ(transport.count(), 5u);
    for (const std::size_t index : {3u, 4u}) {
        EXPECT_EQ(bearer(index), "Bearer t2");
        transport.at(index).respond(200, sessionJson("x"));
    }
    clock.settle();
    EXPECT_TRUE(first.succeeded() && second.succeeded());
    EXPECT_EQ(other->sessionToken(), u"t2");
}

TEST_F(SharedSessionTest, AWaitThatLastsTooLongFailsAndKeepsTheSession) {
    const auto first = callOf(*account);
    const auto second = callOf(*other);
    transport.at(0).respond(401, "{}");
    transport.at(1).respond(401, "{}");
    clock.settle();
    transport.at(2).begin(200); // and its body never comes to an end
    for (int part = 0; part < 20; ++part) {
        transport.at(2).send(" ");
        clock.advance(5s);
    }
    EXPECT_EQ(second.serviceError(), Kind::RequestFailed);
    EXPECT_TRUE(other->signedIn());
    EXPECT_EQ(stored("refreshToken"), u"r1");
}

TEST_F(SharedSessionTest, TokensThatAreExpiredTooAreRefreshedAfterTheyWereTaken) {
    storeSession("t5", "r5");
    const auto outcome = callOf(*account);
    answerLast(401, "{}");
    EXPECT_EQ(bearer(1), "Bearer t5") << "without a refresh";
    answerLast(401, "{}");
    EXPECT_EQ(transport.last().json().value("refreshToken"), u"r5"_s);
    answerLast(200, sessionJson("t6", R"(,"refreshToken":"r6")"));
    EXPECT_EQ(bearer(3), "Bearer t6");
    answerLast(200, sessionJson("x"));
    EXPECT_TRUE(outcome.succeeded());
    EXPECT_EQ(stored("token"), u"t6");
}

TEST_F(SharedSessionTest, AnExpiryRemovesOnlyWhatWasRefused) {
    const auto outcome = callOf(*account);
    answerLast(401, "{}");
    answerLast(401, "{}");
    EXPECT_EQ(outcome.serviceError(), Kind::NotSignedIn);
    EXPECT_EQ(stored("token"), u"(none)");

    storeSession("t9", "r9");
    storeAvatar("jpeg of t9");
    other->markSessionExpired();
    EXPECT_FALSE(other->signedIn());
    EXPECT_EQ(stored("token"), u"t9");
    EXPECT_EQ(stored("refreshToken"), u"r9");
    EXPECT_EQ(stored("email"), u"ada@example.org");
    EXPECT_TRUE(hasAvatar());
}

TEST_F(SharedSessionTest, ARefreshDoesNotUndoASignOutOfTheOther) {
    const auto outcome = callOf(*account);
    answerLast(401, "{}");
    const ScriptedExchange refresh = transport.last();
    other->signOut();
    refresh.respond(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    clock.settle();
    EXPECT_EQ(outcome.serviceError(), Kind::NotSignedIn);
    EXPECT_EQ(stored("token"), u"(none)");
    EXPECT_EQ(stored("refreshToken"), u"(none)");
    EXPECT_FALSE(account->signedIn());
}

TEST_F(SharedSessionTest, ARefreshDoesNotReplaceASignInOfTheOther) {
    const auto outcome = callOf(*account);
    answerLast(401, "{}");
    const ScriptedExchange refresh = transport.last();
    const Outcome handoff(otherStarting->exchangeHandoff("c"));
    answerLast(200, sessionJson("t7", R"(,"refreshToken":"r7")"));
    refresh.respond(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    clock.settle();
    EXPECT_EQ(stored("refreshToken"), u"r7");
    EXPECT_EQ(account->sessionToken(), u"t7");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t7");
}

TEST_F(SharedSessionTest, AProfileIsNotSavedIntoTheSessionOfAnotherUser) {
    const Outcome saving(profileForm->updateProfile("Ada", "Lovelace", "ada"));
    const ScriptedExchange update = transport.last();
    const Outcome handoff(otherStarting->exchangeHandoff("c"));
    answerLast(200, R"({"signedIn":true,"email":"bob@example.org","token":"t7",)"
                    R"("refreshToken":"r7","firstName":"Bob"})");
    update.respond(200, sessionJson("t1", R"(,"firstName":"Ada")"));
    clock.settle();
    EXPECT_EQ(stored("token"), u"t7");
    EXPECT_EQ(stored("refreshToken"), u"r7");
    EXPECT_EQ(stored("email"), u"bob@example.org");
    EXPECT_EQ(stored("firstName"), u"Bob");
    EXPECT_EQ(account->sessionToken(), u"t7");
    EXPECT_EQ(account->profile().displayName(), u"Bob");
    EXPECT_FALSE(profileForm->isSaving());
}

TEST_F(SharedSessionTest, AProfileIsSavedBesideTheTokensThatTheOtherRefreshed) {
    const Outcome refresh(other->tokens().refreshAccessTokenIfNeeded());
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    const Outcome saving(profileForm->updateProfile("Ada", "Lovelace", "ada"));
    answerLast(200, sessionJson("t1", R"(,"firstName":"Ada")"));
    EXPECT_TRUE(saving.value());
    EXPECT_EQ(stored("token"), u"t2");
    EXPECT_EQ(stored("refreshToken"), u"r2");
    EXPECT_EQ(stored("lastName"), u"Lovelace");
    EXPECT_EQ(account->sessionToken(), u"t2");
    EXPECT_EQ(account->profile().displayName(), u"Ada Lovelace");
}

TEST_F(SharedSessionTest, ANewEmailIsSavedBesideTheTokensThatTheOtherRefreshed) {
    const Outcome refresh(other->tokens().refreshAccessTokenIfNeeded());
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    const Outcome saving(privacyForm->updatePrivacy("new@example.org", "old", ""));
    answerLast(200, R"({"signedIn":true,"email":"new@example.org","token":"t3"})");
    EXPECT_TRUE(saving.value());
    EXPECT_EQ(stored("token"), u"t2") << "which belongs to the refresh token";
    EXPECT_EQ(stored("refreshToken"), u"r2");
    EXPECT_EQ(stored("email"), u"new@example.org");
    EXPECT_EQ(account->profile().email, u"new@example.org");
    EXPECT_EQ(account->sessionToken(), u"t2");
}

TEST_F(SharedSessionTest, ANewEmailIsNotSavedIntoTheSessionOfAnotherUser) {
    const Outcome saving(privacyForm->updatePrivacy("new@example.org", "old", ""));
    const ScriptedExchange update = transport.last();
    const Outcome handoff(otherStarting->exchangeHandoff("c"));
    answerLast(200, R"({"signedIn":true,"email":"bob@example.org","token":"t7",)"
                    R"("refreshToken":"r7"})");
    update.respond(200, R"({"signedIn":true,"email":"new@example.org","token":"t3"})");
    clock.settle();
    EXPECT_EQ(stored("token"), u"t7");
    EXPECT_EQ(stored("refreshToken"), u"r7");
    EXPECT_EQ(stored("email"), u"bob@example.org");
    EXPECT_EQ(account->profile().email, u"bob@example.org");
}

TEST_F(SharedSessionTest, AProfileDoesNotUndoASignOutOfTheOther) {
    const Outcome saving(profileForm->updateProfile("Ada", "Lovelace", "ada"));
    const ScriptedExchange update = transport.last();
    other->signOut();
    update.respond(200, sessionJson("t1", R"(,"firstName":"Ada")"));
    clock.settle();
    EXPECT_EQ(stored("token"), u"(none)");
    EXPECT_EQ(stored("email"), u"(none)");
    EXPECT_EQ(stored("firstName"), u"(none)");
    EXPECT_FALSE(account->signedIn());
    EXPECT_FALSE(profileForm->isSaving());
}

} // namespace
} // namespace vorq
