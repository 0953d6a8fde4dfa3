#include "auth/PasswordReset.h"

#include "auth/AccountRules.h"
#include "auth/LocalAccount.h"
#include "storage/ResetTable.h"
#include "storage/SignInTable.h"
#include "support/ApiError.h"
#include "support/Filled.h"
#include "support/NetworkOf.h"
#include "support/Secrets.h"

#include <array>

namespace vorq::gateway {
namespace {

constexpr std::int64_t kResetLifeMs = std::int64_t{60} * 60 * 1000;
constexpr int kRequestsPerMinute = 3;

ApiError linkIsSpent() {
    return {400, "This link has expired or was already used. Ask for another one."};
}

} // namespace

PasswordReset::PasswordReset(AccountService& accounts, const Clock& clock)
    : m_database(accounts.database()),
      m_passwords(accounts.passwords()),
      m_limits(accounts.limits()),
      m_housekeeping(accounts.housekeeping()),
      m_clock(clock) {}

PasswordReset::Code PasswordReset::createFor(const std::string& email,
                                             const std::string& loginName) {
    auto turn = m_database.write();
    turn.lock(DatabaseLock::names);
    const std::optional<Account> account =
        email.empty() ? localAccount(turn.database(), loginName, m_clock.nowMs())
                      : AccountTable(turn.database()).byEmail(checkedEmail(email));
    if (!account) throw ApiError(404, filled("No account has the address {}.", email));
    Code code{randomSecret(), account->email};
    ResetTable(turn.database()).add(code.secret, account->id, m_clock.nowMs() + kResetLifeMs);
    turn.commit();
    return code;
}

std::optional<PasswordReset::Code> PasswordReset::request(const std::string& email,
                                                          const std::string& address) {
    const std::string checked = checkedEmail(email);
    const std::array limits = {RateLimit{"reset link", kRequestsPerMinute, networkOf(address)}};
    if (const int wait = m_limits.take(limits); wait > 0) {
        ApiError error(429, "Too many links were asked for. Wait a moment and try again.");
        error.retryAfterSeconds = wait;
        throw error;
    }
    m_housekeeping.run();
    auto turn = m_database.write();
    const std::optional<Account> account = AccountTable(turn.database()).byEmail(checked);
    Code code{randomSecret(), checked};
    ResetTable(turn.database())
        .add(code.secret, account ? std::optional(account->id) : std::nullopt,
             m_clock.nowMs() + kResetLifeMs);
    turn.commit();
    return account ? std::optional(code) : std::nullopt;
}

bool PasswordReset::holds(const std::string& secret) {
    return m_database.read([&](Database& database) {
        return ResetTable(database).accountOf(secret, m_clock.nowMs(), kResetLifeMs).has_value();
    });
}

void PasswordReset::replace(const std::string& secret, const std::string& newPassword) {
    checkNewPassword(newPassword, "newPassword");
    if (!holds(secret)) throw linkIsSpent();
    const std::string hash = m_passwords.hash(newPassword);
    auto turn = m_database.write();
    ResetTable resets(turn.database());
    AccountTable accounts(turn.database());
    if (const auto owner = resets.accountOf(secret, m_clock.nowMs(), kResetLifeMs))
        turn.lock(DatabaseLock::account(*owner));
    const auto id = resets.accountOf(secret, m_clock.nowMs(), kResetLifeMs);
    std::optional<Account> account = id ? accounts.byId(*id) : std::nullopt;
    if (!account) throw linkIsSpent();
    account->passwordHash = hash;
    accounts.update(*account);
    resets.dropOf(account->id);
    SignInTable(turn.database()).endAll(account->id);
    turn.commit();
}

} // namespace vorq::gateway
