#include "storage/SignInTable.h"

#include "support/Secrets.h"

namespace vorq::gateway {

std::vector<SignIn> SignInTable::ofAccount(std::int64_t accountId) {
    Statement statement = m_database.prepare(
        "SELECT id, isBrowser, agent, address, createdAt, lastUsedAt FROM families "
        "WHERE accountId = ? ORDER BY lastUsedAt DESC, id DESC");
    statement.bind(1, accountId);
    std::vector<SignIn> signIns;
    while (statement.step()) {
        signIns.push_back({.familyId = statement.integer(0),
                           .origin = {.isBrowser = statement.integer(1) != 0,
                                      .agent = statement.text(2),
                                      .address = statement.text(3)},
                           .createdAt = statement.integer(4),
                           .lastUsedAt = statement.integer(5)});
    }
    return signIns;
}

bool SignInTable::holds(std::int64_t familyId) {
    Statement statement = m_database.prepare("SELECT 1 FROM families WHERE id = ?");
    return statement.bind(1, familyId).step();
}

void SignInTable::noteUse(std::int64_t familyId, std::int64_t nowMs) {
    m_database.prepare("UPDATE families SET lastUsedAt = ? WHERE id = ?")
        .bind(1, nowMs)
        .bind(2, familyId)
        .step();
}

void SignInTable::end(std::int64_t accountId, std::int64_t familyId) {
    m_database.prepare("DELETE FROM families WHERE accountId = ? AND id = ?")
        .bind(1, accountId)
        .bind(2, familyId)
        .step();
}

void SignInTable::endAll(std::int64_t accountId) {
    for (const char* sql : {"DELETE FROM families WHERE accountId = ?",
                            "DELETE FROM handoffCodes WHERE accountId = ?"}) {
        m_database.prepare(sql).bind(1, accountId).step();
    }
}

void SignInTable::addBrowser(std::string_view secret, std::int64_t familyId,
                             std::int64_t expiresAt) {
    m_database.prepare("INSERT INTO browserSessions (hash, familyId, expiresAt) VALUES (?, ?, ?)")
        .bindBlob(1, hashOfSecret(secret))
        .bind(2, familyId)
        .bind(3, expiresAt)
        .step();
}

std::optional<BrowserSession> SignInTable::browser(std::string_view secret, std::int64_t nowMs) {
    Statement statement = m_database.prepare(
        "SELECT families.accountId, families.id, lastUsedAt FROM browserSessions JOIN families "
        "ON families.id = browserSessions.familyId WHERE hash = ? AND expiresAt > ?");
    if (!statement.bindBlob(1, hashOfSecret(secret)).bind(2, nowMs).step()) return std::nullopt;
    return BrowserSession{.owner = {statement.integer(0), statement.integer(1)},
                          .lastUsedAt = statement.integer(2)};
}

} // namespace vorq::gateway
