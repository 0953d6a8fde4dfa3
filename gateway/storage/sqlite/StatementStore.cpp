#include "storage/sqlite/StatementStore.h"

#include <sqlite3.h>

#include <utility>

namespace vorq::gateway {

StatementStore::~StatementStore() {
    for (const auto& [sql, statement] : m_resting)
        sqlite3_finalize(statement);
}

sqlite3_stmt* StatementStore::lend(std::string_view sql) {
    const auto entry = m_resting.find(sql);
    if (entry != m_resting.end() && entry->second != nullptr)
        return std::exchange(entry->second, nullptr);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v3(m_connection, sql.data(), static_cast<int>(sql.size()),
                       SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (statement != nullptr && entry == m_resting.end() && m_resting.size() < kMost)
        m_resting.emplace(sql, nullptr);
    return statement;
}

void StatementStore::giveBack(sqlite3_stmt* statement) {
    // What went wrong with it was said when it ran.
    static_cast<void>(sqlite3_reset(statement));
    sqlite3_clear_bindings(statement);
    const auto entry = m_resting.find(std::string_view(sqlite3_sql(statement)));
    if (entry != m_resting.end() && entry->second == nullptr) {
        entry->second = statement;
    } else {
        sqlite3_finalize(statement);
    }
}

} // namespace vorq::gateway
