#pragma once

#include "support/Cancellation.h"

#include <chrono>

namespace vorq::gateway {

/// Waits between the steps of a stream; behind an interface so that tests do not wait.
class Pacer {
  public:
    virtual ~Pacer() = default;
    /// False if the work was cancelled meanwhile. From any thread.
    virtual bool pause(std::chrono::milliseconds time, const Cancelled& cancelled) = 0;
};

class SleepingPacer final : public Pacer {
  public:
    bool pause(std::chrono::milliseconds time, const Cancelled& cancelled) override;
};

} // namespace vorq::gateway
