#pragma once

#include "app/cli/CommandLine.h"

namespace vorq {

class HostSystem;

/// Has the Vorq that runs test itself, or tests it in this process if none does, and gives the exit
/// status: 0 if nothing failed. Makes an application object of its own.
int runDoctorCommand(int& argc, char** argv, const Doctor& command, const HostSystem& system);

} // namespace vorq
