#include "support/NetworkOf.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <optional>

namespace vorq::gateway {
namespace {

/// Without the zone of an address that holds in one network only.
std::string withoutZone(std::string_view address) {
    return std::string(address.substr(0, address.find('%')));
}

std::optional<in6_addr> readSix(std::string_view text) {
    in6_addr six{};
    if (!text.contains(':') || inet_pton(AF_INET6, withoutZone(text).c_str(), &six) != 1)
        return std::nullopt;
    return six;
}

} // namespace

bool isAddress(std::string_view text) {
    in_addr four{};
    return readSix(text) || inet_pton(AF_INET, std::string(text).c_str(), &four) == 1;
}

std::string networkOf(std::string_view address) {
    constexpr std::size_t networkBytes = 8;
    constexpr std::size_t mappedBytes = 12;
    std::optional<in6_addr> six = readSix(address);
    if (!six) return std::string(address);
    std::array<char, INET6_ADDRSTRLEN> text{};
    auto& bytes = six->s6_addr;
    if (IN6_IS_ADDR_V4MAPPED(&*six))
        return inet_ntop(AF_INET, &bytes[mappedBytes], text.data(), text.size());
    std::fill(std::begin(bytes) + networkBytes, std::end(bytes), 0);
    return std::string(inet_ntop(AF_INET6, &*six, text.data(), text.size())) + "/64";
}

} // namespace vorq::gateway
