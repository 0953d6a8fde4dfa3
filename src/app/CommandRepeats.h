#pragma once

#include "app/CommandLine.h"
#include "platform/Clock.h"

#include <optional>

namespace vorq {

/// Tells a command that the user gives from one that repeats by itself: a desktop runs it again and
/// again while its shortcut is held. Main thread only.
class CommandRepeats {
  public:
    /// Longer than a keyboard waits before it repeats.
    static constexpr std::chrono::milliseconds pause{700};

    /// The clock must outlive this object.
    explicit CommandRepeats(Clock& clock) : m_clock(clock) {}

    /// Whether the command that comes now follows the same one, be that a repetition, without a
    /// pause.
    [[nodiscard]] bool isRepetition(Verb verb);

  private:
    Clock& m_clock;
    std::optional<Verb> m_last;
    Clock::Duration m_lastTime{};
};

} // namespace vorq
