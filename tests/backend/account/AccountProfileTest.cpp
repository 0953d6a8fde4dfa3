#include "doubles/backend/AccountFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QSignalSpy>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

using AccountProfileTest = AccountFixture;

TEST_F(AccountProfileTest, AnUpdateSendsTrimmedTexts) {
    signIn();
    const Outcome outcome(account->updateProfile(" Ada ", "Lovelace\n", " @@Ada@ "));
    EXPECT_TRUE(account->isSavingProfile());
    EXPECT_EQ(transport.last().path(), u"/auth/profile");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t1");
    EXPECT_EQ(transport.last().request().body,
              R"({"firstName":"Ada","lastName":"Lovelace","username":"ada"})");
    answerLast(200, sessionJson("ignored", R"(,"firstName":"A.","refreshToken":"ignored")"));
    EXPECT_TRUE(outcome.value());
    EXPECT_FALSE(account->isSavingProfile());
    EXPECT_EQ(account->firstName(), u"A.") << "from the response";
    EXPECT_EQ(account->lastName(), u"Lovelace") << "as sent";
    EXPECT_EQ(account->username(), u"ada");
    EXPECT_EQ(account->sessionToken(), u"t1");
    EXPECT_EQ(stored("firstName"), u"A.");
    EXPECT_EQ(stored("lastName"), u"Lovelace");
    EXPECT_EQ(stored("username"), u"ada");
    EXPECT_EQ(stored("email"), u"ada@example.org");
    EXPECT_EQ(stored("token"), u"t1");
    EXPECT_EQ(stored("refreshToken"), u"r1");
}

TEST_F(AccountProfileTest, AnUpdateTakesTheEmailOfTheResponse) {
    signIn();
    const Outcome outcome(account->updateProfile("", "", ""));
    answerLast(200, R"({"signedIn":true,"email":"new@example.org","token":""})");
    EXPECT_EQ(account->email(), u"new@example.org");
    EXPECT_EQ(stored("email"), u"new@example.org");
}

TEST_F(AccountProfileTest, AFailedUpdateShowsItsSentence) {
    signIn();
    const Outcome outcome(account->updateProfile("Ada", "", ""));
    answerLast(409, R"({"error":"Taken."})");
    EXPECT_FALSE(outcome.value());
    EXPECT_EQ(account->profileError(), u"Taken.");
    EXPECT_FALSE(account->isSavingProfile());
    EXPECT_EQ(account->firstName(), u"");
    const Outcome next(account->updateProfile("Ada", "", ""));
    EXPECT_EQ(account->profileError(), u"");
}

