#include "auth/LocalAccount.h"

#include "auth/AccountRules.h"
#include "storage/TokenTable.h"
#include "support/Secrets.h"

#include <optional>

namespace vorq::gateway {

Account localAccount(Database& database, const std::string& loginName, std::int64_t nowMs) {
    AccountTable accounts(database);
    if (std::optional<Account> found = accounts.local()) return *found;
    Account account = newLocalAccount(loginName);
    const std::string name = account.username;
    for (int number = 2; accounts.emailTaken(account.email, 0); ++number)
        account.email = localEmail(name, number);
    if (accounts.usernameTaken(account.username, 0)) account.username.clear();
    accounts.insert(account, nowMs);
    return account;
}

std::string addHandoff(Database& database, std::int64_t accountId, std::int64_t nowMs) {
    std::string code = randomSecret();
    TokenTable(database).addHandoff(code, accountId, nowMs + kHandoffLifeMs);
    return code;
}

} // namespace vorq::gateway
