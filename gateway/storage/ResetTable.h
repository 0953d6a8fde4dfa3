#pragma once

#include "storage/Database.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace vorq::gateway {

/// One-time codes by which a forgotten password is replaced. Only hashes are kept. Borrows the
/// database; its owner locks. All times in milliseconds since 1970.
class ResetTable {
  public:
    explicit ResetTable(Database& database) : m_database(database) {}

    /// Without an account the code is worth nothing, and storing it takes as long.
    void add(std::string_view secret, std::optional<std::int64_t> accountId,
             std::int64_t expiresAt);
    /// Whose code it is, as long as it holds. One that has more than `lifeMs` to go is older than
    /// the clock, which was set back, and worth nothing.
    [[nodiscard]] std::optional<std::int64_t> accountOf(std::string_view secret, std::int64_t nowMs,
                                                        std::int64_t lifeMs);
    /// Removes all codes of an account.
    void dropOf(std::int64_t accountId);

  private:
    Database& m_database;
};

} // namespace vorq::gateway
