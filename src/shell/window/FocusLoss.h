#pragma once

#include "platform/Clock.h"

#include <functional>
#include <optional>

namespace vorq {

/// Notices that the user has gone on to another program where presses on its windows cannot be
/// seen: Vorq had the keyboard and has not got it back within a moment. Main thread only.
class FocusLoss {
  public:
    /// Between two windows of ours, nobody may have the keyboard for so long.
    static constexpr std::chrono::milliseconds moment{100};

    /// The clock must outlive this object.
    FocusLoss(Clock& clock, std::function<void()> lost);
    FocusLoss(const FocusLoss&) = delete;
    FocusLoss& operator=(const FocusLoss&) = delete;
    ~FocusLoss();

    /// Whether a window of ours has the keyboard from now on.
    void setActive(bool isActive);

  private:
    void forgetTimer();

    Clock& m_clock;
    std::function<void()> m_lost;
    bool m_isActive = false;
    std::optional<Clock::TimerId> m_timer;
};

} // namespace vorq
