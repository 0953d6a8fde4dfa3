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
    : fromAddress_(clock, perMinute), fromAll_(clock, perMinute * kAddressesOfAGuesser) {}

void PasswordAttempts::check(std::int64_t accountId, const std::string& address) const {
    const int wait = std::max(fromAddress_.secondsToWait(keyOf(accountId, address)),
                              fromAll_.secondsToWait(keyOf(accountId, {})));
    if (wait == 0) return;
    ApiError error(429, "Too many wrong passwords. Wait a moment and try again.");
    error.retryAfterSeconds = wait;
    throw error;
}

void PasswordAttempts::noteWrong(std::int64_t accountId, const std::string& address) {
    fromAddress_.spend(keyOf(accountId, address));
    fromAll_.spend(keyOf(accountId, {}));
}

} // namespace vorq::gateway
