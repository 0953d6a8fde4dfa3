#pragma once

#include <string>

namespace vorq::gateway {

/// Whether the URL leads to this computer, however its host is spelt: a loopback address in any
/// notation, "localhost" and names below it, this computer's own name or one of its addresses.
/// Looks no name up.
[[nodiscard]] bool leadsToThisComputer(const std::string& url);

} // namespace vorq::gateway
