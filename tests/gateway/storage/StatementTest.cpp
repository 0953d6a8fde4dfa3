#include "doubles/gateway/TemporaryFolder.h"
#include "storage/sqlite/SqliteDatabase.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

constexpr auto kInsert = "INSERT INTO words (word, note) VALUES (?, ?)";
constexpr auto kNoteOf = "SELECT note FROM words WHERE word = ?";

class StatementTest : public ::testing::Test {
  protected:
    StatementTest() { database.execute("CREATE TABLE words (word TEXT UNIQUE, note TEXT)"); }

    static void insert(Database& into, const std::string& word, const std::string& note) {
        into.prepare(kInsert).bind(1, word).bind(2, note).step();
    }
    static std::string noteOf(Database& in, const std::string& word) {
        Statement statement = in.prepare(kNoteOf);
        return statement.bind(1, word).step() ? statement.text(0) : "none";
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "words.sqlite3";
    SqliteDatabase database{file};
};

TEST_F(StatementTest, TheSameTextServesAgainWithOtherValues) {
    insert(database, "one", "first");
    insert(database, "two", "second");
    EXPECT_EQ(noteOf(database, "two"), "second");
    EXPECT_EQ(noteOf(database, "one"), "first");
    EXPECT_EQ(noteOf(database, "three"), "none");
}

TEST_F(StatementTest, ValuesOfTheLastTimeAreForgotten) {
    insert(database, "one", "first");
    database.prepare(kInsert).bind(1, "two").step();
    Statement statement = database.prepare(kNoteOf);
    ASSERT_TRUE(statement.bind(1, "two").step());
    EXPECT_EQ(statement.optionalText(0), std::nullopt);
}

TEST_F(StatementTest, TwoOfTheSameTextDoNotDisturbEachOther) {
    insert(database, "one", "first");
    insert(database, "two", "second");
    constexpr auto all = "SELECT word FROM words ORDER BY word";
    Statement outer = database.prepare(all);
    ASSERT_TRUE(outer.step());
    {
        Statement inner = database.prepare(all);
        ASSERT_TRUE(inner.step());
        EXPECT_EQ(inner.text(0), "one");
    }
    ASSERT_TRUE(outer.step());
    EXPECT_EQ(outer.text(0), "two");
    EXPECT_FALSE(outer.step());
}

TEST_F(StatementTest, OneThatFailedServesAgain) {
    insert(database, "one", "first");
    EXPECT_THROW(insert(database, "one", "again"), DatabaseError);
    insert(database, "two", "second");
    EXPECT_EQ(noteOf(database, "two"), "second");
}

TEST_F(StatementTest, OneThatRestsHoldsNoOldStateOfTheFile) {
    insert(database, "one", "first");
    SqliteDatabase other = database.another();
    ASSERT_EQ(noteOf(other, "one"), "first");
    database.execute("UPDATE words SET note = 'changed'");
    EXPECT_EQ(noteOf(other, "one"), "changed");
    Statement checkpoint = database.prepare("PRAGMA wal_checkpoint(TRUNCATE)");
    ASSERT_TRUE(checkpoint.step());
    EXPECT_EQ(checkpoint.integer(0), 0) << "a reader is in the way";
}

TEST_F(StatementTest, AChangedSchemaIsFollowed) {
    insert(database, "one", "first");
    ASSERT_EQ(noteOf(database, "one"), "first");
    SqliteDatabase other = database.another();
    other.execute("ALTER TABLE words ADD COLUMN extra TEXT; CREATE INDEX notes ON words (note)");
    EXPECT_EQ(noteOf(database, "one"), "first");
    other.execute("DROP TABLE words");
    EXPECT_THROW(noteOf(database, "one"), DatabaseError);
    other.execute("CREATE TABLE words (note TEXT, word TEXT UNIQUE)");
    insert(database, "one", "anew");
    EXPECT_EQ(noteOf(database, "one"), "anew");
}

TEST_F(StatementTest, StatementsStayWithTheirOwnFile) {
    insert(database, "one", "first");
    ASSERT_EQ(noteOf(database, "one"), "first");
    SqliteDatabase other(folder.path() / "other.sqlite3");
    other.execute("CREATE TABLE words (word TEXT UNIQUE, note TEXT)");
    insert(other, "one", "elsewhere");
    database = std::move(other);
    EXPECT_EQ(noteOf(database, "one"), "elsewhere");
}

TEST_F(StatementTest, ATextThatIsNoStatementIsAnError) {
    EXPECT_THROW(static_cast<void>(database.prepare("SELEKT 1")), DatabaseError);
    EXPECT_THROW(static_cast<void>(database.prepare("SELECT 1 FROM nowhere")), DatabaseError);
}

TEST_F(StatementTest, MoreTextsThanAreKeptStillWork) {
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 200; ++i) {
            Statement statement = database.prepare("SELECT " + std::to_string(i));
            ASSERT_TRUE(statement.step());
            ASSERT_EQ(statement.integer(0), i);
        }
    }
}

} // namespace
} // namespace vorq::gateway::testing
