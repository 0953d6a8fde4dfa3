#pragma once

#include "app/cli/CommandLine.h"

#include <optional>

namespace vorq {

class HostSystem;

/// Gives a link from the terminal to the Vorq that runs, and says what came of it. The exit status
/// then; nothing if none runs, or the link is none that it could open.
[[nodiscard]] std::optional<int> handToRunningInstance(const OpenArguments& arguments);

/// Runs the desktop program, or hands the arguments over to the one that runs, and gives the exit
/// status. Makes an application object of its own.
int runDesktopCommand(int& argc, char** argv, const DesktopArguments& arguments,
                      const HostSystem& system);

} // namespace vorq
