#include "http/RequestGuard.h"

#include "http/ApiError.h"
#include "support/Utf8.h"

#include <array>
#include <string_view>

namespace vorq::gateway {
namespace {

/// The name of "name:port" or "[v6]:port", lower-cased.
std::string hostName(std::string_view authority) {
    if (authority.starts_with('[')) return lowered(authority.substr(0, authority.find(']') + 1));
    return lowered(authority.substr(0, authority.find(':')));
}

bool isLoopbackName(std::string_view name) {
    return name == "127.0.0.1" || name == "localhost" || name == "[::1]";
}

} // namespace

RequestGuard::RequestGuard(std::string listenHost) : listenHost_(std::move(listenHost)) {}

bool RequestGuard::isOwnName(const std::string& authority) const {
    const std::string name = hostName(authority);
    if (isLoopbackName(name)) return true;
    if (listenHost_ == "0.0.0.0" || listenHost_ == "::") return !name.empty();
    return name == lowered(listenHost_) || name == "[" + lowered(listenHost_) + "]";
}

void RequestGuard::checkSender(const HttpRequest& request) const {
    if (!request.host || !isOwnName(*request.host)) {
        throw ApiError(403, "This address does not belong to the Vorq gateway.");
    }
    if (request.origin && lowered(*request.origin) != "http://" + lowered(*request.host)) {
        throw ApiError(403, "Other websites may not use the Vorq gateway.");
    }
}

void RequestGuard::checkContentType(const HttpRequest& request) {
    if (!request.hasBody && request.contentType.empty()) return;
    const std::string type = lowered(request.contentType);
    if (trimmed(std::string_view(type).substr(0, type.find(';'))) != "application/json") {
        throw ApiError(415, "The request's content type must be application/json.");
    }
}

} // namespace vorq::gateway
