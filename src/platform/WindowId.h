#pragma once

#include <cstdint>

namespace vorq {

/// A window of any program, as the window system numbers it; 0 is none.
using WindowId = std::uint64_t;

} // namespace vorq
