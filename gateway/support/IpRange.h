#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace vorq::gateway {

/// An address in one spelling: without port, brackets, zone, blanks and the prefix by which a
/// socket for both families names IPv4.
[[nodiscard]] std::string plainAddress(std::string_view text);

/// Addresses of IPv4 or IPv6 that begin alike, or a single one.
class IpRange {
  public:
    /// Of an address, or of the first one with the number of bits that all have in common, such as
    /// 10.0.0.0/8 or fd00::/8. Throws std::runtime_error unless `text` is one; what it says goes on
    /// from a name of the text.
    explicit IpRange(std::string_view text);

    /// False for what is no address.
    [[nodiscard]] bool contains(std::string_view address) const;

  private:
    /// IPv4 stands among those of IPv6 where RFC 4291 maps it.
    using Bytes = std::array<std::uint8_t, 16>;

    [[nodiscard]] static bool read(std::string_view address, Bytes& bytes);
    [[nodiscard]] static int bitsIn(std::string_view number, int most);
    [[nodiscard]] Bytes withoutRest(Bytes bytes) const;

    Bytes m_first{};
    int m_bits = 128;
};

} // namespace vorq::gateway
