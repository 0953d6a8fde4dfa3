#pragma once

#include "app/cli/CommandLine.h"
#include "platform/Clock.h"

#include <optional>

namespace vorq {

/// Tells a command that the user gives from one that repeats by itself: a desktop runs it again and
/// again while its shortcut is held. On a busy machine some of these arrive late and in a bunch, so
/// what counts is when each was given.
class CommandRepeats {
  public:
    /// Longer than a keyboard waits before it repeats.
    static constexpr std::chrono::milliseconds pause{700};

    /// Whether a command that was given at that moment follows the same one, be that a repetition,
    /// without a pause.
    [[nodiscard]] bool isRepetition(Verb verb, Clock::Duration given);

  private:
    std::optional<Verb> m_last;
    Clock::Duration m_lastGiven{};
};

} // namespace vorq
