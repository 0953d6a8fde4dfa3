#pragma once

#include <chrono>

namespace vorq::gateway {

/// A moment by a clock that never is set: for waits and limits, handed in by whoever asks, so that
/// tests need not wait.
using SteadyTime = std::chrono::steady_clock::time_point;

} // namespace vorq::gateway
