#include "storage/TokenTable.h"

#include "support/Filled.h"
#include "support/Secrets.h"

#include <string>

namespace vorq::gateway {

std::int64_t TokenTable::startFamily(std::int64_t accountId, const SignInOrigin& origin,
                                     std::int64_t nowMs) {
    Statement statement =
        m_database.prepare("INSERT INTO families (accountId, createdAt, lastUsedAt, isBrowser, "
                           "agent, address) VALUES (?1, ?2, ?2, ?3, ?4, ?5) RETURNING id");
    statement.bind(1, accountId)
        .bind(2, nowMs)
        .bind(3, std::int64_t{origin.isBrowser ? 1 : 0})
        .bind(4, origin.agent)
        .bind(5, origin.address)
        .step();
    return statement.integer(0);
}

std::int64_t TokenTable::startGeneration(std::int64_t familyId) {
    Statement statement =
        m_database.prepare("UPDATE families SET latest = latest + 1 WHERE id = ? RETURNING latest");
    statement.bind(1, familyId).step();
    const std::int64_t generation = statement.integer(0);
    statement.step();
    return generation;
}

void TokenTable::add(const char* sql, std::string_view secret, std::int64_t familyId,
                     std::int64_t generation, std::int64_t expiresAt) {
    m_database.prepare(sql)
        .bindBlob(1, hashOfSecret(secret))
        .bind(2, familyId)
        .bind(3, generation)
        .bind(4, expiresAt)
        .step();
}

void TokenTable::addAccess(std::string_view secret, std::int64_t familyId, std::int64_t generation,
                           std::int64_t expiresAt) {
    add("INSERT INTO accessTokens (hash, familyId, generation, expiresAt) VALUES (?, ?, ?, ?)",
        secret, familyId, generation, expiresAt);
}

void TokenTable::addRefresh(std::string_view secret, std::int64_t familyId, std::int64_t generation,
                            std::int64_t expiresAt) {
    add("INSERT INTO refreshTokens (hash, familyId, generation, expiresAt) VALUES (?, ?, ?, ?)",
        secret, familyId, generation, expiresAt);
}

void TokenTable::addHandoff(std::string_view secret, std::int64_t accountId,
                            std::int64_t expiresAt) {
    m_database.prepare("INSERT INTO handoffCodes (hash, accountId, expiresAt) VALUES (?, ?, ?)")
        .bindBlob(1, hashOfSecret(secret))
        .bind(2, accountId)
        .bind(3, expiresAt)
        .step();
}

std::optional<AccessTokenRow> TokenTable::access(std::string_view secret, std::int64_t nowMs) {
    Statement statement = m_database.prepare(
        "SELECT families.accountId, families.id, generation, latest, confirmed FROM accessTokens "
        "JOIN families ON families.id = accessTokens.familyId WHERE hash = ? AND expiresAt > ?");
    if (!statement.bindBlob(1, hashOfSecret(secret)).bind(2, nowMs).step()) return std::nullopt;
    return AccessTokenRow{
        .owner = {statement.integer(0), statement.integer(1)},
        .age = {statement.integer(2), statement.integer(3), statement.integer(4)}};
}

std::optional<RefreshTokenRow> TokenTable::refresh(std::string_view secret) {
    Statement statement = m_database.prepare(
        "SELECT families.accountId, families.id, generation, latest, confirmed, expiresAt, "
        "superseded, traded, lastUsedAt FROM refreshTokens JOIN families ON families.id = "
        "refreshTokens.familyId "
        "WHERE hash = ?");
    if (!statement.bindBlob(1, hashOfSecret(secret)).step()) return std::nullopt;
    return RefreshTokenRow{
        .owner = {statement.integer(0), statement.integer(1)},
        .age = {statement.integer(2), statement.integer(3), statement.integer(4)},
        .expiresAt = statement.integer(5),
        .isSuperseded = statement.integer(6) != 0,
        .traded = statement.integer(7),
        .tradedAt = statement.integer(8)};
}

void TokenTable::confirm(std::int64_t familyId, std::int64_t generation) {
    m_database.prepare("UPDATE families SET confirmed = ?1 WHERE id = ?2 AND confirmed < ?1")
        .bind(1, generation)
        .bind(2, familyId)
        .step();
}

void TokenTable::noteTrade(std::int64_t familyId, std::int64_t generation, std::int64_t nowMs) {
    m_database
        .prepare("UPDATE families SET traded = ?1, lastUsedAt = ?2, "
                 "confirmed = CASE WHEN confirmed < ?1 THEN ?1 ELSE confirmed END WHERE id = ?3")
        .bind(1, generation)
        .bind(2, nowMs)
        .bind(3, familyId)
        .step();
}

void TokenTable::supersedeAfter(std::int64_t familyId, std::int64_t generation) {
    for (const char* sql :
         {"UPDATE refreshTokens SET superseded = 1 WHERE familyId = ? AND generation > ?",
          "DELETE FROM accessTokens WHERE familyId = ? AND generation > ?"}) {
        m_database.prepare(sql).bind(1, familyId).bind(2, generation).step();
    }
}

std::optional<std::int64_t> TokenTable::ownerOfHandoff(std::string_view secret) {
    Statement statement = m_database.prepare("SELECT accountId FROM handoffCodes WHERE hash = ?");
    if (!statement.bindBlob(1, hashOfSecret(secret)).step()) return std::nullopt;
    return statement.integer(0);
}

std::optional<std::int64_t> TokenTable::takeHandoff(std::string_view secret, std::int64_t nowMs,
                                                    std::int64_t lifeMs) {
    Statement statement = m_database.prepare(
        "DELETE FROM handoffCodes WHERE hash = ? RETURNING accountId, expiresAt");
    if (!statement.bindBlob(1, hashOfSecret(secret)).step()) return std::nullopt;
    const std::int64_t accountId = statement.integer(0);
    const std::int64_t left = statement.integer(1) - nowMs;
    const bool valid = left > 0 && left <= lifeMs;
    statement.step();
    return valid ? std::optional(accountId) : std::nullopt;
}

void TokenTable::dropFamily(std::int64_t familyId) {
    m_database.prepare("DELETE FROM families WHERE id = ?").bind(1, familyId).step();
}

void TokenTable::dropOtherFamilies(const TokenOwner& kept) {
    m_database.prepare("DELETE FROM families WHERE accountId = ? AND id <> ?")
        .bind(1, kept.accountId)
        .bind(2, kept.familyId)
        .step();
    m_database.prepare("DELETE FROM handoffCodes WHERE accountId = ?")
        .bind(1, kept.accountId)
        .step();
}

void TokenTable::dropExpired(std::int64_t nowMs) {
    const std::string locking(m_database.skippingLocked());
    for (const char* table :
         {"accessTokens", "refreshTokens", "handoffCodes", "browserSessions", "passwordResets"}) {
        m_database
            .prepare(filled("DELETE FROM {} WHERE hash IN (SELECT hash FROM {} "
                            "WHERE expiresAt <= ?{})",
                            table, table, locking))
            .bind(1, nowMs)
            .step();
    }
    m_database
        .prepare(filled("DELETE FROM families WHERE id IN (SELECT id FROM families "
                        "WHERE id NOT IN (SELECT familyId FROM refreshTokens) "
                        "AND id NOT IN (SELECT familyId FROM accessTokens) "
                        "AND id NOT IN (SELECT familyId FROM browserSessions){})",
                        locking))
        .step();
}

} // namespace vorq::gateway
