#pragma once

#include "app/cli/CommandLine.h"

#include <optional>

namespace vorq {

class DesktopPlatform;

// The command preview. Each gives the exit status.

/// Nothing if no Vorq runs. Without an application object.
[[nodiscard]] std::optional<int> switchPreviewOfRunningInstance(const SwitchPreview& command);
[[nodiscard]] std::optional<int> listPreviewsOfRunningInstance();

/// In the settings, for the next Vorq that starts. Needs an application object.
[[nodiscard]] int switchStoredPreview(DesktopPlatform& platform, const SwitchPreview& command);
[[nodiscard]] int listStoredPreviews(DesktopPlatform& platform);

} // namespace vorq
