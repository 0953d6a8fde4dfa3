#include "storage/TokenTable.h"

#include "support/Secrets.h"

namespace vorq::gateway {

std::int64_t TokenTable::startFamily(std::int64_t accountId, std::int64_t nowMs) {
    database_.prepare("INSERT INTO families (accountId, createdAt) VALUES (?, ?)")
        .bind(1, accountId)
        .bind(2, nowMs)
        .step();
    return database_.lastInsertId();
}

void TokenTable::add(const char* sql, std::string_view secret, std::int64_t owner,
                     std::int64_t expiresAt) {
    database_.prepare(sql)
        .bindBlob(1, hashOfSecret(secret))
        .bind(2, owner)
        .bind(3, expiresAt)
        .step();
}

void TokenTable::addAccess(std::string_view secret, std::int64_t familyId, std::int64_t expiresAt) {
    add("INSERT INTO accessTokens (hash, familyId, expiresAt) VALUES (?, ?, ?)", secret, familyId,
        expiresAt);
}

void TokenTable::addRefresh(std::string_view secret, std::int64_t familyId,
                            std::int64_t expiresAt) {
    add("INSERT INTO refreshTokens (hash, familyId, expiresAt) VALUES (?, ?, ?)", secret, familyId,
        expiresAt);
}

void TokenTable::addHandoff(std::string_view secret, std::int64_t accountId,
                            std::int64_t expiresAt) {
    add("INSERT INTO handoffCodes (hash, accountId, expiresAt) VALUES (?, ?, ?)", secret, accountId,
        expiresAt);
}

std::optional<TokenOwner> TokenTable::accessOwner(std::string_view secret, std::int64_t nowMs) {
    Statement statement = database_.prepare(
        "SELECT families.accountId, families.id FROM accessTokens JOIN families "
        "ON families.id = accessTokens.familyId WHERE hash = ? AND expiresAt > ?");
    if (!statement.bindBlob(1, hashOfSecret(secret)).bind(2, nowMs).step()) return std::nullopt;
    return TokenOwner{.accountId = statement.integer(0), .familyId = statement.integer(1)};
}

std::optional<RefreshTokenRow> TokenTable::refresh(std::string_view secret) {
    Statement statement = database_.prepare(
        "SELECT families.accountId, families.id, expiresAt, usedAt FROM refreshTokens "
        "JOIN families ON families.id = refreshTokens.familyId WHERE hash = ?");
    if (!statement.bindBlob(1, hashOfSecret(secret)).step()) return std::nullopt;
    RefreshTokenRow row{.owner = {statement.integer(0), statement.integer(1)},
                        .expiresAt = statement.integer(2),
                        .usedAt = std::nullopt};
    if (statement.optionalText(3)) row.usedAt = statement.integer(3);
    return row;
}

void TokenTable::markRefreshUsed(std::string_view secret, std::int64_t nowMs) {
    database_.prepare("UPDATE refreshTokens SET usedAt = ? WHERE hash = ?")
        .bind(1, nowMs)
        .bindBlob(2, hashOfSecret(secret))
        .step();
}

bool TokenTable::supersedeSuccessors(std::string_view secret, const RefreshTokenRow& row) {
    if (row.usedAt == superseded) return false;
    Statement laterUse = database_.prepare(
        "SELECT 1 FROM refreshTokens WHERE familyId = ? AND usedAt >= ? AND hash <> ?");
    laterUse.bind(1, row.owner.familyId).bind(2, row.usedAt.value_or(0));
    if (laterUse.bindBlob(3, hashOfSecret(secret)).step()) return false;
    database_.prepare("UPDATE refreshTokens SET usedAt = ? WHERE familyId = ? AND usedAt IS NULL")
        .bind(1, superseded)
        .bind(2, row.owner.familyId)
        .step();
    return true;
}

std::optional<std::int64_t> TokenTable::takeHandoff(std::string_view secret, std::int64_t nowMs) {
    Statement statement =
        database_.prepare("DELETE FROM handoffCodes WHERE hash = ? RETURNING accountId, expiresAt");
    if (!statement.bindBlob(1, hashOfSecret(secret)).step()) return std::nullopt;
    const std::int64_t accountId = statement.integer(0);
    const bool valid = statement.integer(1) > nowMs;
    statement.step();
    return valid ? std::optional(accountId) : std::nullopt;
}

void TokenTable::dropFamily(std::int64_t familyId) {
    database_.prepare("DELETE FROM families WHERE id = ?").bind(1, familyId).step();
}

void TokenTable::dropOtherFamilies(const TokenOwner& kept) {
    database_.prepare("DELETE FROM families WHERE accountId = ? AND id <> ?")
        .bind(1, kept.accountId)
        .bind(2, kept.familyId)
        .step();
}

void TokenTable::dropExpired(std::int64_t nowMs) {
    for (const char* sql : {"DELETE FROM accessTokens WHERE expiresAt <= ?",
                            "DELETE FROM refreshTokens WHERE expiresAt <= ?",
                            "DELETE FROM handoffCodes WHERE expiresAt <= ?"}) {
        database_.prepare(sql).bind(1, nowMs).step();
    }
    database_.execute("DELETE FROM families WHERE id NOT IN (SELECT familyId FROM refreshTokens) "
                      "AND id NOT IN (SELECT familyId FROM accessTokens)");
}

} // namespace vorq::gateway
