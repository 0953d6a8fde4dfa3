#pragma once

#include "auth/AccountService.h"

#include <optional>
#include <string>

namespace vorq::gateway {

/// Replaces forgotten passwords by one-time codes, which hold for an hour. Thread-safe. Refusals
/// are ApiError.
class PasswordReset {
  public:
    /// A code, and whose password it replaces.
    struct Code {
        std::string secret;
        std::string email;
    };

    /// `accounts` and `clock` outlive it.
    PasswordReset(AccountService& accounts, const Clock& clock);

    /// For whoever runs the gateway: the account of that address, or this computer's where it is
    /// empty. Throws 404 if there is none.
    [[nodiscard]] Code createFor(const std::string& email, const std::string& loginName);
    /// For anybody: nothing if nobody has that address, which takes as long. To be told to whoever
    /// runs the gateway, never to who asks.
    [[nodiscard]] std::optional<Code> request(const std::string& email, const std::string& address);
    /// Whether the code may still be used.
    [[nodiscard]] bool holds(const std::string& secret);
    /// Uses the code up, and ends all sign-ins of the account.
    void replace(const std::string& secret, const std::string& newPassword);

  private:
    SharedDatabase& m_database;
    PasswordGuard& m_passwords;
    RateLimits& m_limits;
    Housekeeping& m_housekeeping;
    const Clock& m_clock;
};

} // namespace vorq::gateway
