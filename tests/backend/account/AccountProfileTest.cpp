#include "backend/account/AccountProfile.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

TEST(AccountProfileTest, TheDisplayNameFallsThrough) {
    AccountProfile profile;
    EXPECT_EQ(profile.displayName(), u"Account");
    profile.email = "a@b";
    EXPECT_EQ(profile.displayName(), u"a@b");
    profile.username = " ada ";
    EXPECT_EQ(profile.displayName(), u"@ada");
    profile.lastName = " Lovelace";
    EXPECT_EQ(profile.displayName(), u"Lovelace");
    profile.firstName = " Ada ";
    EXPECT_EQ(profile.displayName(), u"Ada Lovelace");
}

TEST(AccountProfileTest, AnAvatarWithoutContentIsNotTheSameAsNone) {
    AccountProfile profile;
    AccountProfile other;
    EXPECT_EQ(profile, other);
    other.image = "";
    EXPECT_FALSE(profile == other);
    profile.image = "";
    EXPECT_EQ(profile, other);
}

} // namespace
} // namespace vorq
