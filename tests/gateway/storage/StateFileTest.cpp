#include "storage/sqlite/StateFile.h"
#include "doubles/gateway/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <vector>

namespace vorq::gateway::testing {
namespace {

namespace fs = std::filesystem;

class StateFileTest : public ::testing::Test {
  protected:
    SqliteDatabase open() {
        return openState(folder, [this](const std::string& text) { notices.push_back(text); });
    }
    std::int64_t number(Database& database, const std::string& sql) {
        Statement statement = database.prepare(sql);
        statement.step();
        return statement.integer(0);
    }

    TemporaryFolder temporary;
    fs::path folder = temporary.path() / "share" / "Vorq";
    std::vector<std::string> notices;
};

TEST_F(StateFileTest, FolderAndFileBelongToTheUserAlone) {
    const SqliteDatabase database = open();
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        EXPECT_EQ(entry.status().permissions(), fs::perms::owner_read | fs::perms::owner_write)
            << entry.path();
    }
}

TEST_F(StateFileTest, AFolderThatWasThereKeepsItsMode) {
    fs::create_directories(folder);
    for (const fs::perms mode : {fs::perms(0755), fs::perms(01777)}) {
        fs::permissions(folder, mode);
        const SqliteDatabase database = open();
        EXPECT_EQ(fs::status(folder).permissions(), mode);
        EXPECT_EQ(fs::status(stateFile(folder)).permissions(), fs::perms(0600));
        EXPECT_TRUE(notices.empty());
    }
}

TEST_F(StateFileTest, AFolderInWhichOthersCanReplaceTheFileIsPointedOut) {
    fs::create_directories(folder);
    fs::permissions(folder, fs::perms::all);
    const SqliteDatabase database = open();
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_NE(notices[0].find(folder.string()), std::string::npos);
}

TEST_F(StateFileTest, WritesAheadAndToTheDisk) {
    SqliteDatabase database = open();
    Statement journal = database.prepare("PRAGMA journal_mode");
    journal.step();
    EXPECT_EQ(journal.text(0), "wal");
    EXPECT_EQ(number(database, "PRAGMA synchronous"), 2);
    EXPECT_EQ(number(database, "PRAGMA foreign_keys"), 1);
}

TEST_F(StateFileTest, OpensAgainWithWhatWasStored) {
    {
        SqliteDatabase database = open();
        database.execute("INSERT INTO accounts (email, createdAt) VALUES ('a@b', 1)");
    }
    SqliteDatabase database = open();
    EXPECT_EQ(number(database, "SELECT count(*) FROM accounts"), 1);
    EXPECT_EQ(number(database, "PRAGMA user_version"), 4);
    EXPECT_TRUE(notices.empty());
}

TEST_F(StateFileTest, SignInsOfTheFirstVersionKeepTheirOrder) {
    fs::create_directories(folder);
    {
        SqliteDatabase old(stateFile(folder));
        old.execute(R"(
            CREATE TABLE accounts (id INTEGER PRIMARY KEY, isLocal INTEGER, email TEXT);
            CREATE TABLE families (id INTEGER PRIMARY KEY, accountId INTEGER, createdAt INTEGER);
            CREATE TABLE accessTokens (hash BLOB PRIMARY KEY, familyId INTEGER, expiresAt INTEGER)
                WITHOUT ROWID;
            CREATE TABLE refreshTokens (hash BLOB PRIMARY KEY, familyId INTEGER, expiresAt INTEGER,
                usedAt INTEGER) WITHOUT ROWID;
            INSERT INTO families VALUES (1, 1, 0), (2, 1, 0), (3, 1, 0);
            INSERT INTO refreshTokens VALUES ('new', 1, 9, NULL), ('old', 1, 9, 100),
                ('older', 1, 9, 50), ('lost', 1, 9, -1), ('only', 2, 9, NULL);
            PRAGMA user_version = 1;
        )");
    }
    SqliteDatabase database = open();
    const auto generation = [&](const std::string& hash) {
        return number(database, "SELECT generation FROM refreshTokens WHERE hash = '" + hash + "'");
    };
    EXPECT_LT(generation("older"), generation("old"));
    EXPECT_LT(generation("old"), generation("new"));
    EXPECT_EQ(number(database, "SELECT latest FROM families WHERE id = 1"), generation("new"));
    EXPECT_EQ(number(database, "SELECT confirmed FROM families WHERE id = 1"), generation("old"));
    EXPECT_EQ(number(database, "SELECT count(*) FROM refreshTokens WHERE superseded = 1"), 1);
    EXPECT_EQ(number(database, "SELECT latest FROM families WHERE id = 2"), generation("only"));
    EXPECT_EQ(number(database, "SELECT latest FROM families WHERE id = 3"), 0);
}

TEST_F(StateFileTest, AFileThatIsNoDatabaseIsKeptBesideAndSaid) {
    fs::create_directories(folder);
    const std::string garbage(5000, 'x');
    writeFile(stateFile(folder), garbage);
    SqliteDatabase database = open();
    EXPECT_EQ(number(database, "SELECT count(*) FROM accounts"), 0);
    EXPECT_EQ(readFile(stateFile(folder).string() + ".damaged-1"), garbage);
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_NE(notices[0].find("damaged-1"), std::string::npos);
}

TEST_F(StateFileTest, ADamagedPageIsNoticed) {
    {
        SqliteDatabase database = open();
        for (int i = 0; i < 400; ++i) {
            database.prepare("INSERT INTO accounts (email, createdAt) VALUES (?, 1)")
                .bind(1, std::to_string(i) + std::string(200, 'x') + "@b")
                .step();
        }
        database.execute("PRAGMA wal_checkpoint(TRUNCATE)");
    }
    std::string bytes = readFile(stateFile(folder));
    ASSERT_GT(bytes.size(), 40'000U);
    // All pages but the first, so that the file still looks like a database.
    for (std::size_t i = 4096; i < bytes.size(); ++i)
        bytes[i] = '\x5A';
    writeFile(stateFile(folder), bytes);
    SqliteDatabase database = open();
    EXPECT_EQ(number(database, "SELECT count(*) FROM accounts"), 0);
    EXPECT_EQ(notices.size(), 1U);
}

TEST_F(StateFileTest, ASecondDamagedFileDoesNotOverwriteTheFirst) {
    for (const char* content :
         {"first damaged file, long enough", "second damaged file, the same"}) {
        fs::create_directories(folder);
        fs::remove(stateFile(folder).string() + "-wal");
        writeFile(stateFile(folder), content);
        const SqliteDatabase database = open();
    }
    EXPECT_EQ(readFile(stateFile(folder).string() + ".damaged-1").substr(0, 5), "first");
    EXPECT_EQ(readFile(stateFile(folder).string() + ".damaged-2").substr(0, 6), "second");
}

TEST_F(StateFileTest, AFileOfANewerVersionIsLeftAlone) {
    {
        SqliteDatabase database = open();
        database.execute("PRAGMA user_version = 99");
    }
    EXPECT_THROW(open(), std::runtime_error);
    EXPECT_TRUE(notices.empty());
    EXPECT_FALSE(fs::exists(stateFile(folder).string() + ".damaged-1"));
}

TEST_F(StateFileTest, AVersionThatNeverWasIsSaidAndTheFileLeftAlone) {
    {
        SqliteDatabase database = open();
        database.execute("PRAGMA user_version = -1");
    }
    try {
        static_cast<void>(open());
        FAIL() << "opened it";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("version -1"), std::string::npos) << error.what();
    }
    EXPECT_FALSE(fs::exists(stateFile(folder).string() + ".damaged-1"));
}

TEST_F(StateFileTest, AFolderThatCannotBeMadeIsAnErrorWithItsName) {
    writeFile(temporary.path() / "share", "a file in the way");
    try {
        const SqliteDatabase database = open();
        FAIL() << "opened a state file below a file";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find(folder.string()), std::string::npos);
    }
}

TEST_F(StateFileTest, AnUncommittedTransactionLeavesNothing) {
    SqliteDatabase database = open();
    {
        const Transaction transaction(database);
        database.execute("INSERT INTO accounts (email, createdAt) VALUES ('a@b', 1)");
    }
    EXPECT_EQ(number(database, "SELECT count(*) FROM accounts"), 0);
}

} // namespace
} // namespace vorq::gateway::testing
