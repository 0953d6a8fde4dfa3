#pragma once

#include "auth/PasswordReset.h"
#include "auth/WebAccounts.h"
#include "http/RequestRouter.h"
#include "web/ProviderDesk.h"

#include <cstdint>
#include <functional>
#include <string>

namespace vorq::gateway {

/// What the pages are made of. Everything that it refers to outlives the router.
struct Site {
    AccountService& accounts;
    WebAccounts& web;
    PasswordReset& resets;
    ProviderDesk& provider;
    /// Of the user who runs the gateway.
    std::string loginName = {};
    /// Whether anybody can make an account, or only that user.
    bool isSignUpOpen = false;
    /// Tells whoever runs the gateway of a link that somebody asked for.
    std::function<void(const PasswordReset::Code&)> tellReset = [](const auto&) {};
    /// Where the desktop program listens while it waits for a browser.
    std::uint16_t clientPort = 18742;
};

/// Adds all pages. `site` outlives the router.
void addPages(RequestRouter& router, const Site& site);

/// Those of one subject each.
void addSignInPages(RequestRouter& router, const Site& site);
void addHandoffPages(RequestRouter& router, const Site& site);
void addAccountPages(RequestRouter& router, const Site& site);
void addResetPages(RequestRouter& router, const Site& site);
void addAdminPages(RequestRouter& router, const Site& site);

} // namespace vorq::gateway
