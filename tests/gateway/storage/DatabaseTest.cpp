#include "doubles/gateway/TestState.h"
#include "storage/AccountTable.h"
#include "storage/Schema.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <vector>

namespace vorq::gateway::testing {
namespace {

using namespace std::chrono_literals;

/// What every kind of database has to keep.
class DatabaseTest : public ::testing::TestWithParam<StateKind> {
  protected:
    Account added(const std::string& email) {
        Account account;
        account.email = email;
        auto turn = database->write();
        AccountTable(turn.database()).insert(account, 1);
        turn.commit();
        return account;
    }
    std::optional<Account> found(const std::string& email) {
        return database->read([&](Database& in) { return AccountTable(in).byEmail(email); });
    }

    TestState state{GetParam()};
    std::unique_ptr<SharedDatabase> database = state.open();
};

INSTANTIATE_TEST_SUITE_P(States, DatabaseTest, kBothStates, nameOfState);

TEST_P(DatabaseTest, WhatWasStoredComesBackAsItWas) {
    Account account{.email = "ada@example.org",
                    .firstName = "Ada 👋 ' \" ; --",
                    .lastName = "line\nline\ttab",
                    .username = "ada",
                    .useCase = {},
                    .preferredModel = "a/b",
                    .passwordHash = std::nullopt};
    auto turn = database->write();
    AccountTable(turn.database()).insert(account, 1'700'000'000'000);
    turn.commit();
    EXPECT_GT(account.id, 0);
    EXPECT_EQ(found("ada@example.org"), account);
    EXPECT_EQ(found("ADA@Example.ORG"), account) << "in any case of its letters";
    EXPECT_EQ(found("eve@example.org"), std::nullopt);
}

TEST_P(DatabaseTest, NothingIsNotAnEmptyText) {
    Account account = added("ada@example.org");
    EXPECT_EQ(found("ada@example.org")->passwordHash, std::nullopt);
    account.passwordHash = "";
    auto turn = database->write();
    AccountTable(turn.database()).update(account);
    turn.commit();
    EXPECT_EQ(found("ada@example.org")->passwordHash, "");
}

TEST_P(DatabaseTest, TextsThatAreNoneAreStoredAllTheSame) {
    Account account = added("ada@example.org");
    account.firstName = std::string("a\0b", 3);
    account.lastName = "\xFF\xFE \xC3";
    auto turn = database->write();
    AccountTable(turn.database()).update(account);
    turn.commit();
    EXPECT_TRUE(found("ada@example.org")->firstName.starts_with("a"));
    EXPECT_EQ(found("ada@example.org")->id, account.id);
}

TEST_P(DatabaseTest, WhatIsNotCommittedNeverWas) {
    {
        auto turn = database->write();
        Account account;
        account.email = "ada@example.org";
        AccountTable(turn.database()).insert(account, 1);
    }
    EXPECT_EQ(found("ada@example.org"), std::nullopt);
    EXPECT_GT(added("ada@example.org").id, 0);
}

TEST_P(DatabaseTest, AStatementThatFailsTakesItsTransactionWithIt) {
    added("ada@example.org");
    const auto doubled = [this] {
        auto turn = database->write();
        Account first;
        first.email = "eve@example.org";
        AccountTable(turn.database()).insert(first, 1);
        Account second;
        second.email = "ada@example.org";
        AccountTable(turn.database()).insert(second, 1);
        turn.commit();
    };
    EXPECT_THROW(doubled(), DatabaseError);
    EXPECT_EQ(found("eve@example.org"), std::nullopt);
    EXPECT_GT(added("eve@example.org").id, 0) << "and the next one is none the worse";
}

TEST_P(DatabaseTest, AnotherGatewaySeesAtOnceWhatWasCommitted) {
    const auto other = state.open();
    const Account account = added("ada@example.org");
    const auto seen = other->read([&](Database& in) { return AccountTable(in).byId(account.id); });
    EXPECT_EQ(seen, account);
}

TEST_P(DatabaseTest, OfTwoThatHoldALockOneWaitsAndSeesWhatTheOtherDid) {
    const Account account = added("ada@example.org");
    const auto other = state.open();
    constexpr std::size_t rounds = 20;
    const auto count = [&](SharedDatabase& with) {
        for (std::size_t i = 0; i < rounds; ++i) {
            auto turn = with.write();
            turn.lock(DatabaseLock::account(account.id));
            Account changed = AccountTable(turn.database()).byId(account.id).value();
            changed.firstName += 'x';
            AccountTable(turn.database()).update(changed);
            turn.commit();
        }
    };
    std::thread thread([&] { count(*other); });
    count(*database);
    thread.join();
    EXPECT_EQ(found("ada@example.org")->firstName, std::string(2 * rounds, 'x'));
}

TEST_P(DatabaseTest, ManyThreadsReadAndWriteAtOnce) {
    std::vector<std::future<void>> all;
    all.reserve(24);
    for (int i = 0; i < 24; ++i) {
        all.push_back(std::async(std::launch::async, [this, i] {
            const std::string email = std::to_string(i) + "@example.org";
            added(email);
            EXPECT_TRUE(found(email).has_value());
        }));
    }
    for (auto& each : all)
        EXPECT_NO_THROW(each.get());
}

TEST_P(DatabaseTest, ADatabaseOfANewerVersionIsLeftAlone) {
    {
        auto turn = database->write();
        turn.database().setSchemaVersion(99);
        turn.commit();
    }
    try {
        static_cast<void>(state.open());
        FAIL() << "opened it";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("newer version"), std::string::npos)
            << error.what();
    }
}

TEST_P(DatabaseTest, GatewaysThatStartAtOnceMakeTheTablesOnce) {
    const TestState fresh(GetParam());
    // Of a file the folder is made first.
    if (!fresh.isOnServer()) static_cast<void>(fresh.open());
    std::vector<std::future<void>> all;
    all.reserve(4);
    for (int i = 0; i < 4; ++i)
        all.push_back(std::async(std::launch::async, [&] { static_cast<void>(fresh.open()); }));
    for (auto& each : all)
        EXPECT_NO_THROW(each.get());
}

} // namespace
} // namespace vorq::gateway::testing
