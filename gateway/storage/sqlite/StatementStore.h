#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace vorq::gateway {

/// The prepared statements of one connection that are at rest, by their text: preparing one takes
/// longer than to run it. SQLite itself brings them up to date when the schema changes.
class StatementStore {
  public:
    /// The connection outlives the store.
    explicit StatementStore(sqlite3* connection) : m_connection(connection) {}
    ~StatementStore();
    StatementStore(const StatementStore&) = delete;
    StatementStore& operator=(const StatementStore&) = delete;

    /// A statement without values, prepared anew unless one is at rest; nothing if SQLite refuses
    /// the text.
    [[nodiscard]] sqlite3_stmt* lend(std::string_view sql);
    /// Ends what the statement was doing and forgets its values.
    void giveBack(sqlite3_stmt* statement);

  private:
    static constexpr std::size_t kMost = 64;

    sqlite3* m_connection;
    std::map<std::string, sqlite3_stmt*, std::less<>> m_resting;
};

} // namespace vorq::gateway
