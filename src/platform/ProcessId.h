#pragma once

#include <cstdint>

namespace vorq {

/// A process of this machine, as the system numbers it.
using ProcessId = std::int32_t;

} // namespace vorq
