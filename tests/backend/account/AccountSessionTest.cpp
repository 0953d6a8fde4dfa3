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
    EXPECT_EQ(account->profile().email, u"");
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
    EXPECT_EQ(account->profile().firstName, u"");
    EXPECT_EQ(account->profile().displayName(), u"@ada");
    EXPECT_EQ(account->profile().image, "jpeg");
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
    EXPECT_EQ(starting->authError(), u"");
    EXPECT_EQ(stored("refreshToken"), u"r1");
}

TEST_F(AccountSessionTest, ApplyingASessionStoresAndShowsIt) {
    defaults.setString("vorq.session.username", "kept");
    storeAvatar("jpeg");
    account->applySession(*decodeSession(
        sessionJson("t1", R"(,"firstName":"Ada","refreshToken":"r1","useCase":"student")")));
    EXPECT_TRUE(account->signedIn());
    EXPECT_EQ(account->profile().email, u"ada@example.org");
    EXPECT_EQ(account->profile().firstName, u"Ada");
    EXPECT_EQ(account->profile().lastName, u"");
    EXPECT_EQ(account->profile().username, u"kept") << "as stored, when the session has none";
    EXPECT_EQ(account->sessionToken(), u"t1");
    EXPECT_EQ(account->profile().image, "jpeg");
    EXPECT_EQ(stored("email"), u"ada@example.org");
    EXPECT_EQ(stored("token"), u"t1");
    EXPECT_EQ(stored("refreshToken"), u"r1");
    EXPECT_EQ(stored("firstName"), u"Ada");
    EXPECT_EQ(stored("lastName"), u"");
    EXPECT_EQ(stored("username"), u"kept");
    EXPECT_EQ(model.preferredAIModelID(), u"openai/o3-mini");
}

TEST_F(AccountSessionTest, SignalsTellOfChangesOnly) {
    QSignalSpy profile(account.get(), &AccountSession::profileChanged);
    QSignalSpy signedIn(account.get(), &AccountSession::signedInChanged);
    Session session = *decodeSession(sessionJson("t1"));
    account->applySession(session);
    account->applySession(session);
    EXPECT_EQ(profile.count(), 1);
    EXPECT_EQ(signedIn.count(), 1);
    session.firstName = u"Ada"_s;
    session.lastName = u"Lovelace"_s;
    account->applySession(session);
    EXPECT_EQ(profile.count(), 2) << "one for all of it";
    storeAvatar("jpeg");
    account->applySession(session);
    EXPECT_EQ(profile.count(), 3);
    EXPECT_EQ(signedIn.count(), 1);
}

TEST_F(AccountSessionTest, WhoeverHearsOfAChangeFindsASessionThatIsWhole) {
    storeAvatar("jpeg");
    QStringList seen;
    const auto look = [&] {
        const AccountProfile& profile = account->profile();
        seen += profile.email + u' ' + account->sessionToken() + u' ' +
                QString::fromUtf8(profile.image);
    };
    QObject::connect(account.get(), &AccountSession::profileChanged, look);
    QObject::connect(account.get(), &AccountSession::signedInChanged, look);
    account->applySession(*decodeSession(sessionJson("t1")));
    EXPECT_EQ(seen, QStringList(2, "ada@example.org t1 jpeg"));
}

TEST_F(AccountSessionTest, SigningOutForgetsTheSessionAndTellsTheBackend) {
    signIn();
    storeAvatar("jpeg");
    account->signOut();
    EXPECT_FALSE(account->signedIn());
    EXPECT_EQ(account->profile().email, u"");
    EXPECT_EQ(account->sessionToken(), u"");
    EXPECT_TRUE(account->profile().image.isNull());
    EXPECT_EQ(stored("token"), u"(none)");
    EXPECT_EQ(stored("refreshToken"), u"(none)");
    EXPECT_EQ(stored("email"), u"(none)");
    EXPECT_FALSE(QFile::exists(VorqSessionStore(defaults, paths).profileImageURL()));
    clock.settle();
    EXPECT_EQ(transport.last().path(), u"/auth/sign-out");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t1");
    answerLast(500, "");
    EXPECT_EQ(starting->authError(), u"");
}

