#include "doubles/backend/AccountFixture.h"

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

class PrivacyFormTest : public AccountFixture {
  protected:
    // What the page shows for an update that is refused before any call.
    QString refusal(const QString& email, const QString& current, const QString& fresh) {
        const Outcome outcome(privacyForm->updatePrivacy(email, current, fresh));
        EXPECT_FALSE(outcome.value());
        EXPECT_FALSE(privacyForm->isSaving());
        EXPECT_EQ(transport.count(), 0u);
        return privacyForm->error();
    }
};

TEST_F(PrivacyFormTest, TheCurrentPasswordIsAskedForFirst) {
    signIn();
    EXPECT_EQ(refusal("", "", ""), u"Current password is required.");
    EXPECT_EQ(refusal("a@b", "", "7 chars"), u"Current password is required.");
}

TEST_F(PrivacyFormTest, ThereMustBeSomethingToChange) {
    signIn();
    EXPECT_EQ(refusal(" \n", "old", ""), u"Enter a new email and/or a new password.");
}

TEST_F(PrivacyFormTest, ANewPasswordHasEightCharacters) {
    signIn();
    const QString sentence = u"New password must be at least 8 characters."_s;
    EXPECT_EQ(refusal("", "old", "seven77"), sentence);
    EXPECT_EQ(refusal("", "old", u"éééé"_s.normalized(QString::NormalizationForm_D)), sentence);
    const Outcome outcome(privacyForm->updatePrivacy("", "old", "eight888"));
    EXPECT_EQ(transport.count(), 1u);
    EXPECT_EQ(privacyForm->error(), u"");
}

TEST_F(PrivacyFormTest, AnUpdateSendsItsTextsAndTakesTheNewToken) {
    signIn();
    const Outcome outcome(privacyForm->updatePrivacy(" New@Example.ORG ", " old ", "eight888"));
    EXPECT_TRUE(privacyForm->isSaving());
    EXPECT_EQ(transport.last().path(), u"/auth/privacy");
    EXPECT_EQ(transport.last().request().body,
              R"({"email":"new@example.org","currentPassword":" old ","newPassword":"eight888"})");
    answerLast(200, R"({"signedIn":true,"email":"new@example.org","token":"t2"})");
    EXPECT_TRUE(outcome.value());
    EXPECT_FALSE(privacyForm->isSaving());
    EXPECT_EQ(account->profile().email, u"new@example.org");
    EXPECT_EQ(account->sessionToken(), u"t2");
    EXPECT_EQ(stored("email"), u"new@example.org");
    EXPECT_EQ(stored("token"), u"t2");
    EXPECT_EQ(stored("refreshToken"), u"r1");
}

TEST_F(PrivacyFormTest, AResponseWithoutTokenKeepsTheOld) {
    signIn();
    const Outcome outcome(privacyForm->updatePrivacy("x@y", "old", ""));
    answerLast(200, R"({"signedIn":true,"email":"x@y","token":""})");
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(account->sessionToken(), u"t1");
    EXPECT_EQ(stored("token"), u"t1");
}

TEST_F(PrivacyFormTest, AFailedUpdateShowsItsSentence) {
    signIn();
    const Outcome outcome(privacyForm->updatePrivacy("x@y", "old", ""));
    answerLast(403, R"({"error":"Wrong password."})");
    EXPECT_FALSE(outcome.value());
    EXPECT_EQ(privacyForm->error(), u"Wrong password.");
    EXPECT_FALSE(privacyForm->isSaving());
}

TEST_F(PrivacyFormTest, WhileSignedOutAnEmailStaysOnThisMachine) {
    const Outcome outcome(privacyForm->updatePrivacy("X@Y", "old", ""));
    EXPECT_TRUE(outcome.value());
    EXPECT_EQ(account->profile().email, u"x@y");
    EXPECT_EQ(stored("email"), u"x@y");
    EXPECT_FALSE(privacyForm->isSaving());
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(PrivacyFormTest, WhileSignedOutAPasswordCannotBeChanged) {
    EXPECT_EQ(refusal("", "old", "eight888"), u"Sign in is required to change your password.");
}

} // namespace
} // namespace vorq
