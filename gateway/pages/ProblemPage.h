#pragma once

#include <string>

namespace vorq::gateway {

/// The page in place of one that could not be given.
[[nodiscard]] std::string problemPage(const std::string& sentence);

} // namespace vorq::gateway
