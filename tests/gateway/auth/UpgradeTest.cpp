#include "auth/WebAccounts.h"
#include "doubles/gateway/ManualClock.h"
#include "doubles/gateway/TemporaryFolder.h"
#include "storage/sqlite/SharedStateFile.h"
#include "storage/sqlite/StateFile.h"
#include "support/Secrets.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

/// What a gateway that knew no browsers left behind: one sign-in of this computer's user.
constexpr auto kStateOfVersionTwo = R"(
    CREATE TABLE accounts (
        id INTEGER PRIMARY KEY,
        isLocal INTEGER NOT NULL DEFAULT 0,
        email TEXT NOT NULL UNIQUE COLLATE NOCASE,
        firstName TEXT NOT NULL DEFAULT '',
        lastName TEXT NOT NULL DEFAULT '',
        username TEXT NOT NULL DEFAULT '',
        useCase TEXT NOT NULL DEFAULT '',
        preferredModel TEXT NOT NULL DEFAULT '',
        passwordHash TEXT,
        createdAt INTEGER NOT NULL
    );
    INSERT INTO accounts VALUES(1,1,'ada@localhost','Ada','','ada','','',NULL,1699990000000);
    CREATE TABLE families (
        id INTEGER PRIMARY KEY,
        accountId INTEGER NOT NULL REFERENCES accounts(id) ON DELETE CASCADE,
        createdAt INTEGER NOT NULL
    , latest INTEGER NOT NULL DEFAULT 0, confirmed INTEGER NOT NULL DEFAULT 0);
    INSERT INTO families VALUES(1,1,1699990000000,1,0);
    CREATE TABLE accessTokens (
        hash BLOB PRIMARY KEY,
        familyId INTEGER NOT NULL REFERENCES families(id) ON DELETE CASCADE,
        expiresAt INTEGER NOT NULL
    , generation INTEGER NOT NULL DEFAULT 0) WITHOUT ROWID;
    INSERT INTO accessTokens VALUES(
        X'1e86727c33871cd2fecd5e34448090d26ee2f92193302afd319a02f1c2183cbe',1,1700000600000,1);
    CREATE TABLE refreshTokens (
        hash BLOB PRIMARY KEY,
        familyId INTEGER NOT NULL REFERENCES families(id) ON DELETE CASCADE,
        expiresAt INTEGER NOT NULL,
        generation INTEGER NOT NULL DEFAULT 0, superseded INTEGER NOT NULL DEFAULT 0) WITHOUT ROWID;
    INSERT INTO refreshTokens VALUES(
        X'a58bd86447586886f320774f5090d6d71ad707b31f2e2429bbd3dfc67ed8f9ce',1,1705000000000,1,0);
    CREATE TABLE handoffCodes (
        hash BLOB PRIMARY KEY,
        accountId INTEGER NOT NULL REFERENCES accounts(id) ON DELETE CASCADE,
        expiresAt INTEGER NOT NULL
    ) WITHOUT ROWID;
    CREATE UNIQUE INDEX accountsLocal ON accounts(isLocal) WHERE isLocal = 1;
    CREATE UNIQUE INDEX accountsUsername ON accounts(username) WHERE username <> '';
    CREATE INDEX familiesAccount ON families(accountId);
    CREATE INDEX accessTokensFamily ON accessTokens(familyId);
    CREATE INDEX refreshTokensFamily ON refreshTokens(familyId);
    PRAGMA user_version = 2;
)";

TEST(UpgradeTest, AStateOfBeforeTheBrowsersKeepsItsAccountAndItsSignIn) {
    initSecrets();
    const TemporaryFolder folder;
    const ManualClock clock;
    {
        SqliteDatabase old(stateFile(folder.path()));
        old.execute(kStateOfVersionTwo);
    }
    std::vector<std::string> notices;
    AccountService accounts(
        std::make_unique<SharedStateFile>(
            openState(folder.path(), [&](const std::string& text) { notices.push_back(text); })),
        clock);
    EXPECT_TRUE(notices.empty());
    const std::optional<Identity> identity = accounts.identify("the old access token");
    ASSERT_TRUE(identity.has_value());
    EXPECT_EQ(identity->account.email, "ada@localhost");
    EXPECT_EQ(identity->account.firstName, "Ada");

    WebAccounts web(accounts, clock);
    const std::string secret = web.continueHere("ada", {});
    const std::vector<SignIn> signIns = web.signIns(web.identify(secret).value());
    ASSERT_EQ(signIns.size(), 2U);
    EXPECT_EQ(signIns[1].familyId, 1);
    EXPECT_FALSE(signIns[1].origin.isBrowser);
    EXPECT_EQ(signIns[1].lastUsedAt, 1'699'990'000'000);
    EXPECT_TRUE(accounts.refresh("the old refresh token").signedIn);
}

} // namespace
} // namespace vorq::gateway::testing
