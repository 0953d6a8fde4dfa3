#include "storage/Schema.h"

#include "support/Filled.h"

#include <array>
#include <stdexcept>
#include <string>

namespace vorq::gateway {
namespace {

// Steps are never changed once released.
constexpr auto kAccountsAndTokens = R"sql(
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
    CREATE UNIQUE INDEX accountsLocal ON accounts(isLocal) WHERE isLocal = 1;
    CREATE UNIQUE INDEX accountsUsername ON accounts(username) WHERE username <> '';

    -- One sign-in on one device: all tokens that descend from it fall together.
    CREATE TABLE families (
        id INTEGER PRIMARY KEY,
        accountId INTEGER NOT NULL REFERENCES accounts(id) ON DELETE CASCADE,
        createdAt INTEGER NOT NULL
    );
    CREATE INDEX familiesAccount ON families(accountId);

    CREATE TABLE accessTokens (
        hash BLOB PRIMARY KEY,
        familyId INTEGER NOT NULL REFERENCES families(id) ON DELETE CASCADE,
        expiresAt INTEGER NOT NULL
    ) WITHOUT ROWID;
    CREATE INDEX accessTokensFamily ON accessTokens(familyId);

    CREATE TABLE refreshTokens (
        hash BLOB PRIMARY KEY,
        familyId INTEGER NOT NULL REFERENCES families(id) ON DELETE CASCADE,
        expiresAt INTEGER NOT NULL,
        usedAt INTEGER
    ) WITHOUT ROWID;
    CREATE INDEX refreshTokensFamily ON refreshTokens(familyId);

    CREATE TABLE handoffCodes (
        hash BLOB PRIMARY KEY,
        accountId INTEGER NOT NULL REFERENCES accounts(id) ON DELETE CASCADE,
        expiresAt INTEGER NOT NULL
    ) WITHOUT ROWID;
    )sql";

constexpr auto kGenerations = R"sql(
    -- Each refresh of a sign-in makes one generation of tokens. The latest one that is known to
    -- have reached its program is confirmed.
    ALTER TABLE families ADD COLUMN latest INTEGER NOT NULL DEFAULT 0;
    ALTER TABLE families ADD COLUMN confirmed INTEGER NOT NULL DEFAULT 0;
    ALTER TABLE accessTokens ADD COLUMN generation INTEGER NOT NULL DEFAULT 0;
    ALTER TABLE refreshTokens ADD COLUMN generation INTEGER NOT NULL DEFAULT 0;
    ALTER TABLE refreshTokens ADD COLUMN superseded INTEGER NOT NULL DEFAULT 0;

    UPDATE refreshTokens SET superseded = 1 WHERE usedAt = -1;
    UPDATE refreshTokens SET generation = ranked.generation FROM (
        SELECT hash, row_number() OVER (
            PARTITION BY familyId ORDER BY usedAt IS NULL, usedAt) AS generation
        FROM refreshTokens) AS ranked
    WHERE refreshTokens.hash = ranked.hash;
    UPDATE families SET
        latest = coalesce(
            (SELECT max(generation) FROM refreshTokens WHERE familyId = families.id), 0),
        confirmed = coalesce(
            (SELECT max(generation) FROM refreshTokens
             WHERE familyId = families.id AND usedAt >= 0), 0);
    ALTER TABLE refreshTokens DROP COLUMN usedAt;
    )sql";

constexpr auto kBrowserSignIns = R"sql(
    -- Where a sign-in comes from, for the list that its owner reads.
    ALTER TABLE families ADD COLUMN isBrowser INTEGER NOT NULL DEFAULT 0;
    ALTER TABLE families ADD COLUMN agent TEXT NOT NULL DEFAULT '';
    ALTER TABLE families ADD COLUMN address TEXT NOT NULL DEFAULT '';
    ALTER TABLE families ADD COLUMN lastUsedAt INTEGER NOT NULL DEFAULT 0;
    UPDATE families SET lastUsedAt = createdAt;

    CREATE TABLE browserSessions (
        hash BLOB PRIMARY KEY,
        familyId INTEGER NOT NULL REFERENCES families(id) ON DELETE CASCADE,
        expiresAt INTEGER NOT NULL
    ) WITHOUT ROWID;
    CREATE INDEX browserSessionsFamily ON browserSessions(familyId);

    -- One that was asked for with an address of nobody belongs to no account.
    CREATE TABLE passwordResets (
        hash BLOB PRIMARY KEY,
        accountId INTEGER REFERENCES accounts(id) ON DELETE CASCADE,
        expiresAt INTEGER NOT NULL
    ) WITHOUT ROWID;
    CREATE INDEX passwordResetsAccount ON passwordResets(accountId);
    )sql";

constexpr auto kSeveralGateways = R"sql(
    -- The generation that was traded last, which was when the sign-in was used last.
    ALTER TABLE families ADD COLUMN traded INTEGER NOT NULL DEFAULT 0;

    -- Attempts that are limited, by a hash of who makes them; until when they count.
    CREATE TABLE attempts (
        hash BLOB PRIMARY KEY,
        countUntil INTEGER NOT NULL
    ) WITHOUT ROWID;
    )sql";

// Entry n brings a file of version n to version n + 1.
constexpr std::array kSteps = {kAccountsAndTokens, kGenerations, kBrowserSignIns, kSeveralGateways};

} // namespace

void migrate(Database& database) {
    constexpr auto newest = static_cast<std::int64_t>(kSteps.size());
    if (database.schemaVersion() == newest) return;
    Transaction transaction(database);
    database.lock(DatabaseLock::schema);
    // Read again inside the transaction: another process may have migrated meanwhile.
    const std::int64_t version = database.schemaVersion();
    if (version > newest) {
        throw std::runtime_error(
            filled("The {} was written by a newer version of vorq-gateway.", database.noun()));
    }
    if (version < 0) {
        throw std::runtime_error(filled("The {} says that it is of version {}, which never was. "
                                        "Move it away to start with a new one.",
                                        database.noun(), version));
    }
    for (std::int64_t step = version; step < newest; ++step)
        database.changeSchema(kSteps.at(static_cast<std::size_t>(step)));
    database.setSchemaVersion(newest);
    transaction.commit();
}

} // namespace vorq::gateway
