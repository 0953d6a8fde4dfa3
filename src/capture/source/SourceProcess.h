#pragma once

#include "platform/ProcessId.h"

#include <optional>

namespace vorq {

/// What is known of processes when a hot key asks which application the user is in.
struct SourceCandidates {
    /// This process, which is never an answer.
    ProcessId own = 0;
    /// The application in front when the key was pressed.
    std::optional<ProcessId> given;
    /// The last application other than Vorq that became active.
    std::optional<ProcessId> lastForeign;
    /// The application in front now.
    std::optional<ProcessId> frontmost;
};

/// The process to read a selection from; nothing if only Vorq itself is left.
[[nodiscard]] std::optional<ProcessId> resolveSourcePID(const SourceCandidates& candidates);

} // namespace vorq
