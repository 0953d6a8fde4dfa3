#pragma once

#include "platform/documents/DocumentTools.h"
#include "platform/linux/documents/GuardedProgram.h"

#include <optional>

namespace vorq {

/// Why a program that ended so has not done its work; nothing if it exited, when its status says.
[[nodiscard]] std::optional<DocumentFailure> failureOf(GuardedOutput::End end);

} // namespace vorq
