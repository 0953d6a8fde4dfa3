#pragma once

#include "auth/AccountService.h"
#include "storage/AccountTable.h"

#include <string>

namespace vorq::gateway {

/// What an account may hold. Refusals are ApiError with status 400.

/// The account of this computer's user as it is first made.
[[nodiscard]] Account newLocalAccount(const std::string& loginName);

void applyProfile(Account& account, const ProfileChange& change);

/// The change with its address in canonical form.
[[nodiscard]] PrivacyChange checkedPrivacy(const PrivacyChange& change);

} // namespace vorq::gateway
