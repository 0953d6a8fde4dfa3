#pragma once

#include "auth/AccountService.h"
#include "auth/RateLimiter.h"
#include "http/Api.h"
#include "http/RequestGuard.h"

#include <functional>
#include <map>
#include <string>

namespace vorq::gateway {

using ApiHandler = std::function<ApiReply(const ApiCall&)>;

struct Route {
    ApiHandler handler;
    bool needsToken = false;
    bool isRateLimited = false;
};

/// Checks each request and hands it to the handler of its path. Thread-safe once all routes are in.
class RequestRouter {
  public:
    static constexpr std::size_t kLargestBody = std::size_t{16} * 1024 * 1024;

    /// Both outlive the router.
    RequestRouter(AccountService& accounts, RateLimiter& limiter, RequestGuard guard);

    void add(const std::string& path, Route route);
    /// Throws ApiError for a refusal; whatever else a handler throws comes out as it is.
    [[nodiscard]] ApiReply handle(const HttpRequest& request);

  private:
    [[nodiscard]] const Route& routeFor(const HttpRequest& request) const;
    void checkRate(const HttpRequest& request);
    [[nodiscard]] Identity identityOf(const HttpRequest& request);

    AccountService& accounts_;
    RateLimiter& limiter_;
    RequestGuard guard_;
    std::map<std::string, Route, std::less<>> routes_;
};

} // namespace vorq::gateway
