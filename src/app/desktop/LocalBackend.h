#pragma once

#include "platform/BackendAtLogin.h"

#include <memory>

namespace vorq {

class AppPaths;
class Terminal;

/// The backend on this computer, for the address that Vorq is configured for now. Needs an
/// application object.
[[nodiscard]] std::shared_ptr<BackendAtLogin> localBackend(const AppPaths& paths);

/// What the commands enable-backend and disable-backend do; gives their exit status. Needs an
/// application object.
[[nodiscard]] int switchBackend(bool isOn, Terminal& terminal);

} // namespace vorq
