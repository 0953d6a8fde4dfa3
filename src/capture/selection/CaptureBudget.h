#pragma once

#include "platform/Clock.h"

#include <algorithm>

namespace vorq {

/// The time of one capture, from now on. The copy shortcut has a pace of its own and is not
/// counted. The clock must outlive it.
class CaptureBudget {
  public:
    static constexpr std::chrono::milliseconds captureLimit{250};
    /// Of the whole time, accessibility gets so much, that the next rung has its turn as well.
    static constexpr std::chrono::milliseconds accessibilityLimit{180};

    explicit CaptureBudget(Clock& clock) : m_clock(&clock), m_begin(clock.now()) {}

    [[nodiscard]] Clock::Duration left() const {
        const Clock::Duration spent = m_clock->now() - m_begin;
        return std::max(Clock::Duration(captureLimit) - spent, Clock::Duration::zero());
    }

    [[nodiscard]] Clock::Duration forAccessibility() const {
        return std::min(left(), Clock::Duration(accessibilityLimit));
    }

    /// Though it comes late, since the main thread was busy with its window, it has its turn.
    [[nodiscard]] Clock::Duration forHighlight() const {
        return std::max(left(), Clock::Duration(captureLimit - accessibilityLimit));
    }

  private:
    Clock* m_clock;
    Clock::Duration m_begin;
};

} // namespace vorq
