#pragma once

#include "auth/RateLimiter.h"
#include "storage/SharedDatabase.h"

#include <functional>
#include <map>
#include <mutex>
#include <span>
#include <string>
#include <string_view>

namespace vorq::gateway {

/// How many attempts for a purpose a key has each minute.
struct RateLimit {
    std::string_view purpose;
    int perMinute = 1; ///< the same each time for a purpose
    std::string key;
};

/// Bounds attempts that fall under several limits at once. Thread-safe.
class RateLimits {
  public:
    RateLimits() = default;
    virtual ~RateLimits() = default;
    RateLimits(const RateLimits&) = delete;
    RateLimits& operator=(const RateLimits&) = delete;

    /// Counts an attempt under all the limits and gives 0, or counts it under none and gives the
    /// seconds until all of them allow it.
    [[nodiscard]] virtual int take(std::span<const RateLimit> limits) = 0;
    /// Makes an attempt count no more.
    virtual void giveBack(std::span<const RateLimit> limits) = 0;
};

/// In the memory of one gateway.
class LocalRateLimits final : public RateLimits {
  public:
    /// `clock` outlives them.
    explicit LocalRateLimits(const Clock& clock) : m_clock(clock) {}

    [[nodiscard]] int take(std::span<const RateLimit> limits) override;
    void giveBack(std::span<const RateLimit> limits) override;

  private:
    [[nodiscard]] RateLimiter& limiterFor(const RateLimit& limit);

    const Clock& m_clock;
    std::mutex m_mutex;
    std::map<std::string, RateLimiter, std::less<>> m_limiters; // by purpose
};

/// In the database, for all gateways that use it.
class SharedRateLimits final : public RateLimits {
  public:
    /// `database` and `clock` outlive them.
    SharedRateLimits(SharedDatabase& database, const Clock& clock)
        : m_database(database), m_clock(clock) {}

    /// Throws DatabaseError.
    [[nodiscard]] int take(std::span<const RateLimit> limits) override;
    /// Where the database is away, the attempt goes on counting.
    void giveBack(std::span<const RateLimit> limits) override;

  private:
    SharedDatabase& m_database;
    const Clock& m_clock;
};

} // namespace vorq::gateway
