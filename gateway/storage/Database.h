#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace vorq::gateway {

/// A failed database operation. `isDamage` tells a broken file from every other failure, `isBusy`
/// one that another program holds; `advice` is a sentence for the user where the failure is one
/// that passes, else empty.
class DatabaseError : public std::runtime_error {
  public:
    DatabaseError(const std::string& message, bool damage, std::string_view sentence = {},
                  bool busy = false)
        : std::runtime_error(message), isDamage(damage), isBusy(busy), advice(sentence) {}
    bool isDamage;
    bool isBusy;
    std::string advice;
};

class StatementStore;

/// One prepared statement: bind in order from 1, then `step` until it gives false. Not to outlive
/// its database.
class Statement {
  public:
    Statement& bind(int index, std::int64_t value);
    Statement& bind(int index, std::string_view text);
    Statement& bindBlob(int index, std::string_view bytes);
    Statement& bindNull(int index);

    /// True while there is a row to read. Throws DatabaseError.
    bool step();

    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] std::optional<std::string> optionalText(int column) const;

  private:
    friend class Database;
    struct GiveBack {
        StatementStore* store;
        void operator()(sqlite3_stmt* statement) const;
    };
    Statement(StatementStore& store, sqlite3_stmt* statement) : m_statement(statement, {&store}) {}
    void check(int code) const;

    std::unique_ptr<sqlite3_stmt, GiveBack> m_statement;
};

/// An open SQLite file in WAL mode, readable by its owner alone. Not thread-safe: its owner locks.
class Database {
  public:
    /// Opens or creates the file. Throws DatabaseError.
    explicit Database(const std::filesystem::path& file);
    ~Database();
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;

    /// One statement. Its text is one of a few that come again and again: the statement is kept.
    [[nodiscard]] Statement prepare(std::string_view sql);
    void execute(const std::string& sql);
    [[nodiscard]] std::int64_t lastInsertId() const;

    /// How long an operation waits for another program that holds the file.
    void setPatience(std::chrono::milliseconds patience);
    /// Whether the file was removed, or another one stands in its place.
    [[nodiscard]] bool isReplaced() const;
    /// Another connection to the same file.
    [[nodiscard]] Database another() const;

  private:
    struct Connection;

    [[nodiscard]] sqlite3* handle() const;

    std::unique_ptr<Connection> m_connection;
};

/// A write transaction, rolled back unless committed.
class Transaction {
  public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

  private:
    Database& m_database;
    bool m_open = true;
};

} // namespace vorq::gateway
