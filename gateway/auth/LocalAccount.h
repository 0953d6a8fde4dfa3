#pragma once

#include "storage/AccountTable.h"

#include <cstdint>
#include <string>

namespace vorq::gateway {

inline constexpr std::int64_t kHandoffLifeMs = std::int64_t{5} * 60 * 1000;

/// The account of this computer's user, which is made on first use. Within the caller's turn to
/// write.
[[nodiscard]] Account localAccount(Database& database, const std::string& loginName,
                                   std::int64_t nowMs);

/// A fresh one-time code that signs a program in to the account. Within the caller's turn to write.
[[nodiscard]] std::string addHandoff(Database& database, std::int64_t accountId,
                                     std::int64_t nowMs);

} // namespace vorq::gateway
