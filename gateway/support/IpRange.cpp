#include "support/IpRange.h"

#include "support/Utf8.h"

#include <arpa/inet.h>

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace vorq::gateway {
namespace {

constexpr std::string_view kMapped = "::ffff:";
constexpr int kMappedBits = 96; // of an address of IPv4 before its own
constexpr int kAllBits = 128;

[[noreturn]] void refuse() {
    throw std::runtime_error("is neither an address nor a range of addresses such as 10.0.0.0/8 "
                             "or fd00::/8.");
}

} // namespace

std::string plainAddress(std::string_view text) {
    std::string address = lowered(trimmed(text));
    if (address.starts_with('['))
        address = address.substr(1, address.find(']') - 1);
    else if (std::ranges::count(address, ':') == 1)
        address.resize(address.find(':'));
    if (address.contains(':')) address.resize(std::min(address.size(), address.find('%')));
    if (address.starts_with(kMapped) && address.contains('.')) address.erase(0, kMapped.size());
    return address;
}

IpRange::IpRange(std::string_view text) {
    const std::string_view whole = trimmed(text);
    const std::size_t slash = whole.find('/');
    const bool isSingle = slash == std::string_view::npos;
    const std::string address = isSingle ? plainAddress(whole) : lowered(whole.substr(0, slash));
    if (!read(address, m_first)) refuse();
    if (isSingle) return;
    const bool isFour = !address.contains(':');
    m_bits = bitsIn(whole.substr(slash + 1), isFour ? kAllBits - kMappedBits : kAllBits);
    if (isFour) m_bits += kMappedBits;
    if (withoutRest(m_first) != m_first) {
        throw std::runtime_error("begins in the midst of its range. Write the first address, such "
                                 "as 10.0.0.0/8, or a single one without a slash.");
    }
}

int IpRange::bitsIn(std::string_view number, int most) {
    int bits = -1;
    const auto [rest, error] = std::from_chars(number.begin(), number.end(), bits);
    const bool isNumber = error == std::errc() && rest == number.end() && !number.starts_with('-');
    if (!isNumber || bits > most) refuse();
    return bits;
}

bool IpRange::read(std::string_view address, Bytes& bytes) {
    const std::string text(address);
    if (inet_pton(AF_INET6, text.c_str(), bytes.data()) == 1) return true;
    const std::string mapped = std::string(kMapped) + text;
    return inet_pton(AF_INET6, mapped.c_str(), bytes.data()) == 1 && !text.contains(':');
}

IpRange::Bytes IpRange::withoutRest(Bytes bytes) const {
    for (int bit = m_bits; bit < kAllBits; ++bit)
        bytes[static_cast<std::size_t>(bit) / 8] &=
            static_cast<std::uint8_t>(~(0x80U >> (bit % 8)));
    return bytes;
}

bool IpRange::contains(std::string_view address) const {
    Bytes bytes{};
    return read(plainAddress(address), bytes) && withoutRest(bytes) == m_first;
}

} // namespace vorq::gateway
