#include "auth/WebAccounts.h"

#include "auth/AccountRules.h"
#include "auth/LocalAccount.h"
#include "support/ApiError.h"
#include "support/NetworkOf.h"
#include "support/Secrets.h"
#include "support/Utf8.h"

#include <array>
#include <utility>

namespace vorq::gateway {
namespace {

constexpr std::int64_t kBrowserLifeMs = std::int64_t{24} * 60 * 60 * 1000;
/// A sign-in that is used again and again is not written each time.
constexpr std::int64_t kUseStepMs = std::int64_t{10} * 60 * 1000;
constexpr int kSignUpsPerMinute = 5;
constexpr std::size_t kLongestAgent = 300;
constexpr std::size_t kLongestAddress = 100;

ApiError wrongCredentials() {
    return {403, "The email address or the password is not right.", "password"};
}

} // namespace

WebAccounts::WebAccounts(AccountService& accounts, const Clock& clock)
    : m_database(accounts.database()),
      m_passwords(accounts.passwords()),
      m_limits(accounts.limits()),
      m_housekeeping(accounts.housekeeping()),
      m_clock(clock) {}

std::string WebAccounts::begin(Database& database, const Account& account,
                               const SignInOrigin& origin) {
    SignInOrigin stored = origin;
    stored.isBrowser = true;
    stored.agent = clipped(sanitized(origin.agent), kLongestAgent);
    stored.address = clipped(sanitized(origin.address), kLongestAddress);
    const std::int64_t now = m_clock.nowMs();
    TokenTable tokens(database);
    const std::int64_t family = tokens.startFamily(account.id, stored, now);
    std::string secret = randomSecret();
    SignInTable(database).addBrowser(secret, family, now + kBrowserLifeMs);
    return secret;
}

std::string WebAccounts::signUp(const Credentials& typed, const SignInOrigin& origin) {
    Account account;
    account.email = checkedEmail(typed.email);
    checkNewEmail(account.email);
    checkNewPassword(typed.password, "password");
    const std::array limits = {RateLimit{"sign-up", kSignUpsPerMinute, networkOf(origin.address)}};
    if (const int wait = m_limits.take(limits); wait > 0) {
        ApiError error(429, "Too many accounts at once. Wait a moment and try again.");
        error.retryAfterSeconds = wait;
        throw error;
    }
    account.passwordHash = m_passwords.hash(typed.password);
    m_housekeeping.run();
    auto turn = m_database.write();
    turn.lock(DatabaseLock::names);
    AccountTable accounts(turn.database());
    if (accounts.emailTaken(account.email, 0)) {
        throw ApiError(409,
                       "No account can be made with that email address. If it is yours, sign in.",
                       "email");
    }
    accounts.insert(account, m_clock.nowMs());
    std::string secret = begin(turn.database(), account, origin);
    turn.commit();
    return secret;
}

std::string WebAccounts::signIn(const Credentials& typed, const SignInOrigin& origin) {
    const std::string email = checkedEmail(typed.email);
    if (typed.password.empty()) throw ApiError(400, "Enter your password.", "password");
    const auto find = [&](Database& database) { return AccountTable(database).byEmail(email); };
    const std::optional<Account> found = m_database.read(find);
    const std::optional<std::string> hash = found ? found->passwordHash : std::nullopt;
    const bool isRight = m_passwords.isRight({email, typed.password, origin.address}, hash);
    if (!found || !isRight) throw wrongCredentials();
    m_housekeeping.run();
    auto turn = m_database.write();
    turn.lock(DatabaseLock::account(found->id));
    const std::optional<Account> account = find(turn.database());
    // The password may have been changed while it was compared.
    if (!account || account->passwordHash != hash) throw wrongCredentials();
    std::string secret = begin(turn.database(), *account, origin);
    turn.commit();
    return secret;
}

std::string WebAccounts::continueHere(const std::string& loginName, const SignInOrigin& origin) {
    m_housekeeping.run();
    auto turn = m_database.write();
    turn.lock(DatabaseLock::names);
    const Account account = localAccount(turn.database(), loginName, m_clock.nowMs());
    turn.lock(DatabaseLock::account(account.id));
    std::string secret = begin(turn.database(), account, origin);
    turn.commit();
    return secret;
}

std::optional<Identity> WebAccounts::identify(const std::string& secret) {
    if (secret.empty()) return std::nullopt;
    using Found = std::pair<BrowserSession, Account>;
    const auto found = m_database.read([&](Database& database) -> std::optional<Found> {
        const auto session = SignInTable(database).browser(secret, m_clock.nowMs());
        auto account =
            session ? AccountTable(database).byId(session->owner.accountId) : std::nullopt;
        if (!account) return std::nullopt;
        return Found(*session, *std::move(account));
    });
    if (!found) return std::nullopt;
    noteUse(found->first);
    return Identity{.owner = found->first.owner, .account = found->second, .token = secret};
}

/// The list of sign-ins is no reason to refuse one where the database is busy or the disk full.
void WebAccounts::noteUse(const BrowserSession& session) {
    const std::int64_t now = m_clock.nowMs();
    if (now >= session.lastUsedAt && now - session.lastUsedAt < kUseStepMs) return;
    try {
        if (auto turn = m_database.tryWrite()) {
            SignInTable(turn->database()).noteUse(session.owner.familyId, now);
            turn->commit();
        }
    } catch (const DatabaseError&) {
        return;
    }
}

std::string WebAccounts::createHandoff(const Identity& identity) {
    auto turn = m_database.write();
    turn.lock(DatabaseLock::account(identity.owner.accountId));
    // It may have been ended on another gateway meanwhile.
    if (!SignInTable(turn.database()).holds(identity.owner.familyId))
        throw ApiError(403, "You are signed out. Sign in again.");
    std::string code = addHandoff(turn.database(), identity.owner.accountId, m_clock.nowMs());
    turn.commit();
    return code;
}

std::vector<SignIn> WebAccounts::signIns(const Identity& identity) {
    return m_database.read([&](Database& database) {
        return SignInTable(database).ofAccount(identity.owner.accountId);
    });
}

void WebAccounts::endSignIn(const Identity& identity, std::int64_t familyId) {
    auto turn = m_database.write();
    turn.lock(DatabaseLock::account(identity.owner.accountId));
    SignInTable(turn.database()).end(identity.owner.accountId, familyId);
    turn.commit();
}

void WebAccounts::endOtherSignIns(const Identity& identity) {
    auto turn = m_database.write();
    turn.lock(DatabaseLock::account(identity.owner.accountId));
    TokenTable(turn.database()).dropOtherFamilies(identity.owner);
    turn.commit();
}

} // namespace vorq::gateway
