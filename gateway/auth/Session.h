#pragma once

#include "storage/AccountTable.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace vorq::gateway {

/// What every account endpoint answers: the account and the tokens of this sign-in.
struct Session {
    bool signedIn = false;
    Account account;
    std::string token;
    /// Empty where no new one was issued; the key is then left out.
    std::string refreshToken;
    std::string message;
};

[[nodiscard]] nlohmann::json encode(const Session& session);

} // namespace vorq::gateway
