#include "provider/LocalAddress.h"

#include "support/Utf8.h"

#include <arpa/inet.h>
#include <curl/curl.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <memory>
#include <optional>

namespace vorq::gateway {
namespace {

/// IPv4 addresses are held as IPv6 addresses that map them, so that there is one kind to compare.
std::optional<in6_addr> addressIn(const std::string& host) {
    in6_addr address{};
    if (inet_pton(AF_INET6, host.c_str(), &address) == 1) return address;
    in_addr v4{};
    if (inet_aton(host.c_str(), &v4) == 0) return std::nullopt;
    address.s6_addr[10] = address.s6_addr[11] = 0xFF;
    std::memcpy(&address.s6_addr[12], &v4, sizeof v4);
    return address;
}

std::optional<in6_addr> addressIn(const sockaddr* interface) {
    if (interface == nullptr) return std::nullopt;
    in6_addr address{};
    if (interface->sa_family == AF_INET6) {
        address = reinterpret_cast<const sockaddr_in6*>(interface)->sin6_addr;
    } else if (interface->sa_family == AF_INET) {
        address.s6_addr[10] = address.s6_addr[11] = 0xFF;
        std::memcpy(&address.s6_addr[12],
                    &reinterpret_cast<const sockaddr_in*>(interface)->sin_addr, sizeof(in_addr));
    } else {
        return std::nullopt;
    }
    return address;
}

/// Loopback, or the address that means any of this computer's.
bool isLoopback(const in6_addr& address) {
    if (IN6_IS_ADDR_LOOPBACK(&address) || IN6_IS_ADDR_UNSPECIFIED(&address)) return true;
    return IN6_IS_ADDR_V4MAPPED(&address) &&
           (address.s6_addr[12] == 127 || address.s6_addr[12] == 0);
}

bool isOwnAddress(const in6_addr& wanted) {
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0) return false;
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owned(list, freeifaddrs);
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        const std::optional<in6_addr> address = addressIn(entry->ifa_addr);
        if (address && IN6_ARE_ADDR_EQUAL(&*address, &wanted)) return true;
    }
    return false;
}

bool isOwnName(const std::string& name) {
    if (name == "localhost" || name.ends_with(".localhost") || name == "ip6-localhost" ||
        name == "ip6-loopback" || name == "localhost.localdomain") {
        return true;
    }
    std::array<char, 256> own{};
    return gethostname(own.data(), own.size() - 1) == 0 && own.front() != '\0' &&
           name == lowered(own.data());
}

std::string hostIn(const std::string& url) {
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> parsed(curl_url(), curl_url_cleanup);
    char* part = nullptr;
    if (!parsed || curl_url_set(parsed.get(), CURLUPART_URL, url.c_str(), 0) != CURLUE_OK ||
        curl_url_get(parsed.get(), CURLUPART_HOST, &part, 0) != CURLUE_OK) {
        return {};
    }
    std::string host = lowered(part);
    curl_free(part);
    if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
    if (host.ends_with('.')) host.pop_back();
    return host;
}

} // namespace

bool leadsToThisComputer(const std::string& url) {
    const std::string host = hostIn(url);
    if (const std::optional<in6_addr> address = addressIn(host)) {
        return isLoopback(*address) || isOwnAddress(*address);
    }
    return isOwnName(host);
}

} // namespace vorq::gateway
