#include "storage/ResetTable.h"

#include "support/Secrets.h"

namespace vorq::gateway {

void ResetTable::add(std::string_view secret, std::optional<std::int64_t> accountId,
                     std::int64_t expiresAt) {
    Statement statement = m_database.prepare(
        "INSERT INTO passwordResets (hash, accountId, expiresAt) VALUES (?, ?, ?)");
    statement.bindBlob(1, hashOfSecret(secret));
    if (accountId) {
        statement.bind(2, *accountId);
    } else {
        statement.bindNull(2);
    }
    statement.bind(3, expiresAt).step();
}

std::optional<std::int64_t> ResetTable::accountOf(std::string_view secret, std::int64_t nowMs,
                                                  std::int64_t lifeMs) {
    Statement statement = m_database.prepare("SELECT accountId FROM passwordResets WHERE hash = ? "
                                             "AND accountId IS NOT NULL AND expiresAt > ? "
                                             "AND expiresAt <= ?");
    statement.bindBlob(1, hashOfSecret(secret)).bind(2, nowMs).bind(3, nowMs + lifeMs);
    if (!statement.step()) return std::nullopt;
    return statement.integer(0);
}

void ResetTable::dropOf(std::int64_t accountId) {
    m_database.prepare("DELETE FROM passwordResets WHERE accountId = ?").bind(1, accountId).step();
}

} // namespace vorq::gateway
