#pragma once

#include "storage/Database.h"

#include <cstdint>
#include <string_view>

namespace vorq::gateway {

/// Counts attempts of which so many a minute are allowed, all at once if need be. Of those who make
/// them only hashes are kept. Borrows the database; its owner locks. All times in milliseconds
/// since 1970.
///
/// Each attempt counts for a share of a minute, one after the other, so a single time says all.
class AttemptTable {
  public:
    explicit AttemptTable(Database& database) : m_database(database) {}

    /// Counts an attempt if it is allowed; false if it is not.
    [[nodiscard]] bool take(std::string_view key, int perMinute, std::int64_t nowMs);
    /// Makes an attempt count no more.
    void giveBack(std::string_view key, int perMinute);
    /// How long until another attempt is allowed, 0 if it is now. Minds that the clock may have
    /// been set back.
    [[nodiscard]] std::int64_t msToWait(std::string_view key, int perMinute, std::int64_t nowMs);
    void dropExpired(std::int64_t nowMs);

  private:
    Database& m_database;
};

} // namespace vorq::gateway
