#include "auth/PasswordAttempts.h"

#include "support/ApiError.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

constexpr int kAddressesOfAGuesser = 5;

std::string keyOf(std::int64_t accountId, const std::string& address) {
    return std::to_string(accountId) + ' ' + address;
}

} // namespace

PasswordAttempts::PasswordAttempts(const Clock& clock, int perMinute)
    : m_fromAddress(clock, perMinute), m_fromAll(clock, perMinute * kAddressesOfAGuesser) {}

void PasswordAttempts::check(std::int64_t accountId, const std::string& address) const {
    const int wait = std::max(m_fromAddress.secondsToWait(keyOf(accountId, address)),
                              m_fromAll.secondsToWait(keyOf(accountId, {})));
    if (wait == 0) return;
    ApiError error(429, "Too many wrong passwords. Wait a moment and try again.");
    error.retryAfterSeconds = wait;
    throw error;
}

void PasswordAttempts::noteWrong(std::int64_t accountId, const std::string& address) {
    m_fromAddress.spend(keyOf(accountId, address));
    m_fromAll.spend(keyOf(accountId, {}));
}

} // namespace vorq::gateway
