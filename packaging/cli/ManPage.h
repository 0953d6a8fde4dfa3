#pragma once

#include "CommandPages.h"

namespace vorq::packaging {

/// A manual page of section 1. `date` is a day such as 2026-01-31.
[[nodiscard]] std::string manPage(const Program& program, const std::string& version,
                                  const std::string& date);

} // namespace vorq::packaging
