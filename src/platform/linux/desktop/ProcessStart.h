#pragma once

#include "platform/Clock.h"

#include <optional>

namespace vorq {

/// When this process was started, on the scale of SystemClock and to a hundredth of a second;
/// nothing if the machine does not say.
[[nodiscard]] std::optional<Clock::Duration> startOfThisProcess();

} // namespace vorq
