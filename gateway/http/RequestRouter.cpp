#include "http/RequestRouter.h"

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

} // namespace

std::size_t Route::largestBody() const {
    return needsToken ? RequestRouter::kLargestBody : RequestRouter::kLargestStrangersBody;
}

RequestRouter::RequestRouter(AccountService& accounts, RequestGuard guard)
    : m_accounts(accounts), m_guard(std::move(guard)) {}

void RequestRouter::add(const std::string& path, Route route) {
    m_routes.insert_or_assign(path, std::move(route));
}

void RequestRouter::addPage(const std::string& method, const std::string& path, Route route) {
    m_pages[path].insert_or_assign(method, std::move(route));
}

bool RequestRouter::wantsPage(const HttpRequest& request) const {
    return m_pages.contains(request.path) || (request.acceptsPages && request.method != "POST");
}

std::string RequestRouter::allowedMethods(const std::string& path) const {
    const auto page = m_pages.find(path);
    if (page == m_pages.end()) {
        const auto entry = m_routes.find(path);
        return entry == m_routes.end() ? "POST" : entry->second.method;
    }
    std::string methods;
    for (const auto& [method, route] : page->second)
        methods += (methods.empty() ? "" : ", ") + (method == "GET" ? "GET, HEAD" : method);
    return methods;
}

const Route& RequestRouter::routeFor(const HttpRequest& request) const {
    if (const auto page = m_pages.find(request.path); page != m_pages.end()) {
        const auto route = page->second.find(request.method == "HEAD" ? "GET" : request.method);
        if (route != page->second.end()) return route->second;
        throw ApiError(405, filled("{} takes other requests.", request.path));
    }
    const auto entry = m_routes.find(request.path);
    if (entry == m_routes.end()) {
        throw ApiError(404, filled("The Vorq gateway has nothing at {}.",
                                   clipped(sanitized(request.path), 200)));
    }
    const Route& route = entry->second;
    if (request.method != route.method) {
        throw ApiError(405, filled("{} takes {} requests only.", request.path, route.method));
    }
    return route;
}

ApiError RequestRouter::tooLarge(const Route& route) {
    return {413, filled("The request is larger than {}.", route.needsToken ? "16 MB" : "64 KB")};
}

const Route& RequestRouter::screen(const HttpRequest& request) {
    m_guard.checkSender(request);
    const Route& route = routeFor(request);
    if (route.page) {
        RequestGuard::checkPage(request);
        return route;
    }
    RequestGuard::checkContentType(request);
    if (route.needsToken && bearerToken(request.authorization).empty()) {
        throw ApiError(401, "Sign in first.");
    }
    return route;
}

std::optional<Identity> RequestRouter::identify(const Route& route, const HttpRequest& request) {
    if (!route.needsToken) return std::nullopt;
    std::optional<Identity> identity = m_accounts.identify(bearerToken(request.authorization));
    if (!identity) throw ApiError(401, "Your session expired. Sign in again.");
    identity->address = m_guard.senderAddress(request);
    return identity;
}

ApiReply RequestRouter::answerPage(const Route& route, const HttpRequest& request,
                                   const std::string& body) const {
    return route.page({.request = request,
                       .query = parseFields(request.query),
                       .form = parseFields(request.method == "POST" ? body : std::string()),
                       .sender = m_guard.senderAddress(request),
                       .isFromHere = RequestGuard::isFromHere(request),
                       .isSecure = m_guard.isSecure(request)});
}

ApiReply RequestRouter::answer(const Route& route, const HttpRequest& request,
                               std::optional<Identity> identity, std::string body,
                               const std::function<void()>& isRead) const {
    if (route.page) return answerPage(route, request, body);
    ApiCall call;
    call.sender = m_guard.senderAddress(request);
    call.body = trimmed(body).empty() ? nlohmann::json::object() : parseBody(body);
    body = {};
    isRead();
    call.identity = std::move(identity);
    return route.handler(call);
}

} // namespace vorq::gateway
