#pragma once

#include "auth/AccountService.h"
#include "http/ReplyFeed.h"
#include "support/LoopbackSockets.h"
#include "support/UrlText.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vorq::gateway {

/// What the router needs of the head of an HTTP request, whatever server received it.
struct HttpRequest {
    std::string method;
    std::string path;
    std::optional<std::string> host = std::nullopt;
    std::optional<std::string> origin = std::nullopt;
    std::string contentType = {};
    std::string authorization = {};
    std::string remoteAddress = {};
    /// What a proxy says of the addresses before it, the nearest last.
    std::string forwardedFor = {};
    /// As announced; nothing if the request has none or is sent in chunks.
    std::optional<std::uint64_t> contentLength = std::nullopt;
    bool hasBody = false;
    /// Behind the question mark, as it came.
    std::string query = {};
    std::string cookie = {};
    std::string userAgent = {};
    /// What a browser says of the page that a request comes from; empty where it says nothing.
    std::string fetchSite = {};
    bool acceptsPages = false;
    /// Whether a proxy says that it passed the request on.
    bool isForwarded = false;
    SocketEnd peer = {};
    SocketEnd own = {};
};

/// A whole answer.
struct HttpAnswer {
    int status = 200;
    std::string contentType = "application/json";
    std::string body = {};
    /// Where a redirection leads; empty for none.
    std::string location = {};
    /// Each the value of a header Set-Cookie.
    std::vector<std::string> cookies = {};
    std::optional<int> retryAfterSeconds = std::nullopt;
    /// The methods that would have been right; empty unless another one was used.
    std::string allowedMethods = {};
};

inline constexpr const char* kPageType = "text/html; charset=utf-8";

/// A request for a page, or from a form of one.
struct PageCall {
    const HttpRequest& request;
    Fields query;
    Fields form;
    /// Where it came from.
    std::string sender;
    /// Whether that is this very computer.
    bool isFromHere = false;
    /// Whether the browser sent it by TLS.
    bool isSecure = false;
};

/// A checked request on its way to the handler of its path.
struct ApiCall {
    nlohmann::json body;
    /// Set where the route asks for a bearer token.
    std::optional<Identity> identity;
    /// Where it came from.
    std::string sender = {};
};

/// A JSON document unless `stream` is set, a reply on its way, or `answer`.
struct ApiReply {
    nlohmann::json body = {};
    std::unique_ptr<ReplyFeed> stream = {};
    std::optional<HttpAnswer> answer = std::nullopt;
};

} // namespace vorq::gateway
