#pragma once

#include "auth/PasswordAttempts.h"

#include <mutex>
#include <optional>
#include <string>

namespace vorq::gateway {

/// Who says to know the password of an account.
struct PasswordAttempt {
    std::string email; ///< in canonical form
    std::string password;
    std::string address; ///< where the request came from
};

/// Compares and hashes passwords, and bounds their guessing. Each takes long and much memory on
/// purpose, so it is done one at a time. Thread-safe. Refusals are ApiError.
class PasswordGuard {
  public:
    /// `wrongPerMinute` of one account from one address. `limits` outlive the guard.
    PasswordGuard(RateLimits& limits, int wrongPerMinute);

    /// Whether the password belongs to the hash. Where there is no account, or one without a
    /// password, this takes as long, counts as a wrong one and gives false. Throws 429 if the
    /// attempt has to wait.
    [[nodiscard]] bool isRight(const PasswordAttempt& attempt,
                               const std::optional<std::string>& hash);
    [[nodiscard]] std::string hash(const std::string& password);

  private:
    PasswordAttempts m_attempts;
    std::mutex m_hashing;
    /// Of a password that nobody knows.
    std::string m_hashOfNobody;
};

} // namespace vorq::gateway
