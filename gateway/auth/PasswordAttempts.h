#pragma once

#include "auth/RateLimits.h"

#include <array>
#include <string>

namespace vorq::gateway {

/// Bounds the guessing of passwords: of an account from each address, so that a guesser does not
/// shut the owner out, more widely of an account from all of them, and from each address of all
/// accounts. An account is named by the address that was typed, so that one that is nobody's is
/// treated alike. Thread-safe.
class PasswordAttempts {
  public:
    /// `perMinute` wrong ones of an account from one address. `limits` outlive it.
    PasswordAttempts(RateLimits& limits, int perMinute)
        : m_limits(limits), m_perMinute(perMinute) {}

    /// Counts one as wrong before it is looked at: those that come at once, to several gateways,
    /// shall not all pass. Throws ApiError 429 if it has to wait.
    void begin(const std::string& email, const std::string& address);
    /// It was right after all.
    void forgive(const std::string& email, const std::string& address);

  private:
    [[nodiscard]] std::array<RateLimit, 3> limitsOf(const std::string& email,
                                                    const std::string& address) const;

    RateLimits& m_limits;
    int m_perMinute;
};

} // namespace vorq::gateway
