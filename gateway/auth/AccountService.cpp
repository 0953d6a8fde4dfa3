#include "auth/AccountService.h"

#include "auth/AccountRules.h"
#include "http/ApiError.h"
#include "support/Secrets.h"

#include <utility>

namespace vorq::gateway {
namespace {

constexpr std::int64_t kSecond = 1000;
constexpr std::int64_t kHandoffLife = 5 * 60 * kSecond;
constexpr std::int64_t kAccessLife = 60 * 60 * kSecond;
constexpr std::int64_t kRefreshLife = 60 * 24 * 60 * 60 * kSecond;
// Two refreshes that overlap are one client's race and no theft; the loser is merely refused. Later
// on, a used token is good once more as long as nothing that followed from it was used: its client
// was ended before the answer reached it.
constexpr std::int64_t kRaceWindow = 10 * kSecond;

ApiError sessionExpired() {
    return {401, "Your session expired. Sign in again."};
}

} // namespace

AccountService::AccountService(Database database, const Clock& clock)
    : database_(std::move(database)), clock_(clock) {
    tokens_.dropExpired(clock_.nowMs());
}

Account AccountService::localAccount(const std::string& loginName) {
    if (std::optional<Account> found = accounts_.local()) return *found;
    Account account = newLocalAccount(loginName);
    if (accounts_.usernameTaken(account.username, 0)) account.username.clear();
    accounts_.insert(account, clock_.nowMs());
    return account;
}

std::string AccountService::createHandoff(const std::string& loginName) {
    const std::scoped_lock lock(mutex_);
    Transaction transaction(database_);
    const Account account = localAccount(loginName);
    const std::string code = randomSecret();
    tokens_.addHandoff(code, account.id, clock_.nowMs() + kHandoffLife);
    transaction.commit();
    return code;
}

Session AccountService::issue(const Account& account, std::int64_t familyId) {
    const std::int64_t now = clock_.nowMs();
    Session session{.signedIn = true,
                    .account = account,
                    .token = randomSecret(),
                    .refreshToken = randomSecret(),
                    .message = {}};
    tokens_.addAccess(session.token, familyId, now + kAccessLife);
    tokens_.addRefresh(session.refreshToken, familyId, now + kRefreshLife);
    tokens_.dropExpired(now);
    return session;
}

Session AccountService::exchangeHandoff(const std::string& code) {
    const std::scoped_lock lock(mutex_);
    Transaction transaction(database_);
    const std::optional<std::int64_t> accountId = tokens_.takeHandoff(code, clock_.nowMs());
    const std::optional<Account> account = accountId ? accounts_.byId(*accountId) : std::nullopt;
    if (!account) {
        transaction.commit(); // An expired code is gone as well.
        throw ApiError(400, "This sign-in link has expired or was already used. Sign in again.");
    }
    Session session = issue(*account, tokens_.startFamily(account->id, clock_.nowMs()));
    transaction.commit();
    return session;
}

Session AccountService::refresh(const std::string& refreshToken) {
    const std::scoped_lock lock(mutex_);
    Transaction transaction(database_);
    const std::int64_t now = clock_.nowMs();
    const std::optional<RefreshTokenRow> row = tokens_.refresh(refreshToken);
    if (!row || row->expiresAt <= now) throw sessionExpired();
    if (row->usedAt) {
        const bool overlaps = now - *row->usedAt <= kRaceWindow;
        if (overlaps) throw sessionExpired();
        if (!tokens_.supersedeSuccessors(refreshToken, *row)) {
            tokens_.dropFamily(row->owner.familyId);
            transaction.commit();
            throw sessionExpired();
        }
    }
    const std::optional<Account> account = accounts_.byId(row->owner.accountId);
    if (!account) throw sessionExpired();
    tokens_.markRefreshUsed(refreshToken, now);
    // Older access tokens run out by themselves: a stream may be under way with one.
    Session session = issue(*account, row->owner.familyId);
    transaction.commit();
    return session;
}

std::optional<Identity> AccountService::identify(const std::string& token) {
    if (token.empty()) return std::nullopt;
    const std::scoped_lock lock(mutex_);
    const std::optional<TokenOwner> owner = tokens_.accessOwner(token, clock_.nowMs());
    if (!owner) return std::nullopt;
    std::optional<Account> account = accounts_.byId(owner->accountId);
    if (!account) return std::nullopt;
    return Identity{.owner = *owner, .account = std::move(*account), .token = token};
}

Session AccountService::signOut(const Identity& identity) {
    const std::scoped_lock lock(mutex_);
    tokens_.dropFamily(identity.owner.familyId);
    return {.signedIn = false, .account = {}, .token = {}, .refreshToken = {}, .message = {}};
}

Session AccountService::updateProfile(const Identity& identity, const ProfileChange& change) {
    const std::scoped_lock lock(mutex_);
    Transaction transaction(database_);
    std::optional<Account> account = accounts_.byId(identity.owner.accountId);
    if (!account) throw sessionExpired();
    applyProfile(*account, change);
    if (accounts_.usernameTaken(account->username, account->id)) {
        throw ApiError(409, "That username is taken. Choose another one.");
    }
    accounts_.update(*account);
    transaction.commit();
    return {true, *account, identity.token, {}, {}};
}

/// The hash of the new password, if there is one, after the current one was found right. Slow, and
/// so outside the lock of the database.
std::optional<std::string> AccountService::checkedHash(const std::optional<std::string>& oldHash,
                                                       const PrivacyChange& change) {
    const std::scoped_lock lock(hashing_);
    // Without a stored password there is nothing to compare: the bearer token alone proves who
    // asks.
    if (oldHash && !passwordMatches(*oldHash, change.currentPassword)) {
        throw ApiError(403, "The current password is not right.");
    }
    if (change.newPassword.empty()) return std::nullopt;
    return hashOfPassword(change.newPassword);
}

Session AccountService::updatePrivacy(const Identity& identity, const PrivacyChange& requested) {
    const PrivacyChange change = checkedPrivacy(requested);
    const std::optional<std::string>& oldHash = identity.account.passwordHash;
    const std::optional<std::string> newHash = checkedHash(oldHash, change);
    const std::scoped_lock lock(mutex_);
    Transaction transaction(database_);
    std::optional<Account> account = accounts_.byId(identity.owner.accountId);
    if (!account) throw sessionExpired();
    if (account->passwordHash != oldHash) {
        throw ApiError(409, "The password was changed meanwhile. Try again.");
    }
    if (!change.email.empty()) {
        if (accounts_.emailTaken(change.email, account->id)) {
            throw ApiError(409, "Another account uses that email address.");
        }
        account->email = change.email;
    }
    if (newHash) {
        account->passwordHash = newHash;
        tokens_.dropOtherFamilies(identity.owner);
    }
    accounts_.update(*account);
    transaction.commit();
    return {true, *account, identity.token, {}, {}};
}

} // namespace vorq::gateway
