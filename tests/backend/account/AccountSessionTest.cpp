#include "backend/api/Session.h"
#include "doubles/backend/AccountFixture.h"

#include "backend/api/Session.h"
#include <QDir>

#include <QSignalSpy>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

using AccountSessionTest = AccountFixture;

TEST_F(AccountSessionTest, StartsSignedOutWithoutAStoredToken) {
    defaults.setString("vorq.session.email", "old@example.org");
    account->restoreSession();
    clock.settle();
    EXPECT_FALSE(account->signedIn());
    EXPECT_EQ(account->email(), u"");
    EXPECT_EQ(account->sessionToken(), u"");
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(AccountSessionTest, AStoredTokenSignsInBeforeAnyCall) {
    storeSession("t1", "r1");
    defaults.setString("vorq.session.username", "ada");
    storeAvatar("jpeg");
    account->restoreSession();
    EXPECT_TRUE(account->signedIn());
    EXPECT_EQ(account->sessionToken(), u"t1");
    EXPECT_EQ(account->firstName(), u"");
    EXPECT_EQ(account->displayName(), u"@ada");
    EXPECT_EQ(account->profileImageData(), "jpeg");
}

TEST_F(AccountSessionTest, AStoredRefreshTokenIsUsedInTheBackground) {
    storeSession("t1", "r1");
    account->restoreSession();
    clock.settle();
    EXPECT_EQ(transport.last().json().value("refreshToken"), u"r1"_s);
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    EXPECT_EQ(account->sessionToken(), u"t2");
    EXPECT_EQ(stored("refreshToken"), u"r2");
}

TEST_F(AccountSessionTest, WithoutARefreshTokenNothingIsRefreshed) {
    storeSession("t1", "");
    account->restoreSession();
    clock.settle();
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(AccountSessionTest, ABackgroundRefreshThatFailsChangesNothing) {
    storeSession("t1", "r1");
    account->restoreSession();
    clock.settle();
    answerLast(401, "{}");
    EXPECT_TRUE(account->signedIn());
    EXPECT_EQ(account->sessionToken(), u"t1");
    EXPECT_EQ(account->authError(), u"");
    EXPECT_EQ(stored("refreshToken"), u"r1");
}

TEST_F(AccountSessionTest, ApplyingASessionStoresAndShowsIt) {
    defaults.setString("vorq.session.username", "kept");
    storeAvatar("jpeg");
    account->applySession(*decodeSession(
        sessionJson("t1", R"(,"firstName":"Ada","refreshToken":"r1","useCase":"student")")));
    EXPECT_TRUE(account->signedIn());
    EXPECT_EQ(account->email(), u"ada@example.org");
    EXPECT_EQ(account->firstName(), u"Ada");
    EXPECT_EQ(account->lastName(), u"");
    EXPECT_EQ(account->username(), u"kept") << "as stored, when the session has none";
    EXPECT_EQ(account->sessionToken(), u"t1");
    EXPECT_EQ(account->profileImageData(), "jpeg");
    EXPECT_EQ(stored("email"), u"ada@example.org");
    EXPECT_EQ(stored("token"), u"t1");
    EXPECT_EQ(stored("refreshToken"), u"r1");
    EXPECT_EQ(stored("firstName"), u"Ada");
    EXPECT_EQ(stored("lastName"), u"");
    EXPECT_EQ(stored("username"), u"kept");
    EXPECT_EQ(model.preferredAIModelID(), u"openai/o3-mini");
}

TEST_F(AccountSessionTest, SignalsTellOfChangesOnly) {
    QSignalSpy email(account.get(), &AccountSession::emailChanged);
    QSignalSpy signedIn(account.get(), &AccountSession::signedInChanged);
    QSignalSpy name(account.get(), &AccountSession::displayNameChanged);
    QSignalSpy image(account.get(), &AccountSession::profileImageDataChanged);
    const Session session = *decodeSession(sessionJson("t1"));
    account->applySession(session);
    account->applySession(session);
    EXPECT_EQ(email.count(), 1);
    EXPECT_EQ(signedIn.count(), 1);
    EXPECT_EQ(name.count(), 1);
    EXPECT_EQ(image.count(), 0);
}

TEST_F(AccountSessionTest, TheDisplayNameFallsThrough) {
    EXPECT_EQ(account->displayName(), u"Account");
    account->applyProfile("", "", "", "a@b");
    EXPECT_EQ(account->displayName(), u"a@b");
    account->applyProfile("", "", " ada ", "");
    EXPECT_EQ(account->displayName(), u"@ada");
    account->applyProfile("", " Lovelace", "ada", "");
    EXPECT_EQ(account->displayName(), u"Lovelace");
    account->applyProfile(" Ada ", "Lovelace", "ada", "");
    EXPECT_EQ(account->displayName(), u"Ada Lovelace");
}

TEST_F(AccountSessionTest, SigningOutForgetsTheSessionAndTellsTheBackend) {
    signIn();
    storeAvatar("jpeg");
    account->signOut();
    EXPECT_FALSE(account->signedIn());
    EXPECT_EQ(account->email(), u"");
    EXPECT_EQ(account->sessionToken(), u"");
    EXPECT_TRUE(account->profileImageData().isNull());
    EXPECT_EQ(stored("token"), u"(none)");
    EXPECT_EQ(stored("refreshToken"), u"(none)");
    EXPECT_EQ(stored("email"), u"(none)");
    EXPECT_FALSE(QFile::exists(VorqSessionStore(defaults, paths).profileImageURL()));
    clock.settle();
    EXPECT_EQ(transport.last().path(), u"/auth/sign-out");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t1");
    answerLast(500, "");
    EXPECT_EQ(account->authError(), u"");
}

TEST_F(AccountSessionTest, SigningOutWithoutASessionCallsNothing) {
    account->signOut();
    clock.settle();
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(AccountSessionTest, SigningOutClearsTheLinesAndFlagsOfTheAccountPages) {
    signIn();
    account->setSigningInWithApple(true);
    account->setSigningInWithGoogle(true);
    account->setResettingPassword(true);
    account->setPasswordResetMessage("Sent.");
    const Outcome refused(account->updatePrivacy("", "", ""));
    const Outcome profile(account->updateProfile("A", "B", "c"));
    const Outcome privacy(account->updatePrivacy("x@y", "old", ""));
    EXPECT_TRUE(account->isSavingProfile() && account->isSavingPrivacy());
    account->signOut();
    EXPECT_FALSE(account->isSavingProfile());
    EXPECT_FALSE(account->isSavingPrivacy());
    EXPECT_FALSE(account->isSigningInWithApple());
    EXPECT_FALSE(account->isSigningInWithGoogle());
    EXPECT_FALSE(account->isResettingPassword());
    EXPECT_EQ(account->passwordResetMessage(), u"");
    EXPECT_EQ(account->privacyError(), u"");
}

TEST_F(AccountSessionTest, AnExpiredSessionIsForgottenWithASentence) {
    signIn();
    account->markSessionExpired(u" Your plan ended. "_s);
    EXPECT_FALSE(account->signedIn());
    EXPECT_EQ(stored("token"), u"(none)");
    EXPECT_EQ(account->authError(), u"Your plan ended.");
    clock.settle();
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(AccountSessionTest, AnExpiryWithoutASentenceHasItsOwn) {
    account->markSessionExpired(u" \n"_s);
    EXPECT_EQ(account->authError(), u"Your session expired. Sign in again.");
    account->markSessionExpired(u"x"_s);
    account->markSessionExpired();
    EXPECT_EQ(account->authError(), u"Your session expired. Sign in again.");
}

TEST_F(AccountSessionTest, TheModelForARequestNeedsASession) {
    model.selectPreferredAIModel("openai/o3-mini");
    EXPECT_EQ(account->preferredModelForAIRequest(), std::nullopt);
    signIn();
    EXPECT_EQ(account->preferredModelForAIRequest(), u"openai/o3-mini"_s);
    model.selectPreferredAIModel("");
    EXPECT_EQ(account->preferredModelForAIRequest(), std::nullopt);
}

TEST_F(AccountSessionTest, SigningOutClearsTheErrorLines) {
    account->markSessionExpired();
    signIn();
    const Outcome profile(account->updateProfile("A", "", ""));
    answerLast(409, R"({"error":"Taken."})");
    const Outcome privacy(account->updatePrivacy("", "", ""));
    ASSERT_FALSE(account->authError().isEmpty() || account->profileError().isEmpty() ||
                 account->privacyError().isEmpty());
    account->signOut();
    EXPECT_EQ(account->authError() + account->profileError() + account->privacyError(), u"");
}

TEST_F(AccountSessionTest, SigningOutForgetsTheNames) {
    signIn();
    account->applyProfile("Ada", "Lovelace", "ada", "");
    account->signOut();
    for (const char* name : {"email", "token", "refreshToken", "firstName", "lastName", "username"})
        EXPECT_EQ(stored(name), u"(none)") << name;
    EXPECT_EQ(account->firstName() + account->lastName() + account->username(), u"");
}

TEST_F(AccountSessionTest, AnAvatarThatCannotBeReadIsAbsent) {
    signIn();
    storeAvatar("jpeg");
    Session session;
    session.signedIn = true;
    session.token = "t";
    account->applySession(session);
    EXPECT_EQ(account->profileImageData(), "jpeg");
    const QString path = VorqSessionStore(defaults, paths).profileImageURL();
    QFile::remove(path);
    QDir().mkpath(path);
    account->applySession(session);
    EXPECT_TRUE(account->profileImageData().isNull());
}

} // namespace
} // namespace vorq
