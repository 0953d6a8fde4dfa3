#pragma once

#include "auth/AccountService.h"
#include "storage/SignInTable.h"

#include <optional>
#include <string>
#include <vector>

namespace vorq::gateway {

/// What a person types to sign in or up.
struct Credentials {
    std::string email;
    std::string password;
};

/// Sign-up, sign-in and the list of sign-ins, for people in a browser. What a browser keeps is the
/// secret of its own sign-in. Thread-safe. Refusals are ApiError; no sign-in tells whether an
/// address has an account.
class WebAccounts {
  public:
    /// `accounts` and `clock` outlive it.
    WebAccounts(AccountService& accounts, const Clock& clock);

    /// These hash the password, which takes long, and give the browser's secret.
    [[nodiscard]] std::string signUp(const Credentials& typed, const SignInOrigin& origin);
    [[nodiscard]] std::string signIn(const Credentials& typed, const SignInOrigin& origin);
    /// For this computer's own user, whom the caller has made sure of: no password is asked for.
    [[nodiscard]] std::string continueHere(const std::string& loginName,
                                           const SignInOrigin& origin);

    /// Whose browser it is, if its sign-in holds.
    [[nodiscard]] std::optional<Identity> identify(const std::string& secret);
    /// A one-time code that signs a program in to the same account.
    [[nodiscard]] std::string createHandoff(const Identity& identity);

    /// The last used first.
    [[nodiscard]] std::vector<SignIn> signIns(const Identity& identity);
    /// One of another account stays.
    void endSignIn(const Identity& identity, std::int64_t familyId);
    void endOtherSignIns(const Identity& identity);

  private:
    [[nodiscard]] std::string begin(Database& database, const Account& account,
                                    const SignInOrigin& origin);
    void noteUse(const BrowserSession& session);

    SharedDatabase& m_database;
    PasswordGuard& m_passwords;
    RateLimits& m_limits;
    Housekeeping& m_housekeeping;
    const Clock& m_clock;
};

} // namespace vorq::gateway
