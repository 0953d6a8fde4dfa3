#include "http/RequestGuard.h"

#include "support/ApiError.h"
#include "support/NetworkOf.h"
#include "support/Utf8.h"

#include <algorithm>
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

RequestGuard::RequestGuard(std::string listenHost, std::vector<IpRange> trustedProxies,
                           std::optional<PublicUrl> publicUrl)
    : m_listenHost(std::move(listenHost)),
      m_trustedProxies(std::move(trustedProxies)),
      m_publicUrl(std::move(publicUrl)) {}

bool RequestGuard::isTrustedProxy(const std::string& address) const {
    return std::ranges::any_of(m_trustedProxies,
                               [&](const IpRange& proxies) { return proxies.contains(address); });
}

std::string RequestGuard::senderAddress(const HttpRequest& request) const {
    std::string address = plainAddress(request.remoteAddress);
    std::string_view before = request.forwardedFor;
    while (isTrustedProxy(address) && !trimmed(before).empty()) {
        const std::size_t comma = before.rfind(',');
        const bool isLast = comma == std::string_view::npos;
        std::string item = plainAddress(isLast ? before : before.substr(comma + 1));
        if (!isAddress(item)) break;
        address = std::move(item);
        before = isLast ? std::string_view() : before.substr(0, comma);
    }
    return address;
}

bool RequestGuard::isOwnName(const std::string& authority) const {
    const std::string name = hostName(authority);
    if (isLoopbackName(name)) return true;
    const bool takesAll = m_listenHost == "0.0.0.0" || m_listenHost == "::";
    if (takesAll && !m_publicUrl) return !name.empty();
    return name == lowered(m_listenHost) || name == "[" + lowered(m_listenHost) + "]";
}

bool RequestGuard::isPublic(const HttpRequest& request) const {
    return m_publicUrl && request.host && m_publicUrl->isHost(*request.host);
}

bool RequestGuard::isSecure(const HttpRequest& request) const {
    return m_publicUrl && isPublic(request) && m_publicUrl->isSecure();
}

void RequestGuard::checkSender(const HttpRequest& request) const {
    const bool atProxy = isPublic(request);
    if (!request.host || (!atProxy && !isOwnName(*request.host))) {
        throw ApiError(403, "This address does not belong to the Vorq gateway.");
    }
    if (!request.origin) return;
    const std::string own =
        m_publicUrl && atProxy ? m_publicUrl->origin() : "http://" + lowered(*request.host);
    if (lowered(*request.origin) != own) {
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

void RequestGuard::checkPage(const HttpRequest& request) {
    if (request.method != "POST") return;
    const std::string& site = request.fetchSite;
    if (!site.empty() && site != "same-origin" && site != "none") {
        throw ApiError(403, "Other websites may not use the Vorq gateway.");
    }
    const std::string type = lowered(request.contentType);
    if (trimmed(std::string_view(type).substr(0, type.find(';'))) !=
        "application/x-www-form-urlencoded") {
        throw ApiError(415, "The form was sent in a way that the Vorq gateway does not take.");
    }
}

bool RequestGuard::isFromHere(const HttpRequest& request) {
    return !request.isForwarded && request.host && isLoopbackName(hostName(*request.host)) &&
           isLoopbackAddress(request.peer.address) && isLoopbackAddress(request.own.address);
}

} // namespace vorq::gateway
