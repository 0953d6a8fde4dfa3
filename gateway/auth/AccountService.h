#pragma once

#include "auth/Housekeeping.h"
#include "auth/PasswordGuard.h"
#include "auth/RateLimits.h"
#include "auth/RefreshGrace.h"
#include "auth/Session.h"
#include "storage/AccountTable.h"
#include "storage/SharedDatabase.h"
#include "storage/TokenTable.h"
#include "support/Clock.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

namespace vorq::gateway {

/// A caller whose bearer token holds.
struct Identity {
    TokenOwner owner;
    Account account;
    std::string token;
    /// Where the request came from.
    std::string address = {};
};

/// Fields to change; what is absent stays.
struct ProfileChange {
    std::optional<std::string> firstName;
    std::optional<std::string> lastName;
    std::optional<std::string> username;
    std::optional<std::string> useCase;
    std::optional<std::string> preferredModel;
};

/// New address or password; an empty one stays.
struct PrivacyChange {
    std::string email;
    std::string currentPassword;
    std::string newPassword;
};

/// Sign-in, tokens and the account's own settings. Thread-safe. Refusals are ApiError.
class AccountService {
  public:
    struct Options {
        /// Of one account from one address.
        int wrongPasswordsPerMinute = 10;
    };

    /// `clock` outlives the service.
    AccountService(std::unique_ptr<SharedDatabase> database, const Clock& clock);
    AccountService(std::unique_ptr<SharedDatabase> database, const Clock& clock, Options options);

    /// A fresh one-time code for this computer's account, which is made on first use.
    [[nodiscard]] std::string createHandoff(const std::string& loginName);
    /// The program that brings the code is signed in; `address` is where it is.
    [[nodiscard]] Session exchangeHandoff(const std::string& code, const std::string& address = {});
    /// Trades a refresh token for a new pair, once. While nothing of that pair was used, its answer
    /// may have been lost: the token that comes again is refused with 409 for ten seconds, in which
    /// the answer may still arrive, and then good for another pair, in place of the first. One that
    /// comes back after the pair was used ends the whole sign-in, since somebody else may hold it.
    [[nodiscard]] Session refresh(const std::string& refreshToken);
    /// Whose access token it is, if it holds. Its first use uses up the refresh token that it was
    /// traded for.
    [[nodiscard]] std::optional<Identity> identify(const std::string& token);
    [[nodiscard]] Session signOut(const Identity& identity);
    [[nodiscard]] Session updateProfile(const Identity& identity, const ProfileChange& change);
    [[nodiscard]] Session updatePrivacy(const Identity& identity, const PrivacyChange& change);

    /// What the services beside this one share with it.
    [[nodiscard]] SharedDatabase& database() { return *m_database; }
    [[nodiscard]] RateLimits& limits() { return *m_limits; }
    [[nodiscard]] Housekeeping& housekeeping() { return m_housekeeping; }
    [[nodiscard]] PasswordGuard& passwords() { return m_passwords; }

  private:
    /// A token that holds, and its account.
    struct Bearer {
        AccessTokenRow token;
        Account account;
    };

    [[nodiscard]] std::optional<std::string> checkedHash(const Identity& identity,
                                                         const PrivacyChange& change);
    /// The row of a token that may be traded now; nothing if it shows a theft, which has ended the
    /// sign-in. Throws ApiError.
    [[nodiscard]] std::optional<RefreshTokenRow> tradeable(Database& database,
                                                           const std::string& refreshToken);
    [[nodiscard]] int graceLeft(const RefreshTokenRow& row) const;
    [[nodiscard]] Session issue(Database& database, const Account& account,
                                std::int64_t familyId) const;
    void confirm(const AccessTokenRow& token);
    void noteConfirmed(const AccessTokenRow& token);
    /// One for each turn, so that none is held while another one is waited for.
    using TakeTurn = std::function<std::optional<SharedDatabase::Writing>()>;
    void writeConfirmations(const TakeTurn& takeTurn);
    [[nodiscard]] std::unordered_map<std::int64_t, std::int64_t> unwrittenConfirmations();

    std::unique_ptr<SharedDatabase> m_database;
    const Clock& m_clock;
    Housekeeping m_housekeeping{*m_database, m_clock};
    std::unique_ptr<RateLimits> m_limits;
    RefreshGrace m_grace{m_clock};
    std::mutex m_confirming;
    /// By sign-in, the generation that is confirmed but not yet in the database.
    std::unordered_map<std::int64_t, std::int64_t> m_unwrittenConfirmations;
    /// A thread writes them.
    std::atomic<bool> m_isConfirming = false;
    PasswordGuard m_passwords;
};

} // namespace vorq::gateway
