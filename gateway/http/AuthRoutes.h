#pragma once

#include "auth/AccountService.h"
#include "http/RequestRouter.h"

namespace vorq::gateway {

/// Adds the account endpoints. `accounts` outlives the router.
void addAuthRoutes(RequestRouter& router, AccountService& accounts);

} // namespace vorq::gateway
