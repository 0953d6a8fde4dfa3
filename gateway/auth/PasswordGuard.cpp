#include "auth/PasswordGuard.h"

#include "support/Secrets.h"

namespace vorq::gateway {

PasswordGuard::PasswordGuard(RateLimits& limits, int wrongPerMinute)
    : m_attempts(limits, wrongPerMinute) {}

bool PasswordGuard::isRight(const PasswordAttempt& attempt,
                            const std::optional<std::string>& hash) {
    const std::scoped_lock lock(m_hashing);
    if (m_hashOfNobody.empty()) m_hashOfNobody = hashOfPassword(randomSecret());
    m_attempts.begin(attempt.email, attempt.address);
    const bool isRight = passwordMatches(hash.value_or(m_hashOfNobody), attempt.password);
    if (!isRight || !hash) return false;
    m_attempts.forgive(attempt.email, attempt.address);
    return true;
}

std::string PasswordGuard::hash(const std::string& password) {
    const std::scoped_lock lock(m_hashing);
    return hashOfPassword(password);
}

} // namespace vorq::gateway
