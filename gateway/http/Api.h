#pragma once

#include "auth/AccountService.h"
#include "engine/Engine.h"
#include "support/Cancellation.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vorq::gateway {

/// Reads the request's body, at most `limit` bytes of it. Throws ApiError.
using BodyReader = std::function<std::string(std::size_t limit)>;

/// What the router needs of one HTTP request, whatever server received it.
struct HttpRequest {
    std::string method;
    std::string path;
    std::optional<std::string> host;
    std::optional<std::string> origin;
    std::string contentType;
    std::string authorization;
    std::string remoteAddress;
    /// As announced; nothing if the request has none or is sent in chunks.
    std::optional<std::uint64_t> contentLength;
    bool hasBody = false;
    BodyReader readBody;
    Cancelled cancelled;
};

/// A checked request on its way to the handler of its path.
struct ApiCall {
    nlohmann::json body;
    /// Set where the route asks for a bearer token.
    std::optional<Identity> identity;
    Cancelled cancelled;
};

/// Either a JSON document or, if `stream` is set, a stream of events.
struct ApiReply {
    nlohmann::json body;
    std::unique_ptr<ReplyStream> stream;
};

} // namespace vorq::gateway
