#include "auth/PasswordAttempts.h"

#include "support/ApiError.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

constexpr int kAddressesOfAGuesser = 5;
/// Several people may share an address.
constexpr int kAccountsOfAnAddress = 3;

std::string keyOf(const std::string& email, const std::string& address) {
    return email + ' ' + address;
}

} // namespace

PasswordAttempts::PasswordAttempts(const Clock& clock, int perMinute)
    : m_ofAccountFromAddress(clock, perMinute),
      m_ofAccount(clock, perMinute * kAddressesOfAGuesser),
      m_fromAddress(clock, perMinute * kAccountsOfAnAddress) {}

void PasswordAttempts::check(const std::string& email, const std::string& address) const {
    const int wait =
        std::max({m_ofAccountFromAddress.secondsToWait(keyOf(email, address)),
                  m_ofAccount.secondsToWait(email), m_fromAddress.secondsToWait(address)});
    if (wait == 0) return;
    ApiError error(429, "Too many wrong passwords. Wait a moment and try again.");
    error.retryAfterSeconds = wait;
    throw error;
}

void PasswordAttempts::noteWrong(const std::string& email, const std::string& address) {
    m_ofAccountFromAddress.spend(keyOf(email, address));
    m_ofAccount.spend(email);
    m_fromAddress.spend(address);
}

} // namespace vorq::gateway
