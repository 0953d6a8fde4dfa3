#include "doubles/shell/SettingsFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using AccountCardTest = SettingsFixture;

TEST(Initials, AreOfTheFirstAndTheLastName) {
    EXPECT_EQ(initialsOf("Mira Koskinen"), "MK");
    EXPECT_EQ(initialsOf("  ada   maria byron "), "AB");
    EXPECT_EQ(initialsOf("Plato"), "P");
    EXPECT_EQ(initialsOf("@ada"), "A");
    EXPECT_EQ(initialsOf("élan"), "É");
    EXPECT_EQ(initialsOf(""), "");
    EXPECT_EQ(initialsOf("!!! ???"), "");
}

TEST_F(AccountCardTest, ItShowsWhoIsSignedIn) {
    AccountCard& card = *settings->account();
    EXPECT_EQ(card.name(), "Ada Lovelace");
    EXPECT_EQ(card.email(), "ada@example.org");
    EXPECT_EQ(card.initials(), "AL");
}

TEST_F(AccountCardTest, TheStoredPictureIsDecodedBesideTheProgram) {
    AccountCard& card = *settings->account();
    tools->avatar = jpeg(Qt::blue);
    ASSERT_EQ(state->account().keepProfileImage("whatever the file holds"), "");
    EXPECT_FALSE(card.picture()->isThere()) << "not on this thread";
    ASSERT_TRUE(QTest::qWaitFor([&] { return card.picture()->isThere(); }));
    EXPECT_EQ(tools->asked, QStringList("avatar"));
}

TEST_F(AccountCardTest, AStoredPictureThatIsNoneShowsNothing) {
    AccountCard& card = *settings->account();
    QSignalSpy changed(card.picture(), &AvatarPicture::changed);
    ASSERT_EQ(state->account().keepProfileImage("whatever the file holds"), "");
    ASSERT_TRUE(changed.wait());
    EXPECT_FALSE(card.picture()->isThere());
}

TEST_F(AccountCardTest, SigningOutTakesThePictureAway) {
    AccountCard& card = *settings->account();
    tools->avatar = jpeg(Qt::blue);
    ASSERT_EQ(state->account().keepProfileImage("a picture"), "");
    ASSERT_TRUE(QTest::qWaitFor([&] { return card.picture()->isThere(); }));
    QSignalSpy signedOut(&card, &AccountCard::signedOut);
    card.signOut();
    EXPECT_FALSE(card.picture()->isThere());
    EXPECT_EQ(card.email(), "");
    EXPECT_EQ(signedOut.count(), 1);
    EXPECT_EQ(transport.count(), 0U) << "the screen does not wait for the network";
}

} // namespace
} // namespace vorq
