#pragma once

#include "auth/AccountService.h"
#include "http/ReplyFeed.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

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
};

/// A checked request on its way to the handler of its path.
struct ApiCall {
    nlohmann::json body;
    /// Set where the route asks for a bearer token.
    std::optional<Identity> identity;
};

/// Either a JSON document or, if `stream` is set, a reply on its way.
struct ApiReply {
    nlohmann::json body;
    std::unique_ptr<ReplyFeed> stream;
};

} // namespace vorq::gateway
