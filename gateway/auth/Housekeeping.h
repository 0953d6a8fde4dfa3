#pragma once

#include "storage/SharedDatabase.h"
#include "support/Clock.h"

#include <atomic>
#include <cstdint>

namespace vorq::gateway {

/// Removes from the database what has expired. Thread-safe.
class Housekeeping {
  public:
    /// `database` and `clock` outlive it.
    Housekeeping(SharedDatabase& database, const Clock& clock)
        : m_database(database), m_clock(clock) {}

    /// Once a minute; else, and where the database is held or away, it does nothing. Not within a
    /// turn to write.
    void run();

  private:
    SharedDatabase& m_database;
    const Clock& m_clock;
    std::atomic<std::int64_t> m_nextMs = 0; // uptime
};

} // namespace vorq::gateway
