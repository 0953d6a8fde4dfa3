#include "doubles/backend/AccountFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QSignalSpy>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

using ProfileFormTest = AccountFixture;

TEST_F(ProfileFormTest, AnUpdateSendsTrimmedTexts) {
    signIn();
    const Outcome outcome(profileForm->updateProfile(" Ada ", "Lovelace\n", " @@Ada@ "));
    EXPECT_TRUE(profileForm->isSaving());
    EXPECT_EQ(transport.last().path(), u"/auth/profile");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t1");
    EXPECT_EQ(transport.last().request().body,
              R"({"firstName":"Ada","lastName":"Lovelace","username":"ada"})");
    answerLast(200, sessionJson("ignored", R"(,"firstName":"A.","refreshToken":"ignored")"));
    EXPECT_TRUE(outcome.value());
    EXPECT_FALSE(profileForm->isSaving());
    EXPECT_EQ(account->profile().firstName, u"A.") << "from the response";
    EXPECT_EQ(account->profile().lastName, u"Lovelace") << "as sent";
    EXPECT_EQ(account->profile().username, u"ada");
    EXPECT_EQ(account->sessionToken(), u"t1");
    EXPECT_EQ(stored("firstName"), u"A.");
    EXPECT_EQ(stored("lastName"), u"Lovelace");
    EXPECT_EQ(stored("username"), u"ada");
    EXPECT_EQ(stored("email"), u"ada@example.org");
    EXPECT_EQ(stored("token"), u"t1");
    EXPECT_EQ(stored("refreshToken"), u"r1");
}

TEST_F(ProfileFormTest, AnUpdateTakesTheEmailOfTheResponse) {
    signIn();
    const Outcome outcome(profileForm->updateProfile("", "", ""));
    answerLast(200, R"({"signedIn":true,"email":"new@example.org","token":""})");
    EXPECT_EQ(account->profile().email, u"new@example.org");
    EXPECT_EQ(stored("email"), u"new@example.org");
}

TEST_F(ProfileFormTest, AFailedUpdateShowsItsSentence) {
    signIn();
    const Outcome outcome(profileForm->updateProfile("Ada", "", ""));
    answerLast(409, R"({"error":"Taken."})");
    EXPECT_FALSE(outcome.value());
    EXPECT_EQ(profileForm->error(), u"Taken.");
    EXPECT_FALSE(profileForm->isSaving());
    EXPECT_EQ(account->profile().firstName, u"");
    const Outcome next(profileForm->updateProfile("Ada", "", ""));
    EXPECT_EQ(profileForm->error(), u"");
}

TEST_F(ProfileFormTest, WhileSignedOutTheValuesStayOnThisMachine) {
    const Outcome outcome(profileForm->updateProfile(" Ada ", "L", "@Ada"));
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(account->profile().firstName, u"Ada");
    EXPECT_EQ(account->profile().username, u"ada");
    EXPECT_EQ(stored("username"), u"ada");
    EXPECT_FALSE(profileForm->isSaving());
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(ProfileFormTest, AnAvatarIsStoredForTheUserAlone) {
    QSignalSpy changed(account.get(), &AccountSession::profileChanged);
    const Outcome outcome(profileForm->updateProfile("", "", "", QByteArray("jpeg")));
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(account->profile().image, "jpeg");
    EXPECT_EQ(changed.count(), 1);
    const QFileInfo file(paths.applicationSupportFolder() + "/Vorq/profile-avatar.jpg");
    EXPECT_EQ(file.size(), 4);
    EXPECT_EQ(file.permissions() & 0x0077, QFileDevice::Permissions());
}

TEST_F(ProfileFormTest, AnAvatarThatCannotBeStoredEndsTheUpdate) {
    signIn();
    const QString path = VorqSessionStore(defaults, paths).profileImageURL();
    ASSERT_TRUE(QDir().mkpath(path + "/in the way"));
    const Outcome outcome(profileForm->updateProfile("Ada", "", "", QByteArray("jpeg")));
    EXPECT_FALSE(outcome.value());
    EXPECT_FALSE(profileForm->error().isEmpty());
    EXPECT_FALSE(profileForm->isSaving());
    EXPECT_TRUE(account->profile().image.isNull());
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(ProfileFormTest, AnUpdateOfASessionThatEndedMeanwhileIsDropped) {
    signIn();
    const Outcome profile(profileForm->updateProfile("Ada", "", ""));
    const Outcome privacy(privacyForm->updatePrivacy("x@y", "old", ""));
    account->signOut();
    transport.at(0).respond(200, sessionJson("t2"));
    transport.at(1).respond(200, sessionJson("t2"));
    clock.settle();
    EXPECT_FALSE(profile.value());
    EXPECT_FALSE(privacy.value());
    EXPECT_EQ(account->profile().firstName, u"");
    EXPECT_EQ(account->sessionToken(), u"");
    EXPECT_EQ(stored("token"), u"(none)");
}

TEST_F(ProfileFormTest, AnUpdateDroppedWithItsSessionLeavesNoFlag) {
    for (const bool expires : {true, false}) {
        signIn();
        const Outcome profile(profileForm->updateProfile("Ada", "", ""));
        const std::size_t saving = transport.count() - 1;
        const Outcome privacy(privacyForm->updatePrivacy("x@y", "old", ""));
        if (expires) {
            account->markSessionExpired();
        } else {
            const Outcome handoff(starting->exchangeHandoff("c"));
            answerLast(200, sessionJson("t5"));
        }
        EXPECT_FALSE(profileForm->isSaving() || privacyForm->isSaving()) << expires;
        transport.at(saving).respond(200, sessionJson("t2", R"(,"firstName":"Old")"));
        transport.at(saving + 1).respond(200, sessionJson("t2"));
        clock.settle();
        EXPECT_FALSE(profile.value());
        EXPECT_EQ(account->profile().firstName, u"");
    }
}

TEST_F(ProfileFormTest, AStoppedUpdateEndsWithoutASentence) {
    signIn();
    std::stop_source stop;
    const Outcome profile(profileForm->updateProfile("Ada", "", "", {}, stop.get_token()));
    const Outcome privacy(privacyForm->updatePrivacy("x@y", "old", "", stop.get_token()));
    stop.request_stop();
    clock.settle();
    EXPECT_FALSE(profile.value());
    EXPECT_FALSE(privacy.value());
    EXPECT_EQ(profileForm->error() + privacyForm->error(), u"");
    EXPECT_FALSE(profileForm->isSaving());
    EXPECT_FALSE(privacyForm->isSaving());
}

TEST_F(ProfileFormTest, DestroyingTheAccountEndsUpdates) {
    signIn();
    const Outcome profile(profileForm->updateProfile("Ada", "", ""));
    const Outcome privacy(privacyForm->updatePrivacy("x@y", "old", ""));
    destroyAccount();
    transport.at(0).respond(200, sessionJson("t2"));
    transport.at(1).fail("refused");
    clock.settle();
    EXPECT_FALSE(profile.value());
    EXPECT_FALSE(privacy.value());
    EXPECT_EQ(stored("firstName"), u"(none)");
}

} // namespace
} // namespace vorq
