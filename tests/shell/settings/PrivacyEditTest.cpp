#include "doubles/shell/SettingsFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace vorq {
namespace {

class PrivacyEditTest : public SettingsFixture {
  protected:
    void save() {
        privacy().save();
        clock.settle();
    }
    void enterPasswords(const QString& current, const QString& wanted, const QString& again) {
        privacy().setCurrentPassword(current);
        privacy().setNewPassword(wanted);
        privacy().setConfirmPassword(again);
    }
};

TEST_F(PrivacyEditTest, ItBeginsWithTheEmailAlone) {
    EXPECT_EQ(privacy().email(), "ada@example.org");
    EXPECT_FALSE(privacy().isUnsaved());
}

TEST_F(PrivacyEditTest, ANewPasswordThatIsNotConfirmedStops) {
    enterPasswords("", "a long one", "a long two");
    save();
    EXPECT_EQ(privacy().confirmError(), "New password and confirmation do not match.");
    EXPECT_EQ(transport.count(), 0U);
    privacy().setConfirmPassword("a long one");
    EXPECT_EQ(privacy().confirmError(), "") << "it goes with the mending";
}

TEST_F(PrivacyEditTest, EachRefusalStandsBesideItsField) {
    enterPasswords("", "short", "short");
    save();
    EXPECT_EQ(privacy().currentError(), "Current password is required.");
    privacy().setCurrentPassword("secret");
    EXPECT_EQ(privacy().currentError(), "");
    save();
    EXPECT_EQ(privacy().newError(), "New password must be at least 8 characters.");
    enterPasswords("secret", "", "");
    save();
    EXPECT_EQ(privacy().emailError(), "Enter a new email and/or a new password.");
    EXPECT_EQ(privacy().newError(), "");
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(PrivacyEditTest, AnEmailThatIsTheSameIsNoNewOne) {
    privacy().setCurrentPassword("secret");
    privacy().setEmail(" Ada@Example.org ");
    save();
    EXPECT_EQ(privacy().emailError(), "Enter a new email and/or a new password.");
}

TEST_F(PrivacyEditTest, AnEmailThatWasRubbedOutIsNone) {
    privacy().setCurrentPassword("secret");
    privacy().setEmail(" ");
    save();
    EXPECT_EQ(privacy().emailError(), "Enter a new email and/or a new password.");
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(PrivacyEditTest, SavingSendsWhatIsNewAndClearsThePasswords) {
    QSignalSpy saved(&privacy(), &PrivacyEdit::saved);
    enterPasswords("secret", "12345678", "12345678");
    privacy().setEmail(" Countess@Example.org ");
    save();
    EXPECT_EQ(transport.last().path(), "/auth/privacy");
    EXPECT_EQ(transport.last().json(), (QVariantMap{{"email", "countess@example.org"},
                                                    {"currentPassword", "secret"},
                                                    {"newPassword", "12345678"}}));
    EXPECT_TRUE(privacy().isSaving());
    answer(200, R"({"signedIn":true,"email":"countess@example.org","token":"t2"})");
    EXPECT_EQ(saved.count(), 1);
    EXPECT_TRUE(privacy().didSave());
    EXPECT_EQ(privacy().email(), "countess@example.org");
    EXPECT_EQ(privacy().currentPassword() + privacy().newPassword() + privacy().confirmPassword(),
              "");
    EXPECT_FALSE(privacy().isUnsaved());
    EXPECT_EQ(defaults.string("vorq.session.email"), "countess@example.org");
    EXPECT_EQ(defaults.string("vorq.session.token"), "t2");
}

TEST_F(PrivacyEditTest, WhatTheBackendRefusesIsSaidAndStays) {
    enterPasswords("wrong", "12345678", "12345678");
    save();
    answer(403, R"({"error":"The current password is not right."})");
    EXPECT_EQ(privacy().error(), "The current password is not right.");
    EXPECT_EQ(privacy().newPassword(), "12345678");
    EXPECT_FALSE(privacy().didSave());
    privacy().setCurrentPassword("right");
    EXPECT_EQ(privacy().error(), "");
}

TEST_F(PrivacyEditTest, WhatTheBackendRefusesOfAFieldStandsBesideIt) {
    const auto refuse = [this](const QByteArray& field) {
        enterPasswords("secret", "12345678", "12345678");
        privacy().setEmail("countess@example.org");
        save();
        answer(403, R"({"error":"No.","field":")" + field + "\"}");
    };
    refuse("currentPassword");
    EXPECT_EQ(privacy().currentError(), "No.");
    EXPECT_EQ(privacy().error(), "");
    privacy().setCurrentPassword("another");
    EXPECT_EQ(privacy().currentError(), "");
    refuse("email");
    EXPECT_EQ(privacy().emailError(), "No.");
    refuse("newPassword");
    EXPECT_EQ(privacy().newError(), "No.");
    refuse("shoe size");
    EXPECT_EQ(privacy().error(), "No.");
}

TEST_F(PrivacyEditTest, SavingCanBeGivenUp) {
    enterPasswords("secret", "12345678", "12345678");
    save();
    privacy().save();
    privacy().cancel();
    clock.settle();
    EXPECT_FALSE(privacy().isSaving());
    EXPECT_EQ(privacy().error(), "");
    EXPECT_EQ(privacy().newPassword(), "12345678");
    EXPECT_EQ(transport.count(), 1U);
}

TEST_F(PrivacyEditTest, SigningOutForgetsWhatWasEntered) {
    enterPasswords("secret", "12345678", "12345678");
    state->account().signOut();
    EXPECT_FALSE(privacy().isUnsaved());
    EXPECT_EQ(privacy().currentPassword(), "");
}

TEST_F(PrivacyEditTest, WhatWasEnteredEndsWithTheSession) {
    enterPasswords("secret", "12345678", "12345678");
    privacy().setEmail("countess@example.org");
    expire();
    EXPECT_FALSE(privacy().isUnsaved());
    EXPECT_EQ(privacy().currentPassword() + privacy().newPassword() + privacy().confirmPassword(),
              "");
    signInAs("grace@example.org");
    EXPECT_EQ(privacy().email(), "grace@example.org");
}

TEST_F(PrivacyEditTest, AnotherUserFindsNothingOfTheFormer) {
    enterPasswords("secret", "12345678", "12345678");
    privacy().setEmail("countess@example.org");
    signInAs("grace@example.org");
    EXPECT_EQ(privacy().email(), "grace@example.org");
    EXPECT_EQ(privacy().currentPassword() + privacy().newPassword() + privacy().confirmPassword(),
              "");
    EXPECT_FALSE(privacy().isUnsaved());
}

TEST_F(PrivacyEditTest, AnotherUserOfAnotherProgramFindsNothingOfTheFormer) {
    enterPasswords("secret", "12345678", "12345678");
    privacy().setEmail("countess@example.org");
    state->account().applyProfile("Grace", "Hopper", "grace", "grace@example.org");
    EXPECT_EQ(privacy().email(), "grace@example.org");
    EXPECT_EQ(privacy().currentPassword(), "");
    EXPECT_FALSE(privacy().isUnsaved());
}

} // namespace
} // namespace vorq
