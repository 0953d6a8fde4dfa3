#include "auth/AccountService.h"

#include "auth/AccountRules.h"
#include "auth/LocalAccount.h"
#include "storage/ResetTable.h"
#include "storage/SignInTable.h"
#include "support/ApiError.h"
#include "support/Secrets.h"

#include <algorithm>
#include <utility>

namespace vorq::gateway {
namespace {

constexpr std::int64_t kSecond = 1000;
constexpr std::int64_t kAccessLife = kSecond * 60 * 60;
constexpr std::int64_t kRefreshLife = kSecond * 60 * 60 * 24 * 60;

ApiError sessionExpired() {
    return {401, "Your session expired. Sign in again."};
}

ApiError tryAgain(int seconds) {
    ApiError error(409, "The session is being renewed. Try again in a moment.");
    error.retryAfterSeconds = seconds;
    return error;
}

std::unique_ptr<RateLimits> limitsOver(SharedDatabase& database, const Clock& clock) {
    if (database.servesSeveralGateways())
        return std::make_unique<SharedRateLimits>(database, clock);
    return std::make_unique<LocalRateLimits>(clock);
}

} // namespace

AccountService::AccountService(std::unique_ptr<SharedDatabase> database, const Clock& clock)
    : AccountService(std::move(database), clock, Options()) {}

AccountService::AccountService(std::unique_ptr<SharedDatabase> database, const Clock& clock,
                               Options options)
    : m_database(std::move(database)),
      m_clock(clock),
      m_limits(limitsOver(*m_database, clock)),
      m_passwords(*m_limits, options.wrongPasswordsPerMinute) {
    m_housekeeping.run();
}

std::string AccountService::createHandoff(const std::string& loginName) {
    auto turn = m_database->write();
    turn.lock(DatabaseLock::names);
    const Account account = localAccount(turn.database(), loginName, m_clock.nowMs());
    std::string code = addHandoff(turn.database(), account.id, m_clock.nowMs());
    turn.commit();
    return code;
}

Session AccountService::issue(Database& database, const Account& account,
                              std::int64_t familyId) const {
    const std::int64_t now = m_clock.nowMs();
    Session session{.signedIn = true,
                    .account = account,
                    .token = randomSecret(),
                    .refreshToken = randomSecret(),
                    .message = {}};
    TokenTable tokens(database);
    const std::int64_t generation = tokens.startGeneration(familyId);
    tokens.addAccess(session.token, familyId, generation, now + kAccessLife);
    tokens.addRefresh(session.refreshToken, familyId, generation, now + kRefreshLife);
    return session;
}

Session AccountService::exchangeHandoff(const std::string& code, const std::string& address) {
    m_housekeeping.run();
    auto turn = m_database->write();
    TokenTable tokens(turn.database());
    if (const auto owner = tokens.ownerOfHandoff(code)) turn.lock(DatabaseLock::account(*owner));
    const std::int64_t now = m_clock.nowMs();
    const std::optional<std::int64_t> accountId = tokens.takeHandoff(code, now, kHandoffLifeMs);
    const std::optional<Account> account =
        accountId ? AccountTable(turn.database()).byId(*accountId) : std::nullopt;
    if (!account) {
        turn.commit(); // An expired code is gone as well.
        throw ApiError(400, "This sign-in link has expired or was already used. Sign in again.");
    }
    const SignInOrigin origin{.address = address};
    Session session =
        issue(turn.database(), *account, tokens.startFamily(account->id, origin, now));
    turn.commit();
    return session;
}

std::optional<RefreshTokenRow> AccountService::tradeable(Database& database,
                                                         const std::string& refreshToken) {
    TokenTable tokens(database);
    const std::optional<RefreshTokenRow> row = tokens.refresh(refreshToken);
    if (!row || row->expiresAt <= m_clock.nowMs()) throw sessionExpired();
    const auto& [generation, latest, confirmed] = row->age;
    if (generation == latest) return row;
    const std::int64_t family = row->owner.familyId;
    // Two refreshes that overlap are one client's race and no theft.
    if (const int seconds = graceLeft(*row); seconds > 0) throw tryAgain(seconds);
    if (confirmed > generation || row->isSuperseded) {
        tokens.dropFamily(family);
        return std::nullopt;
    }
    tokens.supersedeAfter(family, generation);
    return row;
}

int AccountService::graceLeft(const RefreshTokenRow& row) const {
    const int own = m_grace.secondsLeft(row.owner.familyId, row.age.generation);
    if (!m_database->servesSeveralGateways() || row.traded != row.age.generation) return own;
    return std::max(own, m_grace.secondsLeftOf(row.tradedAt));
}

Session AccountService::refresh(const std::string& refreshToken) {
    m_housekeeping.run();
    writeConfirmations([this] { return std::optional(m_database->write()); });
    auto turn = m_database->write();
    Database& database = turn.database();
    if (const auto found = TokenTable(database).refresh(refreshToken))
        turn.lock(DatabaseLock::account(found->owner.accountId));
    const std::optional<RefreshTokenRow> row = tradeable(database, refreshToken);
    const std::optional<Account> account =
        row ? AccountTable(database).byId(row->owner.accountId) : std::nullopt;
    if (!account) {
        turn.commit(); // A sign-in that was stolen is gone.
        throw sessionExpired();
    }
    const std::int64_t family = row->owner.familyId;
    TokenTable(database).noteTrade(family, row->age.generation, m_clock.nowMs());
    // Older access tokens run out by themselves: a stream may be under way with one.
    Session session = issue(database, *account, family);
    turn.commit();
    m_grace.begin(family, row->age.generation);
    return session;
}

std::optional<Identity> AccountService::identify(const std::string& token) {
    if (token.empty()) return std::nullopt;
    std::optional<Bearer> bearer = m_database->read([&](Database& database) {
        const auto row = TokenTable(database).access(token, m_clock.nowMs());
        auto account = row ? AccountTable(database).byId(row->owner.accountId) : std::nullopt;
        return account ? std::optional<Bearer>({*row, std::move(*account)}) : std::nullopt;
    });
    if (!bearer) return std::nullopt;
    const TokenAge& age = bearer->token.age;
    if (age.generation > age.confirmed) confirm(bearer->token);
    return Identity{
        .owner = bearer->token.owner, .account = std::move(bearer->account), .token = token};
}

/// A database that is held or away is no reason to refuse a token; the next writer makes up for it.
/// Of many requests that come at once with a new token, one writes.
void AccountService::confirm(const AccessTokenRow& token) {
    noteConfirmed(token);
    while (!unwrittenConfirmations().empty() && !m_isConfirming.exchange(true)) {
        const struct Ending {
            std::atomic<bool>& isConfirming;
            ~Ending() { isConfirming = false; }
        } ending{m_isConfirming};
        try {
            bool isHeld = false;
            writeConfirmations([&] {
                auto turn = m_database->tryWrite();
                isHeld = !turn;
                return turn;
            });
            if (isHeld) return;
        } catch (const DatabaseError&) {
            return; // As on a full disk.
        }
    }
}

void AccountService::noteConfirmed(const AccessTokenRow& token) {
    const std::scoped_lock lock(m_confirming);
    std::int64_t& confirmed = m_unwrittenConfirmations[token.owner.familyId];
    confirmed = std::max(confirmed, token.age.generation);
}

void AccountService::writeConfirmations(const TakeTurn& takeTurn) {
    for (const auto& [family, generation] : unwrittenConfirmations()) {
        auto turn = takeTurn();
        if (!turn) return;
        TokenTable(turn->database()).confirm(family, generation);
        turn->commit();
        const std::scoped_lock lock(m_confirming);
        const auto entry = m_unwrittenConfirmations.find(family);
        if (entry != m_unwrittenConfirmations.end() && entry->second <= generation)
            m_unwrittenConfirmations.erase(entry);
    }
}

std::unordered_map<std::int64_t, std::int64_t> AccountService::unwrittenConfirmations() {
    const std::scoped_lock lock(m_confirming);
    return m_unwrittenConfirmations;
}

Session AccountService::signOut(const Identity& identity) {
    auto turn = m_database->write();
    turn.lock(DatabaseLock::account(identity.owner.accountId));
    TokenTable(turn.database()).dropFamily(identity.owner.familyId);
    turn.commit();
    return {.signedIn = false, .account = {}, .token = {}, .refreshToken = {}, .message = {}};
}

Session AccountService::updateProfile(const Identity& identity, const ProfileChange& change) {
    auto turn = m_database->write();
    turn.lock(DatabaseLock::names);
    turn.lock(DatabaseLock::account(identity.owner.accountId));
    AccountTable accounts(turn.database());
    std::optional<Account> account = accounts.byId(identity.owner.accountId);
    if (!account) throw sessionExpired();
    applyProfile(*account, change);
    if (accounts.usernameTaken(account->username, account->id)) {
        throw ApiError(409, "That username is taken. Choose another one.", "username");
    }
    accounts.update(*account);
    turn.commit();
    return {true, *account, identity.token, {}, {}};
}

/// The hash of the new password, if there is one, after the current one was found right. Slow, and
/// so outside the lock of the database.
std::optional<std::string> AccountService::checkedHash(const Identity& identity,
                                                       const PrivacyChange& change) {
    const Account& account = identity.account;
    // Without a stored password there is nothing to compare: the bearer token alone proves who
    // asks.
    const PasswordAttempt attempt{account.email, change.currentPassword, identity.address};
    if (account.passwordHash && !m_passwords.isRight(attempt, account.passwordHash)) {
        throw ApiError(403, "The current password is not right.", "currentPassword");
    }
    if (change.newPassword.empty()) return std::nullopt;
    return m_passwords.hash(change.newPassword);
}

Session AccountService::updatePrivacy(const Identity& identity, const PrivacyChange& requested) {
    const PrivacyChange change = checkedPrivacy(requested);
    const std::optional<std::string>& oldHash = identity.account.passwordHash;
    const std::optional<std::string> newHash = checkedHash(identity, change);
    auto turn = m_database->write();
    turn.lock(DatabaseLock::names);
    turn.lock(DatabaseLock::account(identity.owner.accountId));
    AccountTable accounts(turn.database());
    std::optional<Account> account = accounts.byId(identity.owner.accountId);
    if (!account) throw sessionExpired();
    if (account->passwordHash != oldHash) {
        throw ApiError(409, "The password was changed meanwhile. Try again.");
    }
    if (!change.email.empty()) {
        if (!account->isLocal && change.email != account->email) checkNewEmail(change.email);
        if (accounts.emailTaken(change.email, account->id)) {
            throw ApiError(409, "Another account uses that email address.", "email");
        }
        account->email = change.email;
    }
    if (newHash) {
        account->passwordHash = newHash;
        TokenTable(turn.database()).dropOtherFamilies(identity.owner);
        ResetTable(turn.database()).dropOf(account->id);
    }
    accounts.update(*account);
    turn.commit();
    return {true, *account, identity.token, {}, {}};
}

} // namespace vorq::gateway
