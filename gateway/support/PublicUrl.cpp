#include "support/PublicUrl.h"

#include "support/Utf8.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace vorq::gateway {
namespace {

bool isOfHost(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
           std::string_view("-._:[]").contains(c);
}

} // namespace

PublicUrl::PublicUrl(std::string_view address) {
    const std::string text = lowered(trimmed(address));
    const std::size_t colon = text.find("://");
    m_scheme = text.substr(0, colon);
    std::string authority = colon == std::string::npos ? std::string() : text.substr(colon + 3);
    if (authority.ends_with('/')) authority.pop_back();
    const bool isKnown = m_scheme == "http" || m_scheme == "https";
    if (!isKnown || authority.empty() || !std::ranges::all_of(authority, isOfHost)) {
        throw std::runtime_error("The public address must be one such as "
                                 "https://vorq.example.org, without a path.");
    }
    m_authority = withoutOwnPort(std::move(authority));
}

std::string PublicUrl::withoutOwnPort(std::string authority) const {
    const std::string_view port = isSecure() ? ":443" : ":80";
    if (authority.ends_with(port)) authority.resize(authority.size() - port.size());
    return authority;
}

bool PublicUrl::isHost(std::string_view host) const {
    return withoutOwnPort(lowered(trimmed(host))) == m_authority;
}

} // namespace vorq::gateway
