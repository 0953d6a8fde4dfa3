#pragma once

#include "auth/AccountService.h"
#include "storage/AccountTable.h"

#include <string>

namespace vorq::gateway {

/// What an account may hold. Refusals are ApiError with status 400 and the field's name.

/// The account of this computer's user as it is first made.
[[nodiscard]] Account newLocalAccount(const std::string& loginName);
/// The address for one of that name, or of the name with a number from 2 on.
[[nodiscard]] std::string localEmail(const std::string& name, int number = 1);

void applyProfile(Account& account, const ProfileChange& change);

/// The address in canonical form.
[[nodiscard]] std::string checkedEmail(const std::string& email);
/// Throws for an address in canonical form that is for the account of this computer's user alone.
void checkNewEmail(const std::string& email);
/// Throws for one that is too short or too long to be chosen.
void checkNewPassword(const std::string& password, const std::string& field);

/// The change with its address in canonical form.
[[nodiscard]] PrivacyChange checkedPrivacy(const PrivacyChange& change);

} // namespace vorq::gateway
