#include "auth/PasswordAttempts.h"

#include "support/ApiError.h"
#include "support/NetworkOf.h"

namespace vorq::gateway {
namespace {

constexpr int kAddressesOfAGuesser = 5;
/// Several people may share an address.
constexpr int kAccountsOfAnAddress = 3;

} // namespace

std::array<RateLimit, 3> PasswordAttempts::limitsOf(const std::string& email,
                                                    const std::string& address) const {
    const std::string from = networkOf(address);
    return {RateLimit{"password of an account from an address", m_perMinute, email + ' ' + from},
            RateLimit{"password of an account", m_perMinute * kAddressesOfAGuesser, email},
            RateLimit{"password from an address", m_perMinute * kAccountsOfAnAddress, from}};
}

void PasswordAttempts::begin(const std::string& email, const std::string& address) {
    const int wait = m_limits.take(limitsOf(email, address));
    if (wait == 0) return;
    ApiError error(429, "Too many wrong passwords. Wait a moment and try again.");
    error.retryAfterSeconds = wait;
    throw error;
}

void PasswordAttempts::forgive(const std::string& email, const std::string& address) {
    m_limits.giveBack(limitsOf(email, address));
}

} // namespace vorq::gateway
