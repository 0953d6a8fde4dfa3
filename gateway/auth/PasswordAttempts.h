#pragma once

#include "auth/RateLimiter.h"

#include <string>

namespace vorq::gateway {

/// Bounds the guessing of passwords: of an account from each address, so that a guesser does not
/// shut the owner out, more widely of an account from all of them, and from each address of all
/// accounts. An account is named by the address that was typed, so that one that is nobody's is
/// treated alike. Thread-safe.
class PasswordAttempts {
  public:
    /// `perMinute` wrong ones of an account from one address. `clock` outlives it.
    PasswordAttempts(const Clock& clock, int perMinute);

    /// Throws ApiError 429 if another attempt has to wait.
    void check(const std::string& email, const std::string& address) const;
    void noteWrong(const std::string& email, const std::string& address);

  private:
    RateLimiter m_ofAccountFromAddress;
    RateLimiter m_ofAccount;
    RateLimiter m_fromAddress;
};

} // namespace vorq::gateway