TEST_F(AccountSessionTest, SigningOutWithoutASessionCallsNothing) {
    account->signOut();
    clock.settle();
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(AccountSessionTest, SigningOutClearsTheLinesAndFlagsOfTheAccountPages) {
    signIn();
    starting->setSigningInWithApple(true);
    starting->setSigningInWithGoogle(true);
    starting->setResettingPassword(true);
    starting->setPasswordResetMessage("Sent.");
    const Outcome refused(privacyForm->updatePrivacy("", "", ""));
    const Outcome profile(profileForm->updateProfile("A", "B", "c"));
    const Outcome privacy(privacyForm->updatePrivacy("x@y", "old", ""));
    EXPECT_TRUE(profileForm->isSaving() && privacyForm->isSaving());
    account->signOut();
    EXPECT_FALSE(profileForm->isSaving());
    EXPECT_FALSE(privacyForm->isSaving());
    EXPECT_FALSE(starting->isSigningInWithApple());
    EXPECT_FALSE(starting->isSigningInWithGoogle());
    EXPECT_FALSE(starting->isResettingPassword());
    EXPECT_EQ(starting->passwordResetMessage(), u"");
    EXPECT_EQ(privacyForm->error(), u"");
}

TEST_F(AccountSessionTest, AnExpiredSessionIsForgottenWithASentence) {
    signIn();
    account->markSessionExpired(u" Your plan ended. "_s);
    EXPECT_FALSE(account->signedIn());
    EXPECT_EQ(stored("token"), u"(none)");
    EXPECT_EQ(starting->authError(), u"Your plan ended.");
    clock.settle();
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(AccountSessionTest, AnExpiryWithoutASentenceHasItsOwn) {
    account->markSessionExpired(u" \n"_s);
    EXPECT_EQ(starting->authError(), u"Your session expired. Sign in again.");
    account->markSessionExpired(u"x"_s);
    account->markSessionExpired();
    EXPECT_EQ(starting->authError(), u"Your session expired. Sign in again.");
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
    const Outcome profile(profileForm->updateProfile("A", "", ""));
    answerLast(409, R"({"error":"Taken."})");
    const Outcome privacy(privacyForm->updatePrivacy("", "", ""));
    ASSERT_FALSE(starting->authError().isEmpty() || profileForm->error().isEmpty() ||
                 privacyForm->error().isEmpty());
    account->signOut();
    EXPECT_EQ(starting->authError() + profileForm->error() + privacyForm->error(), u"");
}

TEST_F(AccountSessionTest, SigningOutForgetsTheNames) {
    signIn();
    account->applyProfile("Ada", "Lovelace", "ada", "");
    account->signOut();
    for (const char* name : {"email", "token", "refreshToken", "firstName", "lastName", "username"})
        EXPECT_EQ(stored(name), u"(none)") << name;
    EXPECT_EQ(account->profile().firstName + account->profile().lastName +
                  account->profile().username,
              u"");
}

TEST_F(AccountSessionTest, AProfileWithoutAnEmailLeavesTheOneBefore) {
    signIn();
    account->applyProfile("Ada", "", "", "");
    EXPECT_EQ(account->profile().email, u"ada@example.org");
    EXPECT_EQ(stored("email"), u"ada@example.org");
    account->applyProfile("Ada", "", "", "new@example.org");
    EXPECT_EQ(account->profile().email, u"new@example.org");
    EXPECT_EQ(account->profile().firstName, u"Ada");
}

TEST_F(AccountSessionTest, AnAvatarThatCannotBeReadIsAbsent) {
    signIn();
    storeAvatar("jpeg");
    Session session;
    session.signedIn = true;
    session.token = "t";
    account->applySession(session);
    EXPECT_EQ(account->profile().image, "jpeg");
    const QString path = VorqSessionStore(defaults, paths).profileImageURL();
    QFile::remove(path);
    QDir().mkpath(path);
    account->applySession(session);
    EXPECT_TRUE(account->profile().image.isNull());
}

} // namespace
} // namespace vorq
