#pragma once

#include "platform/BackendAtLogin.h"

#include <memory>

namespace vorq {

class DesktopPlatform;
class Terminal;

/// The backend on this computer, for the address that Vorq is configured for now. Needs an
/// application object.
[[nodiscard]] std::shared_ptr<BackendAtLogin> localBackend(DesktopPlatform& platform);

/// What the commands enable-backend and disable-backend do; gives their exit status. Needs an
/// application object.
[[nodiscard]] int switchBackend(DesktopPlatform& platform, bool isOn, Terminal& terminal);

} // namespace vorq
