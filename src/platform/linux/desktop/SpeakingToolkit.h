#pragma once

#include <cstdint>

namespace vorq {

/// Whether a process has loaded a toolkit that shows its windows on the accessibility bus once it
/// is told to. False for one whose memory cannot be looked at. Any thread; it reads a file of the
/// kernel.
[[nodiscard]] bool hasSpeakingToolkit(std::int32_t process);

} // namespace vorq
