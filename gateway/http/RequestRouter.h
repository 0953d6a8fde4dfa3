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
using PageHandler = std::function<ApiReply(const PageCall&)>;

struct Route {
    ApiHandler handler = {};
    /// Of `handler`.
    const char* method = "POST";
    /// In place of `handler`: it answers a browser.
    PageHandler page = {};
    bool needsToken = false;
    /// The handler begins a reply, of which many may be asked for at once.
    bool startsReply = false;
    /// Whether the handler may compute for long, however small the body is; never without it.
    std::function<bool()> computes = {};
    /// The handler hashes a password.
    bool hashes = false;

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
    /// `method` is GET or POST.
    void addPage(const std::string& method, const std::string& path, Route route);
    /// What can be told without waiting for anything. The route lasts as long as the router.
    [[nodiscard]] const Route& screen(const HttpRequest& request);
    /// Who asks; nobody where the route does not ask for that. May wait for the disk.
    [[nodiscard]] std::optional<Identity> identify(const Route& route, const HttpRequest& request);
    /// Runs the handler. Whatever it throws comes out as it is. `isRead` tells that the body is
    /// read, of which nothing is held any more, before the handler may take long.
    [[nodiscard]] ApiReply answer(const Route& route, const HttpRequest& request,
                                  std::optional<Identity> identity, std::string body,
                                  const std::function<void()>& isRead) const;
    /// Whether who asks is to see a page, be it that of a refusal.
    [[nodiscard]] bool wantsPage(const HttpRequest& request) const;
    /// What a path takes, as the header Allow has it.
    [[nodiscard]] std::string allowedMethods(const std::string& path) const;
    /// The refusal of a body that is longer than the route takes.
    [[nodiscard]] static ApiError tooLarge(const Route& route);

  private:
    [[nodiscard]] const Route& routeFor(const HttpRequest& request) const;
    [[nodiscard]] ApiReply answerPage(const Route& route, const HttpRequest& request,
                                      const std::string& body) const;

    AccountService& m_accounts;
    RequestGuard m_guard;
    std::map<std::string, Route, std::less<>> m_routes;
    /// By path, then by method.
    std::map<std::string, std::map<std::string, Route, std::less<>>, std::less<>> m_pages;
};

} // namespace vorq::gateway
