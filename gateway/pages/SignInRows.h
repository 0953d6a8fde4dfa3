#pragma once

#include "pages/Markup.h"
#include "storage/SignInTable.h"

#include <string>
#include <vector>

namespace vorq::gateway {

/// The list of an account's sign-ins, each but `ownFamily` with a button that ends it.
[[nodiscard]] Markup signInRows(const std::vector<SignIn>& signIns, std::int64_t ownFamily,
                                const std::string& token);

/// What a browser calls itself, as people call it: "Firefox on Linux".
[[nodiscard]] std::string browserName(const std::string& agent);

} // namespace vorq::gateway
