#pragma once

#include "cli/CommandLine.h"

namespace vorq::gateway {

/// Serves until SIGTERM or SIGINT. Gives the exit status; failures are std::runtime_error. Blocks
/// both signals in the calling thread and every thread it starts.
[[nodiscard]] int runServe(const CommandLine& line);

/// Prints a one-time sign-in address. Works whether or not a server runs.
[[nodiscard]] int runHandoff(const CommandLine& line);

/// Prints the address of a page where a new password is set. Works whether or not a server runs.
[[nodiscard]] int runResetLink(const CommandLine& line);

} // namespace vorq::gateway
