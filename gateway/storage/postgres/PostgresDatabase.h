#pragma once

#include "storage/Database.h"
#include "storage/postgres/PostgresClient.h"

#include <functional>
#include <map>
#include <string>

namespace vorq::gateway {

/// A connection to a database of PostgreSQL. Transactions go side by side: what must not is kept
/// apart by locks.
class PostgresDatabase final : public Database {
  public:
    /// Connects. Throws DatabaseError.
    explicit PostgresDatabase(const std::string& address) : m_client(address) {}

    [[nodiscard]] Statement prepare(std::string_view sql) override;
    void execute(const std::string& sql) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    void lock(DatabaseLock lock) override;
    [[nodiscard]] std::string_view skippingLocked() const override;
    [[nodiscard]] std::int64_t schemaVersion() override;
    void setSchemaVersion(std::int64_t version) override;
    void changeSchema(const std::string& step) override;
    [[nodiscard]] std::string_view noun() const override { return "database"; }

    /// Whether it can serve again: the server is there, and nothing is under way.
    [[nodiscard]] bool isReusable() const { return !m_client.isBroken() && m_client.isAtRest(); }

  private:
    PostgresClient m_client;
    /// The names of the statements that are kept, by their text.
    std::map<std::string, std::string, std::less<>> m_prepared;
};

} // namespace vorq::gateway
