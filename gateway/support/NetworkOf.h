#pragma once

#include <string>
#include <string_view>

namespace vorq::gateway {

/// Whether a text is an address of IPv4 or IPv6 in numbers, without port or brackets.
[[nodiscard]] bool isAddress(std::string_view text);

/// Whom limits take an address for: itself, if it is one of IPv4, and of IPv6 its network of 64
/// bits, all of which a single customer of a provider has. Anything else stays as it is.
[[nodiscard]] std::string networkOf(std::string_view address);

} // namespace vorq::gateway