TEST_F(AccountProfileTest, WhileSignedOutTheValuesStayOnThisMachine) {
    const Outcome outcome(account->updateProfile(" Ada ", "L", "@Ada"));
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(account->firstName(), u"Ada");
    EXPECT_EQ(account->username(), u"ada");
    EXPECT_EQ(stored("username"), u"ada");
    EXPECT_FALSE(account->isSavingProfile());
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(AccountProfileTest, AnAvatarIsStoredForTheUserAlone) {
    QSignalSpy changed(account.get(), &AccountSession::profileImageDataChanged);
    const Outcome outcome(account->updateProfile("", "", "", QByteArray("jpeg")));
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(account->profileImageData(), "jpeg");
    EXPECT_EQ(changed.count(), 1);
    const QFileInfo file(paths.applicationSupportFolder() + "/Vorq/profile-avatar.jpg");
    EXPECT_EQ(file.size(), 4);
    EXPECT_EQ(file.permissions() & 0x0077, QFileDevice::Permissions());
}

TEST_F(AccountProfileTest, AnAvatarThatCannotBeStoredEndsTheUpdate) {
    signIn();
    const QString path = VorqSessionStore(defaults, paths).profileImageURL();
    ASSERT_TRUE(QDir().mkpath(path + "/in the way"));
    const Outcome outcome(account->updateProfile("Ada", "", "", QByteArray("jpeg")));
    EXPECT_FALSE(outcome.value());
    EXPECT_FALSE(account->profileError().isEmpty());
    EXPECT_FALSE(account->isSavingProfile());
    EXPECT_TRUE(account->profileImageData().isNull());
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(AccountProfileTest, AnUpdateOfASessionThatEndedMeanwhileIsDropped) {
    signIn();
    const Outcome profile(account->updateProfile("Ada", "", ""));
    const Outcome privacy(account->updatePrivacy("x@y", "old", ""));
    account->signOut();
    transport.at(0).respond(200, sessionJson("t2"));
    transport.at(1).respond(200, sessionJson("t2"));
    clock.settle();
    EXPECT_FALSE(profile.value());
    EXPECT_FALSE(privacy.value());
    EXPECT_EQ(account->firstName(), u"");
    EXPECT_EQ(account->sessionToken(), u"");
    EXPECT_EQ(stored("token"), u"(none)");
}

TEST_F(AccountProfileTest, AnUpdateDroppedWithItsSessionLeavesNoFlag) {
    for (const bool expires : {true, false}) {
        signIn();
        const Outcome profile(account->updateProfile("Ada", "", ""));
        const std::size_t saving = transport.count() - 1;
        const Outcome privacy(account->updatePrivacy("x@y", "old", ""));
        if (expires) {
            account->markSessionExpired();
        } else {
            const Outcome handoff(account->exchangeHandoff("c"));
            answerLast(200, sessionJson("t5"));
        }
        EXPECT_FALSE(account->isSavingProfile() || account->isSavingPrivacy()) << expires;
        transport.at(saving).respond(200, sessionJson("t2", R"(,"firstName":"Old")"));
        transport.at(saving + 1).respond(200, sessionJson("t2"));
        clock.settle();
        EXPECT_FALSE(profile.value());
        EXPECT_EQ(account->firstName(), u"");
    }
}

TEST_F(AccountProfileTest, AStoppedUpdateEndsWithoutASentence) {
    signIn();
    std::stop_source stop;
    const Outcome profile(account->updateProfile("Ada", "", "", {}, stop.get_token()));
    const Outcome privacy(account->updatePrivacy("x@y", "old", "", stop.get_token()));
    stop.request_stop();
    clock.settle();
    EXPECT_FALSE(profile.value());
    EXPECT_FALSE(privacy.value());
    EXPECT_EQ(account->profileError() + account->privacyError(), u"");
    EXPECT_FALSE(account->isSavingProfile());
    EXPECT_FALSE(account->isSavingPrivacy());
}

TEST_F(AccountProfileTest, DestroyingTheAccountEndsUpdates) {
    signIn();
    const Outcome profile(account->updateProfile("Ada", "", ""));
    const Outcome privacy(account->updatePrivacy("x@y", "old", ""));
    account.reset();
    transport.at(0).respond(200, sessionJson("t2"));
    transport.at(1).fail("refused");
    clock.settle();
    EXPECT_FALSE(profile.value());
    EXPECT_FALSE(privacy.value());
    EXPECT_EQ(stored("firstName"), u"(none)");
}

class AccountPrivacyTest : public AccountFixture {
  protected:
    // What the page shows for an update that is refused before any call.
    QString refusal(const QString& email, const QString& current, const QString& fresh) {
        const Outcome outcome(account->updatePrivacy(email, current, fresh));
        EXPECT_FALSE(outcome.value());
        EXPECT_FALSE(account->isSavingPrivacy());
        EXPECT_EQ(transport.count(), 0u);
        return account->privacyError();
    }
};

TEST_F(AccountPrivacyTest, TheCurrentPasswordIsAskedForFirst) {
    signIn();
    EXPECT_EQ(refusal("", "", ""), u"Current password is required.");
    EXPECT_EQ(refusal("a@b", "", "7 chars"), u"Current password is required.");
}

TEST_F(AccountPrivacyTest, ThereMustBeSomethingToChange) {
    signIn();
    EXPECT_EQ(refusal(" \n", "old", ""), u"Enter a new email and/or a new password.");
}

TEST_F(AccountPrivacyTest, ANewPasswordHasEightCharacters) {
    signIn();
    const QString sentence = u"New password must be at least 8 characters."_s;
    EXPECT_EQ(refusal("", "old", "seven77"), sentence);
    EXPECT_EQ(refusal("", "old", u"éééé"_s.normalized(QString::NormalizationForm_D)), sentence);
    const Outcome outcome(account->updatePrivacy("", "old", "eight888"));
    EXPECT_EQ(transport.count(), 1u);
    EXPECT_EQ(account->privacyError(), u"");
}

TEST_F(AccountPrivacyTest, AnUpdateSendsItsTextsAndTakesTheNewToken) {
    signIn();
    const Outcome outcome(account->updatePrivacy(" New@Example.ORG ", " old ", "eight888"));
    EXPECT_TRUE(account->isSavingPrivacy());
    EXPECT_EQ(transport.last().path(), u"/auth/privacy");
    EXPECT_EQ(transport.last().request().body,
              R"({"email":"new@example.org","currentPassword":" old ","newPassword":"eight888"})");
    answerLast(200, R"({"signedIn":true,"email":"new@example.org","token":"t2"})");
    EXPECT_TRUE(outcome.value());
    EXPECT_FALSE(account->isSavingPrivacy());
    EXPECT_EQ(account->email(), u"new@example.org");
    EXPECT_EQ(account->sessionToken(), u"t2");
    EXPECT_EQ(stored("email"), u"new@example.org");
    EXPECT_EQ(stored("token"), u"t2");
    EXPECT_EQ(stored("refreshToken"), u"r1");
}

TEST_F(AccountPrivacyTest, AResponseWithoutTokenKeepsTheOld) {
    signIn();
    const Outcome outcome(account->updatePrivacy("x@y", "old", ""));
    answerLast(200, R"({"signedIn":true,"email":"x@y","token":""})");
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(account->sessionToken(), u"t1");
    EXPECT_EQ(stored("token"), u"t1");
}

TEST_F(AccountPrivacyTest, AFailedUpdateShowsItsSentence) {
    signIn();
    const Outcome outcome(account->updatePrivacy("x@y", "old", ""));
    answerLast(403, R"({"error":"Wrong password."})");
    EXPECT_FALSE(outcome.value());
    EXPECT_EQ(account->privacyError(), u"Wrong password.");
    EXPECT_FALSE(account->isSavingPrivacy());
}

TEST_F(AccountPrivacyTest, WhileSignedOutAnEmailStaysOnThisMachine) {
    const Outcome outcome(account->updatePrivacy("X@Y", "old", ""));
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(account->email(), u"x@y");
    EXPECT_EQ(stored("email"), u"x@y");
    EXPECT_FALSE(account->isSavingPrivacy());
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(AccountPrivacyTest, WhileSignedOutAPasswordCannotBeChanged) {
    EXPECT_EQ(refusal("", "old", "eight888"), u"Sign in is required to change your password.");
}

} // namespace
} // namespace vorq
