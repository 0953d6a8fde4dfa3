#pragma once

#include "auth/RateLimiter.h"

#include <cstdint>
#include <string>

namespace vorq::gateway {

/// Bounds the guessing of an account's password: from each address, so that a guesser does not shut
/// the owner out, and more widely from all of them. Thread-safe.
class PasswordAttempts {
  public:
    /// `perMinute` wrong ones of an account from one address. `clock` outlives it.
    PasswordAttempts(const Clock& clock, int perMinute);

    /// Throws ApiError 429 if another attempt has to wait.
    void check(std::int64_t accountId, const std::string& address) const;
    void noteWrong(std::int64_t accountId, const std::string& address);

  private:
    RateLimiter m_fromAddress;
    RateLimiter m_fromAll;
};

} // namespace vorq::gateway
