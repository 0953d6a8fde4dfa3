#include "storage/AttemptTable.h"

#include "support/Filled.h"
#include "support/Secrets.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

constexpr std::int64_t kMinute = 60'000;

std::int64_t shareOf(int perMinute) {
    return std::max<std::int64_t>(1, kMinute / perMinute);
}

/// How far ahead the attempts may count for another one to be allowed.
std::int64_t roomOf(int perMinute) {
    return kMinute - shareOf(perMinute);
}

} // namespace

bool AttemptTable::take(std::string_view key, int perMinute, std::int64_t nowMs) {
    Statement statement = m_database.prepare(
        "INSERT INTO attempts (hash, countUntil) VALUES (?1, ?2) "
        "ON CONFLICT (hash) DO UPDATE SET countUntil = ?3 + "
        "CASE WHEN attempts.countUntil < ?4 THEN ?4 ELSE attempts.countUntil END "
        "WHERE attempts.countUntil <= ?5 RETURNING 1");
    const bool isAllowed = statement.bindBlob(1, hashOfSecret(key))
                               .bind(2, nowMs + shareOf(perMinute))
                               .bind(3, shareOf(perMinute))
                               .bind(4, nowMs)
                               .bind(5, nowMs + roomOf(perMinute))
                               .step();
    if (isAllowed) statement.step();
    return isAllowed;
}

void AttemptTable::giveBack(std::string_view key, int perMinute) {
    m_database.prepare("UPDATE attempts SET countUntil = countUntil - ?2 WHERE hash = ?1")
        .bindBlob(1, hashOfSecret(key))
        .bind(2, shareOf(perMinute))
        .step();
}

std::int64_t AttemptTable::msToWait(std::string_view key, int perMinute, std::int64_t nowMs) {
    const std::string hash = hashOfSecret(key);
    // No attempts count for longer than a minute, unless somebody has set the clock back.
    m_database.prepare("UPDATE attempts SET countUntil = ?2 WHERE hash = ?1 AND countUntil > ?2")
        .bindBlob(1, hash)
        .bind(2, nowMs + kMinute)
        .step();
    Statement statement = m_database.prepare("SELECT countUntil FROM attempts WHERE hash = ?");
    if (!statement.bindBlob(1, hash).step()) return 0;
    return std::max<std::int64_t>(0, statement.integer(0) - nowMs - roomOf(perMinute));
}

void AttemptTable::dropExpired(std::int64_t nowMs) {
    m_database
        .prepare(filled("DELETE FROM attempts WHERE hash IN (SELECT hash FROM attempts "
                        "WHERE countUntil <= ?{})",
                        m_database.skippingLocked()))
        .bind(1, nowMs)
        .step();
}

} // namespace vorq::gateway
