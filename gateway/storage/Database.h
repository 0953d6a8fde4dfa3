#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace vorq::gateway {

/// A failed database operation. `isDamage` tells a broken file from every other failure, `isBusy`
/// a database that is held by others or cannot be reached at the moment; `advice` is a sentence for
/// the user where the failure is one that passes, else empty.
class DatabaseError : public std::runtime_error {
  public:
    DatabaseError(const std::string& message, bool damage, std::string_view sentence = {},
                  bool busy = false)
        : std::runtime_error(message), isDamage(damage), isBusy(busy), advice(sentence) {}
    bool isDamage;
    bool isBusy;
    std::string advice;
};

/// What runs a statement: one class for each kind of database. See Statement.
class Cursor {
  public:
    Cursor() = default;
    virtual ~Cursor() = default;
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;

    virtual void bindInteger(int index, std::int64_t value) = 0;
    virtual void bindText(int index, std::string_view text) = 0;
    virtual void bindBlob(int index, std::string_view bytes) = 0;
    virtual void bindNull(int index) = 0;
    virtual bool step() = 0;
    [[nodiscard]] virtual std::int64_t integer(int column) const = 0;
    [[nodiscard]] virtual std::optional<std::string> optionalText(int column) const = 0;
};

/// One prepared statement: bind in order from 1, then `step` until it gives false. Not to outlive
/// its database.
class Statement {
  public:
    explicit Statement(std::unique_ptr<Cursor> cursor) : m_cursor(std::move(cursor)) {}

    Statement& bind(int index, std::int64_t value);
    Statement& bind(int index, std::string_view text);
    Statement& bindBlob(int index, std::string_view bytes);
    Statement& bindNull(int index);

    /// True while there is a row to read. Throws DatabaseError.
    bool step() { return m_cursor->step(); }

    [[nodiscard]] std::int64_t integer(int column) const { return m_cursor->integer(column); }
    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] std::optional<std::string> optionalText(int column) const;

  private:
    std::unique_ptr<Cursor> m_cursor;
};

/// What transactions keep each other from touching. Where several are taken, in this order: names,
/// then one account.
struct DatabaseLock {
    /// The schema; the names and addresses of all accounts, and which is the local one.
    static const DatabaseLock schema;
    static const DatabaseLock names;
    /// All that belongs to the account. Ids begin at 1.
    [[nodiscard]] static DatabaseLock account(std::int64_t id) { return {id}; }

    std::int64_t key = 0;
};

inline constexpr DatabaseLock DatabaseLock::schema{-1};
inline constexpr DatabaseLock DatabaseLock::names{0};

/// An open connection to a database. Not thread-safe: its owner locks. What fails throws
/// DatabaseError.
///
/// SQL is written once, in what all kinds of database understand: values are `?` or `?1`, a new id
/// comes by `RETURNING`.
class Database {
  public:
    virtual ~Database() = default;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// One statement. Its text is one of a few that come again and again: the statement is kept.
    [[nodiscard]] virtual Statement prepare(std::string_view sql) = 0;
    /// Any number of statements, in the database's own dialect.
    virtual void execute(const std::string& sql) = 0;

    /// See Transaction.
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
    /// Holds the lock until the end of the transaction. What the transaction reads afterwards
    /// includes all that the holders before it have committed.
    virtual void lock(DatabaseLock lock) = 0;
    /// What follows a SELECT of rows to be removed, so that those in use elsewhere are passed over.
    [[nodiscard]] virtual std::string_view skippingLocked() const = 0;

    /// How many steps of the schema were taken.
    [[nodiscard]] virtual std::int64_t schemaVersion() = 0;
    virtual void setSchemaVersion(std::int64_t version) = 0;
    /// One step of the schema, which is written in SQLite's dialect.
    virtual void changeSchema(const std::string& step) = 0;
    /// What users know it as.
    [[nodiscard]] virtual std::string_view noun() const = 0;

  protected:
    Database() = default;
    Database(Database&&) = default;
    Database& operator=(Database&&) = default;
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
