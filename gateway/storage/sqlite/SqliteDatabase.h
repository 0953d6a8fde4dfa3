#pragma once

#include "storage/Database.h"

#include <chrono>
#include <filesystem>

struct sqlite3;

namespace vorq::gateway {

/// An open SQLite file in WAL mode, readable by its owner alone. One transaction writes at a time,
/// so locks hold nothing more.
class SqliteDatabase final : public Database {
  public:
    /// Opens or creates the file. Throws DatabaseError.
    explicit SqliteDatabase(const std::filesystem::path& file);
    ~SqliteDatabase() override;
    SqliteDatabase(SqliteDatabase&&) noexcept;
    SqliteDatabase& operator=(SqliteDatabase&&) noexcept;

    [[nodiscard]] Statement prepare(std::string_view sql) override;
    void execute(const std::string& sql) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    void lock(DatabaseLock lock) override;
    [[nodiscard]] std::string_view skippingLocked() const override { return {}; }
    [[nodiscard]] std::int64_t schemaVersion() override;
    void setSchemaVersion(std::int64_t version) override;
    void changeSchema(const std::string& step) override { execute(step); }
    [[nodiscard]] std::string_view noun() const override { return "state file"; }

    /// How long an operation waits for another program that holds the file.
    void setPatience(std::chrono::milliseconds patience);
    /// Whether the file was removed, or another one stands in its place.
    [[nodiscard]] bool isReplaced() const;
    /// Another connection to the same file.
    [[nodiscard]] SqliteDatabase another() const;

  private:
    struct Connection;

    [[nodiscard]] sqlite3* handle() const;

    std::unique_ptr<Connection> m_connection;
};

} // namespace vorq::gateway
