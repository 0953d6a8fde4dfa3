#include "storage/StatementStore.h"

#include <sqlite3.h>

#include <utility>

namespace vorq::gateway {

StatementStore::~StatementStore() {
    for (const auto& [sql, statement] : resting_)
        sqlite3_finalize(statement);
}

sqlite3_stmt* StatementStore::lend(std::string_view sql) {
    const auto entry = resting_.find(sql);
    if (entry != resting_.end() && entry->second != nullptr)
        return std::exchange(entry->second, nullptr);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v3(connection_, sql.data(), static_cast<int>(sql.size()),
                       SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (statement != nullptr && entry == resting_.end() && resting_.size() < kMost)
        resting_.emplace(sql, nullptr);
    return statement;
}

void StatementStore::giveBack(sqlite3_stmt* statement) {
    // What went wrong with it was said when it ran.
    static_cast<void>(sqlite3_reset(statement));
    sqlite3_clear_bindings(statement);
    const auto entry = resting_.find(std::string_view(sqlite3_sql(statement)));
    if (entry != resting_.end() && entry->second == nullptr) {
        entry->second = statement;
    } else {
        sqlite3_finalize(statement);
    }
}

} // namespace vorq::gateway
