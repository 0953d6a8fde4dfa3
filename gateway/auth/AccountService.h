#pragma once

#include "auth/Session.h"
#include "storage/AccountTable.h"
#include "storage/Database.h"
#include "storage/TokenTable.h"
#include "support/Clock.h"

#include <mutex>
#include <optional>
#include <string>

namespace vorq::gateway {

/// A caller whose bearer token holds.
struct Identity {
    TokenOwner owner;
    Account account;
    std::string token;
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
    /// `clock` outlives the service.
    AccountService(Database database, const Clock& clock);

    /// A fresh one-time code for this computer's account, which is made on first use.
    [[nodiscard]] std::string createHandoff(const std::string& loginName);
    [[nodiscard]] Session exchangeHandoff(const std::string& code);
    /// Trades a refresh token for a new pair. A token works once; one that comes back later ends
    /// the whole sign-in, since somebody else may hold it.
    [[nodiscard]] Session refresh(const std::string& refreshToken);
    [[nodiscard]] std::optional<Identity> identify(const std::string& token);
    [[nodiscard]] Session signOut(const Identity& identity);
    [[nodiscard]] Session updateProfile(const Identity& identity, const ProfileChange& change);
    [[nodiscard]] Session updatePrivacy(const Identity& identity, const PrivacyChange& change);

  private:
    [[nodiscard]] Account localAccount(const std::string& loginName);
    [[nodiscard]] std::optional<std::string> checkedHash(const std::optional<std::string>& oldHash,
                                                         const PrivacyChange& change);
    [[nodiscard]] Session issue(const Account& account, std::int64_t familyId);

    std::mutex mutex_;
    /// Hashing a password takes much memory on purpose, so it is done one at a time.
    std::mutex hashing_;
    Database database_;
    AccountTable accounts_{database_};
    TokenTable tokens_{database_};
    const Clock& clock_;
};

} // namespace vorq::gateway
