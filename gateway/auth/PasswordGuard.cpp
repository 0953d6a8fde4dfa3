#include "auth/PasswordGuard.h"

#include "support/Secrets.h"

namespace vorq::gateway {

PasswordGuard::PasswordGuard(const Clock& clock, int wrongPerMinute)
    : m_attempts(clock, wrongPerMinute) {}

bool PasswordGuard::isRight(const PasswordAttempt& attempt,
                            const std::optional<std::string>& hash) {
    const std::scoped_lock lock(m_hashing);
    m_attempts.check(attempt.email, attempt.address);
    if (m_hashOfNobody.empty()) m_hashOfNobody = hashOfPassword(randomSecret());
    const bool isRight = passwordMatches(hash.value_or(m_hashOfNobody), attempt.password);
    if (isRight && hash) return true;
    m_attempts.noteWrong(attempt.email, attempt.address);
    return false;
}

std::string PasswordGuard::hash(const std::string& password) {
    const std::scoped_lock lock(m_hashing);
    return hashOfPassword(password);
}

} // namespace vorq::gateway
