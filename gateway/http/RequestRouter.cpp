#include "http/RequestRouter.h"

#include "http/ApiError.h"
#include "http/RequestFields.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <string_view>
#include <utility>

namespace vorq::gateway {
namespace {

std::string bearerToken(const std::string& authorization) {
    constexpr std::string_view scheme = "bearer ";
    if (!lowered(authorization.substr(0, scheme.size())).starts_with(scheme)) return {};
    return std::string(trimmed(std::string_view(authorization).substr(scheme.size())));
}

nlohmann::json bodyOf(const HttpRequest& request) {
    if (!request.hasBody) return nlohmann::json::object();
    if (request.contentLength.value_or(0) > RequestRouter::kLargestBody) {
        throw ApiError(413, "The request is larger than 16 MB.");
    }
    const std::string body = request.readBody(RequestRouter::kLargestBody);
    return trimmed(body).empty() ? nlohmann::json::object() : parseBody(body);
}

} // namespace

RequestRouter::RequestRouter(AccountService& accounts, RateLimiter& limiter, RequestGuard guard)
    : accounts_(accounts), limiter_(limiter), guard_(std::move(guard)) {}

void RequestRouter::add(const std::string& path, Route route) {
    routes_.insert_or_assign(path, std::move(route));
}

const Route& RequestRouter::routeFor(const HttpRequest& request) const {
    const auto entry = routes_.find(request.path);
    if (entry == routes_.end()) {
        throw ApiError(404, filled("The Vorq gateway has nothing at {}.",
                                   clipped(sanitized(request.path), 200)));
    }
    if (request.method != "POST") {
        throw ApiError(405, filled("{} takes POST requests only.", request.path));
    }
    return entry->second;
}

void RequestRouter::checkRate(const HttpRequest& request) {
    if (const int wait = limiter_.secondsToWait(request.remoteAddress); wait > 0) {
        ApiError error(429, "Too many attempts. Wait a moment and try again.");
        error.retryAfterSeconds = wait;
        throw error;
    }
}

Identity RequestRouter::identityOf(const HttpRequest& request) {
    const std::string token = bearerToken(request.authorization);
    if (token.empty()) throw ApiError(401, "Sign in first.");
    std::optional<Identity> identity = accounts_.identify(token);
    if (!identity) throw ApiError(401, "Your session expired. Sign in again.");
    return std::move(*identity);
}

ApiReply RequestRouter::handle(const HttpRequest& request) {
    guard_.checkSender(request);
    const Route& route = routeFor(request);
    if (route.isRateLimited) checkRate(request);
    RequestGuard::checkContentType(request);
    ApiCall call;
    if (route.needsToken) call.identity = identityOf(request);
    call.body = bodyOf(request);
    call.cancelled = request.cancelled;
    return route.handler(call);
}

} // namespace vorq::gateway
