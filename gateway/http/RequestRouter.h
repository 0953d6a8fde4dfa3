#pragma once

#include "auth/AccountService.h"
#include "http/Api.h"
#include "http/RequestGuard.h"
#include "support/ApiError.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace vorq::gateway {

using ApiHandler = std::function<ApiReply(const ApiCall&)>;

struct Route {
    ApiHandler handler;
    bool needsToken = false;
    /// The handler begins a reply, of which many may be asked for at once.
    bool startsReply = false;
    /// The handler may compute for long, however small the body is.
    bool computes = false;

    /// In bytes.
    [[nodiscard]] std::size_t largestBody() const;
};

/// Checks each request and hands it to the handler of its path, in three steps. Each throws
/// ApiError for a refusal. Thread-safe once all routes are in.
class RequestRouter {
  public:
    /// Of a body whose sender is not known, and of all others.
    static constexpr std::size_t kLargestStrangersBody = std::size_t{64} * 1024;
    static constexpr std::size_t kLargestBody = std::size_t{16} * 1024 * 1024;

    /// `accounts` outlives the router.
    RequestRouter(AccountService& accounts, RequestGuard guard);

    void add(const std::string& path, Route route);
    /// What can be told without waiting for anything. The route lasts as long as the router.
    [[nodiscard]] const Route& screen(const HttpRequest& request);
    /// Who asks; nobody where the route does not ask for that. May wait for the disk.
    [[nodiscard]] std::optional<Identity> identify(const Route& route, const HttpRequest& request);
    /// Runs the handler. Whatever it throws comes out as it is.
    [[nodiscard]] static ApiReply answer(const Route& route, std::optional<Identity> identity,
                                         std::string body);
    /// The refusal of a body that is longer than the route takes.
    [[nodiscard]] static ApiError tooLarge(const Route& route);

  private:
    [[nodiscard]] const Route& routeFor(const HttpRequest& request) const;

    AccountService& m_accounts;
    RequestGuard m_guard;
    std::map<std::string, Route, std::less<>> m_routes;
};

} // namespace vorq::gateway
